#include "documents/rtf/RtfTokenizer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Kind = RtfToken::Kind;

std::vector<RtfToken> tokensOf(std::string_view bytes)
{
    RtfTokenizer tokenizer(bytes);
    std::vector<RtfToken> tokens;
    for (RtfToken token = tokenizer.next(); token.kind != Kind::end; token = tokenizer.next())
        tokens.push_back(token);
    return tokens;
}

RtfToken onlyTokenOf(std::string_view bytes)
{
    const std::vector<RtfToken> tokens = tokensOf(bytes);
    EXPECT_EQ(tokens.size(), 1U) << bytes;
    return tokens.empty() ? RtfToken {} : tokens.front();
}

TEST(RtfTokenizerTest, nothingGivesNothing)
{
    EXPECT_EQ(RtfTokenizer("").next().kind, Kind::end);
}

TEST(RtfTokenizerTest, bracesOpenAndCloseGroups)
{
    const std::vector<RtfToken> tokens = tokensOf("{}");
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_EQ(tokens[0].kind, Kind::groupOpen);
    EXPECT_EQ(tokens[1].kind, Kind::groupClose);
}

TEST(RtfTokenizerTest, aWordEndsAtItsBlankWhichBelongsToIt)
{
    const std::vector<RtfToken> tokens = tokensOf("\\pard  two");
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_EQ(tokens[0].kind, Kind::word);
    EXPECT_EQ(tokens[0].text, "pard");
    EXPECT_FALSE(tokens[0].hasParameter);
    EXPECT_EQ(tokens[1].text, " two");
}

TEST(RtfTokenizerTest, aWordMayHaveANumber)
{
    const RtfToken word = onlyTokenOf("\\fs24");
    EXPECT_EQ(word.text, "fs");
    EXPECT_TRUE(word.hasParameter);
    EXPECT_EQ(word.parameter, 24);
}

TEST(RtfTokenizerTest, aNumberMayBeNegative)
{
    const RtfToken word = onlyTokenOf("\\u-3941 ");
    EXPECT_EQ(word.text, "u");
    EXPECT_EQ(word.parameter, -3941);
}

TEST(RtfTokenizerTest, aZeroIsANumberToo)
{
    const RtfToken word = onlyTokenOf("\\b0");
    EXPECT_TRUE(word.hasParameter);
    EXPECT_EQ(word.parameter, 0);
}

TEST(RtfTokenizerTest, aMinusWithoutDigitsIsText)
{
    const std::vector<RtfToken> tokens = tokensOf("\\b-x");
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_FALSE(tokens[0].hasParameter);
    EXPECT_EQ(tokens[1].text, "-x");
}

TEST(RtfTokenizerTest, aHugeNumberStaysWithinAnInteger)
{
    EXPECT_GT(onlyTokenOf("\\fs99999999999999999999").parameter, 99'999'999);
    EXPECT_LT(onlyTokenOf("\\fs-99999999999999999999").parameter, -99'999'999);
}

TEST(RtfTokenizerTest, anEndlessWordIsCutAndItsRestIsText)
{
    const std::vector<RtfToken> tokens = tokensOf("\\" + std::string(10'000, 'a'));
    ASSERT_EQ(tokens.size(), 2U);
    EXPECT_EQ(tokens[0].kind, Kind::word);
    EXPECT_EQ(tokens[1].kind, Kind::text);
    EXPECT_EQ(tokens[0].text.size() + tokens[1].text.size(), 10'000U);
}

TEST(RtfTokenizerTest, wordsFollowEachOtherWithoutBlank)
{
    const std::vector<RtfToken> tokens = tokensOf("\\f0\\b\\fs48 \\cf2 Invoice ");
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(tokens[1].text, "b");
    EXPECT_EQ(tokens[3].parameter, 2);
    EXPECT_EQ(tokens[4].text, "Invoice ");
}

TEST(RtfTokenizerTest, anApostropheGivesAByteInHex)
{
    EXPECT_EQ(onlyTokenOf("\\'8e").kind, Kind::hex);
    EXPECT_EQ(onlyTokenOf("\\'8e").byte, 0x8e);
    EXPECT_EQ(onlyTokenOf("\\'8E").byte, 0x8e);
}

TEST(RtfTokenizerTest, whatIsNoHexBecomesAQuestionMark)
{
    EXPECT_EQ(onlyTokenOf("\\'g1").byte, '?');
    EXPECT_EQ(onlyTokenOf("\\'1g").byte, '?');
}

TEST(RtfTokenizerTest, aBackslashBeforeALineEndIsOneSymbol)
{
    EXPECT_EQ(onlyTokenOf("\\\n").kind, Kind::symbol);
    EXPECT_EQ(onlyTokenOf("\\\n").text, "\n");
    EXPECT_EQ(onlyTokenOf("\\\r").text, "\r");
    EXPECT_EQ(onlyTokenOf("\\\r\n").text, "\r");
}

TEST(RtfTokenizerTest, signsBehindABackslashAreSymbols)
{
    for (const char* sign : {"\\*", "\\~", "\\{", "\\}", "\\\\"}) {
        EXPECT_EQ(onlyTokenOf(sign).kind, Kind::symbol) << sign;
        EXPECT_EQ(onlyTokenOf(sign).text, std::string_view(sign).substr(1));
    }
}

TEST(RtfTokenizerTest, lineEndsAndNulsBetweenTokensMeanNothing)
{
    const std::vector<RtfToken> tokens = tokensOf(std::string_view("a\r\nb\0c\n", 7));
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[0].text, "a");
    EXPECT_EQ(tokens[1].text, "b");
    EXPECT_EQ(tokens[2].text, "c");
}

TEST(RtfTokenizerTest, aTabIsText)
{
    EXPECT_EQ(onlyTokenOf("a\tb").text, "a\tb");
}

TEST(RtfTokenizerTest, bytesBeyondAsciiAreText)
{
    EXPECT_EQ(onlyTokenOf("caf\xe9").text, "caf\xe9");
}

TEST(RtfTokenizerTest, rawBytesCanBePassedOver)
{
    RtfTokenizer tokenizer("\\bin3 }}}x");
    EXPECT_EQ(tokenizer.next().parameter, 3);
    tokenizer.skip(3);
    EXPECT_EQ(tokenizer.next().text, "x");
}

TEST(RtfTokenizerTest, passingOverMoreThanThereIsEnds)
{
    RtfTokenizer tokenizer("abc");
    tokenizer.skip(static_cast<std::size_t>(-1));
    EXPECT_EQ(tokenizer.next().kind, Kind::end);
}

TEST(RtfTokenizerTest, anUnfinishedControlAtTheEndEndsWithoutInventingAnything)
{
    EXPECT_TRUE(tokensOf("\\").empty());
    for (const RtfToken& token : tokensOf("\\'8"))
        EXPECT_NE(token.kind, Kind::hex);
}

} // namespace
