#include "support/Business.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class BOMManagerTest : public Business {
protected:
    void SetUp() override
    {
        begin();
        orders().create();
    }
    Material& pick(Item& item)
    {
        orders().addItemToCurrentOrder(item);
        return *lines().getnthItem(lines().numberForThisOrder() - 1, currentOrder().getID());
    }
    bool editCell(const char* column, const char* value, int row = 0) { return lines().setObjectValue(column, row, value); }
};

// Making the line

TEST_F(BOMManagerTest, aLineIsMadeFromTheItem)
{
    Contact& ann = contact("Ann");
    currentOrder().setContact(&ann);
    Item& mug = item("Mug", "10", "4.50");
    mug.setCode("M-1");
    mug.setVariation("blue");
    mug.setTaxcode("R");
    const Material& line = pick(mug);
    EXPECT_EQ(line.getItem(), "Mug");
    EXPECT_EQ(line.getCode(), "M-1");
    EXPECT_EQ(line.getVariation(), "blue");
    EXPECT_EQ(line.getTaxCode(), "R");
    EXPECT_EQ(line.getQty(), "1");
    EXPECT_EQ(line.getCost(), "4.50");
    EXPECT_EQ(line.getTotal(), "4.50");
    EXPECT_EQ(line.getUnit(), "");
    EXPECT_EQ(line.getProduct(), mug.getID());
    EXPECT_EQ(line.getOrder(), currentOrder().getID());
    EXPECT_EQ(line.getContact(), ann.getID());
    EXPECT_EQ(line.getDateAdded(), "01/03/2024");
    EXPECT_EQ(line.getID(), 1);
}

TEST_F(BOMManagerTest, anItemWithoutATaxCodeMakesAStandardLine)
{
    EXPECT_EQ(pick(item("Mug")).getTaxCode(), "S");
}

TEST_F(BOMManagerTest, laterChangesOfTheItemLeaveTheLineAlone)
{
    Item& mug = item("Mug", "10", "4.50");
    const Material& line = pick(mug);
    mug.setItem("Cup");
    mug.setPrice("9.00");
    EXPECT_EQ(line.getItem(), "Mug");
    EXPECT_EQ(line.getCost(), "4.50");
}

TEST_F(BOMManagerTest, pickingGoesThroughTheListOfItems)
{
    item("Mug");
    item("Plate").setCode("P-1");
    orders().form.pickMaterial.trigger();
    qvPicker& picker = app().getPicker();
    EXPECT_EQ(picker.list.columns[0].heading, "Code");
    EXPECT_EQ(picker.list.columns[1].heading, "Item");
    EXPECT_EQ(picker.list.columns[2].heading, "Variation");
    picker.form.search.edit("plate");
    picker.selectRow(0);
    picker.chooseSelected();
    EXPECT_THAT(shown(lines(), "item"), ElementsAre("Plate"));
}

