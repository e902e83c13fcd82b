#include "storage/IdMap.h"

#include "storage/dataObject.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

class IdMapTest : public testing::Test {
protected:
    std::map<int, dataObject*> listed() const
    {
        std::map<int, dataObject*> all;
        ids.forEach([&](int id, dataObject& record) { EXPECT_TRUE(all.emplace(id, &record).second) << id << " is listed twice"; });
        return all;
    }

    IdMap ids;
    dataObject one;
    dataObject two;
};

TEST_F(IdMapTest, anIdThatWasNeverSetHasNoRecord)
{
    EXPECT_EQ(ids.find(0), nullptr);
    ids.set(3, one);
    EXPECT_EQ(ids.find(2), nullptr);
    EXPECT_EQ(ids.find(-3), nullptr);
    EXPECT_EQ(ids.find(3), &one);
}

TEST_F(IdMapTest, theLastRecordOfAnIdCounts)
{
    ids.set(5, one);
    ids.set(5, two);
    EXPECT_EQ(ids.find(5), &two);
}

TEST_F(IdMapTest, idsMayLieAnywhere)
{
    for (const int id : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), -1, 0, 2'000'000'000}) {
        ids.set(id, one);
        EXPECT_EQ(ids.find(id), &one) << id;
    }
}

TEST_F(IdMapTest, aFarIdStaysKnownWhenTheListReachesIt)
{
    constexpr int far = 5000;
    ids.set(far, one);
    for (int id = 1; id < far; ++id)
        ids.set(id, two);
    EXPECT_EQ(ids.find(far), &one);

    ids.set(far + 1, two);
    EXPECT_EQ(ids.find(far), &one);

    ids.set(far, two);
    EXPECT_EQ(ids.find(far), &two);
    EXPECT_EQ(listed().size(), static_cast<std::size_t>(far) + 1);
}

TEST_F(IdMapTest, aClearedMapKnowsNothing)
{
    ids.set(1, one);
    ids.set(1'000'000, two);
    ids.clear();
    EXPECT_EQ(ids.find(1), nullptr);
    EXPECT_EQ(ids.find(1'000'000), nullptr);
    EXPECT_TRUE(listed().empty());
}

TEST_F(IdMapTest, answersAsAnOrdinaryMapDoes)
{
    std::mt19937 random(7);
    std::map<int, dataObject*> expected;
    for (int i = 0; i < 20'000; ++i) {
        const int id = static_cast<int>(random() % (i % 3 == 0 ? 100'000 : 9'000)) - 50;
        dataObject& record = random() % 2 ? one : two;
        ids.set(id, record);
        expected[id] = &record;
    }
    EXPECT_EQ(listed(), expected);
    for (int id = -60; id < 100'000; id += 7)
        ASSERT_EQ(ids.find(id), expected.contains(id) ? expected[id] : nullptr) << id;
}
