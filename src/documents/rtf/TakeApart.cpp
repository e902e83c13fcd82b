#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfFormat.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <algorithm>

namespace {

/// In the layout's units; what the screen indents by one step.
constexpr qreal indentStep = 40;
/// Of a table without widths of its own: that of A4 paper with usual margins.
constexpr int usualTableWidth = 9000;
constexpr int lettersOfAHash = 16;

class DocumentReader {
public:
    explicit DocumentReader(const QTextDocument& document) : m_document(document) { }

    DocumentParts read()
    {
        readPage();
        const QTextFrame& root = *m_document.rootFrame();
        for (auto it = root.begin(); it != root.end(); ++it) {
            if (const auto* table = qobject_cast<const QTextTable*>(it.currentFrame()))
                m_parts.text.blocks.emplace_back(readTable(*table));
            else if (it.currentFrame())
                readFrame(*it.currentFrame());
            else if (!isPlaceForTable(it.currentBlock()))
                m_parts.text.blocks.emplace_back(readParagraph(it.currentBlock()));
        }
        return std::move(m_parts);
    }

private:
    void readPage()
    {
        const QTextFrameFormat format = m_document.rootFrame()->frameFormat();
        m_parts.text.paper = format.property(rtf::paperProperty).toSizeF();
        m_parts.text.hasMargins = format.hasProperty(rtf::marginsProperty);
        m_parts.text.margins = format.property(rtf::marginsProperty).value<QMarginsF>();
    }

    /// A paragraph that somebody wrote into since is one like any other.
    static bool isPlaceForTable(const QTextBlock& block)
    {
        return block.length() <= 1 && block.blockFormat().boolProperty(rtf::placeForTableProperty);
    }

    /// A frame that is no table has no place in a file; its paragraphs have.
    void readFrame(const QTextFrame& frame)
    {
        for (RichParagraph& paragraph : paragraphsIn(frame.begin()))
            m_parts.text.blocks.emplace_back(std::move(paragraph));
    }

    /// The paragraphs of a frame or a cell, those of what stands in it among them.
    std::vector<RichParagraph> paragraphsIn(QTextFrame::iterator it)
    {
        std::vector<RichParagraph> paragraphs;
        for (; !it.atEnd(); ++it) {
            if (it.currentFrame()) {
                std::vector<RichParagraph> inner = paragraphsIn(it.currentFrame()->begin());
                std::move(inner.begin(), inner.end(), std::back_inserter(paragraphs));
            } else
                paragraphs.push_back(readParagraph(it.currentBlock()));
        }
        return paragraphs;
    }

    RichParagraph readParagraph(const QTextBlock& block)
    {
        RichParagraph paragraph;
        paragraph.format = readBlockFormat(block);
        if (QTextList* list = block.textList())
            addText(paragraph, '\t' + list->itemText(block) + '\t', block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().isImageFormat()) {
                addText(paragraph, fragment.text(), fragment.charFormat());
                continue;
            }
            // Equal pictures side by side are one fragment.
            for (qsizetype i = 0; i < fragment.text().size(); ++i)
                paragraph.runs.push_back(readPicture(fragment.charFormat().toImageFormat()));
        }
        return paragraph;
    }

    void addText(RichParagraph& paragraph, const QString& text, const QTextCharFormat& format)
    {
        const QTextCharFormat written = rtf::formatOf(rtf::styleOf(format, m_document.defaultFont()));
        RichRun* last = paragraph.runs.empty() ? nullptr : &paragraph.runs.back();
        if (last && last->picture.isEmpty() && last->format == written)
            last->text += text;
        else
            paragraph.runs.push_back({text, written, {}, {}});
    }

    RichRun readPicture(const QTextImageFormat& format)
    {
        RichRun run;
        const QImage picture = m_document.resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
        run.picture = format.stringProperty(rtf::pictureNameProperty);
        if (run.picture.isEmpty())
            run.picture = nameFromContents(picture);
        if (!picture.isNull())
            m_parts.pictures[run.picture] = picture;
        if (format.width() > 0 && format.height() > 0)
            run.pictureSize = QSizeF(format.width(), format.height());
        if (format.isAnchor()) {
            run.format.setAnchor(true);
            run.format.setAnchorHref(format.anchorHref());
        }
        return run;
    }

    /// What a file can say of a paragraph, and only what was said of this one.
    static QTextBlockFormat readBlockFormat(const QTextBlock& block)
    {
        const QTextBlockFormat format = block.blockFormat();
        QTextBlockFormat result = rtf::writtenPartOf(format);
        const int steps = format.indent() + (block.textList() ? block.textList()->format().indent() : 0);
        if (steps > 0)
            result.setLeftMargin(result.leftMargin() + steps * indentStep);
        return result;
    }

    RichTable readTable(const QTextTable& table)
    {
        RichTable result;
        for (int row = 0; row < table.rows(); ++row) {
            std::vector<RichCell> cells;
            for (int column = 0; column < table.columns(); ++column) {
                const QTextTableCell cell = table.cellAt(row, column);
                if (!onlyFillsRow(cell))
                    cells.push_back(readCell(table, cell, row, column));
            }
            result.rows.push_back(std::move(cells));
        }
        return result;
    }

    static bool onlyFillsRow(const QTextTableCell& cell)
    {
        return cell.format().boolProperty(rtf::cellFillsRowProperty) && cell.firstPosition() == cell.lastPosition();
    }

    RichCell readCell(const QTextTable& table, const QTextTableCell& cell, int row, int column)
    {
        RichCell result;
        const QTextCharFormat format = cell.format();
        const bool fromFile = format.hasProperty(rtf::cellEdgeProperty);
        result.rightEdge = fromFile ? format.doubleProperty(rtf::cellEdgeProperty) : edgeOf(table, column);
        result.bordered = fromFile ? format.boolProperty(rtf::cellBorderProperty) : table.format().border() > 0;
        // A cell that reaches over several places has its text in the first.
        if (cell.row() == row && cell.column() == column)
            result.paragraphs = paragraphsIn(cell.begin());
        return result;
    }

    /// The widths the table asks for, or equal ones.
    static qreal edgeOf(const QTextTable& table, int column)
    {
        const QList<QTextLength> widths = table.format().columnWidthConstraints();
        const bool fixed = widths.size() == table.columns()
            && std::all_of(widths.begin(), widths.end(), [](const QTextLength& width) { return width.type() == QTextLength::FixedLength; });
        if (!fixed)
            return rtf::unitsFromTwips(usualTableWidth * (column + 1) / table.columns());
        qreal edge = 0;
        for (int i = 0; i <= column; ++i)
            edge += widths[i].rawValue();
        return edge;
    }

    const QTextDocument& m_document;
    DocumentParts m_parts;
};

} // namespace

QString nameFromContents(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().left(lettersOfAHash);
    return "Picture " + QString::fromLatin1(hash) + ".png";
}

DocumentParts takeApart(const QTextDocument& document)
{
    return DocumentReader(document).read();
}
