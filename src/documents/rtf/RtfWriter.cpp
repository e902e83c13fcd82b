#include "documents/rtf/RtfWriter.h"

#include "documents/rtf/RtfFormat.h"

#include <QTextOption>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace {

using rtf::CharacterStyle;

/// Where it first stood in the list, which it is added to.
template <class T>
std::size_t placeIn(std::vector<T>& list, const T& value)
{
    const auto found = std::find(list.begin(), list.end(), value);
    if (found != list.end())
        return static_cast<std::size_t>(found - list.begin());
    list.push_back(value);
    return list.size() - 1;
}

/// The sort of letters, for programs that do not have the font.
const char* sortOf(const QString& font)
{
    const QString family = rtf::familyOf(font);
    if (family == "Liberation Sans")
        return "\\fswiss";
    if (family == "Liberation Serif")
        return "\\froman";
    return family == "Liberation Mono" ? "\\fmodern" : "\\fnil";
}

class RtfFile {
public:
    std::string write(const RichText& text)
    {
        writeBlocks(text);
        // Fonts and colours stand first, but are known only now.
        std::string body = std::exchange(m_out, {});
        m_out = "{\\rtf1\\ansi\\ansicpg1252\\uc0\n";
        writeFonts();
        writeColours();
        writePage(text);
        return std::move(m_out) + body + "}";
    }

private:
    // The head

    void writeFonts()
    {
        m_out += "{\\fonttbl";
        for (std::size_t i = 0; i < m_fonts.size(); ++i) {
            word("\\f", static_cast<int>(i));
            m_out += std::string(sortOf(m_fonts[i])) + "\\fcharset0 ";
            writeLetters(m_fonts[i]);
            m_out += ';';
        }
        m_out += "}\n";
    }

    void writeColours()
    {
        m_out += "{\\colortbl;";
        for (const QColor& colour : m_colours) {
            word("\\red", colour.red());
            word("\\green", colour.green());
            word("\\blue", colour.blue());
            m_out += ';';
        }
        m_out += "}\n";
    }

    void writePage(const RichText& text)
    {
        const std::size_t before = m_out.size();
        if (text.paper.width() >= 0)
            word("\\paperw", rtf::twipsFromPoints(text.paper.width()));
        if (text.paper.height() >= 0)
            word("\\paperh", rtf::twipsFromPoints(text.paper.height()));
        if (text.hasMargins) {
            word("\\margl", rtf::twipsFromPoints(text.margins.left()));
            word("\\margr", rtf::twipsFromPoints(text.margins.right()));
            word("\\margt", rtf::twipsFromPoints(text.margins.top()));
            word("\\margb", rtf::twipsFromPoints(text.margins.bottom()));
        }
        if (m_out.size() > before)
            m_out += '\n';
    }

    // Paragraphs and tables

    void writeBlocks(const RichText& text)
    {
        for (std::size_t i = 0; i < text.blocks.size(); ++i) {
            if (const auto* table = std::get_if<RichTable>(&text.blocks[i])) {
                writeTable(*table);
                continue;
            }
            writeParagraph(std::get<RichParagraph>(text.blocks[i]), "");
            if (i + 1 < text.blocks.size())
                m_out += "\\\n";
        }
    }

    /// inTable: the words that say so.
    void writeParagraph(const RichParagraph& paragraph, const char* inTable)
    {
        m_out += "\\pard";
        m_out += inTable;
        writeParagraphFormat(paragraph.format);
        m_out += '\n';
        for (std::size_t i = 0; i < paragraph.runs.size();) {
            const QString link = linkOf(paragraph.runs[i]);
            std::size_t end = i + 1;
            while (end < paragraph.runs.size() && linkOf(paragraph.runs[end]) == link)
                ++end;
            if (link.isEmpty())
                writeRuns(paragraph, i, end);
            else
                writeLink(link, paragraph, i, end);
            i = end;
        }
    }

    void writeParagraphFormat(const QTextBlockFormat& format)
    {
        if (format.hasProperty(QTextFormat::BlockAlignment))
            m_out += alignmentWord(format.alignment());
        writeLength(format, QTextFormat::BlockLeftMargin, "\\li", 0, rtf::largestIndent);
        writeLength(format, QTextFormat::BlockRightMargin, "\\ri", 0, rtf::largestIndent);
        writeLength(format, QTextFormat::TextIndent, "\\fi", -rtf::largestIndent, rtf::largestIndent);
        writeLength(format, QTextFormat::BlockTopMargin, "\\sb", 0, rtf::largestIndent);
        writeLength(format, QTextFormat::BlockBottomMargin, "\\sa", 0, rtf::largestIndent);
        for (const QTextOption::Tab& tab : format.tabPositions()) {
            if (tab.type == QTextOption::RightTab)
                m_out += "\\tqr";
            else if (tab.type == QTextOption::CenterTab)
                m_out += "\\tqc";
            word("\\tx", std::clamp(rtf::twipsFromUnits(tab.position), 0, rtf::largestTab));
        }
        if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
            m_out += "\\page";
    }

    static const char* alignmentWord(Qt::Alignment alignment)
    {
        if (alignment & Qt::AlignRight)
            return "\\qr";
        if (alignment & Qt::AlignHCenter)
            return "\\qc";
        return alignment & Qt::AlignJustify ? "\\qj" : "\\ql";
    }

    void writeLength(const QTextBlockFormat& format, QTextFormat::Property property, const char* name, int least, int most)
    {
        if (format.hasProperty(property))
            word(name, std::clamp(rtf::twipsFromUnits(format.doubleProperty(property)), least, most));
    }

