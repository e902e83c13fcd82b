#include "storage/FieldTable.h"

#include <gtest/gtest.h>

namespace {

struct CupValues {
    Text name;
    int owner = 0;
    bool full = false;
};

constexpr auto plain = field<&CupValues::name>("name");
constexpr std::array unique {plain, field<&CupValues::owner>("owner"), field<&CupValues::full>("full")};
constexpr std::array readTwice {plain, field<&CupValues::owner>("owner").alsoRead("name")};
constexpr std::array setTwice {plain, field<&CupValues::owner>("owner").alsoSet("name")};
constexpr std::array storedTwice {plain, field<&CupValues::owner>("owner").stores("name")};
constexpr std::array readFromTwice {plain, field<&CupValues::owner>("owner").readsFrom("name")};

} // namespace

TEST(FieldTable, aRowIsReadSetAndStoredUnderItsName)
{
    EXPECT_TRUE(plain.readNames.holds("name"));
    EXPECT_TRUE(plain.setNames.holds("name"));
    EXPECT_EQ(plain.key, "name");
    EXPECT_EQ(plain.readKey, "name");
    EXPECT_EQ(plain.stored, Stored::whenFilled);
    EXPECT_FALSE(plain.isSearched);
    EXPECT_FALSE(plain.readNames.holds(""));
}

TEST(FieldTable, theMembersKindIsKnown)
{
    EXPECT_NE(unique[0].text, nullptr);
    EXPECT_NE(unique[1].integer, nullptr);
    EXPECT_NE(unique[2].flag, nullptr);
    EXPECT_EQ(unique[2].text, nullptr);
}

TEST(FieldTable, wordsAfterTheNameChangeOneThingEach)
{
    EXPECT_FALSE(plain.getOnly().setNames.holds("name"));
    EXPECT_TRUE(plain.getOnly().readNames.holds("name"));
    EXPECT_FALSE(plain.setOnly().readNames.holds("name"));
    EXPECT_FALSE(plain.unnamed().readNames.holds("name") || plain.unnamed().setNames.holds("name"));
    EXPECT_TRUE(plain.also("title").readNames.holds("title") && plain.also("title").setNames.holds("title"));
    EXPECT_EQ(plain.readsFrom("Name").readKey, "Name");
    EXPECT_EQ(plain.readsFrom("Name").key, "name");
    EXPECT_EQ(plain.stores("n").readKey, "n");
    EXPECT_EQ(plain.always().stored, Stored::always);
}

TEST(FieldTable, aNameUsedTwiceIsFound)
{
    EXPECT_TRUE(namesAreUnique(unique));
    EXPECT_FALSE(namesAreUnique(readTwice));
    EXPECT_FALSE(namesAreUnique(setTwice));
    EXPECT_FALSE(namesAreUnique(storedTwice));
    EXPECT_FALSE(namesAreUnique(readFromTwice));
}

TEST(FieldTable, flagsReadInTheirWords)
{
    EXPECT_STREQ(flagText(true, FlagWords::upper), "YES");
    EXPECT_STREQ(flagText(false, FlagWords::upper), "NO");
    EXPECT_STREQ(flagText(true, FlagWords::capital), "Yes");
    EXPECT_STREQ(flagText(false, FlagWords::capital), "No");
    EXPECT_STREQ(flagText(true, FlagWords::lower), "yes");
    EXPECT_STREQ(flagText(false, FlagWords::lower), "no");
}

TEST(FieldTable, flagsAreSetByExactlyOneWord)
{
    EXPECT_TRUE(flagFromText("YES", FlagSetBy::upperYes));
    EXPECT_FALSE(flagFromText("Yes", FlagSetBy::upperYes));
    EXPECT_TRUE(flagFromText("Yes", FlagSetBy::capitalYes));
    EXPECT_FALSE(flagFromText("YES", FlagSetBy::capitalYes));
    EXPECT_TRUE(flagFromText("No", FlagSetBy::capitalNo));
    EXPECT_FALSE(flagFromText("Yes", FlagSetBy::capitalNo));
    EXPECT_FALSE(flagFromText("", FlagSetBy::capitalNo));
}

TEST(FieldTable, namesAreAlikeInAnyAsciiCaseOnly)
{
    EXPECT_TRUE(equalInAnyCase("EndDate", "enddate"));
    EXPECT_FALSE(equalInAnyCase("enddate", "enddates"));
    EXPECT_FALSE(equalInAnyCase("\xc3\x84", "\xc3\xa4"));
    EXPECT_FALSE(equalInAnyCase("[", "{"));
}
