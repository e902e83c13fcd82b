#include "storage/TextSearch.h"

#include <QString>

#include <cstring>

namespace {

/// Length of the run of ASCII bytes from here.
std::size_t asciiLength(std::string_view text, std::size_t from)
{
    std::size_t at = from;
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at - from;
}

void appendFoldedAscii(std::string& folded, std::string_view text)
{
    for (const char character : text)
        folded += character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
}

} // namespace

void appendFolded(std::string& folded, std::string_view text)
{
    const std::size_t ascii = asciiLength(text, 0);
    appendFoldedAscii(folded, text.substr(0, ascii));
    if (ascii == text.size())
        return;
    const std::string_view rest = text.substr(ascii);
    folded += QString::fromUtf8(rest.data(), static_cast<qsizetype>(rest.size())).toCaseFolded().toStdString();
}

std::string foldCase(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    appendFolded(folded, text);
    return folded;
}

bool FoldedText::occursIn(std::string_view text) const
{
    if (m_folded.empty() || text.empty())
        return false;
    const std::string folded = foldCase(text);
    return memmem(folded.data(), folded.size(), m_folded.data(), m_folded.size()) != nullptr;
}

std::vector<std::string> searchWords(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        if (blank > 0)
            words.emplace_back(text.substr(0, blank));
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    return words;
}
