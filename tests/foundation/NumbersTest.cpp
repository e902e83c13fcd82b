#include "foundation/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr int mostInt = std::numeric_limits<int>::max();
constexpr int leastInt = std::numeric_limits<int>::min();

} // namespace

TEST(Numbers, aLeadingIntegerIsReadUpToWhatIsNoDigit)
{
    EXPECT_EQ(numbers::leadingInt("42"), 42);
    EXPECT_EQ(numbers::leadingInt("42 apples"), 42);
    EXPECT_EQ(numbers::leadingInt("  \t-7.9"), -7);
    EXPECT_EQ(numbers::leadingInt("+3"), 3);
    EXPECT_EQ(numbers::leadingInt("007"), 7);
}

TEST(Numbers, aTextThatStartsWithNoIntegerCountsAsZero)
{
    for (const char* text : {"", " ", "-", "+", "apples 42", "--5", "- 5", ".5"})
        EXPECT_EQ(numbers::leadingInt(text), 0) << text;
}

TEST(Numbers, anIntegerBeyondThirtyTwoBitsStopsAtTheEnd)
{
    EXPECT_EQ(numbers::leadingInt("2147483647"), mostInt);
    EXPECT_EQ(numbers::leadingInt("2147483648"), mostInt);
    EXPECT_EQ(numbers::leadingInt("-2147483648"), leastInt);
    EXPECT_EQ(numbers::leadingInt("-2147483649"), leastInt);
    EXPECT_EQ(numbers::leadingInt(std::string(500, '9')), mostInt);
    EXPECT_EQ(numbers::leadingInt("-" + std::string(500, '9')), leastInt);
}

TEST(Numbers, aLeadingDecimalNumberStopsAtAGroupMark)
{
    EXPECT_EQ(numbers::leadingFloat("1,234.56"), 1.0f);
    EXPECT_EQ(numbers::leadingFloat("12.50 each"), 12.5f);
    EXPECT_EQ(numbers::leadingFloat("  -0.25"), -0.25f);
    EXPECT_EQ(numbers::leadingFloat("+2"), 2.0f);
    EXPECT_EQ(numbers::leadingFloat(".5"), 0.5f);
    EXPECT_EQ(numbers::leadingFloat("5."), 5.0f);
    EXPECT_EQ(numbers::leadingFloat("1.2.3"), 1.2f);
}

TEST(Numbers, aTextThatStartsWithNoNumberCountsAsZero)
{
    for (const char* text : {"", "abc", "-", ".", "-.", "£5", "nan", "inf", "infinity", "-+5", "+-5"})
        EXPECT_EQ(numbers::leadingFloat(text), 0.0f) << text;
}

