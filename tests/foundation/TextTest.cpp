#include "foundation/Text.h"

#include <gtest/gtest.h>

#include <QString>

using namespace std::string_literals;

TEST(Text, anEmptyTextNeedsNoStoreAndHasNoBytes)
{
    const Text empty;

    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.view(), "");
    EXPECT_EQ(empty.toQString(), QString());
    EXPECT_EQ(sizeof(Text), sizeof(void*));
}

TEST(Text, addingAnEmptyTextToAStoreTakesNoMemory)
{
    TextStore store;

    EXPECT_TRUE(store.add("").isEmpty());
    EXPECT_EQ(store.capacity(), 0u);
}

TEST(Text, whatWasAddedReadsBackByteForByte)
{
    TextStore store;

    const Text text = store.add("Caf\xc3\xa9 & Sons");

    EXPECT_EQ(text.view(), "Caf\xc3\xa9 & Sons");
    EXPECT_EQ(text.string().size(), 12u);
    EXPECT_EQ(text.toQString(), QString::fromUtf8("Café & Sons"));
    EXPECT_FALSE(text.isEmpty());
}

TEST(Text, textsAreEqualByTheirBytesWhateverStoreTheyLieIn)
{
    TextStore first;
    TextStore second;

    EXPECT_EQ(first.add("Ada"), second.add("Ada"));
    EXPECT_FALSE(first.add("Ada") == second.add("ada"));
    EXPECT_TRUE(first.add("Ada") == "Ada");
    EXPECT_TRUE(Text() == "");
    EXPECT_FALSE(Text() == first.add("x"));
}

