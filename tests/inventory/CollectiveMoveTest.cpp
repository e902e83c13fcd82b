// Stock that leaves and comes back through several levels of collective items.
#include "inventory/CollectiveMove.h"

#include "support/Business.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class CollectiveMoveTest : public Business {
protected:
    void SetUp() override { begin(); }
    /// A collective item that was saved with something in stock.
    Item& filled(const char* name, std::initializer_list<std::pair<const Item*, float>> parts)
    {
        Item& made = collectiveItem(name, parts);
        made.setQty("1000");
        return made;
    }
    /// The steps one movement takes, by name and amount; collective items called like refused may not move.
    std::vector<std::string> stepsOf(Item& item, float by, const std::string& refused = {})
    {
        std::vector<std::string> steps;
        const auto note = [&](const Item& moved, float amount) {
            steps.push_back(std::string(moved.getItem()) + ' ' + numbers::general(static_cast<double>(amount)));
        };
        CollectiveMove move(items(),
            {[&](const Item& collective, float amount) {
                 note(collective, amount);
                 return collective.getItem() != refused;
             },
                [&](Item& part, float amount) { note(part, amount); }});
        m_answer = move.run(item, by);
        return steps;
    }
    /// Levels of two collective items each of which holds both of the level below; the lowest holds the screw.
    Item& doubling(Item& screw, int levels)
    {
        Item* left = &filled("left", {{&screw, 1}});
        Item* right = &filled("right", {{&screw, 1}});
        for (int level = 1; level < levels; ++level) {
            Item* const nextLeft = &filled("left", {{left, 1}, {right, 1}});
            right = &filled("right", {{left, 1}, {right, 1}});
            left = nextLeft;
        }
        return filled("top", {{left, 1}, {right, 1}});
    }
    bool m_answer = false;
};

TEST_F(CollectiveMoveTest, partsMoveInListOrderAsDeepAsTheyLie)
{
    Item& screw = item("screw");
    Item& board = item("board");
    Item& drawer = filled("drawer", {{&board, 5}, {&screw, 12}});
    Item& chest = filled("chest", {{&screw, 4}, {&drawer, 3}, {&board, 2}});
    EXPECT_THAT(stepsOf(chest, -2), ElementsAre("chest -2", "screw -8", "drawer -6", "board -30", "screw -72", "board -4"));
    EXPECT_TRUE(m_answer);
}

TEST_F(CollectiveMoveTest, whatMayNotMoveLeavesItsPartsAlone)
{
    Item& screw = item("screw");
    Item& drawer = filled("drawer", {{&screw, 12}});
    Item& chest = filled("chest", {{&drawer, 3}, {&screw, 4}});
    EXPECT_THAT(stepsOf(chest, -1, "drawer"), ElementsAre("chest -1", "drawer -3", "screw -4"));
    EXPECT_TRUE(m_answer) << "the answers for parts are not looked at";
    EXPECT_THAT(stepsOf(chest, -1, "chest"), ElementsAre("chest -1"));
    EXPECT_FALSE(m_answer);
}

TEST_F(CollectiveMoveTest, aPartReachedByTwoWaysMovesTwice)
{
    Item& screw = item("screw");
    Item& hinge = filled("hinge", {{&screw, 4}});
    Item& door = filled("door", {{&hinge, 2}});
    Item& cupboard = filled("cupboard", {{&door, 1}, {&hinge, 1}});
    EXPECT_THAT(stepsOf(cupboard, -1), ElementsAre("cupboard -1", "door -1", "hinge -2", "screw -8", "hinge -1", "screw -4"));
}

TEST_F(CollectiveMoveTest, itemsThatContainEachOtherAreNotFollowedRound)
{
    Item& screw = item("screw");
    Item& egg = filled("egg", {{&screw, 1}});
    Item& hen = filled("hen", {{&egg, 2}, {&screw, 1}});
    egg.addConstituent(hen);
    EXPECT_THAT(stepsOf(hen, -1), ElementsAre("hen -1", "egg -2", "screw -2", "screw -1"));
}

