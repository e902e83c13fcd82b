#include "foundation/ByteHash.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {

ByteHash hashOf(std::string_view bytes)
{
    ByteHash hash;
    hash.add(bytes);
    return hash;
}

} // namespace

TEST(ByteHash, theSameBytesGiveTheSameHashInPiecesOfAnySize)
{
    std::mt19937 random(3);
    std::string bytes(1000, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    for (int round = 0; round < 200; ++round) {
        ByteHash pieces;
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t size = random() % 20;
            pieces.add(std::string_view(bytes).substr(at, size));
            at += size;
        }
        ASSERT_EQ(pieces, hashOf(bytes));
        ASSERT_EQ(pieces.size(), bytes.size());
    }
}

TEST(ByteHash, aChangeOfOneByteAnywhereChangesIt)
{
    const std::string bytes = "<string>Ada Quill</string>";
    const ByteHash before = hashOf(bytes);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ (1 << bit));
            ASSERT_FALSE(hashOf(changed) == before) << at;
        }
    }
}

TEST(ByteHash, lengthsAreToldApartEvenOfZeros)
{
    std::set<std::uint64_t> values;
    for (std::size_t length = 0; length < 100; ++length)
        values.insert(hashOf(std::string(length, '\0')).value());

    EXPECT_EQ(values.size(), 100u);
}

TEST(ByteHash, swappedWordsAreToldApart)
{
    EXPECT_FALSE(hashOf("aaaaaaaabbbbbbbb") == hashOf("bbbbbbbbaaaaaaaa"));
    EXPECT_FALSE(hashOf("ab") == hashOf("ba"));
}
