#include "documents/rtf/RtfBuilder.h"

#include "documents/FrameMarks.h"
#include "documents/rtf/RtfCodePage.h"

#include <QTextOption>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::size_t deepestGroup = 512;
/// What is beyond goes into the last one: a table has as many columns in every row as its widest.
constexpr std::size_t mostCellsInARow = 64;
constexpr qsizetype mostCharacters = 8'000'000;
constexpr unsigned char pictureByte = 0xac;
constexpr std::u16string_view paragraphEnds = u"\n\r\u2029";

/// What these hold is no part of the text.
constexpr std::array<std::string_view, 14> skippedDestinations {"stylesheet", "info", "pict", "listtable", "listoverridetable", "generator",
    "header", "footer", "footnote", "filetbl", "revtbl", "object", "themedata", "colorschememapping"};
/// And these the person would miss.
constexpr std::array<std::string_view, 6> missedDestinations {"pict", "listtable", "header", "footer", "footnote", "object"};

template <std::size_t N>
bool isAmong(const std::array<std::string_view, N>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Text as a document can hold it.
QString fitForDocument(QString text)
{
    for (QChar& character : text) {
        if (character == frameStart || character == frameEnd)
            character = QChar::ReplacementCharacter;
    }
    return text;
}

/// The address in a field's instruction: HYPERLINK "address".
QString linkIn(std::string_view instruction)
{
    const std::size_t word = instruction.find("HYPERLINK");
    const std::size_t open = word == std::string_view::npos ? word : instruction.find('"', word);
    const std::size_t close = open == std::string_view::npos ? open : instruction.find('"', open + 1);
    if (close == std::string_view::npos)
        return {};
    return QString::fromUtf8(instruction.data() + open + 1, static_cast<qsizetype>(close - open - 1));
}

} // namespace

bool RtfBuilder::passesOver(std::string_view destination)
{
    return isAmong(skippedDestinations, destination);
}

RichText RtfBuilder::build(std::string_view bytes)
{
    RtfTokenizer tokenizer(bytes);
    for (RtfToken token = tokenizer.next(); token.kind != RtfToken::Kind::end; token = tokenizer.next()) {
        switch (token.kind) {
        case RtfToken::Kind::groupOpen: openGroup(); break;
        case RtfToken::Kind::groupClose: closeGroup(); break;
        case RtfToken::Kind::hex: takeBytes({reinterpret_cast<const char*>(&token.byte), 1}); break;
        case RtfToken::Kind::text: takeBytes(token.text); break;
        case RtfToken::Kind::symbol: symbol(token.text.front()); break;
        default:
            if (token.text == "bin" && token.parameter > 0)
                tokenizer.skip(static_cast<std::size_t>(token.parameter));
            else
                word(token);
        }
    }
    settleText();
    closeTable();
    m_text.blocks.emplace_back(finishedParagraph());
    return std::move(m_text);
}

void RtfBuilder::openGroup()
{
    settleText();
    m_skipAfterUnicode = 0;
    if (m_stack.size() < deepestGroup)
        m_stack.push_back(m_state);
    else
        ++m_tooDeep;
    m_leavesOut = m_leavesOut || m_tooDeep > 0;
}

void RtfBuilder::closeGroup()
{
    settleText();
    m_skipAfterUnicode = 0;
    if (m_tooDeep > 0) {
        --m_tooDeep;
        return;
    }
    if (m_stack.empty())
        return;
    const Destination ended = m_state.destination;
    m_state = m_stack.back();
    m_stack.pop_back();
    if (ended == Destination::fieldInstruction && m_state.destination != ended)
        m_link = linkIn(m_instruction);
    if (ended == Destination::picture && m_state.destination != ended)
        endPicture();
}

int RtfBuilder::codePage() const
{
    const auto charset = m_charsets.find(m_state.font);
    const int ofFont = charset == m_charsets.end() ? 0 : rtf::codePageOfCharset(charset->second);
    return ofFont ? ofFont : m_ansiCodePage;
}

