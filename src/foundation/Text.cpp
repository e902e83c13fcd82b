#include "foundation/Text.h"

#include <algorithm>

namespace {

// Small, since a record that belongs to no collection yet has a store of its own; every chunk is as large as all before it.
constexpr std::size_t firstChunk = 512;
constexpr std::size_t largestChunk = 4 * 1024 * 1024;

bool mayStandInXml(char32_t character)
{
    if (character < 0x20)
        return character == 9 || character == 10 || character == 13;
    return character != 0xfffe && character != 0xffff;
}

/// How many bytes a sequence with this first byte has; 0 for a byte that starts none.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xc2 || lead > 0xf4)
        return 0;
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

/// Length of the well-formed UTF-8 sequence that starts here, 0 when it is malformed. Puts the code point into character.
std::size_t decodeUtf8Sequence(std::string_view bytes, std::size_t at, char32_t& character)
{
    const auto byte = [&](std::size_t offset) { return static_cast<unsigned char>(bytes[at + offset]); };
    const unsigned char lead = byte(0);
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || at + length > bytes.size())
        return 0;
    if (length == 1) {
        character = lead;
        return 1;
    }
    character = lead & (0xffu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
        character = (character << 6) | (byte(i) & 0x3fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xd800 && character <= 0xdfff;
    return character < smallest[length] || character > 0x10ffff || surrogate ? 0 : length;
}

/// How many plain ASCII bytes stand here, eight looked at a time.
std::size_t asciiRun(std::string_view bytes, std::size_t from)
{
    std::size_t at = from;
    for (std::uint64_t word; at + 8 <= bytes.size(); at += 8) {
        std::memcpy(&word, bytes.data() + at, 8);
        if (word & 0x8080808080808080u)
            break;
    }
    return at - from;
}

/// How many bytes stand here that any text may hold: ASCII without control characters, eight looked at a time.
std::size_t printableRun(std::string_view bytes, std::size_t from)
{
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    constexpr std::uint64_t eightBlanks = 0x2020202020202020u;
    std::size_t at = from;
    for (std::uint64_t word; at + 8 <= bytes.size(); at += 8) {
        std::memcpy(&word, bytes.data() + at, 8);
        // Taking a blank away from every byte borrows into a high bit when one is below it.
        if ((word | (word - eightBlanks)) & highBits)
            break;
    }
    return at - from;
}

} // namespace

void TextStore::startChunk(std::size_t atLeast)
{
    const std::size_t grown = std::clamp(m_capacity, firstChunk, largestChunk);
    const std::size_t size = std::max(atLeast, grown);
    m_chunks.push_back(std::make_unique_for_overwrite<char[]>(size));
    m_next = m_chunks.back().get();
    m_left = size;
    m_capacity += size;
}

bool isUtf8(std::string_view bytes)
{
    char32_t character = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        at += asciiRun(bytes, at);
        if (at == bytes.size())
            break;
        const std::size_t length = decodeUtf8Sequence(bytes, at, character);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

bool isCleanUtf8(std::string_view bytes)
{
    char32_t character = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        at += printableRun(bytes, at);
        if (at == bytes.size())
            break;
        const std::size_t length = decodeUtf8Sequence(bytes, at, character);
        if (length == 0 || !mayStandInXml(character))
            return false;
        at += length;
    }
    return true;
}

std::string cleanUtf8(std::string_view bytes)
{
    if (isCleanUtf8(bytes))
        return std::string(bytes);
    std::string clean;
    clean.reserve(bytes.size());
    char32_t character = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = decodeUtf8Sequence(bytes, at, character);
        if (length == 0)
            clean += "\xef\xbf\xbd";
        else if (mayStandInXml(character))
            clean.append(bytes, at, length);
        at += std::max<std::size_t>(length, 1);
    }
    return clean;
}

std::string cleanUtf8(const QString& text)
{
    if (text.isValidUtf16())
        return cleanUtf8(text.toStdString());
    // Qt would write a lone surrogate as a question mark.
    QString whole = text;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        if (whole[i].isHighSurrogate() && i + 1 < whole.size() && whole[i + 1].isLowSurrogate())
            ++i;
        else if (whole[i].isSurrogate())
            whole[i] = QChar::ReplacementCharacter;
    }
    return cleanUtf8(whole.toStdString());
}