TEST(Text, earlierTextsStayWhereTheyAreWhileTheStoreGrows)
{
    TextStore store;
    const Text first = store.add("the first");
    const char* const place = first.view().data();

    std::vector<Text> more;
    for (int i = 0; i < 200'000; ++i)
        more.push_back(store.add("number " + std::to_string(i)));

    EXPECT_EQ(first.view().data(), place);
    EXPECT_EQ(first.view(), "the first");
    for (int i = 0; i < 200'000; i += 997)
        EXPECT_EQ(more[static_cast<std::size_t>(i)].view(), "number " + std::to_string(i));
}

TEST(Text, aTextLargerThanAnyChunkIsKeptWhole)
{
    TextStore store;
    const std::string large(9 * 1024 * 1024 + 3, 'x');

    const Text text = store.add(large);
    const Text after = store.add("after");

    EXPECT_EQ(text.view(), large);
    EXPECT_EQ(after.view(), "after");
}

TEST(Text, aLiteralTextIsATextWithoutAStore)
{
    constexpr Text customer = literalText<"Customer">();
    TextStore store;

    EXPECT_EQ(customer.view(), "Customer");
    EXPECT_EQ(customer, store.add("Customer"));
    EXPECT_TRUE(literalText<"">().isEmpty());
}

TEST(Text, aLiteralLongerThanOneLengthByteKeepsItsLength)
{
    constexpr Text text = literalText<"0123456789012345678901234567890123456789012345678901234567890123456789"
                                      "0123456789012345678901234567890123456789012345678901234567890123456789"
                                      "0123456789012345678901234567890123456789012345678901234567890123456789"
                                      "0123456789012345678901234567890123456789012345678901234567890123456789">();

    EXPECT_EQ(text.view().size(), 280u);
    EXPECT_EQ(text.view().back(), '9');
}

TEST(Text, cleanTextStaysAsItIs)
{
    for (const std::string text : {"", "plain", "tab\tand\nlines\r\n", "\xc2\x80", "\xe2\x82\xac", "\xf0\x9f\x98\x80", "\xef\xbf\xbd"}) {
        EXPECT_TRUE(isCleanUtf8(text)) << text;
        EXPECT_EQ(cleanUtf8(text), text);
    }
}

TEST(Text, controlCharactersNoFileMayHoldAreDropped)
{
    EXPECT_EQ(cleanUtf8("a\x01"s + "b\x0b" + "c\x1f" + "d"), "abcd");
    EXPECT_EQ(cleanUtf8("nul\0here"s), "nulhere");
    EXPECT_EQ(cleanUtf8("not\xef\xbf\xbe"
                        "a\xef\xbf\xbf"
                        "character"s),
        "notacharacter");
    EXPECT_FALSE(isCleanUtf8("\x07"));
    EXPECT_TRUE(isUtf8("\x07"));
}

struct Malformed {
    const char* what;
    std::string bytes;
    std::string cleaned;
};

class MalformedUtf8 : public testing::TestWithParam<Malformed> { };

TEST_P(MalformedUtf8, becomesTheReplacementCharacterForEachBadByte)
{
    EXPECT_FALSE(isUtf8(GetParam().bytes));
    EXPECT_FALSE(isCleanUtf8(GetParam().bytes));
    EXPECT_EQ(cleanUtf8(GetParam().bytes), GetParam().cleaned);
    EXPECT_TRUE(isCleanUtf8(GetParam().cleaned));
}

// U+FFFD is EF BF BD.
INSTANTIATE_TEST_SUITE_P(Kinds, MalformedUtf8,
    testing::Values(Malformed {"Latin1", "caf\xe9", "caf\xef\xbf\xbd"}, Malformed {"LoneContinuation", "\x80x", "\xef\xbf\xbdx"},
        Malformed {"CutOffAtTheEnd", "\xe2\x82", "\xef\xbf\xbd\xef\xbf\xbd"}, Malformed {"CutOffInTheMiddle", "\xe2(a", "\xef\xbf\xbd(a"},
        Malformed {"OverlongSlash", "\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},
        Malformed {"OverlongThreeBytes", "\xe0\x80\xaf", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        Malformed {"EncodedSurrogate", "\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        Malformed {"BeyondUnicode", "\xf4\x90\x80\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        Malformed {"NoLeadByte", "\xff", "\xef\xbf\xbd"}, Malformed {"AfterEightPlainBytes", "12345678\xc3", "12345678\xef\xbf\xbd"}),
    [](const auto& malformed) { return malformed.param.what; });

TEST(Text, aCharacterNoFileMayHoldIsFoundWhereverItStands)
{
    for (const char* refused : {"\x01", "\x08", "\x1f", "\xef\xbf\xbe", "\xff", "\xc3"}) {
        for (std::size_t before = 0; before < 20; ++before) {
            const std::string text = std::string(before, 'a') + refused + std::string(20 - before, 'b');
            EXPECT_FALSE(isCleanUtf8(text)) << before;
        }
    }
    for (const char* allowed : {"\t", "\n", "\r", " ", "\x7f", "\xc3\xa9", "\xf0\x9f\x99\x82"}) {
        for (std::size_t before = 0; before < 20; ++before)
            EXPECT_TRUE(isCleanUtf8(std::string(before, 'a') + allowed + std::string(20 - before, 'b'))) << before;
    }
}

TEST(Text, aLoneSurrogateOfTheScreenBecomesTheReplacementCharacter)
{
    const QString lone = QString("a") + QChar(0xd83d) + "b";
    const QString pair = QString("a") + QChar(0xd83d) + QChar(0xde00) + "b";

    EXPECT_EQ(cleanUtf8(lone),
        "a\xef\xbf\xbd"
        "b");
    EXPECT_EQ(cleanUtf8(pair),
        "a\xf0\x9f\x98\x80"
        "b");
    EXPECT_EQ(cleanUtf8(QString("bell\a")), "bell");
}

TEST(Text, bytesBecomeScreenTextAndBack)
{
    EXPECT_EQ(toQString("\xe2\x82\xac 5"), QString::fromUtf8("€ 5"));
    EXPECT_EQ(toQString(std::string_view()), QString());
}

TEST(TextStore, aTextThatRepeatsIsKeptOnce)
{
    TextStore store;
    const Text first = store.addRepeating("Bank transfer");
    const Text again = store.addRepeating("Bank transfer");

    EXPECT_EQ(first.view().data(), again.view().data());
    EXPECT_NE(store.add("Bank transfer").view().data(), first.view().data());
    EXPECT_TRUE(store.addRepeating("").isEmpty());
}

TEST(TextStore, repeatingNeverMixesUpTexts)
{
    TextStore store;
    std::vector<std::pair<std::string, Text>> all;
    // Of every length, with differences in the middle, where a quick look at both ends does not see them.
    for (int round = 0; round < 3; ++round) {
        for (std::size_t length = 1; length < 60; ++length) {
            for (const char letter : {'a', 'b', 'c'}) {
                std::string text(length, '.');
                text[length / 2] = letter;
                all.emplace_back(text, store.addRepeating(text));
            }
        }
        for (int i = 0; i < 20'000; ++i)
            all.emplace_back("INV" + std::to_string(i), store.addRepeating("INV" + std::to_string(i)));
    }
    store.endRepeating();
    all.emplace_back("after", store.addRepeating("after"));

    for (const auto& [expected, text] : all)
        ASSERT_EQ(text.view(), expected);
}
