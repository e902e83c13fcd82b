#include "inventory/PartsNeeded.h"

#include "foundation/Money.h"
#include "inventory/Item.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace {

class PartsNeededTest : public testing::Test {
protected:
    struct Part {
        const Item* item;
        float qty;
    };

    Item& item(const char* name, const char* qty = "")
    {
        auto made = std::make_unique<Item>(rules);
        made->setID(static_cast<int>(items.size()) + 1);
        made->setItem(name);
        made->setQty(qty);
        Item& answer = *made;
        items[answer.getID()] = std::move(made);
        return answer;
    }
    Item& collective(const char* name, std::initializer_list<Part> parts = {})
    {
        Item& made = item(name);
        made.makeCollectiveItem(true);
        for (const Part& part : parts)
            add(made, *part.item, part.qty);
        return made;
    }
    static void add(Item& to, const Item& part, float qty)
    {
        to.addConstituent(part);
        to.setConstituentQty(static_cast<int>(to.getConstituents().size()) - 1, qty);
    }
    PartsNeeded needed(const Item& item)
    {
        lookUps = 0;
        return {item, [this](int id) {
                    ++lookUps;
                    const auto found = items.find(id);
                    return found == items.end() ? nullptr : found->second.get();
                }};
    }
    /// How many of the part one takes; 0 when it is not among the needs, and each part stands there once.
    static double forOne(const PartsNeeded& parts, const Item& part)
    {
        double needed = 0;
        int met = 0;
        for (const PartNeed& need : parts.needs()) {
            if (need.part != &part)
                continue;
            needed = need.forOne;
            ++met;
        }
        EXPECT_LE(met, 1) << part.getItem();
        return needed;
    }
    static std::string limit(const PartsNeeded& parts)
    {
        return parts.limiting() ? std::string(parts.limiting()->part->getItem()) : std::string("nothing");
    }

    MemorySettings memory;
    MoneyFormatter formatter {"en_GB"};
    ItemRules rules {memory, formatter};
    std::map<int, std::unique_ptr<Item>> items;
    int lookUps = 0;
};

// One level

TEST_F(PartsNeededTest, theScarcestPartLimitsAndOnlyWholeOnesAreMade)
{
    const Item& leg = item("Leg", "10");
    const Item& seat = item("Seat", "3");
    // 10 legs are enough for 2.5 stools, 3 seats for 3.
    const PartsNeeded stool = needed(collective("Stool", {{&leg, 4}, {&seat, 1}}));
    EXPECT_EQ(stool.canBeMade(), 2);
    EXPECT_EQ(limit(stool), "Leg");
    EXPECT_EQ(stool.limiting()->forOne, 4);
    EXPECT_EQ(stool.limiting()->inStock, 10);
}

TEST_F(PartsNeededTest, ofPartsThatLimitAlikeTheFirstIsNamed)
{
    const Item& leg = item("Leg", "8");
    const Item& seat = item("Seat", "2");
    const PartsNeeded stool = needed(collective("Stool", {{&seat, 1}, {&leg, 4}}));
    EXPECT_EQ(stool.canBeMade(), 2);
    EXPECT_EQ(limit(stool), "Seat");
}

TEST_F(PartsNeededTest, nothingIsNeededForAPlainItemWhateverPartsItKeeps)
{
    Item& leg = item("Leg", "10");
    Item& plain = item("Plain", "4");
    plain.addConstituent(leg);
    const PartsNeeded parts = needed(plain);
    EXPECT_TRUE(parts.needs().empty());
    EXPECT_EQ(parts.limiting(), nullptr);
    EXPECT_EQ(parts.canBeMade(), 0);
    EXPECT_TRUE(parts.missingFor(5).empty());
}

TEST_F(PartsNeededTest, partsThatAreGoneOrNeededNoTimesAreLeftOut)
{
    Item& leg = item("Leg", "10");
    const Item& spare = item("Spare", "0");
    const Item& gone = item("Gone", "0");
    Item& stool = collective("Stool", {{&leg, 4}, {&spare, 0}, {&spare, -2}, {&gone, 1}});
    items.erase(gone.getID());
    const PartsNeeded parts = needed(stool);
    ASSERT_EQ(parts.needs().size(), 1u);
    EXPECT_EQ(parts.canBeMade(), 2);
    stool.removeConstituentAtIndex(0);
    EXPECT_EQ(needed(stool).canBeMade(), 0);
    EXPECT_EQ(needed(stool).limiting(), nullptr);
}

