#include "foundation/plist/PlistReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// A binary list of these objects, the first of which is the root. Offsets take two bytes, references one.
std::string binaryList(const std::vector<std::string>& objects)
{
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += {static_cast<char>(bytes.size() >> 8), static_cast<char>(bytes.size() & 0xff)};
        bytes += object;
    }
    const std::size_t table = bytes.size();
    bytes += offsets + std::string(6, '\0') + '\x02' + '\x01' + std::string(7, '\0') + static_cast<char>(objects.size())
        + std::string(8, '\0') + std::string(6, '\0');
    return bytes + static_cast<char>(table >> 8) + static_cast<char>(table & 0xff);
}

/// A list of fewer than fifteen references.
std::string listOf(const std::string& references)
{
    return static_cast<char>(0xa0 + references.size()) + references;
}

/// A moment, in seconds since the beginning of 2001.
std::string dateOf(double seconds)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &seconds, sizeof bits);
    std::string object = "\x33";
    for (int shift = 56; shift >= 0; shift -= 8)
        object += static_cast<char>(bits >> shift & 0xff);
    return object;
}

} // namespace

TEST(BinaryPlist, aTextThatManyPlacesShareStandsInAllOfThem)
{
    const std::string list = binaryList({listOf("\1\1\1\1\2"), listOf("\2\2\2"),
        "\x53"
        "Mug"});

    const Result<PlistValue> value = plist::read(list);

    ASSERT_TRUE(value);
    ASSERT_EQ(value.value().array().size(), 5u);
    EXPECT_EQ(value.value().array()[4].raw(), "Mug");
    for (std::size_t i = 0; i < 4; ++i) {
        ASSERT_EQ(value.value().array()[i].array().size(), 3u);
        EXPECT_EQ(value.value().array()[i].array()[2].raw(), "Mug");
    }
}

TEST(BinaryPlist, aListThatHoldsItselfIsDamaged)
{
    EXPECT_FALSE(plist::read(binaryList({listOf(std::string(1, '\0'))})));
    EXPECT_FALSE(plist::read(binaryList({listOf(std::string("\0\0\0\0\0\0\0\0", 8))})));
}

TEST(BinaryPlist, listsOfTheSameListsAreRefusedBeforeTheyGrow)
{
    std::vector<std::string> objects;
    for (char next = 1; next <= 40; ++next)
        objects.push_back(listOf({next, next}));
    objects.push_back("\x51x");

    // Copied out, this would be two to the power of forty texts.
    EXPECT_FALSE(plist::read(binaryList(objects)));
}

TEST(BinaryPlist, aLongTextSharedTooOftenIsRefusedBeforeItGrows)
{
    const std::string longText = std::string("\x5f\x11\x20\0", 4) + std::string(0x2000, 'a');
    const std::string fourteenTexts = listOf(std::string(14, '\2'));

    EXPECT_TRUE(plist::read(binaryList({listOf("\1"), fourteenTexts, longText})));
    EXPECT_FALSE(plist::read(binaryList({listOf(std::string(14, '\1')), fourteenTexts, longText})));
}

TEST(BinaryPlist, aMomentIsADateOnlyInYearsOfFourDigits)
{
    const std::string list = binaryList(
        {listOf("\1\2\3\4\5"), dateOf(730900800), dateOf(252423993599), dateOf(252423993600), dateOf(-63113904000), dateOf(-63113904001)});

    const Result<PlistValue> value = plist::read(list);

    ASSERT_TRUE(value);
    const auto& moments = value.value().array();
    ASSERT_EQ(moments.size(), 5u);
    EXPECT_EQ(moments[0].kind(), PlistValue::Kind::date);
    EXPECT_EQ(moments[0].raw(), "2024-02-29T12:00:00Z");
    EXPECT_EQ(moments[1].kind(), PlistValue::Kind::date);
    EXPECT_EQ(moments[1].raw(), "9999-12-31T23:59:59Z");
    EXPECT_EQ(moments[2].kind(), PlistValue::Kind::text);
    EXPECT_EQ(moments[3].kind(), PlistValue::Kind::date);
    EXPECT_EQ(moments[3].raw(), "0001-01-01T00:00:00Z");
    EXPECT_EQ(moments[4].kind(), PlistValue::Kind::text);
}