void RtfBuilder::takeBytes(std::string_view bytes)
{
    while (m_skipAfterUnicode > 0 && !bytes.empty()) {
        bytes.remove_prefix(1);
        --m_skipAfterUnicode;
    }
    if (m_swallowPictureByte && !bytes.empty()) {
        m_swallowPictureByte = false;
        if (static_cast<unsigned char>(bytes.front()) == pictureByte)
            bytes.remove_prefix(1);
    }
    switch (m_state.destination) {
    case Destination::body: m_bytes += bytes; break;
    case Destination::fonts: m_bytes += bytes; break;
    case Destination::colours: colourText(bytes); break;
    case Destination::fieldInstruction: m_instruction += bytes; break;
    case Destination::picture: m_bytes += bytes; break;
    case Destination::skipped: break;
    }
}

void RtfBuilder::flushBytes()
{
    if (!m_bytes.empty())
        takeText(rtf::decoded(std::exchange(m_bytes, {}), codePage()));
}

/// Half a letter whose other half did not come is a letter that cannot be shown.
void RtfBuilder::endSurrogate()
{
    if (std::exchange(m_highSurrogate, u'\0'))
        takeText(QString(QChar::ReplacementCharacter));
}

/// Before anything but text comes.
void RtfBuilder::settleText()
{
    flushBytes();
    endSurrogate();
}

void RtfBuilder::takeUnicode(int value)
{
    flushBytes();
    const QChar unit(static_cast<char16_t>(value < 0 ? value + 0x10000 : value));
    m_skipAfterUnicode = m_state.bytesAfterUnicode;
    if (unit.isHighSurrogate()) {
        endSurrogate();
        m_highSurrogate = unit.unicode();
        return;
    }
    if (!unit.isLowSurrogate())
        return takeText(QString(unit));
    const char16_t high = std::exchange(m_highSurrogate, u'\0');
    takeText(high ? QString(QChar(high)) + unit : QString(QChar::ReplacementCharacter));
}

void RtfBuilder::takeText(const QString& text)
{
    endSurrogate();
    switch (m_state.destination) {
    case Destination::body: appendParagraphs(text); break;
    case Destination::fonts: fontText(text); break;
    case Destination::picture: pictureText(text); break;
    case Destination::fieldInstruction: m_instruction += text.toStdString(); break;
    case Destination::colours:
    case Destination::skipped: break;
    }
}

/// Line ends that were written as letters end paragraphs all the same.
void RtfBuilder::appendParagraphs(const QString& text)
{
    const std::u16string_view letters(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
    std::size_t start = 0;
    for (std::size_t end = letters.find_first_of(paragraphEnds); end != letters.npos; end = letters.find_first_of(paragraphEnds, start)) {
        appendText(text.mid(static_cast<qsizetype>(start), static_cast<qsizetype>(end - start)));
        endParagraph();
        start = end + (letters.substr(end).starts_with(u"\r\n") ? 2 : 1);
    }
    appendText(text.mid(static_cast<qsizetype>(start)));
}

void RtfBuilder::appendText(const QString& text)
{
    if (text.isEmpty())
        return;
    m_leavesOut = m_leavesOut || m_characters > mostCharacters;
    if (m_characters > mostCharacters)
        return;
    if (!m_inTable)
        closeTable();
    m_characters += text.size();
    QTextCharFormat format = characterFormat();
    if (!m_paragraph.runs.empty() && m_paragraph.runs.back().picture.isEmpty() && m_paragraph.runs.back().format == format)
        m_paragraph.runs.back().text += fitForDocument(text);
    else
        m_paragraph.runs.push_back({fitForDocument(text), std::move(format), {}, {}});
}

void RtfBuilder::symbol(char character)
{
    switch (character) {
    case '\n':
    case '\r':
        settleText();
        endParagraph();
        break;
    case '~':
        flushBytes();
        takeText(QString(QChar::Nbsp));
        break;
    case '_':
        flushBytes();
        takeText(QString(QChar(0x2011)));
        break;
    case '*':
        settleText();
        m_state.destination = m_state.destination == Destination::body ? Destination::skipped : m_state.destination;
        break;
    case '\\':
    case '{':
    case '}': takeBytes({&character, 1}); break;
    default: break;
    }
}

void RtfBuilder::word(const RtfToken& token)
{
    const std::string_view name = token.text;
    const int value = token.parameter;
    if (name == "u")
        return takeUnicode(value);
    if (name == "uc") {
        m_state.bytesAfterUnicode = std::clamp(value, 0, 16);
        return;
    }
    if (m_state.destination == Destination::picture) {
        settleText();
        m_pictureNameDone = true;
        if (name == "width")
            m_pictureSize.setWidth(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestPicture)));
        else if (name == "height")
            m_pictureSize.setHeight(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestPicture)));
        return;
    }
    if (m_state.destination == Destination::colours) {
        m_colourGiven = true;
        int& part = name == "red" ? m_red : name == "green" ? m_green : m_blue;
        part = std::clamp(value, 0, 255);
        return;
    }
    settleText();
    if (m_state.destination == Destination::fonts) {
        if (name == "f")
            m_fontBeingRead = value;
        else if (name == "fcharset")
            m_charsets[m_fontBeingRead] = value;
        return;
    }
    if (destinationWord(name) || m_state.destination != Destination::body)
        return;
    const bool off = token.hasParameter && value == 0;
    if (!specialWord(name) && !characterWord(name, value, off) && !paragraphWord(name, value) && !tableWord(name, value))
        pageWord(name, value);
}