TEST_F(PartsNeededTest, aPartListedTwiceIsNeededForBoth)
{
    const Item& screw = item("Screw", "10");
    const PartsNeeded box = needed(collective("Box", {{&screw, 1}, {&screw, 3}}));
    EXPECT_EQ(forOne(box, screw), 4);
    EXPECT_EQ(box.canBeMade(), 2);
}

TEST_F(PartsNeededTest, whatIsOwedAlreadyIsMissingToo)
{
    const Item& leg = item("Leg", "-2");
    const PartsNeeded stool = needed(collective("Stool", {{&leg, 3}}));
    EXPECT_EQ(stool.canBeMade(), 0);
    const std::vector<PartShortage> missing = stool.missingFor(2);
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].needed, 6);
    EXPECT_EQ(missing[0].inStock, -2);
    EXPECT_EQ(missing[0].missing, 8);
}

TEST_F(PartsNeededTest, stockThatDoesNotReadIsNone)
{
    const Item& leg = item("Leg", "some");
    EXPECT_EQ(needed(collective("Stool", {{&leg, 3}})).canBeMade(), 0);
}

// Fractions

TEST_F(PartsNeededTest, tenthsAreNotLostToRounding)
{
    const Item& glue = item("Glue", "0.3");
    EXPECT_EQ(needed(collective("Joint", {{&glue, 0.1f}})).canBeMade(), 3);
    const Item& oil = item("Oil", "0.7");
    EXPECT_EQ(needed(collective("Lamp", {{&oil, 0.1f}})).canBeMade(), 7);
    const Item& wire = item("Wire", "0.69");
    EXPECT_EQ(needed(collective("Hook", {{&wire, 0.1f}})).canBeMade(), 6);
}

TEST_F(PartsNeededTest, tenthsOfTenthsAreNeitherMissingNorTooMany)
{
    // A hundredth of a tin for one, one tin for a hundred.
    const Item& paint = item("Paint", "1");
    const Item& coat = collective("Coat", {{&paint, 0.1f}});
    const PartsNeeded toy = needed(collective("Toy", {{&coat, 0.1f}}));
    EXPECT_EQ(toy.canBeMade(), 100);
    EXPECT_TRUE(toy.missingFor(100).empty());
    ASSERT_EQ(toy.missingFor(101).size(), 1u);
    EXPECT_NEAR(toy.missingFor(101)[0].missing, 0.01, 1e-12);
}

// Levels

TEST_F(PartsNeededTest, partsOfPartsAreCountedThroughAllLevels)
{
    const Item& leg = item("Leg", "30");
    const Item& bar = item("Bar", "20");
    const Item& top = item("Top", "9");
    const Item& trestle = collective("Trestle", {{&leg, 4}, {&bar, 2}});
    const PartsNeeded table = needed(collective("Table", {{&trestle, 2}, {&top, 1}}));
    EXPECT_EQ(table.needs().size(), 3u);
    EXPECT_EQ(forOne(table, leg), 8);
    EXPECT_EQ(forOne(table, bar), 4);
    EXPECT_EQ(forOne(table, top), 1);
    EXPECT_EQ(forOne(table, trestle), 0);
    // 30 / 8 = 3.75, 20 / 4 = 5, 9.
    EXPECT_EQ(table.canBeMade(), 3);
    EXPECT_EQ(limit(table), "Leg");
}

TEST_F(PartsNeededTest, branchesCompeteForThePartsTheyShare)
{
    const Item& screw = item("Screw", "12");
    const Item& left = collective("Left", {{&screw, 2}});
    const Item& right = collective("Right", {{&screw, 3}});
    const PartsNeeded gate = needed(collective("Gate", {{&left, 1}, {&right, 1}, {&screw, 1}}));
    // Each branch by itself could be made 6 and 4 times, but a gate takes 2 + 3 + 1.
    EXPECT_EQ(forOne(gate, screw), 6);
    EXPECT_EQ(gate.canBeMade(), 2);
    const std::vector<PartShortage> missing = gate.missingFor(5);
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].part, &screw);
    EXPECT_EQ(missing[0].needed, 30);
    EXPECT_EQ(missing[0].inStock, 12);
    EXPECT_EQ(missing[0].missing, 18);
}

