#include "documents/rtf/RtfTextEdit.h"

#include "documents/rtf/RtfTokenizer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>
#include <vector>

namespace {

/// Words that only change how the text looks; any other ends what can be one piece of text.
constexpr std::array<std::string_view, 26> formatWords {"b", "i", "ul", "ulnone", "strike", "f", "fs", "cf", "cb", "plain", "kerning",
    "expnd", "expndtw", "outl", "strokewidth", "strokec", "super", "sub", "nosupersub", "up", "dn", "charscalex", "lang", "loch", "hich",
    "dbch"};

/// The visible letters of a file one after the other, and where each of them stands in it.
struct VisibleText {
    std::string letters;
    std::vector<std::size_t> places;
    /// Whether the letter is what ends the control word before it.
    std::vector<bool> endsWord;

    void add(std::string_view bytes, std::size_t place, bool afterWord)
    {
        for (const char letter : bytes) {
            letters.push_back(letter);
            places.push_back(place++);
            endsWord.push_back(std::exchange(afterWord, false));
        }
    }
    /// Something that no text is found through.
    void addBreak()
    {
        letters.push_back('\0');
        places.push_back(std::string_view::npos);
        endsWord.push_back(false);
    }
};

bool isFormatWord(std::string_view name)
{
    return std::find(formatWords.begin(), formatWords.end(), name) != formatWords.end();
}

bool isWordByte(char byte)
{
    return std::isalnum(static_cast<unsigned char>(byte)) != 0;
}

VisibleText visibleTextOf(std::string_view rtf)
{
    VisibleText visible;
    RtfTokenizer tokens(rtf);
    bool afterWord = false;
    for (RtfToken token = tokens.next(); token.kind != RtfToken::Kind::end; token = tokens.next()) {
        const std::size_t place = token.kind == RtfToken::Kind::text ? static_cast<std::size_t>(token.text.data() - rtf.data()) : 0;
        if (token.kind == RtfToken::Kind::text)
            visible.add(token.text, place, afterWord && isWordByte(rtf[place - 1]));
        else if (token.kind == RtfToken::Kind::hex || token.kind == RtfToken::Kind::symbol)
            visible.addBreak();
        else if (token.kind == RtfToken::Kind::word && !isFormatWord(token.text))
            visible.addBreak();
        if (token.kind == RtfToken::Kind::word && token.text == "bin")
            tokens.skip(static_cast<std::size_t>(std::max(0, token.parameter)));
        afterWord = token.kind == RtfToken::Kind::word;
    }
    return visible;
}

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
    const VisibleText visible = visibleTextOf(rtf);
    std::string result;
    std::size_t copied = 0;
    for (std::size_t at = visible.letters.find(find); at != std::string::npos; at = visible.letters.find(find, at + find.size())) {
        for (std::size_t i = at; i < at + find.size(); ++i) {
            const std::size_t place = visible.places[i];
            result.append(rtf.substr(copied, place - copied));
            if (visible.endsWord[i])
                result.push_back(' ');
            if (i == at)
                result += escaped(with);
            copied = place + 1;
        }
    }
    result.append(rtf.substr(copied));
    return result;
}
