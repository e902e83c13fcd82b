#include "foundation/Money.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace {

constexpr char narrowBlank[] = "\xe2\x80\xaf";
constexpr char hardBlank[] = "\xc2\xa0";

const MoneyFormatter& british()
{
    static const MoneyFormatter formatter("en_GB");
    return formatter;
}

/// Sets an environment variable for the length of a test.
class Environment {
public:
    Environment(const char* name, const char* value) : m_name(name)
    {
        if (const char* before = std::getenv(name))
            m_before = before;
        m_wasSet = std::getenv(name) != nullptr;
        setenv(name, value, 1);
    }
    ~Environment()
    {
        if (m_wasSet)
            setenv(m_name, m_before.c_str(), 1);
        else
            unsetenv(m_name);
    }

private:
    const char* m_name;
    std::string m_before;
    bool m_wasSet = false;
};

} // namespace

struct Rounding {
    double amount;
    const char* british;
    const char* german;
    const char* indian;
};

class MoneyRounding : public testing::TestWithParam<Rounding> { };

TEST_P(MoneyRounding, goesToTheNearestPennyAndTiesToTheEvenOne)
{
    EXPECT_EQ(british().write(GetParam().amount), GetParam().british);
    EXPECT_EQ(MoneyFormatter("de_DE").write(GetParam().amount), GetParam().german);
    EXPECT_EQ(MoneyFormatter("en_IN").write(GetParam().amount), GetParam().indian);
}

INSTANTIATE_TEST_SUITE_P(Table, MoneyRounding,
    testing::Values(Rounding {0, "0.00", "0,00", "0.00"}, Rounding {1, "1.00", "1,00", "1.00"}, Rounding {1.005, "1.00", "1,00", "1.00"},
        Rounding {2.675, "2.68", "2,68", "2.68"}, Rounding {0.125, "0.12", "0,12", "0.12"}, Rounding {0.375, "0.38", "0,38", "0.38"},
        Rounding {0.005, "0.00", "0,00", "0.00"}, Rounding {0.015, "0.02", "0,02", "0.02"}, Rounding {0.025, "0.02", "0,02", "0.02"},
        Rounding {0.0251, "0.03", "0,03", "0.03"}, Rounding {0.00501, "0.01", "0,01", "0.01"}, Rounding {9.985, "9.98", "9,98", "9.98"},
        Rounding {9.995, "10.00", "10,00", "10.00"}, Rounding {999.995, "1,000.00", "1.000,00", "1,000.00"},
        Rounding {99.99, "99.99", "99,99", "99.99"}, Rounding {-0.004, "0.00", "0,00", "0.00"}, Rounding {-0.005, "0.00", "0,00", "0.00"},
        Rounding {-0.0, "0.00", "0,00", "0.00"}, Rounding {-0.006, "-0.01", "-0,01", "-0.01"}, Rounding {-0.015, "-0.02", "-0,02", "-0.02"},
        Rounding {-1.005, "-1.00", "-1,00", "-1.00"}, Rounding {1000, "1,000.00", "1.000,00", "1,000.00"},
        Rounding {100000, "100,000.00", "100.000,00", "1,00,000.00"}, Rounding {1234567.89, "1,234,567.89", "1.234.567,89", "12,34,567.89"},
        Rounding {-1234567.89, "-1,234,567.89", "-1.234.567,89", "-12,34,567.89"},
        Rounding {10000000, "10,000,000.00", "10.000.000,00", "1,00,00,000.00"}));

TEST(Money, aFloatIsWidenedBeforeItIsWritten)
{
    // As floats these lie just below their tie, and 1234567.89 becomes 1234567.875.
    EXPECT_EQ(british().write(static_cast<double>(1.005f)), "1.00");
    EXPECT_EQ(british().write(static_cast<double>(2.675f)), "2.67");
    EXPECT_EQ(british().write(static_cast<double>(1234567.89f)), "1,234,567.88");
}

