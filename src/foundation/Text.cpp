#include "foundation/Text.h"

#include "foundation/LargeMemory.h"

#include <algorithm>
#include <array>

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

/// How many plain ASCII bytes stand here, thirty-two looked at a time.
std::size_t asciiRun(std::string_view bytes, std::size_t from)
{
    std::size_t at = from;
    for (std::array<std::uint64_t, 4> words; at + sizeof words <= bytes.size(); at += sizeof words) {
        std::memcpy(words.data(), bytes.data() + at, sizeof words);
        if ((words[0] | words[1] | words[2] | words[3]) & 0x8080808080808080u)
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

/// Eight bytes, or as many as there are.
std::uint64_t wordFrom(const char* bytes, std::size_t count)
{
    std::uint64_t word = 0;
    if (count >= sizeof word) {
        std::memcpy(&word, bytes, sizeof word);
    } else if (count >= sizeof(std::uint32_t)) {
        std::memcpy(&word, bytes, sizeof(std::uint32_t));
        std::uint32_t end;
        std::memcpy(&end, bytes + count - sizeof end, sizeof end);
        word |= static_cast<std::uint64_t>(end) << 32;
    } else {
        for (std::size_t i = 0; i < count; ++i)
            word = word << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return word;
}

/// Of its first and last bytes and its length; never 0.
std::uint64_t quickHash(std::string_view bytes)
{
    constexpr std::uint64_t prime = 0x9e3779b97f4a7c15u;
    const std::size_t tail = std::min(bytes.size(), sizeof(std::uint64_t));
    const std::uint64_t first = wordFrom(bytes.data(), bytes.size());
    const std::uint64_t last = wordFrom(bytes.data() + bytes.size() - tail, tail);
    const std::uint64_t hash = (first * prime) ^ ((last + bytes.size()) * (prime >> 1 | 1));
    return (hash ^ (hash >> 32)) | 1;
}

} // namespace

TextStore::~TextStore()
{
    for (const Chunk& chunk : m_chunks)
        largeMemory::giveBack(chunk.bytes, chunk.size);
}

void TextStore::startChunk(std::size_t atLeast)
{
    const std::size_t grown = std::clamp(m_capacity, firstChunk, largestChunk);
    const std::size_t size = std::max(atLeast, grown);
    m_chunks.push_back({static_cast<char*>(largeMemory::take(size)), size});
    m_next = m_chunks.back().bytes;
    m_left = size;
    m_capacity += size;
}

Text TextStore::addRepeating(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    if (!m_recent)
        m_recent = std::make_unique<RecentTexts>();
    const std::uint64_t hash = quickHash(bytes);
    RecentText& recent = (*m_recent)[hash >> 1 & (m_recent->size() - 1)];
    if (recent.hash != hash || recent.text != bytes)
        recent = {hash, add(bytes)};
    return recent.text;
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