TEST_F(PartsNeededTest, anItemMetDeepAndShallowHasItsTurnOnce)
{
    // The kit takes the bolt set directly, and once more by the frame: 1 + 2 x 3 sets of 5 bolts.
    const Item& bolt = item("Bolt", "100");
    const Item& bolts = collective("Bolts", {{&bolt, 5}});
    const Item& corner = collective("Corner", {{&bolts, 3}});
    const Item& frame = collective("Frame", {{&corner, 2}});
    const PartsNeeded kit = needed(collective("Kit", {{&bolts, 1}, {&frame, 1}}));
    EXPECT_EQ(forOne(kit, bolt), 35);
    EXPECT_EQ(kit.canBeMade(), 2);
}

TEST_F(PartsNeededTest, theStoredFigureOfACollectivePartIsNoStock)
{
    const Item& leg = item("Leg", "4");
    Item& stool = collective("Stool", {{&leg, 4}});
    stool.setQty("50");
    EXPECT_EQ(needed(collective("Pair", {{&stool, 2}})).canBeMade(), 0);
}

TEST_F(PartsNeededTest, aCollectivePartMadeOfNothingCannotBeHad)
{
    Item& empty = collective("Empty");
    empty.setQty("9");
    const Item& leg = item("Leg", "40");
    const PartsNeeded set = needed(collective("Set", {{&leg, 1}, {&empty, 2}}));
    EXPECT_EQ(set.canBeMade(), 0);
    EXPECT_EQ(limit(set), "Empty");
    const std::vector<PartShortage> missing = set.missingFor(3);
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].missing, 6);
}

// Cycles

TEST_F(PartsNeededTest, anItemThatContainsItselfCannotBeMade)
{
    const Item& leg = item("Leg", "40");
    Item& odd = collective("Odd", {{&leg, 2}});
    add(odd, odd, 3);
    const PartsNeeded parts = needed(odd);
    EXPECT_EQ(forOne(parts, leg), 2);
    EXPECT_EQ(forOne(parts, odd), 3);
    EXPECT_EQ(parts.canBeMade(), 0);
    EXPECT_EQ(limit(parts), "Odd");
    const std::vector<PartShortage> missing = parts.missingFor(4);
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].part, &odd);
    EXPECT_EQ(missing[0].needed, 12);
    EXPECT_EQ(missing[0].inStock, 0);
}

TEST_F(PartsNeededTest, aCycleFurtherDownIsGoneIntoOnce)
{
    const Item& screw = item("Screw", "100");
    Item& inner = collective("Inner", {{&screw, 1}});
    const Item& outer = collective("Outer", {{&inner, 2}});
    add(inner, outer, 5);
    const PartsNeeded box = needed(collective("Box", {{&outer, 3}}));
    // 3 outers take 6 inners and these 6 screws; the 30 outers they would take are what there is none of.
    EXPECT_EQ(forOne(box, screw), 6);
    EXPECT_EQ(forOne(box, outer), 30);
    EXPECT_EQ(box.canBeMade(), 0);
    EXPECT_EQ(limit(box), "Outer");
    EXPECT_EQ(lookUps, 4);
}

TEST_F(PartsNeededTest, aRingOfThousandsIsGoneAroundOnce)
{
    constexpr int count = 5000;
    std::vector<Item*> ring;
    for (int i = 0; i < count; ++i)
        ring.push_back(&collective("Ring"));
    for (int i = 0; i < count; ++i)
        add(*ring[static_cast<std::size_t>(i)], *ring[static_cast<std::size_t>((i + 1) % count)], 1);
    const PartsNeeded parts = needed(*ring.front());
    EXPECT_EQ(lookUps, count);
    ASSERT_EQ(parts.needs().size(), 1u);
    EXPECT_EQ(parts.needs()[0].part, ring.front());
    EXPECT_EQ(parts.needs()[0].forOne, 1);
    EXPECT_EQ(parts.canBeMade(), 0);
}

// Many

