#include "storage/SharedValues.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

struct Plain {
    int number = 7;
    int other = 0;
};
using Shared = SharedValues<Plain>;

} // namespace

TEST(SharedValuesTest, aRecordOfWhichNothingIsKnownHasTheDefaults)
{
    Shared values;
    EXPECT_EQ(values->number, 7);
    values.change().number = 8;
    EXPECT_EQ(values->number, 8);
    EXPECT_EQ(Shared()->number, 7);
}

TEST(SharedValuesTest, aCopyHoldsTheSameValuesUntilEitherChangesThem)
{
    Shared values;
    values.change().number = 1;
    Shared copy = values;
    EXPECT_EQ(&*copy, &*values);

    values.change().number = 2;
    EXPECT_EQ(copy->number, 1);
    copy.change().number = 3;
    EXPECT_EQ(values->number, 2);
    EXPECT_EQ(copy->number, 3);
}

TEST(SharedValuesTest, whoHoldsThemAloneChangesThemInPlace)
{
    Shared values;
    values.change().number = 1;
    const Plain* const place = &*values;
    {
        const Shared copy = values;
    }
    values.change().other = 2;
    EXPECT_EQ(&*values, place);
    EXPECT_EQ(values->number, 1);
}

TEST(SharedValuesTest, whatWasMovedFromHasTheDefaultsAgain)
{
    Shared values;
    values.change().number = 1;
    Shared moved = std::move(values);
    EXPECT_EQ(moved->number, 1);
    EXPECT_EQ(values->number, 7); // NOLINT: what is left is said
    values = moved;
    moved = moved; // NOLINT
    EXPECT_EQ(values->number, 1);
    EXPECT_EQ(moved->number, 1);
}

TEST(SharedValuesTest, anotherThreadReadsWhatItGotWhileTheyAreChanged)
{
    std::vector<Shared> records(200);
    for (int i = 0; i < 200; ++i)
        records[static_cast<std::size_t>(i)].change().number = i;
    for (int round = 0; round < 20; ++round) {
        int sum = 0;
        std::thread reader([&sum, snapshot = records]() mutable {
            for (Shared& values : snapshot) {
                sum += values->number;
                values = {};
            }
        });
        for (Shared& values : records)
            ++values.change().number;
        reader.join();
        EXPECT_EQ(sum, 199 * 200 / 2 + 200 * round);
    }
}
