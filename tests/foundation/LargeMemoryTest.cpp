#include "foundation/LargeMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

TEST(LargeMemory, everySizeCanBeWrittenFromItsFirstByteToItsLast)
{
    for (const std::size_t size : {std::size_t {0}, std::size_t {1}, largeMemory::smallest - 1, largeMemory::smallest,
             largeMemory::smallest + 1, 5 * largeMemory::smallest + 17}) {
        auto* const bytes = static_cast<char*>(largeMemory::take(size));
        ASSERT_NE(bytes, nullptr);
        std::fill_n(bytes, size, 'x');
        EXPECT_EQ(std::count(bytes, bytes + size, 'x'), static_cast<std::ptrdiff_t>(size));
        largeMemory::giveBack(bytes, size);
    }
}

TEST(LargeMemory, aGrowingVectorKeepsWhatItHolds)
{
    std::vector<int, largeMemory::Allocator<int>> numbers;
    for (int i = 0; i < 1'000'000; ++i)
        numbers.push_back(i);
    EXPECT_EQ(std::accumulate(numbers.begin(), numbers.end(), 0LL), 499'999'500'000LL);
}

TEST(ByteBuffer, holdsWhatWasAddedAndKeepsItWhileItGrows)
{
    ByteBuffer buffer;
    EXPECT_TRUE(buffer.view().empty());
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        const std::string piece = "piece " + std::to_string(i) + ';';
        if (buffer.room() < piece.size())
            buffer.reserve(2 * buffer.capacity() + piece.size());
        ASSERT_GE(buffer.room(), piece.size());
        std::copy(piece.begin(), piece.end(), buffer.next());
        buffer.added(piece.size());
        expected += piece;
    }
    EXPECT_TRUE(buffer == expected);
}

TEST(ByteBuffer, movingTakesTheBytesAlong)
{
    ByteBuffer buffer;
    buffer.reserve(2 * largeMemory::smallest);
    *buffer.next() = 'a';
    buffer.added(1);

    ByteBuffer other = std::move(buffer);
    EXPECT_TRUE(other == "a");
    ByteBuffer third;
    third = std::move(other);
    EXPECT_TRUE(third == "a");
    EXPECT_EQ(third.capacity(), 2 * largeMemory::smallest);
}