TEST_F(BOMManagerTest, pickingTakesOneFromStock)
{
    Item& mug = item("Mug", "10");
    pick(mug);
    EXPECT_EQ(mug.getQty(), "9");
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(BOMManagerTest, aPurchaseOrdersLineIsAtTheCostPriceAndMovesNoStock)
{
    orders().createPurchaseOrder();
    Item& mug = item("Mug", "10", "4.50");
    mug.setBought("2.00");
    const Material& line = pick(mug);
    EXPECT_EQ(line.getCost(), "2.00");
    EXPECT_EQ(line.getTotal(), "2.00");
    EXPECT_EQ(line.getOrderType(), "Purchase Order");
    EXPECT_EQ(mug.getQty(), "10");
}

TEST_F(BOMManagerTest, anItemWithoutManagedStockMovesNoneAndAsksNothing)
{
    Item& work = item("Work", "");
    work.setDecreaseQty(false);
    pick(work);
    EXPECT_EQ(work.getQty(), "");
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

// What is asked when stock leaves

TEST_F(BOMManagerTest, theLastOneLeavesWithAWarningOnly)
{
    Item& mug = item("Mug", "1");
    alerts.answer("OK");
    pick(mug);
    EXPECT_EQ(mug.getQty(), "0");
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(lastAlert().title, "Low Stock");
    EXPECT_EQ(lastAlert().text, "This leaves 0 of Mug in stock.");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
}

TEST_F(BOMManagerTest, aWarningComesAtTheWarnLevelAndBelowWithTwoDigits)
{
    Item& mug = item("Mug", "14");
    mug.setWarnlevel("12.9 or so");
    pick(mug);
    EXPECT_TRUE(alerts.asked().empty());
    alerts.answer("OK");
    pick(mug);
    EXPECT_EQ(lastAlert().text, "This leaves 12 of Mug in stock.");
    mug.setQty("124");
    mug.setWarnlevel("200");
    alerts.answer("OK");
    pick(mug);
    EXPECT_EQ(lastAlert().text, "This leaves 1.2e+02 of Mug in stock.");
}

TEST_F(BOMManagerTest, withoutAWarnLevelTheWarningComesWhenNoneIsLeft)
{
    Item& mug = item("Mug", "2");
    mug.setWarnlevel("");
    pick(mug);
    EXPECT_TRUE(alerts.asked().empty());
    alerts.answer("OK");
    pick(mug);
    EXPECT_EQ(lastAlert().title, "Low Stock");
}

TEST_F(BOMManagerTest, whatIsNotThereIsAskedAboutAndMayBeTakenAnyway)
{
    Item& mug = item("Mug", "0.5");
    alerts.answer("Add anyway");
    alerts.answer("OK");
    pick(mug);
    ASSERT_EQ(alerts.asked().size(), 2u);
    EXPECT_EQ(alerts.asked()[0].title, "Out of Stock");
    EXPECT_EQ(alerts.asked()[0].text, "You don't have enough Mug. Do you still wish to add 1 to this order?");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList({"Add anyway", "Cancel"}));
    EXPECT_EQ(alerts.asked()[1].text, "This leaves -0.5 of Mug in stock.");
    EXPECT_EQ(mug.getQty(), "-0.5");
}

TEST_F(BOMManagerTest, cancellingLeavesTheStockAloneButMakesTheLine)
{
    Item& mug = item("Mug", "0");
    alerts.answer("Cancel");
    pick(mug);
    EXPECT_EQ(mug.getQty(), "0");
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

TEST_F(BOMManagerTest, anItemCalledLikeAPlaceholderIsNamedAsItIs)
{
    Item& odd = item("100%@ %i", "0");
    alerts.answer("Cancel");
    pick(odd);
    EXPECT_EQ(lastAlert().text, "You don't have enough 100%@ %i. Do you still wish to add 1 to this order?");
}

// Collective items

TEST_F(BOMManagerTest, aCollectiveItemTakesItsPartsAndKeepsItsOwnQuantity)
{
    Item& a = item("A", "10");
    Item& b = item("B", "10");
    Item& set = collectiveItem("Set", {{&a, 2}, {&b, 1}});
    set.setQty("5");
    pick(set);
    EXPECT_EQ(a.getQty(), "8");
    EXPECT_EQ(b.getQty(), "9");
    EXPECT_EQ(set.getQty(), "5");
}

TEST_F(BOMManagerTest, aMissingPartIsAskedAboutForTheSetAndThenForItself)
{
    Item& a = item("A", "10");
    Item& b = item("B", "0");
    Item& set = collectiveItem("Set", {{&a, 2}, {&b, 1}});
    alerts.answer("Add anyway");
    alerts.answer("Cancel");
    pick(set);
    ASSERT_EQ(alerts.asked().size(), 2u);
    EXPECT_EQ(alerts.asked()[0].title, "Out of Stock");
    EXPECT_EQ(alerts.asked()[0].text,
        "You don't have enough of one or more items that make up the collective item Set. Do you still wish to add one to "
        "this order?");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList({"Add anyway", "Cancel"}));
    EXPECT_EQ(alerts.asked()[1].text, "You don't have enough B. Do you still wish to add 1 to this order?");
    EXPECT_EQ(a.getQty(), "8");
    EXPECT_EQ(b.getQty(), "0");
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

TEST_F(BOMManagerTest, cancellingForTheSetTakesNoPartAtAll)
{
    Item& a = item("A", "10");
    Item& b = item("B", "0");
    alerts.answer("Cancel");
    pick(collectiveItem("Set", {{&a, 2}, {&b, 1}}));
    EXPECT_EQ(a.getQty(), "10");
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

TEST_F(BOMManagerTest, aPartOfASetIsNotEnoughForAWholeOne)
{
    // Half a set is more than nothing, so only the part itself is asked about.
    Item& a = item("A", "1");
    alerts.answer("Add anyway");
    alerts.answer("OK");
    pick(collectiveItem("Set", {{&a, 2}}));
    ASSERT_EQ(alerts.asked().size(), 2u);
    EXPECT_EQ(alerts.asked()[0].text, "You don't have enough A. Do you still wish to add 2 to this order?");
    EXPECT_EQ(alerts.asked()[1].text, "This leaves -1 of A in stock.");
}

TEST_F(BOMManagerTest, setsInSetsTakeTheirPartsManyTimesOver)
{
    Item& a = item("A", "100");
    Item& inner = collectiveItem("Inner", {{&a, 3}});
    inner.setQty("33");
    pick(collectiveItem("Outer", {{&inner, 4}, {&a, 0.5f}}));
    EXPECT_EQ(a.getQty(), "87.5");
}

TEST_F(BOMManagerTest, aSetInASetCountsWithTheQuantityItWasSavedWith)
{
    Item& a = item("A", "100");
    Item& inner = collectiveItem("Inner", {{&a, 1}});
    inner.setQty("0");
    alerts.answer("Cancel");
    pick(collectiveItem("Outer", {{&inner, 1}}));
    EXPECT_EQ(a.getQty(), "100");
}

TEST_F(BOMManagerTest, aPartThatIsGoneIsSkipped)
{
    Item& a = item("A", "10");
    Item& set = collectiveItem("Set", {{&a, 1}});
    set.setConstituents({Constituent(999, "X", "gone"), set.getConstituents()[0]});
    pick(set);
    EXPECT_EQ(a.getQty(), "9");
}

TEST_F(BOMManagerTest, aSetThatContainsItselfEnds)
{
    Item& a = item("A", "10");
    Item& set = collectiveItem("Set", {{&a, 1}});
    set.addConstituent(set);
    set.setQty("5");
    pick(set);
    EXPECT_EQ(a.getQty(), "9");
}

// Editing cells

TEST_F(BOMManagerTest, textCellsTakeAnything)
{
    pick(item("Mug"));
    for (const char* column : {"code", "item", "variation", "unit", "taxcode"}) {
        EXPECT_TRUE(editCell(column, "=2*3 of x")) << column;
        EXPECT_EQ(lines().objectValue(column, 0), "=2*3 of x");
    }
}

TEST_F(BOMManagerTest, aCostGetsMoneyFormAndTheTotalFollows)
{
    pick(item("Mug"));
    EXPECT_TRUE(editCell("qty", "3"));
    EXPECT_TRUE(editCell("cost", "1234.5"));
    EXPECT_EQ(lines().objectValue("cost", 0), "1,234.50");
    EXPECT_EQ(lines().objectValue("total", 0), "3,703.50");
}

TEST_F(BOMManagerTest, aTotalIsKeptAsTypedUntilCostOrQuantityChange)
{
    pick(item("Mug", "10", "4.00"));
    EXPECT_TRUE(editCell("total", "3"));
    EXPECT_EQ(lines().objectValue("total", 0), "3.00");
    EXPECT_EQ(lines().objectValue("cost", 0), "4.00");
    EXPECT_TRUE(editCell("qty", "2"));
    EXPECT_EQ(lines().objectValue("total", 0), "8.00");
}

TEST_F(BOMManagerTest, anEmptyFigureStaysEmpty)
{
    pick(item("Mug", "10", "4.00"));
    EXPECT_TRUE(editCell("total", ""));
    EXPECT_EQ(lines().objectValue("total", 0), "");
    EXPECT_TRUE(editCell("cost", ""));
    EXPECT_EQ(lines().objectValue("cost", 0), "");
    EXPECT_EQ(lines().objectValue("total", 0), "0.00");
}

TEST_F(BOMManagerTest, aFigureThatIsNoNumberIsRefusedWithABeep)
{
    Item& mug = item("Mug", "10", "4.00");
    pick(mug);
    for (const char* column : {"cost", "total", "qty"}) {
        for (const char* value : {"four", "4 pounds", "1e3", "=2*", "10000001"}) {
            beeper.beeps = 0;
            EXPECT_FALSE(editCell(column, value)) << column << " " << value;
            EXPECT_EQ(beeper.beeps, 1) << column << " " << value;
        }
    }
    EXPECT_EQ(lines().objectValue("cost", 0), "4.00");
    EXPECT_EQ(lines().objectValue("total", 0), "4.00");
    EXPECT_EQ(lines().objectValue("qty", 0), "1");
    EXPECT_EQ(mug.getQty(), "9");
}

TEST_F(BOMManagerTest, arithmeticBehindAnEqualsSignIsWorkedOut)
{
    pick(item("Mug", "1000"));
    EXPECT_TRUE(editCell("cost", "=2*3.50"));
    EXPECT_EQ(lines().objectValue("cost", 0), "7.00");
    EXPECT_TRUE(editCell("qty", "=12*4"));
    EXPECT_EQ(lines().objectValue("qty", 0), "48");
}

TEST_F(BOMManagerTest, arithmeticKeepsEveryPennyOfLargeFigures)
{
    pick(item("Kiln"));
    EXPECT_TRUE(editCell("cost", "=12345.67*2"));
    EXPECT_EQ(lines().objectValue("cost", 0), "24,691.34");
    EXPECT_TRUE(editCell("total", "=1000*2000"));
    EXPECT_EQ(lines().objectValue("total", 0), "2,000,000.00");
}

TEST_F(BOMManagerTest, moreOfALineTakesTheDifferenceAndLessGivesItBackUnasked)
{
    Item& mug = item("Mug", "3");
    pick(mug);
    alerts.answer("OK");
    EXPECT_TRUE(editCell("qty", "3"));
    EXPECT_EQ(mug.getQty(), "0");
    EXPECT_EQ(lastAlert().title, "Low Stock");
    alerts.forget();
    EXPECT_TRUE(editCell("qty", "1"));
    EXPECT_EQ(mug.getQty(), "2");
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(BOMManagerTest, aQuantityThatStockDoesNotAllowIsRefused)
{
    Item& mug = item("Mug", "3");
    pick(mug);
    alerts.answer("Cancel");
    EXPECT_FALSE(editCell("qty", "10"));
    EXPECT_EQ(lastAlert().text, "You don't have enough Mug. Do you still wish to add 9 to this order?");
    EXPECT_EQ(lines().objectValue("qty", 0), "1");
    EXPECT_EQ(mug.getQty(), "2");
    EXPECT_EQ(beeper.beeps, 1);
}

TEST_F(BOMManagerTest, quantitiesOfPurchaseOrdersUnmanagedAndForeignItemsMoveNoStock)
{
    Item& work = item("Work", "4");
    work.setDecreaseQty(false);
    pick(work);
    line(currentOrder(), "1.00");
    EXPECT_TRUE(editCell("qty", "3", 0));
    EXPECT_TRUE(editCell("qty", "3", 1));
    EXPECT_EQ(work.getQty(), "4");
    orders().createPurchaseOrder();
    Item& clay = item("Clay", "4");
    pick(clay);
    EXPECT_TRUE(editCell("qty", "3"));
    EXPECT_EQ(clay.getQty(), "4");
}

TEST_F(BOMManagerTest, anEditedLineLiesOnDiskAndInTheSubtotal)
{
    pick(item("Mug"));
    EXPECT_TRUE(editCell("item", "Big mug"));
    EXPECT_TRUE(readFile("itemsordered.xml").contains("Big mug"));
    EXPECT_TRUE(editCell("cost", "7"));
    EXPECT_EQ(orders().form.subtotal.text(), "7.00");
}

TEST_F(BOMManagerTest, theBrandIsTheItemsAndCannotBeEdited)
{
    Item& mug = item("Mug");
    mug.setBrand("Acme");
    pick(mug);
    EXPECT_EQ(lines().objectValue("brand", 0), "Acme");
    EXPECT_FALSE(lines().list.column("brand")->editable);
    EXPECT_FALSE(editCell("brand", "Other"));
    EXPECT_EQ(beeper.beeps, 1);
    EXPECT_EQ(lines().objectValue("brand", 0), "Acme");
}

// Removing lines

TEST_F(BOMManagerTest, removingALineAsksInTheUsersWords)
{
    quit();
    begin("<key>VendaroTermItem</key><string>Product</string><key>VendaroTermOrder</key><string>Job</string>");
    orders().create();
    pick(item("Mug"));
    lines().selectRow(0);
    alerts.answer("Cancel");
    orders().form.removeMaterial.trigger();
    EXPECT_EQ(lastAlert().title, "Delete Item");
    EXPECT_EQ(lastAlert().text,
        "Do you want to remove the selected Product from this Job? (It will be deleted from this list but the original "
        "Product will remain in your inventory)");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK", "Cancel"}));
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

TEST_F(BOMManagerTest, aRemovedLineGivesItsStockBackAndLeavesTheSubtotal)
{
    Item& mug = item("Mug", "10");
    pick(mug);
    pick(item("Plate", "10", "3.00"));
    lines().selectRow(0);
    alerts.answer("OK");
    lines().deleteKey();
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_THAT(shown(lines(), "item"), ElementsAre("Plate"));
    EXPECT_EQ(orders().form.subtotal.text(), "3.00");
}

TEST_F(BOMManagerTest, onlyWholeOnesComeBack)
{
    Item& mug = item("Mug", "10");
    Material& line = pick(mug);
    line.setQty("2.5");
    lines().deleteLine(line);
    EXPECT_EQ(mug.getQty(), "11");
}

TEST_F(BOMManagerTest, nothingComesBackFromAPurchaseOrderAnUnmanagedItemOrOneThatIsGone)
{
    Item& work = item("Work", "4");
    work.setDecreaseQty(false);
    lines().deleteLine(pick(work));
    EXPECT_EQ(work.getQty(), "4");
    lines().deleteLine(line(currentOrder(), "1.00"));
    orders().createPurchaseOrder();
    Item& clay = item("Clay", "4");
    lines().deleteLine(pick(clay));
    EXPECT_EQ(clay.getQty(), "4");
    EXPECT_EQ(lines().numberForThisOrder(), 0);
}

TEST_F(BOMManagerTest, aLineKeepsItsTextsAndMovesNoStockOnceItsItemIsDeleted)
{
    Item& mug = item("Mug", "10", "4.50");
    mug.setShipping("2.00");
    mug.setBrand("Acme");
    mug.setCategory("Tea");
    Material& line = pick(mug);
    EXPECT_EQ(lines().getShippingforCurrentOrder(), 2.0f);
    items().deleteItem(mug);
    EXPECT_EQ(lines().getShippingforCurrentOrder(), 0.0f);
    EXPECT_EQ(lines().objectValue("brand", 0), "");
    EXPECT_EQ(line.getFieldByName("item:category"), "");
    EXPECT_TRUE(editCell("qty", "50"));
    lines().deleteLine(line);
    EXPECT_EQ(mug.getQty(), "9");
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(line.getItem(), "Mug");
}

TEST_F(BOMManagerTest, withoutASelectedLineNothingIsAsked)
{
    pick(item("Mug"));
    lines().deleteKey();
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(BOMManagerTest, removingAllLinesGivesAllStockBackAndLeavesOtherOrders)
{
    Item& mug = item("Mug", "10");
    Item& plate = item("Plate", "10");
    pick(mug);
    pick(plate);
    pick(mug);
    line(order("other"), "1.00");
    lines().deleteAllForCurrentOrder();
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_EQ(plate.getQty(), "10");
    EXPECT_EQ(lines().numberForThisOrder(), 0);
    EXPECT_EQ(lines().getCount(), 1);
}

// Lines of orders

TEST_F(BOMManagerTest, linesAreCountedAndFoundOrderByOrder)
{
    const Order& other = order("other");
    line(other, "1.00");
    line(currentOrder(), "2.00");
    line(other, "3.00");
    EXPECT_EQ(lines().numberForThisOrder(), 1);
    lines().setCurrentOrder(other.getID());
    EXPECT_EQ(lines().numberForThisOrder(), 2);
    EXPECT_EQ(lines().getnthItem(1, other.getID())->getTotal(), "3.00");
    EXPECT_EQ(lines().getnthItem(0, currentOrder().getID())->getTotal(), "2.00");
}

TEST_F(BOMManagerTest, aLineThatDoesNotExistIsTheFirstOfAll)
{
    EXPECT_EQ(lines().getnthItem(0, 1), nullptr);
    const Material& first = line(order("other"), "1.00");
    line(currentOrder(), "2.00");
    EXPECT_EQ(lines().getnthItem(5, currentOrder().getID()), &first);
    EXPECT_EQ(lines().getnthItem(0, 999), &first);
    EXPECT_EQ(lines().getnthItem(-1, currentOrder().getID()), &first);
}

TEST_F(BOMManagerTest, copiedLinesKeepTheirFiguresAndAreDatedToday)
{
    const Order& copy = order("copy");
    Item& mug = item("Mug", "10");
    Material& source = pick(mug);
    source.setUnit("box");
    source.setVariation("blue");
    source.setTotal("99.00");
    source.setDateAdded("01/01/2020");
    lines().duplicateMaterialsFromOrder(currentOrder().getID(), copy.getID());
    ASSERT_EQ(lines().linesOfOrder(copy.getID()).size(), 1u);
    const Material& line = *lines().linesOfOrder(copy.getID()).front();
    for (const char* name : {"item", "code", "qty", "unit", "cost", "total", "taxcode", "variation", "product"})
        EXPECT_EQ(line.getFieldByName(name), source.getFieldByName(name)) << name;
    EXPECT_EQ(line.getDateAdded(), "01/03/2024");
    EXPECT_EQ(mug.getQty(), "9");
}

TEST_F(BOMManagerTest, timeLinesKeepTheirChargeAndMoveNoStock)
{
    const Material& line = lines().addTimeLine({"Glazing", "05/01/24", "2.5", "Hours", "20.00", "49.99"});
    EXPECT_EQ(line.getItem(), "Glazing");
    EXPECT_EQ(line.getCode(), "05/01");
    EXPECT_EQ(line.getQty(), "2.5");
    EXPECT_EQ(line.getUnit(), "Hours");
    EXPECT_EQ(line.getCost(), "20.00");
    EXPECT_EQ(line.getTotal(), "49.99");
    EXPECT_EQ(line.getTaxCode(), "S");
    EXPECT_EQ(line.getProduct(), 0);
    EXPECT_EQ(line.getOrder(), currentOrder().getID());
    EXPECT_EQ(lines().addTimeLine({"Short", "05/01", "", "", "", ""}).getCode(), "");
}

TEST_F(BOMManagerTest, linesComeBackInTheirOrderWithTheirKind)
{
    pick(item("Mug"));
    pick(item("Plate"));
    orders().form.save.trigger();
    orders().createPurchaseOrder();
    pick(item("Clay"));
    orders().form.save.trigger();
    restart();
    ASSERT_EQ(lines().getCount(), 3);
    EXPECT_EQ(lines().at(0).getItem(), "Mug");
    EXPECT_EQ(lines().at(1).getItem(), "Plate");
    EXPECT_EQ(lines().at(0).getOrderType(), "Customer");
    EXPECT_EQ(lines().at(2).getOrderType(), "Purchase Order");
}

} // namespace