    void writeTable(const RichTable& table)
    {
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            m_out += "\\itap1\\trowd";
            writeCellShapes(table.rows[row]);
            for (const RichCell& cell : table.rows[row])
                writeCell(cell);
            m_out += row + 1 < table.rows.size() ? "\\row\n" : "\\lastrow\\row\n";
        }
    }

    void writeCellShapes(const std::vector<RichCell>& cells)
    {
        int left = 0;
        for (const RichCell& cell : cells) {
            m_out += '\n';
            for (const char* side : {"t", "l", "b", "r"}) {
                if (cell.bordered)
                    m_out += std::string("\\clbrdr") + side + "\\brdrs\\brdrw20";
            }
            const int edge = std::clamp(rtf::twipsFromUnits(cell.rightEdge), 0, rtf::widestTable);
            if (edge > left) {
                word("\\clwWidth", edge - left);
                m_out += "\\clftsWidth3";
            }
            word("\\cellx", edge);
            left = edge;
        }
        m_out += '\n';
    }

    void writeCell(const RichCell& cell)
    {
        constexpr char inTable[] = "\\intbl\\itap1";
        if (cell.paragraphs.empty())
            writeParagraph({}, inTable);
        for (std::size_t i = 0; i < cell.paragraphs.size(); ++i) {
            writeParagraph(cell.paragraphs[i], inTable);
            if (i + 1 < cell.paragraphs.size())
                m_out += "\\\n";
        }
        m_out += "\\cell\n";
    }

    // Runs

    static QString linkOf(const RichRun& run) { return run.format.isAnchor() ? run.format.anchorHref() : QString(); }

    void writeLink(QString link, const RichParagraph& paragraph, std::size_t begin, std::size_t end)
    {
        m_out += "{\\field{\\*\\fldinst{HYPERLINK \"";
        writeLetters(link.replace('"', "%22"));
        m_out += "\"}}{\\fldrslt ";
        const std::optional<CharacterStyle> before = m_style;
        writeRuns(paragraph, begin, end);
        m_style = before;
        m_out += "}}";
    }

    void writeRuns(const RichParagraph& paragraph, std::size_t begin, std::size_t end)
    {
        for (std::size_t i = begin; i < end; ++i) {
            const RichRun& run = paragraph.runs[i];
            if (!run.picture.isEmpty()) {
                writePicture(run);
                continue;
            }
            writeStyle(rtf::styleOf(run.format, QFont()));
            writeText(run.text);
        }
    }

    /// The picture's file is named, its place is one byte.
    void writePicture(const RichRun& run)
    {
        m_out += "{{\\NeXTGraphic ";
        writeLetters(run.picture);
        m_out += ' ';
        if (!run.pictureSize.isEmpty()) {
            word("\\width", rtf::twipsFromUnits(run.pictureSize.width()));
            word("\\height", rtf::twipsFromUnits(run.pictureSize.height()));
        }
        m_out += "\\noorient\n}\\'ac}";
    }

    /// What differs from the run before.
    void writeStyle(const CharacterStyle& style)
    {
        const std::size_t before = m_out.size();
        const CharacterStyle last = m_style.value_or(CharacterStyle());
        const bool first = !m_style;
        if (first || style.font != last.font)
            word("\\f", static_cast<int>(placeIn(m_fonts, style.font)));
        writeSwitch(style.bold, last.bold, "\\b", "\\b0");
        writeSwitch(style.italic, last.italic, "\\i", "\\i0");
        writeSwitch(style.underline, last.underline, "\\ul", "\\ulnone");
        writeSwitch(style.strike, last.strike, "\\strike", "\\strike0");
        if (style.vertical != last.vertical)
            m_out += style.vertical == 0 ? "\\nosupersub" : style.vertical > 0 ? "\\super" : "\\sub";
        if (first || style.size != last.size)
            word("\\fs", qRound(style.size * 2));
        if (first || style.colour != last.colour)
            word("\\cf", colourNumber(style.colour));
        if (style.background != last.background)
            word("\\cb", colourNumber(style.background));
        if (m_out.size() > before)
            m_out += ' ';
        m_style = style;
    }

    void writeSwitch(bool now, bool before, const char* on, const char* off)
    {
        if (now != before)
            m_out += now ? on : off;
    }

    /// The reader's own colour is none of the table.
    int colourNumber(const QColor& colour) { return colour.isValid() ? static_cast<int>(placeIn(m_colours, colour)) + 1 : 0; }

    // Letters

    void writeText(const QString& text)
    {
        for (const QChar letter : text) {
            switch (letter.unicode()) {
            case '\t': m_out += "\\tab "; break;
            case '\n':
            case '\r':
            case QChar::ParagraphSeparator:
            case QChar::LineSeparator: m_out += "\\line "; break;
            default: writeLetter(letter);
            }
        }
    }

    void writeLetters(const QString& text)
    {
        for (const QChar letter : text)
            writeLetter(letter);
    }

    void writeLetter(QChar letter)
    {
        const char16_t code = letter.unicode();
        if (code < 0x20 || code > 0x7e) {
            word("\\u", static_cast<int16_t>(code));
            m_out += ' ';
            return;
        }
        if (letter == '\\' || letter == '{' || letter == '}')
            m_out += '\\';
        m_out += static_cast<char>(code);
    }

    void word(const char* name, int value) { m_out += name + std::to_string(value); }

    std::string m_out;
    std::vector<QString> m_fonts;
    std::vector<QColor> m_colours;
    /// In force where the next run starts; none at the beginning.
    std::optional<CharacterStyle> m_style;
};

} // namespace

std::string writeRtf(const RichText& text)
{
    return RtfFile().write(text);
}