TEST_F(PartsNeededTest, sharedDiamondsAreLookedAtOnceHoweverManyWaysLeadThere)
{
    // Each level takes the next one by two ways: 2 to the power of 40 ways lead to the nail.
    constexpr int levels = 40;
    const Item& nail = item("Nail", "5000000");
    const Item* below = &nail;
    for (int level = 0; level < levels; ++level) {
        const Item& left = collective("Left", {{below, 1}});
        const Item& right = collective("Right", {{below, 1}});
        below = &collective("Level", {{&left, 1}, {&right, 1}});
    }
    const PartsNeeded tower = needed(*below);
    EXPECT_EQ(forOne(tower, nail), 1'099'511'627'776.0);
    EXPECT_EQ(tower.canBeMade(), 0);
    EXPECT_EQ(lookUps, 4 * levels);
    ASSERT_EQ(tower.missingFor(1).size(), 1u);
    EXPECT_EQ(tower.missingFor(1)[0].missing, 1'099'511'627'776.0 - 5'000'000.0);
}

TEST_F(PartsNeededTest, aChainOfThousandsIsFollowedToItsEnd)
{
    constexpr int levels = 20'000;
    const Item& nail = item("Nail", "7");
    const Item* below = &nail;
    for (int level = 0; level < levels; ++level)
        below = &collective("Level", {{below, 1}});
    const PartsNeeded chain = needed(*below);
    EXPECT_EQ(chain.canBeMade(), 7);
    EXPECT_EQ(lookUps, levels);
}

TEST_F(PartsNeededTest, thousandsOfPartsAreEachCounted)
{
    Item& kit = collective("Kit");
    constexpr int count = 6000;
    for (int i = 0; i < count; ++i)
        add(kit, item("Part", i == 4321 ? "17" : "20"), 2);
    const PartsNeeded parts = needed(kit);
    EXPECT_EQ(parts.needs().size(), static_cast<std::size_t>(count));
    EXPECT_EQ(parts.canBeMade(), 8);
    // 20 are enough for ten; 17 are not.
    ASSERT_EQ(parts.missingFor(10).size(), 1u);
    EXPECT_EQ(parts.missingFor(10)[0].missing, 3);
    EXPECT_EQ(parts.missingFor(11).size(), static_cast<std::size_t>(count));
}

TEST_F(PartsNeededTest, figuresBeyondAllMeasureStayFigures)
{
    const Item& dust = item("Dust", "5");
    const Item* many = &dust;
    const Item* few = &dust;
    for (int level = 0; level < 200; ++level) {
        many = &collective("Many", {{many, 1e9f}});
        few = &collective("Few", {{few, 0.001f}});
    }
    EXPECT_EQ(needed(*many).canBeMade(), 0);
    EXPECT_TRUE(std::isfinite(needed(*many).missingFor(1e6).at(0).missing));
    EXPECT_TRUE(std::isfinite(needed(*few).canBeMade()));
    EXPECT_GT(needed(*few).canBeMade(), 1e9);
    EXPECT_TRUE(needed(*few).missingFor(1e6).empty());
}

// What is missing

TEST_F(PartsNeededTest, onlyWhatThereIsTooLittleOfIsMissing)
{
    const Item& leg = item("Leg", "10");
    const Item& seat = item("Seat", "3");
    const Item& felt = item("Felt", "100");
    const PartsNeeded stool = needed(collective("Stool", {{&leg, 4}, {&seat, 1}, {&felt, 4}}));
    EXPECT_TRUE(stool.missingFor(2).empty());
    const std::vector<PartShortage> missing = stool.missingFor(5);
    ASSERT_EQ(missing.size(), 2u);
    EXPECT_EQ(missing[0].part, &leg);
    EXPECT_EQ(missing[0].needed, 20);
    EXPECT_EQ(missing[0].missing, 10);
    EXPECT_EQ(missing[1].part, &seat);
    EXPECT_EQ(missing[1].missing, 2);
}

TEST_F(PartsNeededTest, forNoneOrLessNothingIsMissing)
{
    const Item& leg = item("Leg", "-5");
    const PartsNeeded stool = needed(collective("Stool", {{&leg, 4}}));
    EXPECT_TRUE(stool.missingFor(0).empty());
    EXPECT_TRUE(stool.missingFor(-3).empty());
    EXPECT_EQ(stool.missingFor(0.5).size(), 1u);
}

} // namespace
