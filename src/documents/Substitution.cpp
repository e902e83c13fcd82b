#include "documents/Substitution.h"

#include "documents/FrameMarks.h"
#include "foundation/Log.h"
#include "storage/TableExport.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// Of these an empty value takes its line, or the blank behind it, away. Two are spelled "contact:2…" as templates have them, so
/// that the second contact's address lines stay.
constexpr std::array<std::string_view, 29> lineRemovingTags {"<contactadd2>", "<contactadd3>", "<contactcounty>", "<contact2add2>",
    "<contact2add3>", "<contact2county>", "<contactcompany>", "<contact2company>", "<contactjobtitle>", "<contact2jobtitle>",
    "<contacttitle>", "<contact2title>", "<contact:add2>", "<contact:add3>", "<contact:county>", "<contact:2add2>", "<contact:2add3>",
    "<contact2:county>", "<contact:company>", "<contact2:company>", "<contact:jobtitle>", "<contact2:jobtitle>", "<contact:title>",
    "<contact2:title>", "<contactsalutation>", "<contact2salutation>", "<contact:salutation>", "<contact2:salutation>",
    "<discountdescription>"};

/// A document that grows beyond this is no letter any more.
constexpr int largestDocument = 32 * 1024 * 1024;

/// Elements that format words and nothing else.
constexpr std::array<std::string_view, 14> wordElements {
    "a", "b", "big", "br", "code", "del", "em", "font", "i", "small", "span", "strong", "sub", "u"};

bool isLineRemoving(const QString& tag)
{
    return std::any_of(lineRemovingTags.begin(), lineRemovingTags.end(),
        [&](std::string_view known) { return tag == QLatin1String(known.data(), static_cast<qsizetype>(known.size())); });
}

QTextCursor findLiterally(const QTextDocument& document, const QString& tag, int from)
{
    return document.find(tag, from, QTextDocument::FindCaseSensitively);
}

QTextCharFormat formatAt(const QTextDocument& document, int position)
{
    QTextCursor cursor(document.findBlock(position));
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

bool opensWordElement(std::string_view afterBracket)
{
    if (!afterBracket.empty() && afterBracket.front() == '/')
        afterBracket.remove_prefix(1);
    std::size_t length = 0;
    while (length < afterBracket.size() && std::isalpha(static_cast<unsigned char>(afterBracket[length])))
        ++length;
    std::string name(afterBracket.substr(0, length));
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return std::find(wordElements.begin(), wordElements.end(), name) != wordElements.end();
}

void repeatHeads(QTextDocument& document, int from, int to)
{
    for (QTextBlock block = document.findBlock(from); block.isValid() && block.position() <= to; block = block.next()) {
        QTextTable* table = QTextCursor(block).currentTable();
        if (!table || table->firstPosition() < from)
            continue;
        QTextTableFormat format = table->format();
        format.setHeaderRowCount(1);
        table->setFormat(format);
        return;
    }
}

} // namespace

std::string defusedCellText(std::string text)
{
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        if (!opensWordElement(std::string_view(text).substr(at + 1)))
            text.replace(at, 1, "&lt;");
    }
    return text;
}

void Substitution::replaceAllOccurencesOf(const std::optional<QString>& find, const std::optional<QString>& with)
{
    if (!find) {
        logLine("replaceAllOccurencesOf: passed nil as find string");
        return;
    }
    if (!with)
        logFormat("replaceAllOccurencesOf: passed nil as replace string for %s", find->toStdString().c_str());
    const QString value = with.value_or(QString());
    if (value.isEmpty() && isLineRemoving(*find)) {
        removeWithFollowing(*find, QChar::ParagraphSeparator);
        removeWithFollowing(*find, u' ');
    }
    replaceEvery(*find, value);
}

void Substitution::removeWithFollowing(const QString& tag, QChar following)
{
    for (QTextCursor found = findLiterally(m_document, tag, 0); !found.isNull();) {
        const int start = found.selectionStart();
        const int end = found.selectionEnd();
        const std::optional<int> from = startOfRemoval(start, end, following);
        if (!from) {
            found = findLiterally(m_document, tag, end);
            continue;
        }
        found.setPosition(*from);
        found.setPosition(*from + static_cast<int>(tag.size()) + 1, QTextCursor::KeepAnchor);
        found.removeSelectedText();
        found = findLiterally(m_document, tag, std::max(0, start - static_cast<int>(tag.size())));
    }
}

/// Where the tag's letters and one more are taken away; nothing when the tag does not stand before what follows.
std::optional<int> Substitution::startOfRemoval(int start, int end, QChar following) const
{
    // The last paragraph has no end that could be taken away.
    if (end + 1 >= m_document.characterCount())
        return std::nullopt;
    if (m_document.characterAt(end) == following)
        return start;
    // Nor has the one before a table: a line that is nothing but the tag goes with the end of the line above.
    const bool isLine = start > 0 && m_document.characterAt(start - 1) == QChar::ParagraphSeparator;
    const bool isBeforeTable = following == QChar::ParagraphSeparator && m_document.characterAt(end) == frameStart;
    return isBeforeTable && isLine ? std::optional(start - 1) : std::nullopt;
}

void Substitution::replaceEvery(const QString& tag, const QString& value)
{
    const bool valueHoldsTag = value.contains(tag);
    for (QTextCursor found = findLiterally(m_document, tag, 0); !found.isNull();) {
        const int start = found.selectionStart();
        if (m_document.characterCount() + value.size() > largestDocument) {
            logFormat("the document grew too large at %s", tag.toStdString().c_str());
            return;
        }
        const QTextCharFormat format = formatAt(m_document, start);
        found.insertText(value, format);
        // What was joined by a replacement may be a tag again; a value that holds its own tag is not looked into.
        const int next = valueHoldsTag ? found.position() : std::max(0, start - static_cast<int>(tag.size()));
        found = findLiterally(m_document, tag, next);
    }
}

void Substitution::insertTable(const QString& tag, const qvDataSource& rows, const QString& style)
{
    QTextCursor found = findLiterally(m_document, tag, 0);
    if (found.isNull())
        return;
    const QString html = style + ' ' + QString::fromStdString(getDataAsHTML(rows, defusedCellText));
    const int start = found.selectionStart();
    const int behind = m_document.characterCount() - found.selectionEnd();
    found.insertFragment(QTextDocumentFragment::fromHtml(html, &m_document));
    repeatHeads(m_document, start, m_document.characterCount() - behind);
}