bool RtfBuilder::destinationWord(std::string_view name)
{
    if (name == "fldinst") {
        m_state.destination = Destination::fieldInstruction;
        m_instruction.clear();
    } else if (name == "fldrslt") {
        m_state.link = m_link;
    } else if (name == "fonttbl") {
        m_state.destination = Destination::fonts;
    } else if (name == "colortbl") {
        m_state.destination = Destination::colours;
    } else if (name == "NeXTGraphic") {
        m_state.destination = Destination::picture;
        m_pictureName.clear();
        m_pictureNameDone = false;
        m_pictureSize = {};
    } else if (passesOver(name)) {
        m_state.destination = Destination::skipped;
        m_leavesOut = m_leavesOut || isAmong(missedDestinations, name);
    } else {
        return false;
    }
    return true;
}

bool RtfBuilder::specialWord(std::string_view name)
{
    if (name == "par" || name == "sect")
        endParagraph();
    else if (name == "page")
        m_pageBreak = true;
    else if (name == "tab")
        appendText("\t");
    else if (name == "line")
        appendText(QString(QChar::LineSeparator));
    else if (name == "emdash" || name == "endash")
        appendText(QString(QChar(name == "emdash" ? 0x2014 : 0x2013)));
    else if (name == "lquote" || name == "rquote")
        appendText(QString(QChar(name == "lquote" ? 0x2018 : 0x2019)));
    else if (name == "ldblquote" || name == "rdblquote")
        appendText(QString(QChar(name == "ldblquote" ? 0x201c : 0x201d)));
    else if (name == "bullet")
        appendText(QString(QChar(0x2022)));
    else
        return false;
    return true;
}

bool RtfBuilder::characterWord(std::string_view name, int value, bool off)
{
    if (name == "f")
        m_state.font = value;
    else if (name == "fs")
        m_state.size = std::clamp(value / 2.0, 1.0, 400.0);
    else if (name == "b")
        m_state.bold = !off;
    else if (name == "i")
        m_state.italic = !off;
    else if (name == "ul" || name == "uld" || name == "uldb")
        m_state.underline = !off;
    else if (name == "ulnone")
        m_state.underline = false;
    else if (name == "strike")
        m_state.strike = !off;
    else if (name == "cf")
        m_state.colour = value;
    else if (name == "cb" || name == "highlight")
        m_state.background = value;
    else if (name == "super")
        m_state.vertical = off ? 0 : 1;
    else if (name == "sub")
        m_state.vertical = off ? 0 : -1;
    else if (name == "nosupersub")
        m_state.vertical = 0;
    else if (name == "plain")
        makePlain();
    else
        return false;
    return true;
}

