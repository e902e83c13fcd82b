// Lines that are made, copied and taken off: what they know of their order, and which lists and figures are told.
#include "inventory/BOMManager.h"

#include "support/Business.h"
#include "support/ListResets.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class LineMakingTest : public Business {
protected:
    void SetUp() override
    {
        begin();
        orders().create();
        lines().addObserver(m_lineResets);
        items().addObserver(m_itemResets);
    }
    void TearDown() override
    {
        lines().removeObserver(m_lineResets);
        items().removeObserver(m_itemResets);
    }
    ListResets m_lineResets;
    ListResets m_itemResets;
};

TEST_F(LineMakingTest, pickingReloadsTheLinesAndTheCellsOfTheItems)
{
    Item& mug = item("Mug");
    items().reloadData();
    m_itemResets.count = 0;
    orders().addItemToCurrentOrder(mug);
    EXPECT_GT(m_lineResets.count, 0);
    EXPECT_GT(m_itemResets.cells, 0);
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "3"));
    lines().deleteLine(*lines().getFirstItem());
    EXPECT_EQ(m_itemResets.cells, 3);
    EXPECT_EQ(m_itemResets.count, 0) << "no item came or went";
}

TEST_F(LineMakingTest, anItemThatTheListWasNotToldOfComesWithTheLine)
{
    orders().addItemToCurrentOrder(item("Mug"));
    EXPECT_EQ(m_itemResets.count, 1);
}

TEST_F(LineMakingTest, aLineTakesTheNextIdOfAllLines)
{
    line(order("other"), "1.00").setID(41);
    lines().findAndSetHighestId();
    orders().addItemToCurrentOrder(item("Mug"));
    EXPECT_EQ(lines().linesOfOrder(currentOrder().getID()).front()->getID(), 42);
}

TEST_F(LineMakingTest, aPriceThatIsNoNumberCountsAsNothing)
{
    orders().addItemToCurrentOrder(item("Mug", "10", "ask"));
    EXPECT_THAT(shown(lines(), "cost"), ElementsAre("ask"));
    EXPECT_THAT(shown(lines(), "total"), ElementsAre("0.00"));
}

TEST_F(LineMakingTest, aQuantityWithAFractionMovesTheFraction)
{
    Item& cloth = item("Cloth", "10");
    orders().addItemToCurrentOrder(cloth);
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "2.25"));
    EXPECT_EQ(cloth.getQty(), "7.75");
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "2.250"));
    EXPECT_EQ(cloth.getQty(), "7.75");
}

TEST_F(LineMakingTest, anEmptyQuantityGivesAllOfItBack)
{
    Item& mug = item("Mug", "10");
    orders().addItemToCurrentOrder(mug);
    EXPECT_TRUE(lines().setObjectValue("qty", 0, ""));
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_THAT(shown(lines(), "total"), ElementsAre("0.00"));
}

TEST_F(LineMakingTest, takingOffAllLinesReloadsBothListsAndCountsAnew)
{
    orders().addItemToCurrentOrder(item("Mug"));
    orders().addItemToCurrentOrder(item("Plate"));
    m_lineResets.count = 0;
    m_itemResets.count = 0;
    m_itemResets.cells = 0;
    lines().deleteAllForCurrentOrder();
    EXPECT_EQ(orders().form.subtotal.text(), "0.00");
    EXPECT_GT(m_lineResets.count, 0);
    EXPECT_GT(m_itemResets.cells, 0);
}

TEST_F(LineMakingTest, linesCopiedOntoTheShownOrderAreSeen)
{
    const Order& source = order("source");
    line(source, "1.00").setItem("Delivery");
    lines().duplicateMaterialsFromOrder(source.getID(), currentOrder().getID());
    EXPECT_GT(m_lineResets.count, 0);
    EXPECT_THAT(shown(lines(), "item"), ElementsAre("Delivery"));
}

