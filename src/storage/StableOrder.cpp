#include "storage/StableOrder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>

namespace {

constexpr unsigned bitsOfDigit = 11;
constexpr std::size_t digitValues = 1u << bitsOfDigit;

struct KeyedPosition {
    std::uint64_t key;
    std::uint32_t position;
};

std::size_t digitOf(std::uint64_t key, unsigned shift)
{
    return (key >> shift) & (digitValues - 1);
}

void sortByDigit(const std::vector<KeyedPosition>& from, std::vector<KeyedPosition>& to, unsigned shift)
{
    std::vector<std::uint32_t> starts(digitValues + 1);
    for (const KeyedPosition& entry : from)
        ++starts[digitOf(entry.key, shift) + 1];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    for (const KeyedPosition& entry : from)
        to[starts[digitOf(entry.key, shift)]++] = entry;
}

std::uint64_t hashOf(std::string_view bytes, std::uint64_t head)
{
    constexpr std::uint64_t prime = 0x9e3779b97f4a7c15u;
    std::uint64_t hash = (head ^ bytes.size()) * prime;
    for (std::size_t at = sizeof head; at < bytes.size(); at += sizeof head) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, std::min(sizeof word, bytes.size() - at));
        hash = (hash ^ (hash >> 29) ^ word) * prime;
    }
    return hash ^ (hash >> 32);
}

std::uint64_t headOf(std::string_view bytes)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    return head;
}

} // namespace

SortedPositions stableOrder(const std::vector<std::uint64_t>& keys, SortDirection direction)
{
    if (keys.empty())
        return {};
    const auto [least, most] = std::minmax_element(keys.begin(), keys.end());
    // Counted from the end that comes first, so that few digits are left.
    const std::uint64_t first = direction == SortDirection::ascending ? *least : *most;
    std::vector<KeyedPosition> entries(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::uint64_t distance = direction == SortDirection::ascending ? keys[i] - first : first - keys[i];
        entries[i] = {distance, static_cast<std::uint32_t>(i)};
    }
    std::vector<KeyedPosition> sorted(entries.size());
    for (unsigned shift = 0; shift < static_cast<unsigned>(std::bit_width(*most - *least)); shift += bitsOfDigit) {
        sortByDigit(entries, sorted, shift);
        entries.swap(sorted);
    }
    SortedPositions positions(entries.size());
    std::transform(entries.begin(), entries.end(), positions.begin(), [](const KeyedPosition& entry) { return entry.position; });
    return positions;
}

std::uint64_t sortKey(float number)
{
    constexpr std::uint32_t signBit = 0x80000000u;
    const auto bits = std::bit_cast<std::uint32_t>(number + 0.0f);
    return bits & signBit ? ~bits : bits | signBit;
}

std::uint64_t sortKey(std::int64_t number)
{
    return static_cast<std::uint64_t>(number) ^ (std::uint64_t {1} << 63);
}

TextKeys::TextKeys(std::size_t expected) : m_table(64, nothing)
{
    m_textOf.reserve(expected);
}

void TextKeys::take()
{
    const std::string_view bytes = std::string_view(m_bytes).substr(m_start);
    const Text text {m_start, bytes.size(), headOf(bytes)};
    const std::size_t place = placeFor(text, bytes);
    m_textOf.push_back(m_table[place] == nothing ? static_cast<std::uint32_t>(m_texts.size()) : m_table[place]);
    if (m_table[place] != nothing) {
        m_bytes.resize(m_start);
        return;
    }
    m_table[place] = m_textOf.back();
    m_texts.push_back(text);
    m_start = m_bytes.size();
    if (2 * m_texts.size() > m_table.size())
        growTable();
}

/// Where the text stands in the table, or is to stand.
std::size_t TextKeys::placeFor(const Text& text, std::string_view bytes) const
{
    const std::size_t mask = m_table.size() - 1;
    for (std::size_t place = hashOf(bytes, text.head) & mask;; place = (place + 1) & mask) {
        if (m_table[place] == nothing)
            return place;
        const Text& other = m_texts[m_table[place]];
        if (other.head == text.head && viewOf(other) == bytes)
            return place;
    }
}

void TextKeys::growTable()
{
    m_table.assign(4 * m_table.size(), nothing);
    for (std::size_t i = 0; i < m_texts.size(); ++i)
        m_table[placeFor(m_texts[i], viewOf(m_texts[i]))] = static_cast<std::uint32_t>(i);
}

std::vector<std::uint64_t> TextKeys::ranks() const
{
    // What is compared nearly always stands where it is moved about.
    std::vector<KeyedPosition> sorted;
    sorted.reserve(m_texts.size());
    for (const Text& text : m_texts)
        sorted.push_back({text.head, static_cast<std::uint32_t>(sorted.size())});
    std::sort(sorted.begin(), sorted.end(), [this](const KeyedPosition& a, const KeyedPosition& b) {
        return a.key != b.key ? a.key < b.key : viewOf(m_texts[a.position]) < viewOf(m_texts[b.position]);
    });
    std::vector<std::uint64_t> ranks(m_texts.size());
    for (std::size_t rank = 0; rank < sorted.size(); ++rank)
        ranks[sorted[rank].position] = rank;
    std::vector<std::uint64_t> taken(m_textOf.size());
    std::transform(m_textOf.begin(), m_textOf.end(), taken.begin(), [&](std::uint32_t text) { return ranks[text]; });
    return taken;
}
