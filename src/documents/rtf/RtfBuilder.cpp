#include "documents/rtf/RtfBuilder.h"

#include <QColor>
#include <QTextOption>

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::size_t deepestGroup = 512;
/// What is beyond goes into the last one: a table has as many columns in every row as its widest.
constexpr std::size_t mostCellsInARow = 64;
constexpr qsizetype mostCharacters = 8'000'000;
constexpr unsigned char pictureByte = 0xac;
constexpr int macRoman = 10000;
constexpr int utf8Page = 65001;

/// Twentieths of a point to the layout's unit, the 96th of an inch.
qreal fromTwips(int twips)
{
    return twips / 15.0;
}

qreal pointsFromTwips(int twips)
{
    return twips / 20.0;
}

constexpr std::array<std::string_view, 14> skippedDestinations {"stylesheet", "info", "pict", "listtable", "listoverridetable", "generator",
    "header", "footer", "footnote", "filetbl", "revtbl", "object", "themedata", "colorschememapping"};

int codePageOfCharset(int charset)
{
    switch (charset) {
    case 77: return macRoman;
    case 128: return 932;
    case 129: return 949;
    case 134: return 936;
    case 136: return 950;
    case 161: return 1253;
    case 162: return 1254;
    case 177: return 1255;
    case 178: return 1256;
    case 186: return 1257;
    case 204: return 1251;
    case 222: return 874;
    case 238: return 1250;
    default: return 0;
    }
}

QString decoded(std::string_view bytes, const std::string& page)
{
    icu::UnicodeString text(bytes.data(), static_cast<int32_t>(bytes.size()), page.c_str());
    if (text.isEmpty())
        text = icu::UnicodeString(bytes.data(), static_cast<int32_t>(bytes.size()), "windows-1252");
    return QString::fromUtf16(text.getBuffer(), text.length());
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
    flushBytes();
    closeTable();
    m_paragraph.format = m_format;
    m_text.blocks.emplace_back(std::move(m_paragraph));
    return std::move(m_text);
}

void RtfBuilder::openGroup()
{
    flushBytes();
    m_skipAfterUnicode = 0;
    if (m_stack.size() < deepestGroup)
        m_stack.push_back(m_state);
    else
        ++m_tooDeep;
}

