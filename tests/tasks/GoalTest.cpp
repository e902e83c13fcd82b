#include "tasks/Goal.h"

#include <gtest/gtest.h>

class GoalTest : public testing::Test {
protected:
    GoalTest()
    {
        first.setID(4);
        second.setID(2);
    }

    Action first;
    Action second;
    Goal goal;
};

TEST_F(GoalTest, nameAndDetailsAreSetAndReadByName)
{
    EXPECT_EQ(goal.getFieldByName("name"), "");
    EXPECT_TRUE(goal.setFieldByName("name", "Grow"));
    EXPECT_TRUE(goal.setFieldByName("details", "a little"));

    EXPECT_EQ(goal.getFieldByName("name"), "Grow");
    EXPECT_EQ(goal.getDetails(), "a little");
    for (const char* other : {"actions", "complete", "id", "Name", ""}) {
        EXPECT_FALSE(goal.setFieldByName(other, "1")) << other;
        EXPECT_EQ(goal.getFieldByName(other), "") << other;
    }
}

TEST_F(GoalTest, nameAndDetailsAreSearched)
{
    goal.setName("Grow");
    goal.setDetails("A Little");

    EXPECT_TRUE(goal.contains("grow"));
    EXPECT_TRUE(goal.contains("little"));
    EXPECT_FALSE(goal.contains("more"));
}

TEST_F(GoalTest, tasksStandInTheOrderTheyWereAdded)
{
    goal.addAction(first);
    goal.addAction(second);
    EXPECT_EQ(goal.getActionsAsID(), (std::vector<int> {4, 2}));

    goal.removeAction(first);
    EXPECT_EQ(goal.getActionsAsID(), std::vector<int> {2});
    goal.removeAction(first);
    EXPECT_EQ(goal.getActionsAsID(), std::vector<int> {2});
}

TEST_F(GoalTest, aTaskIsTakenAwayByItsPlaceToo)
{
    goal.addAction(first);
    goal.addAction(second);

    goal.removeActionAtIndex(-1);
    goal.removeActionAtIndex(2);
    EXPECT_EQ(goal.getActions().size(), 2u);
    goal.removeActionAtIndex(0);
    EXPECT_EQ(goal.getActionsAsID(), std::vector<int> {2});
}

TEST_F(GoalTest, itIsCompleteWhenEveryTaskIsAndThereIsOne)
{
    EXPECT_FALSE(goal.isComplete());
    goal.addAction(first);
    goal.addAction(second);
    first.setFieldByName("complete", "Yes");
    EXPECT_FALSE(goal.isComplete());
    second.setFieldByName("complete", "Yes");
    EXPECT_TRUE(goal.isComplete());
}