TEST(Money, theFrenchGroupByANarrowBlank)
{
    EXPECT_EQ(MoneyFormatter("fr_FR").write(1234567.89), std::string("1") + narrowBlank + "234" + narrowBlank + "567,89");
    EXPECT_EQ(MoneyFormatter("fr_FR").write(-0.5), "-0,50");
}

TEST(Money, whatLiesBeyondTheLimitsIsWrittenInFull)
{
    EXPECT_EQ(british().write(12345678901.5), "12,345,678,901.50");
    EXPECT_EQ(british().write(-1e15), "-1,000,000,000,000,000.00");
    EXPECT_EQ(british().write(1e20), "100,000,000,000,000,000,000.00");
}

struct Reading {
    const char* locale;
    std::string text;
    double number;
};

class MoneyReading : public testing::TestWithParam<Reading> { };

TEST_P(MoneyReading, takesTheNumberAsTheLocaleWritesIt)
{
    const std::optional<double> number = MoneyFormatter(GetParam().locale).read(GetParam().text);

    ASSERT_TRUE(number.has_value()) << GetParam().locale << ": " << GetParam().text;
    EXPECT_EQ(*number, GetParam().number) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Table, MoneyReading,
    testing::Values(Reading {"en_GB", "1234.56", 1234.56}, Reading {"en_GB", "1,234.56", 1234.56},
        Reading {"en_GB", "1,234,567.89", 1234567.89}, Reading {"en_GB", "1, 234.56", 1234.56}, Reading {"en_GB", "  12.5\t", 12.5},
        Reading {"en_GB", std::string(hardBlank) + "12.5" + hardBlank, 12.5}, Reading {"en_GB", "-5", -5},
        Reading {"en_GB",
            "\xe2\x88\x92"
            "5",
            -5},
        Reading {"en_GB", ".5", 0.5}, Reading {"en_GB", "5.", 5}, Reading {"en_GB", "0.005", 0.005}, Reading {"en_GB", "10,000,000", 1e7},
        Reading {"en_GB", "-10000000.00", -1e7}, Reading {"de_DE", "1.234,56", 1234.56}, Reading {"de_DE", "1234,56", 1234.56},
        Reading {"de_DE", "1.234.567,89", 1234567.89}, Reading {"fr_FR", std::string("1") + narrowBlank + "234,56", 1234.56},
        Reading {"fr_FR", std::string("1") + hardBlank + "234,56", 1234.56}, Reading {"fr_FR", "1 234,56", 1234.56},
        Reading {"en_IN", "12,34,567.89", 1234567.89}, Reading {"en_IN", "1,234.5", 1234.5}));

TEST(Money, whatALocaleWritesItReadsAgain)
{
    for (const char* locale : {"en_GB", "de_DE", "fr_FR", "sv_SE", "he_IL", "ar_EG", "ar_AE", "fa_IR", "ur_PK", "hi_IN", "mr_IN", "bn_BD",
             "th_TH", "my_MM", "de_CH", "ja_JP"}) {
        const MoneyFormatter formatter(locale);
        for (const double amount : {0.0, 0.05, -0.05, 12.5, -1234.5, 1234567.89, -9999999.99}) {
            const std::optional<double> number = formatter.read(formatter.write(amount));
            ASSERT_TRUE(number.has_value()) << locale << ": " << formatter.write(amount);
            EXPECT_EQ(*number, amount) << locale;
        }
    }
}

TEST(Money, whatIsNoNumberOfItsOwnIsRefused)
{
    for (const char* text : {"", " ", "abc", "12abc", "abc12", "12 apples", "£5", "5 GBP", "1e5", "1E2", "nan", "NaN", "inf", "Infinity",
             "-inf", "0x10", "-", ".", "-.", "--5", "5-", "1.2.3", "1,,2", ",5", "5,", "1,234.5,6", "12 34", "(5)", "50%", "1,.5", "- 5"})
        EXPECT_FALSE(british().read(text).has_value()) << text;
}