TEST_F(CollectiveMoveTest, aCircleIsEnteredAnewByEveryWayThatLeadsToIt)
{
    Item& screw = item("screw");
    Item& board = item("board");
    Item& egg = filled("egg", {{&screw, 1}});
    Item& hen = filled("hen", {{&egg, 2}, {&board, 1}});
    egg.addConstituent(hen);
    Item& farm = filled("farm", {{&hen, 1}, {&egg, 1}});
    // The second way begins with the egg, so that the hen is no way back there.
    EXPECT_THAT(
        stepsOf(farm, -1), ElementsAre("farm -1", "hen -1", "egg -2", "screw -2", "board -1", "egg -1", "screw -1", "hen -1", "board -1"));
}

TEST_F(CollectiveMoveTest, fourLevelsWithSharedPartsTakeWhatTheyHold)
{
    // 2 on each of four levels: 2 x 2 x 2 x 2 ways to the screw.
    Item& screw = item("screw", "100");
    Item& top = doubling(screw, 4);
    EXPECT_TRUE(items().adjustQtyFor(top, -1));
    EXPECT_EQ(screw.getQty(), "84");
    EXPECT_TRUE(items().adjustQtyFor(top, 1));
    EXPECT_EQ(screw.getQty(), "100");
}

TEST_F(CollectiveMoveTest, moreWaysThanAnybodyCouldFollowMoveTheSameTogether)
{
    // 2 to the power of 20 ways; a millionth of a screw each.
    Item& screw = item("screw", "100");
    Item& top = doubling(screw, 20);
    ASSERT_TRUE(items().adjustQtyFor(top, -1.0f / (1 << 20)));
    EXPECT_EQ(screw.getQty(), "99");
    const std::vector<std::string> steps = stepsOf(top, -1);
    EXPECT_EQ(steps.size(), 1 + 20 * 2 + 2u) << "each collective item once, and the screw from both of the lowest";
    EXPECT_EQ(steps.back(), "screw -524288");
}

TEST_F(CollectiveMoveTest, movedTogetherWhatMayNotMoveIsLeftOutOfWhatIsBelow)
{
    Item& screw = item("screw");
    Item& top = doubling(screw, 20);
    Item& outer = filled("outer", {{&top, 1}, {&screw, 1}});
    EXPECT_THAT(stepsOf(outer, -1, "top"), ElementsAre("outer -1", "top -1", "screw -1"));
    // Half of the ways of the level below the top are gone with the left one.
    const std::vector<std::string> steps = stepsOf(top, -1, "left");
    EXPECT_EQ(steps.front(), "top -1");
    EXPECT_EQ(steps.back(), "screw -1") << "only the ways that go right all the time are left";
}

TEST_F(CollectiveMoveTest, quantitiesBeyondAllBoundsLeaveANumberInStock)
{
    Item& screw = item("screw", "100");
    Item& nail = item("nail", "100");
    Item& box = filled("box", {{&screw, 3e38f}, {&nail, 0}});
    Item& crate = filled("crate", {{&box, 3e38f}});
    alerts.answer("Add anyway");
    alerts.answer("OK");
    EXPECT_TRUE(items().adjustQtyFor(crate, -2));
    EXPECT_EQ(screw.getQty(), "-3.40282e+38");
    EXPECT_EQ(nail.getQty(), "100");
}

TEST_F(CollectiveMoveTest, aVeryDeepStructureEnds)
{
    Item& screw = item("screw", "10");
    Item* deep = &filled("level", {{&screw, 1}});
    for (int level = 0; level < 5000; ++level)
        deep = &filled("level", {{deep, 1}});
    EXPECT_TRUE(items().adjustQtyFor(*deep, -1));
    EXPECT_EQ(screw.getQty(), "10") << "too deep to be anybody's stock";
}

} // namespace