void RtfBuilder::makePlain()
{
    State plain;
    plain.destination = m_state.destination;
    plain.font = m_state.font;
    plain.bytesAfterUnicode = m_state.bytesAfterUnicode;
    plain.link = m_state.link;
    m_state = plain;
}

bool RtfBuilder::paragraphWord(std::string_view name, int value)
{
    if (name == "pard") {
        m_format = {};
        m_tabs.clear();
        m_nextTab = QTextOption::LeftTab;
        m_inTable = false;
    } else if (name == "ql")
        m_format.setAlignment(Qt::AlignLeft);
    else if (name == "qr")
        m_format.setAlignment(Qt::AlignRight);
    else if (name == "qc")
        m_format.setAlignment(Qt::AlignHCenter);
    else if (name == "qj")
        m_format.setAlignment(Qt::AlignJustify);
    else if (name == "li")
        m_format.setLeftMargin(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestIndent)));
    else if (name == "ri")
        m_format.setRightMargin(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestIndent)));
    else if (name == "fi")
        m_format.setTextIndent(rtf::unitsFromTwips(std::clamp(value, -rtf::largestIndent, rtf::largestIndent)));
    else if (name == "sb")
        m_format.setTopMargin(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestIndent)));
    else if (name == "sa")
        m_format.setBottomMargin(rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestIndent)));
    else if (name == "tqr")
        m_nextTab = QTextOption::RightTab;
    else if (name == "tqc")
        m_nextTab = QTextOption::CenterTab;
    else if (name == "tx") {
        const qreal place = rtf::unitsFromTwips(std::clamp(value, 0, rtf::largestTab));
        m_tabs.append(QTextOption::Tab(place, std::exchange(m_nextTab, QTextOption::LeftTab)));
        m_format.setTabPositions(m_tabs);
    } else
        return false;
    return true;
}

bool RtfBuilder::tableWord(std::string_view name, int value)
{
    if (name == "intbl")
        m_inTable = true;
    else if (name == "trowd") {
        m_cellShapes.clear();
        m_nextCellBordered = false;
        m_nextCellWidth = 0;
    } else if (name == "clwWidth")
        m_nextCellWidth = std::clamp(value, 0, rtf::widestTable);
    else if (name == "brdrs")
        m_nextCellBordered = true;
    else if (name == "cellx") {
        const int left = m_cellShapes.empty() ? 0 : rtf::twipsFromUnits(m_cellShapes.back().rightEdge);
        const int width = std::exchange(m_nextCellWidth, 0);
        RichCell shape;
        shape.rightEdge = rtf::unitsFromTwips(std::clamp(width > 0 ? left + width : value, 0, rtf::widestTable));
        shape.bordered = std::exchange(m_nextCellBordered, false);
        m_cellShapes.push_back(shape);
    } else if (name == "cell")
        endCell();
    else if (name == "row")
        endRow();
    else
        return false;
    return true;
}

bool RtfBuilder::pageWord(std::string_view name, int value)
{
    const qreal points = rtf::pointsFromTwips(std::clamp(value, 0, rtf::largestPaper));
    if (name == "mac")
        m_ansiCodePage = rtf::macRoman;
    else if (name == "ansicpg" && value > 0)
        m_ansiCodePage = value;
    else if (name == "paperw")
        m_text.paper.setWidth(points);
    else if (name == "paperh")
        m_text.paper.setHeight(points);
    else if (name == "margl")
        m_text.margins.setLeft(points);
    else if (name == "margr")
        m_text.margins.setRight(points);
    else if (name == "margt")
        m_text.margins.setTop(points);
    else if (name == "margb")
        m_text.margins.setBottom(points);
    else
        return false;
    m_text.hasMargins = m_text.hasMargins || name.starts_with("marg");
    return true;
}

void RtfBuilder::endParagraph()
{
    if (m_state.destination != Destination::body)
        return;
    if (!m_inTable)
        closeTable();
    if (m_inTable)
        m_cell.push_back(finishedParagraph());
    else
        m_text.blocks.emplace_back(finishedParagraph());
}