TEST(Money, whatLiesOutsideTheLimitsIsRefused)
{
    for (const char* text : {"10000000.01", "-10000000.01", "10,000,001", "99999999999999999999999999"})
        EXPECT_FALSE(british().read(text).has_value()) << text;
    EXPECT_FALSE(british().read(std::string(500, '9')).has_value());
    EXPECT_EQ(british().read("0." + std::string(500, '0') + "1"), 0.0);
}

TEST(Money, otherMarksThanTheLocalesAreRefused)
{
    EXPECT_FALSE(british().read("1 234.56").has_value());
    EXPECT_FALSE(MoneyFormatter("de_DE").read("1,234.56").has_value());
    EXPECT_FALSE(MoneyFormatter("fr_FR").read("1.234,56").has_value());
}

TEST(Money, theValueIsInSinglePrecisionAndZeroWhenUnreadable)
{
    EXPECT_EQ(british().value("1,234.56"), 1234.56f);
    EXPECT_EQ(british().value(""), 0.0f);
    EXPECT_EQ(british().value("apples"), 0.0f);
    EXPECT_EQ(british().value("99,999,999"), 0.0f);
    EXPECT_EQ(british().value("1,234,567.89"), 1234567.875f);
}

TEST(Money, normalisingKeepsTheDecimalValue)
{
    EXPECT_EQ(british().normalised("1234567.89"), "1,234,567.89");
    EXPECT_EQ(british().normalised("1,234,567.89"), "1,234,567.89");
    EXPECT_EQ(british().normalised(" 5 "), "5.00");
    EXPECT_EQ(british().normalised("-0"), "0.00");
    EXPECT_EQ(british().normalised("-0.004"), "0.00");
    EXPECT_EQ(british().normalised("2.675"), "2.68");
    EXPECT_FALSE(british().normalised("apples").has_value());
    EXPECT_FALSE(british().normalised("").has_value());
}

TEST(Money, everyPennyUpToAThousandPoundsSurvivesBeingWrittenAndRead)
{
    for (const char* locale : {"en_GB", "de_DE", "fr_FR", "en_IN"}) {
        const MoneyFormatter formatter(locale);
        for (int pence = -100'000; pence <= 100'000; pence += 7) {
            const double amount = pence / 100.0;
            ASSERT_EQ(formatter.read(formatter.write(amount)), amount) << locale << ' ' << pence;
        }
    }
}

TEST(Money, theWantedLocaleComesBeforeTheEnvironments)
{
    const Environment all("LC_ALL", "de_DE.UTF-8");

    EXPECT_EQ(money::localeFor("fr_FR"), "fr_FR");
    EXPECT_EQ(money::localeFor(""), "de_DE");
}

TEST(Money, anEnvironmentWithoutALanguageCountsAsBritish)
{
    const Environment numeric("LC_NUMERIC", "de_DE");
    for (const char* plain : {"C", "POSIX", "C.UTF-8"}) {
        const Environment all("LC_ALL", plain);
        EXPECT_EQ(money::localeFor(""), "en_GB") << plain;
    }
}

TEST(Money, anEmptyVariableCountsAsUnset)
{
    const Environment all("LC_ALL", "");
    const Environment numeric("LC_NUMERIC", "de_AT@euro");

    EXPECT_EQ(money::localeFor(""), "de_AT");
}

TEST(Money, theProcesssOwnLocaleDoesNotMatter)
{
    const char* before = std::setlocale(LC_ALL, nullptr);
    const std::string kept = before ? before : "C";
    std::setlocale(LC_ALL, "");

    EXPECT_EQ(british().read("1.5"), 1.5);
    EXPECT_EQ(british().write(1.5), "1.50");

    std::setlocale(LC_ALL, kept.c_str());
}
