// The order that records with these keys come in: equal keys keep the order they were added in, whichever way they are sorted.
//
// Whole numbers are sorted digit by digit, so that nothing is compared at all. Texts are first counted off against each other: a column
// holds the same few texts again and again, and only those that differ are compared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class SortDirection { ascending, descending };

/// Positions of the keys, 0 for the first that was given.
using SortedPositions = std::vector<std::uint32_t>;

SortedPositions stableOrder(const std::vector<std::uint64_t>& keys, SortDirection direction);

/// Keys that compare as the numbers do; zero is zero whatever its sign. The number is none that is no number.
std::uint64_t sortKey(float number);
std::uint64_t sortKey(std::int64_t number);

/// Texts by their bytes, as std::string compares them.
class TextKeys {
public:
    explicit TextKeys(std::size_t expected);
    /// Bytes are appended to what this answers, then taken as the next text by take().
    std::string& next() { return m_bytes; }
    void take();
    /// How many were taken.
    std::size_t size() const { return m_textOf.size(); }
    /// For each that was taken a number that compares as they do.
    std::vector<std::uint64_t> ranks() const;

private:
    struct Text {
        std::size_t start;
        std::size_t length;
        /// The first eight bytes as a number that compares as they do.
        std::uint64_t head;
    };
    std::string_view viewOf(const Text& text) const { return std::string_view(m_bytes).substr(text.start, text.length); }
    std::size_t placeFor(const Text& text, std::string_view bytes) const;
    void growTable();

    static constexpr std::uint32_t nothing = UINT32_MAX;

    /// The texts that differ, end to end, and the start of the one that is being added.
    std::string m_bytes;
    std::size_t m_start = 0;
    std::vector<Text> m_texts;
    /// Which of them each that was taken is.
    std::vector<std::uint32_t> m_textOf;
    /// Finds a text by its bytes; a power of two of places, never more than half full.
    std::vector<std::uint32_t> m_table;
};
