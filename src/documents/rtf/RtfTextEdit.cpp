#include "documents/rtf/RtfTextEdit.h"

#include "documents/rtf/RtfBuilder.h"
#include "documents/rtf/RtfCodePage.h"
#include "documents/rtf/RtfTokenizer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace {

/// Words that stand for something in the text, or end a piece of it. All others only change how it looks.
constexpr std::array<std::string_view, 14> textWords {
    "par", "sect", "tab", "line", "cell", "row", "emdash", "endash", "lquote", "rquote", "ldblquote", "rdblquote", "bullet", "NeXTGraphic"};
/// What these hold is not in the text either, beside what the reader passes over.
constexpr std::array<std::string_view, 4> hiddenDestinations {"fonttbl", "colortbl", "fldinst", "NeXTGraphic"};

constexpr int mostBytesAfterUnicode = 16;
constexpr unsigned char firstHighByte = 0x80;

/// One letter of the text, and the bytes of the file that stand for it.
struct Letter {
    char letter;
    std::size_t begin;
    std::size_t end;
    /// Whether it is what ends the control word before it.
    bool endsWord;
};

/// Something that no text is found through.
constexpr Letter pieceEnd {'\0', 0, 0, false};

bool isWordByte(char byte)
{
    return std::isalnum(static_cast<unsigned char>(byte)) != 0;
}

/// Collects the letters that the reader would show.
class VisibleText {
public:
    explicit VisibleText(std::string_view rtf) : m_rtf(rtf) { }

    std::vector<Letter> read()
    {
        RtfTokenizer tokens(m_rtf);
        for (RtfToken token = tokens.next(); token.kind != RtfToken::Kind::end; token = tokens.next()) {
            take(token, tokens.tokenBegin(), tokens.tokenEnd());
            m_afterWord = token.kind == RtfToken::Kind::word;
            if (token.kind == RtfToken::Kind::word && token.text == "bin")
                tokens.skip(static_cast<std::size_t>(std::max(0, token.parameter)));
        }
        return std::move(m_letters);
    }

private:
    struct Group {
        bool hidden = false;
        int bytesAfterUnicode = 1;
    };

    void take(const RtfToken& token, std::size_t begin, std::size_t end)
    {
        switch (token.kind) {
        case RtfToken::Kind::groupOpen:
            m_groups.push_back(m_group);
            m_toSkip = 0;
            break;
        case RtfToken::Kind::groupClose: closeGroup(); break;
        case RtfToken::Kind::word: takeWord(token, begin, end); break;
        case RtfToken::Kind::symbol: takeSymbol(token.text.front(), begin, end); break;
        case RtfToken::Kind::hex: takeByte(token.byte, begin, end); break;
        default:
            for (std::size_t i = begin; i < end; ++i) {
                takeByte(static_cast<unsigned char>(m_rtf[i]), i, i + 1);
                m_afterWord = false;
            }
        }
    }

    void closeGroup()
    {
        m_toSkip = 0;
        if (m_groups.empty())
            return;
        m_group = m_groups.back();
        m_groups.pop_back();
    }

    void takeWord(const RtfToken& token, std::size_t begin, std::size_t end)
    {
        if (token.text == "u")
            return takeUnicode(token.parameter, begin, end);
        if (token.text == "uc")
            m_group.bytesAfterUnicode = std::clamp(token.parameter, 0, mostBytesAfterUnicode);
        else if (token.text == "ansicpg")
            m_doubleBytes = m_doubleBytes || rtf::isDoubleByte(token.parameter);
        else if (token.text == "fcharset")
            m_doubleBytes = m_doubleBytes || rtf::isDoubleByte(rtf::codePageOfCharset(token.parameter));
        if (std::find(textWords.begin(), textWords.end(), token.text) != textWords.end())
            add(pieceEnd);
        const bool hides = RtfBuilder::passesOver(token.text)
            || std::find(hiddenDestinations.begin(), hiddenDestinations.end(), token.text) != hiddenDestinations.end();
        m_group.hidden = m_group.hidden || hides;
        m_firstHalf = false;
    }

    void takeSymbol(char symbol, std::size_t begin, std::size_t end)
    {
        if (symbol == '*')
            m_group.hidden = true;
        else if (symbol == '\\' || symbol == '{' || symbol == '}')
            takeByte(static_cast<unsigned char>(symbol), begin, end);
        else if (symbol == '\n' || symbol == '\r' || symbol == '~' || symbol == '_')
            add(pieceEnd);
    }

    void takeUnicode(int value, std::size_t begin, std::size_t end)
    {
        m_toSkip = m_group.bytesAfterUnicode;
        m_firstHalf = false;
        addLetter(value > 0 && value < firstHighByte ? static_cast<char>(value) : '\0', begin, end);
    }

    void takeByte(unsigned char byte, std::size_t begin, std::size_t end)
    {
        if (m_toSkip > 0) {
            --m_toSkip;
            return skipByte(begin, end);
        }
        const bool second = m_doubleBytes && m_firstHalf;
        m_firstHalf = !second && byte >= firstHighByte;
        addLetter(second || byte >= firstHighByte ? '\0' : static_cast<char>(byte), begin, end);
    }

    /// What stands there for readers without Unicode goes with its letter; where that cannot be, the letter is not found.
    void skipByte(std::size_t begin, std::size_t end)
    {
        if (m_letters.empty() || m_group.hidden)
            return;
        if (m_letters.back().end == begin)
            m_letters.back().end = end;
        else
            m_letters.back() = pieceEnd;
    }

    void addLetter(char letter, std::size_t begin, std::size_t end)
    {
        add({letter, begin, end, m_afterWord && begin > 0 && isWordByte(m_rtf[begin - 1])});
    }

    void add(const Letter& letter)
    {
        if (!m_group.hidden)
            m_letters.push_back(letter);
    }

    std::string_view m_rtf;
    std::vector<Letter> m_letters;
    std::vector<Group> m_groups;
    Group m_group;
    int m_toSkip = 0;
    bool m_afterWord = false;
    /// Whether letters of two bytes may occur, and whether the byte before is the first of one.
    bool m_doubleBytes = false;
    bool m_firstHalf = false;
};

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char letter : text) {
        if (letter == '\\' || letter == '{' || letter == '}')
            result.push_back('\\');
        result.push_back(letter);
    }
    return result;
}

} // namespace

std::string replaceInRtf(std::string_view rtf, std::string_view find, std::string_view with)
{
    if (find.empty())
        return std::string(rtf);
    const std::vector<Letter> letters = VisibleText(rtf).read();
    std::string text;
    for (const Letter& letter : letters)
        text.push_back(letter.letter);
    std::string result;
    std::size_t copied = 0;
    for (std::size_t at = text.find(find); at != std::string::npos; at = text.find(find, at + find.size())) {
        for (std::size_t i = at; i < at + find.size(); ++i) {
            const Letter& letter = letters[i];
            const bool followsRemoved = i > at && letter.begin == copied;
            result.append(rtf.substr(copied, letter.begin - copied));
            if (letter.endsWord && !followsRemoved)
                result.push_back(' ');
            if (i == at)
                result += escaped(with);
            copied = letter.end;
        }
    }
    result.append(rtf.substr(copied));
    return result;
}
