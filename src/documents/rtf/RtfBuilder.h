// Turns the tokens of a rich-text file into paragraphs, runs and tables.
#pragma once

#include "documents/rtf/RichText.h"
#include "documents/rtf/RtfTokenizer.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class RtfBuilder {
public:
    /// Reads everything; what is unknown or malformed is passed over.
    RichText build(std::string_view bytes);

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
    void appendText(const QString& text);
    void endParagraph();
    void endCell();
    void endRow();
    void closeTable();
    void endPicture();
    void pictureText(const QString& text);
    void fontText(const QString& text);
    void colourText(std::string_view bytes);
    std::string codePage() const;
    QTextCharFormat characterFormat() const;
    void applyLink(QTextCharFormat& format) const;

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
};