TEST(Numbers, aNumberTooLargeForSinglePrecisionIsInfinite)
{
    EXPECT_EQ(numbers::leadingFloat(std::string(60, '9')), std::numeric_limits<float>::infinity());
    EXPECT_EQ(numbers::leadingFloat("-" + std::string(60, '9') + ".5"), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(numbers::leadingFloat("0." + std::string(60, '0') + "1"), 0.0f);
}

TEST(Numbers, aLeadingDecimalNumberMayHaveAnExponent)
{
    EXPECT_EQ(numbers::leadingFloat("2e+06"), 2000000.0f);
    EXPECT_EQ(numbers::leadingFloat("1.5E-3 kg"), 0.0015f);
    EXPECT_EQ(numbers::leadingFloat("-5e2.7"), -500.0f);
    for (const char* text : {"3 e5", "3e", "3e+", "3each", "3e-x"})
        EXPECT_EQ(numbers::leadingFloat(text), 3.0f) << text;
    for (const char* text : {"e5", ".e5", "-e5"})
        EXPECT_EQ(numbers::leadingFloat(text), 0.0f) << text;
}

TEST(Numbers, anExponentDecidesWhetherANumberIsTooLargeOrTooSmall)
{
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(numbers::leadingFloat("1e39"), infinity);
    EXPECT_EQ(numbers::leadingFloat("-0.1e99999999999999999999"), -infinity);
    EXPECT_EQ(numbers::leadingFloat("1e-60"), 0.0f);
    EXPECT_EQ(numbers::leadingFloat("0." + std::string(100, '0') + "1e+20"), 0.0f);
    EXPECT_EQ(numbers::leadingFloat("1" + std::string(100, '0') + "e-20"), infinity);
    EXPECT_EQ(numbers::leadingFloat("0e999"), 0.0f);
}

TEST(Numbers, theDigitsOfACodeAreReadAsOneInteger)
{
    EXPECT_EQ(numbers::digitsOf("INV-2024-07"), 202407.0f);
    EXPECT_EQ(numbers::digitsOf("A1B2"), 12.0f);
    EXPECT_EQ(numbers::digitsOf(""), 0.0f);
    EXPECT_EQ(numbers::digitsOf("no digits"), 0.0f);
    EXPECT_EQ(numbers::digitsOf("-5"), 5.0f);
    EXPECT_EQ(numbers::digitsOf("1.5"), 15.0f);
    EXPECT_EQ(numbers::digitsOf("0012"), 12.0f);
}

TEST(Numbers, onlyAsciiDigitsOfACodeCount)
{
    // An Arabic-Indic three and a superscript two.
    EXPECT_EQ(numbers::digitsOf("7\xd9\xa3\xc2\xb2"
                                "8"),
        78.0f);
}

TEST(Numbers, theDigitsOfALongCodeStopAtTheLargestInteger)
{
    EXPECT_EQ(numbers::digitsOf("2147483647"), 2147483648.0f); // the nearest float
    EXPECT_EQ(numbers::digitsOf("99999999999999999999999999"), 2147483648.0f);
}

TEST(Numbers, aCodeIsKeptInSinglePrecision)
{
    // 16,777,217 is the first integer a float cannot hold.
    EXPECT_EQ(numbers::digitsOf("16777217"), 16777216.0f);
}

TEST(Numbers, generalNotationHasSixDigitsAndDropsZeros)
{
    EXPECT_EQ(numbers::general(17.5), "17.5");
    EXPECT_EQ(numbers::general(20), "20");
    EXPECT_EQ(numbers::general(0), "0");
    EXPECT_EQ(numbers::general(1234567), "1.23457e+06");
    EXPECT_EQ(numbers::general(0.00001), "1e-05");
    EXPECT_EQ(numbers::general(-0.1), "-0.1");
}

TEST(Numbers, twoDigitNotationKeepsTwoSignificantDigits)
{
    EXPECT_EQ(numbers::twoDigits(17.5), "18"); // half to even: 17.5 lies between 17 and 18
    EXPECT_EQ(numbers::twoDigits(5), "5");
    EXPECT_EQ(numbers::twoDigits(0.333), "0.33");
    EXPECT_EQ(numbers::twoDigits(123), "1.2e+02");
}

TEST(Numbers, writtenOutThereAreSixDecimalsAtMostAndNoZerosAtTheEnd)
{
    EXPECT_EQ(numbers::plain(7), "7");
    EXPECT_EQ(numbers::plain(100), "100");
    EXPECT_EQ(numbers::plain(1234567.25), "1234567.25");
    EXPECT_EQ(numbers::plain(1.0 / 3), "0.333333");
    EXPECT_EQ(numbers::plain(-2.50), "-2.5");
    EXPECT_EQ(numbers::plain(0), "0");
}

TEST(Numbers, fixedNotationHasExactlyItsDigits)
{
    EXPECT_EQ(numbers::fixed(3.14159, 2), "3.14");
    EXPECT_EQ(numbers::fixed(2, 3), "2.000");
    EXPECT_EQ(numbers::fixed(-1.5, 0), "-2");
    EXPECT_EQ(numbers::fixed(1e20, 1), "100000000000000000000.0");
}

TEST(Numbers, aPlainDecimalIsReadAndNothingElse)
{
    EXPECT_EQ(numbers::decimal("12.5"), 12.5);
    EXPECT_EQ(numbers::decimal("-3"), -3.0);
    EXPECT_EQ(numbers::decimal("+3"), 3.0);
    EXPECT_EQ(numbers::decimal(".5"), 0.5);
    for (const char* text : {"", " 5", "5 ", "1,000", "1e5", "0x10", "nan", "inf", "5a", "1.2.3", "--1", "."})
        EXPECT_FALSE(numbers::decimal(text).has_value()) << text;
    EXPECT_FALSE(numbers::decimal(std::string(400, '9')).has_value());
}

TEST(Numbers, arithmeticFollowsTheUsualPrecedence)
{
    EXPECT_EQ(numbers::arithmetic("2*3.50"), 7.0);
    EXPECT_EQ(numbers::arithmetic("2+3*4"), 14.0);
    EXPECT_EQ(numbers::arithmetic("(2+3)*4"), 20.0);
    EXPECT_EQ(numbers::arithmetic("10-4-3"), 3.0);
    EXPECT_EQ(numbers::arithmetic("100/10/2"), 5.0);
    EXPECT_EQ(numbers::arithmetic(" 1 + 2 "), 3.0);
    EXPECT_EQ(numbers::arithmetic("-(2+1)"), -3.0);
    EXPECT_EQ(numbers::arithmetic("2*-3"), -6.0);
    EXPECT_EQ(numbers::arithmetic("--2"), 2.0);
    EXPECT_EQ(numbers::arithmetic("7"), 7.0);
}

TEST(Numbers, arithmeticThatDoesNotWorkOutGivesNothing)
{
    for (const char* text :
        {"", " ", "2+", "*2", "(2", "2)", "1/0", "0/0", "-1/0", "2 3", "2**3", "a", "1,000+1", "()", "1e3", "2+a", "=2"})
        EXPECT_FALSE(numbers::arithmetic(text).has_value()) << text;
}

TEST(Numbers, arithmeticNestedWithoutEndGivesNothing)
{
    EXPECT_FALSE(numbers::arithmetic(std::string(100'000, '(')).has_value());
    EXPECT_FALSE(numbers::arithmetic(std::string(100'000, '-') + "1").has_value());
    EXPECT_EQ(numbers::arithmetic("((((((((((1))))))))))"), 1.0);
}