void RtfBuilder::closeGroup()
{
    flushBytes();
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

std::string RtfBuilder::codePage() const
{
    const auto charset = m_charsets.find(m_state.font);
    const int ofFont = charset == m_charsets.end() ? 0 : codePageOfCharset(charset->second);
    const int page = ofFont ? ofFont : m_ansiCodePage;
    if (page == utf8Page)
        return "UTF-8";
    return page == macRoman ? "macintosh" : page >= 1250 && page <= 1258 ? "windows-" + std::to_string(page) : "cp" + std::to_string(page);
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
    if (m_bytes.empty())
        return;
    const QString text = decoded(std::exchange(m_bytes, {}), codePage());
    if (m_state.destination == Destination::fonts)
        fontText(text);
    else if (m_state.destination == Destination::picture)
        pictureText(text);
    else
        appendText(text);
}

void RtfBuilder::takeUnicode(int value)
{
    flushBytes();
    const auto unit = static_cast<char16_t>(value < 0 ? value + 0x10000 : value);
    m_skipAfterUnicode = m_state.bytesAfterUnicode;
    if (m_state.destination == Destination::picture)
        return pictureText(QString(QChar(unit)));
    if (m_state.destination != Destination::body)
        return;
    if (QChar::isHighSurrogate(unit)) {
        m_highSurrogate = unit;
        return;
    }
    if (QChar::isLowSurrogate(unit)) {
        appendText(m_highSurrogate ? QString(QChar(m_highSurrogate)) + QChar(unit) : QString(QChar::ReplacementCharacter));
        m_highSurrogate = 0;
        return;
    }
    appendText(QString(QChar(unit)));
}

void RtfBuilder::appendText(const QString& text)
{
    if (m_state.destination != Destination::body || text.isEmpty() || m_characters > mostCharacters)
        return;
    if (!m_inTable)
        closeTable();
    m_characters += text.size();
    QTextCharFormat format = characterFormat();
    if (!m_paragraph.runs.empty() && m_paragraph.runs.back().picture.isEmpty() && m_paragraph.runs.back().format == format)
        m_paragraph.runs.back().text += text;
    else
        m_paragraph.runs.push_back({text, std::move(format), {}, {}});
}

void RtfBuilder::symbol(char character)
{
    switch (character) {
    case '\n':
    case '\r':
        flushBytes();
        endParagraph();
        break;
    case '~':
        flushBytes();
        appendText(QString(QChar::Nbsp));
        break;
    case '_':
        flushBytes();
        appendText(QString(QChar(0x2011)));
        break;
    case '*': m_state.destination = m_state.destination == Destination::body ? Destination::skipped : m_state.destination; break;
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
        flushBytes();
        m_pictureNameDone = true;
        if (name == "width")
            m_pictureSize.setWidth(fromTwips(value));
        else if (name == "height")
            m_pictureSize.setHeight(fromTwips(value));
        return;
    }
    if (m_state.destination == Destination::colours) {
        m_colourGiven = true;
        int& part = name == "red" ? m_red : name == "green" ? m_green : m_blue;
        part = std::clamp(value, 0, 255);
        return;
    }
    flushBytes();
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
    } else if (std::find(skippedDestinations.begin(), skippedDestinations.end(), name) != skippedDestinations.end()) {
        m_state.destination = Destination::skipped;
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
        m_format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
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
    else if (name == "super")
        m_state.vertical = off ? 0 : 1;
    else if (name == "sub")
        m_state.vertical = off ? 0 : -1;
    else if (name == "nosupersub")
        m_state.vertical = 0;
    else if (name == "plain")
        m_state = State {m_state.destination, m_state.font, 12, false, false, false, false, 0, 0, m_state.bytesAfterUnicode, m_state.link};
    else
        return false;
    return true;
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
        m_format.setLeftMargin(fromTwips(std::clamp(value, 0, 20000)));
    else if (name == "ri")
        m_format.setRightMargin(fromTwips(std::clamp(value, 0, 20000)));
    else if (name == "fi")
        m_format.setTextIndent(fromTwips(std::clamp(value, -20000, 20000)));
    else if (name == "sb")
        m_format.setTopMargin(fromTwips(std::clamp(value, 0, 20000)));
    else if (name == "sa")
        m_format.setBottomMargin(fromTwips(std::clamp(value, 0, 20000)));
    else if (name == "tqr")
        m_nextTab = QTextOption::RightTab;
    else if (name == "tqc")
        m_nextTab = QTextOption::CenterTab;
    else if (name == "tx") {
        m_tabs.append(QTextOption::Tab(fromTwips(std::clamp(value, 0, 40000)), std::exchange(m_nextTab, QTextOption::LeftTab)));
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
        m_nextCellWidth = std::clamp(value, 0, 40000);
    else if (name == "brdrs")
        m_nextCellBordered = true;
    else if (name == "cellx") {
        RichCell shape;
        const qreal left = m_cellShapes.empty() ? 0 : m_cellShapes.back().rightEdge;
        const int width = std::exchange(m_nextCellWidth, 0);
        shape.rightEdge = width > 0 ? left + fromTwips(width) : fromTwips(std::clamp(value, 0, 40000));
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
    const qreal points = pointsFromTwips(std::clamp(value, 0, 60000));
    if (name == "mac")
        m_ansiCodePage = macRoman;
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
    m_paragraph.format = m_format;
    if (m_inTable)
        m_cell.push_back(std::exchange(m_paragraph, {}));
    else
        m_text.blocks.emplace_back(std::exchange(m_paragraph, {}));
    m_format.setPageBreakPolicy(QTextFormat::PageBreak_Auto);
}

void RtfBuilder::endCell()
{
    m_paragraph.format = m_format;
    m_cell.push_back(std::exchange(m_paragraph, {}));
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
    if (!m_table.rows.empty())
        m_text.blocks.emplace_back(std::exchange(m_table, {}));
}

void RtfBuilder::endPicture()
{
    m_swallowPictureByte = true;
    const QString name = m_pictureName.trimmed();
    if (name.isEmpty() || m_state.destination != Destination::body)
        return;
    if (!m_inTable)
        closeTable();
    m_paragraph.runs.push_back({QString(), characterFormat(), name, m_pictureSize});
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

QTextCharFormat RtfBuilder::characterFormat() const
{
    QTextCharFormat format;
    const auto font = m_fonts.find(m_state.font);
    const QString name = font == m_fonts.end() ? QString("Helvetica") : font->second;
    const QString style = name.section('-', 1);
    QString family = name.section('-', 0, 0);
    if (family.isEmpty() || family == "Helvetica" || family == "HelveticaNeue" || family == "Helvetica Neue" || family == "Arial")
        family = "Liberation Sans";
    else if (family == "Times" || family == "Times New Roman" || family == "TimesNewRomanPS")
        family = "Liberation Serif";
    else if (family == "Courier" || family == "Menlo" || family == "Monaco" || family == "Courier New")
        family = "Liberation Mono";
    format.setFontFamilies({family});
    format.setFontPointSize(m_state.size);
    format.setFontWeight(m_state.bold || style.contains("Bold") ? QFont::Bold : QFont::Normal);
    format.setFontItalic(m_state.italic || style.contains("Italic") || style.contains("Oblique"));
    format.setFontUnderline(m_state.underline);
    format.setFontStrikeOut(m_state.strike);
    if (m_state.vertical != 0)
        format.setVerticalAlignment(m_state.vertical > 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
    const auto index = static_cast<std::size_t>(std::max(m_state.colour, 0));
    if (index < m_colours.size() && m_colours[index].isValid())
        format.setForeground(m_colours[index]);
    applyLink(format);
    return format;
}

void RtfBuilder::applyLink(QTextCharFormat& format) const
{
    if (m_state.link.isEmpty())
        return;
    format.setAnchor(true);
    format.setAnchorHref(m_state.link);
}