TEST_F(LineMakingTest, copiesTimesAndTextsKnowTheKindOfTheirOrder)
{
    Order& purchase = order("Clay");
    purchase.setType("Purchase Order");
    const Order& bench = order("Bench");
    line(bench, "1.00");
    lines().duplicateMaterialsFromOrder(bench.getID(), purchase.getID());
    EXPECT_EQ(lines().linesOfOrder(purchase.getID()).front()->getOrderType(), "Purchase Order");
    lines().duplicateMaterialsFromOrder(purchase.getID(), bench.getID());
    EXPECT_EQ(lines().linesOfOrder(bench.getID()).back()->getOrderType(), "Customer");
    EXPECT_EQ(lines().addTimeLine({"Glazing", "05/01/24", "1", "Hours", "20.00", "20.00"}).getOrderType(), "Customer");
    lines().setCurrentOrder(purchase.getID());
    EXPECT_EQ(lines().create("Delivery").getOrderType(), "Purchase Order");
}

TEST_F(LineMakingTest, linesFollowTheKindThatIsChosenForTheirOrder)
{
    orders().addItemToCurrentOrder(item("Mug"));
    const Material& other = line(order("other"), "1.00");
    ChoiceField& type = orders().form.type;
    type.edit(static_cast<int>(type.titles().indexOf("Purchase Order")));
    EXPECT_EQ(lines().getFirstItem()->getFieldByName("order:type"), "Purchase Order");
    EXPECT_EQ(other.getFieldByName("order:type"), "");
    type.edit(static_cast<int>(type.titles().indexOf("Estimate")));
    EXPECT_EQ(lines().getFirstItem()->getFieldByName("order:type"), "Customer");
}

TEST_F(LineMakingTest, theStartOfATimeLineIsCutByLetters)
{
    EXPECT_EQ(lines().addTimeLine({"Glazing", "5 août 24", "1", "Hours", "20.00", "20.00"}).getCode(), "5 aoû");
}

TEST_F(LineMakingTest, aTimeLineMovesNoStockWhenItIsEditedOrTakenOff)
{
    Item& mug = item("Mug", "10");
    Material& time = lines().addTimeLine({"Mug", "05/01/24", "2.5", "Hours", "20.00", "50.00"});
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "4"));
    EXPECT_EQ(time.getTotal(), "80.00");
    lines().deleteLine(time);
    EXPECT_EQ(mug.getQty(), "10");
}

TEST_F(LineMakingTest, aLineFromNoItemMovesNoStock)
{
    Item& mug = item("Mug", "10");
    Material& text = lines().create("Mug");
    EXPECT_EQ(text.getProduct(), 0);
    EXPECT_TRUE(lines().setObjectValue("cost", 0, "3"));
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "2"));
    EXPECT_EQ(text.getTotal(), "6.00");
    EXPECT_EQ(orders().form.subtotal.text(), "6.00");
    lines().deleteLine(text);
    EXPECT_EQ(mug.getQty(), "10");
}

TEST_F(LineMakingTest, theCollectiveItemAsksBeforeItsPartsAndEachPartForItself)
{
    Item& a = item("A", "1");
    Item& b = item("B", "0");
    Item& set = collectiveItem("Set", {{&a, 2}, {&b, 1}});
    for (const char* answer : {"Add anyway", "Add anyway", "OK", "Add anyway", "OK"})
        alerts.answer(answer);
    orders().addItemToCurrentOrder(set);
    EXPECT_EQ(alerts.texts(),
        QStringList({"You don't have enough of one or more items that make up the collective item Set. Do you still wish to add one "
                     "to this order?",
            "You don't have enough A. Do you still wish to add 2 to this order?", "This leaves -1 of A in stock.",
            "You don't have enough B. Do you still wish to add 1 to this order?", "This leaves -1 of B in stock."}));
    EXPECT_EQ(a.getQty(), "-1");
    EXPECT_EQ(b.getQty(), "-1");
    EXPECT_EQ(set.getQty(), "");
}

} // namespace
