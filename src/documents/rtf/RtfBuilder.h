// Turns the tokens of a rich-text file into paragraphs, runs and tables.
#pragma once

#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfFormat.h"
#include "documents/rtf/RtfTokenizer.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class RtfBuilder {
public:
    /// Reads everything; what is unknown or malformed is passed over.
    RichText build(std::string_view bytes);
    /// Whether the file holds things that a person would miss in what was built: pictures in the text itself, headers, notes, the
    /// numbering of lists, or more than can be read.
    bool leavesOut() const { return m_leavesOut; }
    /// Whether what a destination of that name holds is no part of the text.
    static bool passesOver(std::string_view destination);

private:
    enum class Destination { body, skipped, fonts, colours, fieldInstruction, picture };
    struct State {
        Destination destination = Destination::body;
        int font = 0;
        qreal size = 12;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        bool strike = false;
        int colour = 0;
        int background = 0;
        int vertical = 0;
        int bytesAfterUnicode = 1;
        QString link;
    };

    void openGroup();
    void closeGroup();
    void word(const RtfToken& token);
    bool destinationWord(std::string_view name);
    bool characterWord(std::string_view name, int value, bool off);
    bool paragraphWord(std::string_view name, int value);
    bool tableWord(std::string_view name, int value);
    bool pageWord(std::string_view name, int value);
    bool specialWord(std::string_view name);
    void symbol(char character);
    void takeBytes(std::string_view bytes);
    void takeUnicode(int value);
    void flushBytes();
    void endSurrogate();
    void settleText();
    void takeText(const QString& text);
    void appendParagraphs(const QString& text);
    void appendText(const QString& text);
    void makePlain();
    void endParagraph();
    RichParagraph finishedParagraph();
    void endCell();
    void endRow();
    void closeTable();
    void endPicture();
    void pictureText(const QString& text);
    void fontText(const QString& text);
    void colourText(std::string_view bytes);
    int codePage() const;
    QColor colourAt(int index) const;
    QTextCharFormat characterFormat() const;
    QTextCharFormat linkFormat() const;

    RichText m_text;
    State m_state;
    std::vector<State> m_stack;
    int m_tooDeep = 0;
    std::string m_bytes;
    int m_skipAfterUnicode = 0;
    char16_t m_highSurrogate = 0;

    RichParagraph m_paragraph;
    QTextBlockFormat m_format;
    QList<QTextOption::Tab> m_tabs;
    QTextOption::TabType m_nextTab = QTextOption::LeftTab;
    bool m_pageBreak = false;
    bool m_inTable = false;
    RichTable m_table;
    std::vector<RichCell> m_row;
    std::vector<RichParagraph> m_cell;
    std::vector<RichCell> m_cellShapes;
    bool m_nextCellBordered = false;
    /// In twips, 0 when the file gives none.
    int m_nextCellWidth = 0;

    std::unordered_map<int, QString> m_fonts;
    std::unordered_map<int, int> m_charsets;
    int m_fontBeingRead = 0;
    QString m_fontName;
    std::vector<QColor> m_colours;
    int m_red = 0;
    int m_green = 0;
    int m_blue = 0;
    bool m_colourGiven = false;
    std::string m_instruction;
    QString m_link;
    QString m_pictureName;
    bool m_pictureNameDone = false;
    QSizeF m_pictureSize;
    bool m_swallowPictureByte = false;
    int m_ansiCodePage = 1252;
    qsizetype m_characters = 0;
    bool m_leavesOut = false;
};
