#include "storage/TextSearch.h"

#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

/// Length of the run of ASCII bytes at the start, eight looked at a time.
std::size_t asciiLength(std::string_view text)
{
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if (word & 0x8080808080808080u)
            break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at;
}

void appendFoldedAscii(std::string& folded, std::string_view text)
{
    const std::size_t before = folded.size();
    folded.append(text);
    for (std::size_t at = before; at < folded.size(); ++at) {
        const auto byte = static_cast<unsigned char>(folded[at]);
        folded[at] = static_cast<char>(byte | (static_cast<unsigned char>(byte - 'A') < 26 ? 0x20 : 0));
    }
}

} // namespace

void appendFolded(std::string& folded, std::string_view text)
{
    const std::size_t ascii = asciiLength(text);
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