RichParagraph RtfBuilder::finishedParagraph()
{
    m_paragraph.format = rtf::writtenPartOf(m_format);
    if (std::exchange(m_pageBreak, false))
        m_paragraph.format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    return std::exchange(m_paragraph, {});
}

void RtfBuilder::endCell()
{
    m_cell.push_back(finishedParagraph());
    if (m_row.size() == mostCellsInARow) {
        std::vector<RichParagraph>& last = m_row.back().paragraphs;
        std::move(m_cell.begin(), m_cell.end(), std::back_inserter(last));
        m_cell.clear();
        return;
    }
    RichCell cell = m_row.size() < m_cellShapes.size() ? m_cellShapes[m_row.size()] : RichCell {};
    cell.paragraphs = std::exchange(m_cell, {});
    m_row.push_back(std::move(cell));
}

void RtfBuilder::endRow()
{
    if (!m_row.empty())
        m_table.rows.push_back(std::exchange(m_row, {}));
    m_inTable = false;
}

void RtfBuilder::closeTable()
{
    if (!m_cell.empty())
        endCell();
    if (!m_row.empty())
        endRow();
    if (m_table.rows.empty())
        return;
    // With nothing in between it is the same table.
    if (RichTable* last = m_text.blocks.empty() ? nullptr : std::get_if<RichTable>(&m_text.blocks.back()))
        std::move(m_table.rows.begin(), m_table.rows.end(), std::back_inserter(last->rows));
    else
        m_text.blocks.emplace_back(std::move(m_table));
    m_table = {};
}

void RtfBuilder::endPicture()
{
    m_swallowPictureByte = true;
    const QString name = m_pictureName.trimmed();
    if (name.isEmpty() || m_state.destination != Destination::body)
        return;
    if (!m_inTable)
        closeTable();
    const QSizeF size = m_pictureSize.isEmpty() ? QSizeF() : m_pictureSize;
    m_paragraph.runs.push_back({QString(), linkFormat(), name, size});
}

void RtfBuilder::pictureText(const QString& text)
{
    if (!m_pictureNameDone)
        m_pictureName += text;
}

void RtfBuilder::fontText(const QString& text)
{
    for (const QChar character : text) {
        if (character != ';') {
            m_fontName += character;
            continue;
        }
        m_fonts[m_fontBeingRead] = std::exchange(m_fontName, {}).trimmed();
    }
}

void RtfBuilder::colourText(std::string_view bytes)
{
    for (const char character : bytes) {
        if (character != ';')
            continue;
        m_colours.push_back(m_colourGiven ? QColor(m_red, m_green, m_blue) : QColor());
        m_red = m_green = m_blue = 0;
        m_colourGiven = false;
    }
}

QColor RtfBuilder::colourAt(int index) const
{
    const auto place = static_cast<std::size_t>(std::max(index, 0));
    return place < m_colours.size() ? m_colours[place] : QColor();
}

QTextCharFormat RtfBuilder::characterFormat() const
{
    const auto font = m_fonts.find(m_state.font);
    rtf::CharacterStyle style;
    style.font = font == m_fonts.end() || font->second.isEmpty() ? QString("Helvetica") : font->second;
    style.size = m_state.size;
    style.bold = m_state.bold || rtf::isBoldByName(style.font);
    style.italic = m_state.italic || rtf::isItalicByName(style.font);
    style.underline = m_state.underline;
    style.strike = m_state.strike;
    style.vertical = m_state.vertical;
    style.colour = colourAt(m_state.colour);
    style.background = colourAt(m_state.background);
    style.link = m_state.link;
    return rtf::formatOf(style);
}

/// A picture has no other format.
QTextCharFormat RtfBuilder::linkFormat() const
{
    QTextCharFormat format;
    if (m_state.link.isEmpty())
        return format;
    format.setAnchor(true);
    format.setAnchorHref(m_state.link);
    return format;
}
