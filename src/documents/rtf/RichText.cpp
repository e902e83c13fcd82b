#include "documents/rtf/RichText.h"

#include "documents/rtf/RtfFormat.h"

#include <QFileInfo>
#include <QImageReader>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QUrl>

namespace {

constexpr qint64 largestPictureFile = 32 * 1024 * 1024;
constexpr qint64 mostPicturePixels = 40'000'000;
/// The unit separator.
constexpr QChar cellEnd(0x1f);

class SealedDocument : public QTextDocument {
protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

/// The picture, by its base name only; nothing when it is missing, no picture, or too large.
QImage readPicture(const QString& folder, const QString& name)
{
    const QFileInfo file(folder + '/' + pictureFileName(name));
    if (!file.isFile() || file.isSymLink() || file.size() > largestPictureFile)
        return {};
    QImageReader reader(file.filePath());
    const QSize size = reader.size();
    if (size.isValid() && static_cast<qint64>(size.width()) * size.height() > mostPicturePixels)
        return {};
    return reader.read();
}

class DocumentWriter {
public:
    DocumentWriter(QTextDocument& document, QString folder) : m_document(document), m_cursor(&document), m_folder(std::move(folder)) { }

    void write(const RichText& text)
    {
        m_cursor.beginEditBlock();
        keepPage(text);
        for (std::size_t i = 0; i < text.blocks.size(); ++i) {
            if (const auto* paragraph = std::get_if<RichParagraph>(&text.blocks[i])) {
                writeParagraph(*paragraph);
                continue;
            }
            const auto* before = i > 0 ? std::get_if<RichParagraph>(&text.blocks[i - 1]) : nullptr;
            const auto* after = i + 1 < text.blocks.size() ? std::get_if<RichParagraph>(&text.blocks[i + 1]) : nullptr;
            writeTable(std::get<RichTable>(text.blocks[i]), before ? before->format.bottomMargin() : 0, spaceBehind(after));
        }
        m_cursor.endEditBlock();
    }

private:
    void keepPage(const RichText& text)
    {
        QTextFrameFormat format = m_document.rootFrame()->frameFormat();
        format.setProperty(rtf::paperProperty, text.paper);
        if (text.hasMargins)
            format.setProperty(rtf::marginsProperty, QVariant::fromValue(text.margins));
        m_document.rootFrame()->setFrameFormat(format);
    }

    void writeParagraph(const RichParagraph& paragraph)
    {
        const QTextCharFormat first = paragraph.runs.empty() ? QTextCharFormat() : paragraph.runs.front().format;
        if (m_fresh)
            m_cursor.setBlockFormat(paragraph.format);
        else
            m_cursor.insertBlock(paragraph.format);
        m_cursor.setBlockCharFormat(first);
        m_fresh = false;
        for (const RichRun& run : paragraph.runs)
            writeRun(run);
    }

    void writeRun(const RichRun& run)
    {
        if (run.picture.isEmpty()) {
            m_cursor.insertText(run.text, run.format);
            return;
        }
        const QUrl address(QString("picture:%1").arg(m_pictures++));
        m_document.addResource(QTextDocument::ImageResource, address, readPicture(m_folder, run.picture));
        QTextImageFormat format;
        format.merge(run.format);
        format.setName(address.toString());
        format.setProperty(rtf::pictureNameProperty, run.picture);
        if (!run.pictureSize.isEmpty()) {
            format.setWidth(run.pictureSize.width());
            format.setHeight(run.pictureSize.height());
        }
        m_cursor.insertImage(format);
    }

    /// The layout passes over the spacing of a paragraph that touches a table, and over an empty paragraph behind one as a whole.
    static qreal spaceBehind(const RichParagraph* paragraph)
    {
        constexpr qreal emptyLine = 18;
        return !paragraph ? 0 : paragraph->format.topMargin() + (paragraph->runs.empty() ? emptyLine : 0);
    }

    static QTextTableFormat tableFormat(const RichTable& table, qreal above, qreal below)
    {
        QTextTableFormat format;
        format.setTopMargin(above);
        format.setBottomMargin(below);
        const std::vector<RichCell>& cells = table.rows.front();
        const bool bordered = !cells.empty() && cells.front().bordered;
        format.setBorder(bordered ? 1 : 0);
        format.setBorderStyle(bordered ? QTextFrameFormat::BorderStyle_Solid : QTextFrameFormat::BorderStyle_None);
        format.setBorderCollapse(true);
        format.setCellPadding(4);
        format.setCellSpacing(0);
        QList<QTextLength> widths;
        qreal left = 0;
        for (const RichCell& cell : cells) {
            if (cell.rightEdge > left)
                widths.append(QTextLength(QTextLength::FixedLength, cell.rightEdge - left));
            left = cell.rightEdge;
        }
        if (widths.size() == static_cast<qsizetype>(cells.size()))
            format.setColumnWidthConstraints(widths);
        return format;
    }

