#include "foundation/plist/PlistValue.h"

#include <gtest/gtest.h>

TEST(PlistValue, theDefaultIsTheEmptyText)
{
    const PlistValue value;
    EXPECT_EQ(value.kind(), PlistValue::Kind::text);
    EXPECT_EQ(value.asText(), "");
    EXPECT_TRUE(value.hasText());
}

TEST(PlistValue, whatCanStandForATextAnswersOne)
{
    EXPECT_EQ(PlistValue("tea").asText(), "tea");
    EXPECT_EQ(PlistValue::makeInteger(-42).asText(), "-42");
    EXPECT_EQ(PlistValue::makeBoolean(true).asText(), "YES");
    EXPECT_EQ(PlistValue::makeBoolean(false).asText(), "NO");
    EXPECT_EQ(PlistValue::makeScalar(PlistValue::Kind::real, "3.50").asText(), "3.50");
    EXPECT_EQ(PlistValue::makeScalar(PlistValue::Kind::date, "2020-05-05T10:39:44Z").asText(), "2020-05-05T10:39:44Z");
}

TEST(PlistValue, dataListsAndDictionariesHaveNone)
{
    for (const PlistValue& value : {PlistValue::makeData("raw"), PlistValue::makeArray(), PlistValue::makeDict()}) {
        EXPECT_FALSE(value.hasText());
        EXPECT_EQ(value.asText(), "");
    }
    EXPECT_EQ(PlistValue::makeData(std::string("a\0b", 3)).raw(), std::string("a\0b", 3));
}

TEST(PlistValue, onlyATrueFlagIsTrue)
{
    EXPECT_TRUE(PlistValue::makeBoolean(true).isTrue());
    EXPECT_FALSE(PlistValue::makeBoolean(false).isTrue());
    EXPECT_FALSE(PlistValue("YES").isTrue());
    EXPECT_FALSE(PlistValue::makeInteger(1).isTrue());
}

TEST(PlistValue, aDictionaryKeepsItsOrderAndReplacesInPlace)
{
    PlistValue dict = PlistValue::makeDict();
    dict.set("b", PlistValue("1"));
    dict.set("a", PlistValue("2"));
    dict.set("b", PlistValue("3"));

    ASSERT_EQ(dict.dict().size(), 2u);
    EXPECT_EQ(dict.dict()[0].first, "b");
    EXPECT_EQ(dict.find("b")->asText(), "3");
    EXPECT_EQ(dict.find("B"), nullptr);
    dict.remove("b");
    dict.remove("never there");
    EXPECT_EQ(dict.find("b"), nullptr);
    EXPECT_EQ(dict.dict().size(), 1u);
}

TEST(PlistValue, whatIsNoDictionaryHasNoKeys)
{
    EXPECT_EQ(PlistValue("tea").find("a"), nullptr);
    EXPECT_EQ(PlistValue::makeArray().find("a"), nullptr);
}

TEST(PlistValue, valuesAreEqualByKindAndContents)
{
    EXPECT_EQ(PlistValue("1"), PlistValue("1"));
    EXPECT_FALSE(PlistValue("1") == PlistValue::makeInteger(1));
    EXPECT_FALSE(PlistValue("1") == PlistValue("2"));
    PlistValue first = PlistValue::makeArray();
    PlistValue second = PlistValue::makeArray();
    first.append(PlistValue("a"));
    EXPECT_FALSE(first == second);
    second.append(PlistValue("a"));
    EXPECT_EQ(first, second);
}
