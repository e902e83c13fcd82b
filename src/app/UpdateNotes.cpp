#include "app/UpdateNotes.h"

#include "desktop/TextTable.h"
#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfBuilder.h"
#include "foundation/Text.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

constexpr std::string_view rtfBeginning = "{\\rtf";

QString decodedPage(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder = QStringDecoder::decoderForHtml(view);
    return decoder.isValid() ? QString(decoder(view)) : toQString(bytes);
}

/// Elements in each other beyond this are left out: the layout takes a time that grows with the square of them.
constexpr std::size_t deepestElement = 16;

bool isParagraph(const QString& name)
{
    static const QSet<QString> names {"p", "div", "tr", "ul", "ol", "blockquote", "section", "pre"};
    return names.contains(name);
}

bool isOfWords(const QString& name)
{
    static const QSet<QString> names {"b", "strong", "i", "em", "u", "s", "code", "tt", "a", "h1", "h2", "h3", "h4", "h5", "h6"};
    return names.contains(name);
}

QString linkTarget(const QString& tag)
{
    static const QRegularExpression target(
        "\\bhref\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s>\"']+))", QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch found = target.match(tag);
    return found.captured(1) + found.captured(2) + found.captured(3);
}

/// A web page with nothing but paragraphs, headings, emphasis and links: no tables, pictures, scripts or styles, and nothing deep.
class PageFlattener {
public:
    QString flat(const QString& page)
    {
        static const QRegularExpression tags("<(/?)([a-z][a-z0-9]*)\\b[^>]*(?:>|$)", QRegularExpression::CaseInsensitiveOption);
        qsizetype at = 0;
        for (auto tag = tags.globalMatch(page); tag.hasNext();) {
            const QRegularExpressionMatch found = tag.next();
            addWords(page.mid(at, found.capturedStart() - at));
            at = found.capturedEnd();
            addElement(found.captured(2).toLower(), found.capturedLength(1) > 0, found.captured());
        }
        addWords(page.mid(at));
        return m_flat;
    }

private:
    void addWords(QString words) { m_flat += words.replace('<', "&lt;"); }

    void addElement(const QString& name, bool closes, const QString& tag)
    {
        if (isParagraph(name))
            m_flat += closes ? "</p>" : "<p>";
        else if (name == u"li")
            m_flat += closes ? "</p>" : "<p>• ";
        else if (name == u"br" || name == u"hr")
            m_flat += "<br>";
        else if (isOfWords(name) && !closes)
            open(name, tag);
        else if (isOfWords(name))
            close(name);
    }

    void open(const QString& name, const QString& tag)
    {
        if (m_open.size() >= deepestElement)
            return;
        m_open.push_back(name);
        m_flat += name == u"a" ? "<a href=\"" + linkTarget(tag).toHtmlEscaped() + "\">" : '<' + name + '>';
    }

    void close(const QString& name)
    {
        const auto found = std::find(m_open.rbegin(), m_open.rend(), name);
        if (found == m_open.rend())
            return;
        m_open.erase(std::next(found).base());
        m_flat += "</" + name + '>';
    }

    QString m_flat;
    std::vector<QString> m_open;
};

QString simplePage(QString page)
{
    static const QRegularExpression silent("<(style|script|title)\\b.*?(?:</\\1\\s*>|$)|<!--.*?(?:-->|$)|<[!?][^>]*(?:>|$)",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return PageFlattener().flat(page.remove(silent));
}

RichText withoutPictures(RichText text)
{
    forEachParagraph(
        text, [](RichParagraph& paragraph) { std::erase_if(paragraph.runs, [](const RichRun& run) { return !run.picture.isEmpty(); }); });
    return text;
}

std::unique_ptr<QTextDocument> documentOf(std::string_view bytes)
{
    if (bytes.substr(0, rtfBeginning.size()) == rtfBeginning)
        return makeDocument(withoutPictures(RtfBuilder().build(bytes)), {});
    std::unique_ptr<QTextDocument> document = makeSealedDocument();
    const QString page = decodedPage(bytes);
    if (Qt::mightBeRichText(page))
        document->setHtml(simplePage(page));
    else
        document->setPlainText(page);
    return document;
}

/// The look's own colours and font count; what is bold or larger stays so.
QTextCharFormat plainerFormat(QTextCharFormat format)
{
    for (const int property : {static_cast<int>(QTextFormat::ForegroundBrush), static_cast<int>(QTextFormat::BackgroundBrush),
             static_cast<int>(QTextFormat::FontFamilies), static_cast<int>(QTextFormat::OldFontFamily)})
        format.clearProperty(property);
    return format;
}

struct FormattedStretch {
    int position;
    int length;
    QTextCharFormat format;
};

void makePlainer(QTextDocument& document)
{
    std::vector<FormattedStretch> stretches;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece)
            stretches.push_back({piece.fragment().position(), piece.fragment().length(), plainerFormat(piece.fragment().charFormat())});
        QTextCursor paragraph(block);
        QTextBlockFormat format = block.blockFormat();
        format.clearBackground();
        paragraph.setBlockFormat(format);
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const FormattedStretch& stretch : stretches) {
        cursor.setPosition(stretch.position);
        cursor.setPosition(stretch.position + stretch.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(stretch.format);
    }
    cursor.endEditBlock();
}

} // namespace

Result<std::unique_ptr<QTextDocument>> readUpdateNotes(std::string_view bytes)
{
    std::unique_ptr<QTextDocument> document = documentOf(bytes);
    if (document->toPlainText().trimmed().isEmpty())
        return Error {localText("There is no text in it.").toStdString()};
    document->setUndoRedoEnabled(false);
    makePlainer(*document);
    return document;
}