    /// above, below: the space the paragraphs around the table ask for.
    void writeTable(const RichTable& table, qreal above, qreal below)
    {
        std::size_t columns = 1;
        for (const auto& row : table.rows)
            columns = std::max(columns, row.size());
        // A document starts with a paragraph, and one stands before every table; an unused one is taken as the place for it.
        if (m_fresh) {
            QTextBlockFormat place;
            place.setProperty(rtf::placeForTableProperty, true);
            m_cursor.setBlockFormat(place);
        }
        QTextTable* made =
            m_cursor.insertTable(static_cast<int>(table.rows.size()), static_cast<int>(columns), tableFormat(table, above, below));
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            for (std::size_t column = 0; column < columns; ++column) {
                const RichCell* cell = column < table.rows[row].size() ? &table.rows[row][column] : nullptr;
                writeCell(*made, static_cast<int>(row), static_cast<int>(column), cell);
            }
        }
        m_cursor = made->lastCursorPosition();
        m_cursor.movePosition(QTextCursor::NextBlock);
        m_fresh = true;
    }

    /// cell: none where the row ends sooner than others.
    void writeCell(const QTextTable& table, int row, int column, const RichCell* cell)
    {
        m_cursor = table.cellAt(row, column).firstCursorPosition();
        m_fresh = true;
        for (const RichParagraph& paragraph : cell ? cell->paragraphs : std::vector<RichParagraph>())
            writeParagraph(paragraph);
        // The cell shares its format with its first paragraph's end, so this comes last.
        QTextTableCell place = table.cellAt(row, column);
        QTextCharFormat format = place.format();
        if (cell) {
            format.setProperty(rtf::cellEdgeProperty, cell->rightEdge);
            format.setProperty(rtf::cellBorderProperty, cell->bordered);
        } else
            format.setProperty(rtf::cellFillsRowProperty, true);
        place.setFormat(format);
    }

    QTextDocument& m_document;
    QTextCursor m_cursor;
    QString m_folder;
    int m_pictures = 0;
    /// The cursor stands in a paragraph that nothing was written into yet.
    bool m_fresh = true;
};

void appendFrameText(const QTextFrame& frame, QStringList& lines);

QString cellText(const QTextTableCell& cell)
{
    QStringList lines;
    for (auto it = cell.begin(); it != cell.end(); ++it) {
        if (it.currentFrame())
            appendFrameText(*it.currentFrame(), lines);
        else
            lines += it.currentBlock().text();
    }
    return lines.join('\n');
}

void appendFrameText(const QTextFrame& frame, QStringList& lines)
{
    if (const auto* table = qobject_cast<const QTextTable*>(&frame)) {
        for (int row = 0; row < table->rows(); ++row) {
            QString line;
            for (int column = 0; column < table->columns(); ++column)
                line += cellText(table->cellAt(row, column)) + cellEnd;
            lines += line;
        }
        return;
    }
    for (auto it = frame.begin(); it != frame.end(); ++it) {
        if (it.currentFrame())
            appendFrameText(*it.currentFrame(), lines);
        else
            lines += it.currentBlock().text();
    }
}

} // namespace

std::unique_ptr<QTextDocument> makeSealedDocument()
{
    return std::make_unique<SealedDocument>();
}

std::unique_ptr<QTextDocument> makeDocument(const RichText& text, const QString& pictureFolder)
{
    std::unique_ptr<QTextDocument> document = makeSealedDocument();
    document->setUndoRedoEnabled(false);
    DocumentWriter(*document, pictureFolder).write(text);
    document->setUndoRedoEnabled(true);
    return document;
}

QString pictureFileName(const QString& name)
{
    return QFileInfo(name).fileName();
}

QString plainTextOf(const QTextDocument& document)
{
    QStringList lines;
    appendFrameText(*document.rootFrame(), lines);
    return lines.join('\n');
}

std::unique_ptr<QTextDocument> copyOf(const QTextDocument& document)
{
    std::unique_ptr<QTextDocument> copy = makeSealedDocument();
    copy->setDefaultFont(document.defaultFont());
    QTextCursor(copy.get()).insertFragment(QTextDocumentFragment(&document));
    copy->rootFrame()->setFrameFormat(document.rootFrame()->frameFormat());
    for (QTextBlock block = copy->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (!it.fragment().charFormat().isImageFormat())
                continue;
            const QUrl address(it.fragment().charFormat().toImageFormat().name());
            copy->addResource(QTextDocument::ImageResource, address, document.resource(QTextDocument::ImageResource, address));
        }
    }
    return copy;
}
