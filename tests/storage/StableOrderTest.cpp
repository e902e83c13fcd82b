#include "storage/StableOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

namespace {

/// What comparing all of them in pairs gives.
template <class Key>
SortedPositions comparedOrder(const std::vector<Key>& keys, SortDirection direction)
{
    SortedPositions positions(keys.size());
    std::iota(positions.begin(), positions.end(), 0u);
    std::stable_sort(positions.begin(), positions.end(),
        [&](std::uint32_t a, std::uint32_t b) { return direction == SortDirection::ascending ? keys[a] < keys[b] : keys[b] < keys[a]; });
    return positions;
}

SortedPositions orderOfTexts(const std::vector<std::string>& texts, SortDirection direction = SortDirection::ascending)
{
    TextKeys keys(texts.size());
    for (const std::string& text : texts) {
        keys.next() += text;
        keys.take();
    }
    return stableOrder(keys.ranks(), direction);
}

constexpr std::array bothDirections {SortDirection::ascending, SortDirection::descending};

} // namespace

TEST(StableOrder, equalKeysKeepTheirOrderInBothDirections)
{
    const std::vector<std::uint64_t> keys {7, 3, 7, 3, 9};

    EXPECT_EQ(stableOrder(keys, SortDirection::ascending), (SortedPositions {1, 3, 0, 2, 4}));
    EXPECT_EQ(stableOrder(keys, SortDirection::descending), (SortedPositions {4, 0, 2, 1, 3}));
}

TEST(StableOrder, nothingAndOneThingAreInOrder)
{
    EXPECT_TRUE(stableOrder({}, SortDirection::ascending).empty());
    EXPECT_EQ(stableOrder({5}, SortDirection::descending), SortedPositions {0});
    EXPECT_TRUE(orderOfTexts({}).empty());
    EXPECT_EQ(orderOfTexts({""}), SortedPositions {0});
}

TEST(StableOrder, theWholeRangeOfNumbersIsSorted)
{
    const std::vector<std::uint64_t> keys {UINT64_MAX, 0, std::uint64_t {1} << 63, 1, UINT64_MAX - 1};

    EXPECT_EQ(stableOrder(keys, SortDirection::ascending), (SortedPositions {1, 3, 2, 4, 0}));
    EXPECT_EQ(stableOrder(keys, SortDirection::descending), (SortedPositions {0, 4, 2, 3, 1}));
}

TEST(StableOrder, numbersOfAnySizeComeAsComparingGivesThem)
{
    std::mt19937_64 random(5);
    for (const unsigned bits : {1u, 4u, 11u, 12u, 23u, 40u, 64u}) {
        std::vector<std::uint64_t> keys(3000);
        std::generate(keys.begin(), keys.end(), [&] { return (random() >> (64 - bits)) + 17; });
        for (const SortDirection direction : bothDirections)
            ASSERT_EQ(stableOrder(keys, direction), comparedOrder(keys, direction)) << bits;
    }
}

TEST(StableOrder, floatsSortBySignAndSizeAndBothZerosAreTheSame)
{
    const std::vector<float> numbers {0.0f, -1.5f, 3e30f, -0.0f, 1e-40f, -3e30f, std::numeric_limits<float>::min(), 2.0f, -1e-40f};
    std::vector<std::uint64_t> keys;
    for (const float number : numbers)
        keys.push_back(sortKey(number));

    EXPECT_EQ(sortKey(0.0f), sortKey(-0.0f));
    for (const SortDirection direction : bothDirections)
        EXPECT_EQ(stableOrder(keys, direction), comparedOrder(numbers, direction));
}

TEST(StableOrder, wholeNumbersBelowZeroComeFirst)
{
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    EXPECT_LT(sortKey(least), sortKey(std::int64_t {-1}));
    EXPECT_LT(sortKey(std::int64_t {-1}), sortKey(std::int64_t {0}));
    EXPECT_LT(sortKey(std::int64_t {0}), sortKey(std::numeric_limits<std::int64_t>::max()));
}

TEST(StableOrder, textsSortByTheirBytes)
{
    // The letters beyond ASCII come after all others; a text comes before those it is the start of.
    const std::vector<std::string> texts {"oak", "\xc3\xa9tag\xc3\xa8re", "", "oak shelf", "oa", "oak shelves", "Oak", "oak shelf"};

    EXPECT_EQ(orderOfTexts(texts), (SortedPositions {2, 6, 4, 0, 3, 7, 5, 1}));
    EXPECT_EQ(orderOfTexts(texts, SortDirection::descending), (SortedPositions {1, 5, 3, 7, 0, 4, 6, 2}));
}

TEST(StableOrder, textsThatDifferOnlyInZerosAreToldApart)
{
    const std::vector<std::string> texts {std::string("a\0\0", 3), "a", std::string("a\0", 2), std::string("a\0b", 3)};

    EXPECT_EQ(orderOfTexts(texts), (SortedPositions {1, 2, 0, 3}));
}

TEST(StableOrder, manyTextsComeAsComparingGivesThem)
{
    std::mt19937 random(11);
    for (const unsigned letters : {2u, 5u, 200u}) {
        std::vector<std::string> texts(5000);
        for (std::string& text : texts) {
            text.resize(random() % 14);
            std::generate(text.begin(), text.end(), [&] { return static_cast<char>(random() % letters); });
        }
        for (const SortDirection direction : bothDirections)
            ASSERT_EQ(orderOfTexts(texts, direction), comparedOrder(texts, direction)) << letters;
    }
}
