// What the item editor does besides typing: a similar item, stock that came in, where the item is used, what is missing.
#include "inventory/ItemRows.h"
#include "support/Business.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class ItemCommandsTest : public Business {
protected:
    ItemForm& form() { return items().form; }
    AddStockForm& addStock() { return items().addStockForm; }
    /// The cells of a row of one of the editor's own lists.
    static std::vector<std::string> cells(const TextRows& rows, int row)
    {
        std::vector<std::string> texts;
        for (const ListColumn& column : rows.list.columns)
            texts.push_back(rows.objectValue(column.identifier, row));
        return texts;
    }
    void type(TextField& field, const char* text) { field.edit(text); }
};

} // namespace

// Every field

TEST_F(ItemCommandsTest, everyFieldOfTheRecordCanBeEdited)
{
    begin();
    items().create();
    std::vector<std::string> missing;
    for (const FieldRow<ItemValues>& row : itemFields) {
        const std::string name(row.readNames.names.front());
        const bool isShown = std::any_of(form().fields().begin(), form().fields().end(),
            [&](const FormField* field) { return field->name().compare(QString::fromStdString(name), Qt::CaseInsensitive) == 0; });
        if (!isShown)
            missing.push_back(name);
    }
    // The kind is what the collective switch says.
    EXPECT_THAT(missing, ElementsAre("type"));
}

TEST_F(ItemCommandsTest, whatBelongsToTheWebsiteIsSavedAndShownAgain)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    EXPECT_EQ(form().websitefolder.text(), "~/sites/mysite/");
    EXPECT_EQ(form().quantityMethod.title(), "");
    EXPECT_TRUE(form().hidebuttoncode.isOn());
    form().status.edit("Discontinued");
    form().websitefolder.edit("~/shop");
    form().buttoncode.edit("<b>buy</b>");
    form().exportgoogle.edit(true);
    form().hidebuttoncode.edit(false);
    form().exportbrevand.edit(true);
    form().quantityMethod.edit(static_cast<int>(form().quantityMethod.titles().indexOf("Show quantity")));
    form().save.trigger();
    const std::pair<const char*, const char*> expected[] = {{"status", "Discontinued"}, {"websitefolder", "~/shop"},
        {"buttoncode", "<b>buy</b>"}, {"exportgoogle", "YES"}, {"hidebuttoncode", "NO"}, {"exportbrevand", "YES"},
        {"quantitymethod", "Show quantity"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(mug.getFieldByName(name), value) << name;
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().quantityMethod.title(), "");
    EXPECT_FALSE(form().exportbrevand.isOn());
    items().editThisItem(mug);
    EXPECT_EQ(form().quantityMethod.title(), "Show quantity");
    EXPECT_EQ(form().buttoncode.text(), "<b>buy</b>");
}

TEST_F(ItemCommandsTest, aQuantityMethodThatIsNotOfferedSurvivesASave)
{
    begin();
    Item& mug = item("Mug");
    mug.setQuantityMethod("By the dozen");
    items().editThisItem(mug);
    form().save.trigger();
    EXPECT_EQ(mug.getQuantityMethod(), "By the dozen");
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().quantityMethod.titles(), WebExport::quantityMethods());
}

// A similar item

TEST_F(ItemCommandsTest, aSimilarItemIsSavedAsACopyUnderTheNextCode)
{
    begin("<key>VendaroItemPrefix</key><string>IT</string><key>VendaroStockWarn</key><string>4</string>");
    items().create();
    type(form().item, "Mug");
    type(form().variation, "blue");
    type(form().qty, "12");
    type(form().price, "4.50");
    type(form().warnlevel, "2");

    form().createSimilar.trigger();

    ASSERT_EQ(items().getCount(), 1);
    EXPECT_EQ(items().at(0).getCode(), "IT1");
    EXPECT_TRUE(readFile("items.xml").contains("IT1"));
    EXPECT_TRUE(form().isOpen());
    EXPECT_EQ(form().code.text(), "IT2");
    EXPECT_EQ(form().item.text(), "Mug");
    EXPECT_EQ(form().qty.text(), "12");
    type(form().variation, "red");
    form().save.trigger();

    ASSERT_EQ(items().getCount(), 2);
    const Item& red = items().at(1);
    const std::pair<const char*, const char*> expected[] = {
        {"id", "2"}, {"code", "IT2"}, {"item", "Mug"}, {"variation", "red"}, {"qty", "12"}, {"price", "4.50"}, {"warnlevel", "2"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(red.getFieldByName(name), value) << name;
    EXPECT_EQ(items().at(0).getVariation(), "blue");
}

TEST_F(ItemCommandsTest, cancellingASimilarItemKeepsWhatWasSaved)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    type(form().price, "7");
    form().createSimilar.trigger();
    form().cancel.trigger();
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(mug.getPrice(), "7");
}

TEST_F(ItemCommandsTest, aSimilarCollectiveItemIsMadeOfTheSamePartsByItself)
{
    begin();
    Item& leg = item("Leg", "12");
    Item& stool = collectiveItem("Stool", {{&leg, 3}});
    items().editThisItem(stool);
    form().createSimilar.trigger();
    EXPECT_EQ(form().title(), "Collective Item");
    EXPECT_TRUE(items().constituentTable.setObjectValue("qty", 0, "4"));
    EXPECT_EQ(form().qty.text(), "3");
    form().save.trigger();
    const Item& copy = items().at(2);
    EXPECT_TRUE(copy.isCollectiveItem());
    EXPECT_EQ(copy.getConstituents().at(0).qty(), 4.0f);
    EXPECT_EQ(copy.getQty(), "3");
    EXPECT_EQ(stool.getConstituents().at(0).qty(), 3.0f);
}

TEST_F(ItemCommandsTest, withoutAnOpenItemThereIsNothingSimilar)
{
    begin();
    items().createSimilar();
    item("Mug");
    items().editThisItem(items().at(0));
    form().cancel.trigger();
    items().createSimilar();
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_FALSE(form().isOpen());
}

TEST_F(ItemCommandsTest, onlyTheItemMadeFromTheOrderBecomesItsLineNotTheSimilarOne)
{
    begin();
    orders().create();
    items().createForCurrentOrder();
    type(form().item, "Mug");
    type(form().qty, "5");
    form().createSimilar.trigger();
    form().save.trigger();
    EXPECT_EQ(items().getCount(), 2);
    EXPECT_EQ(lines().getCount(), 1);
}

TEST_F(ItemCommandsTest, aReaderMakesNothingSimilar)
{
    beginReadOnly();
    items().editThisItem(item("Mug"));
    alerts.answer("OK");
    form().createSimilar.trigger();
    EXPECT_EQ(lastAlert().title, "Read-only mode");
    EXPECT_EQ(items().getCount(), 1);
    EXPECT_EQ(form().code.text(), "");
}

// Stock that came in

TEST_F(ItemCommandsTest, whatCameInIsAddedToTheQuantityShown)
{
    begin();
    Item& mug = item("Mug", "10");
    items().editThisItem(mug);
    form().addStock.trigger();
    ASSERT_TRUE(addStock().isOpen());
    EXPECT_EQ(addStock().quantity.text(), "");
    addStock().quantity.edit("2.5");
    addStock().ok.trigger();
    EXPECT_FALSE(addStock().isOpen());
    EXPECT_EQ(form().qty.text(), "12.5");
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_TRUE(items().wasChangedByCommand());
    form().save.trigger();
    EXPECT_EQ(mug.getQty(), "12.5");
    EXPECT_EQ(beeper.beeps, 0);
}

TEST_F(ItemCommandsTest, nothingOrLessBeepsAndClosesTheSheet)
{
    begin();
    items().editThisItem(item("Mug", "10"));
    int beeps = 0;
    for (const char* came : {"0", "-3", "", "many"}) {
        form().addStock.trigger();
        addStock().quantity.edit(came);
        addStock().ok.trigger();
        EXPECT_EQ(beeper.beeps, ++beeps) << came;
        EXPECT_FALSE(addStock().isOpen());
        EXPECT_EQ(form().qty.text(), "10");
    }
    EXPECT_FALSE(items().wasChangedByCommand());
}

TEST_F(ItemCommandsTest, aCancelledSheetAddsNothing)
{
    begin();
    items().editThisItem(item("Mug", "10"));
    form().addStock.trigger();
    addStock().quantity.edit("5");
    addStock().cancel.trigger();
    EXPECT_EQ(form().qty.text(), "10");
    EXPECT_EQ(beeper.beeps, 0);
}

TEST_F(ItemCommandsTest, withoutAnItemAddingStockBeeps)
{
    begin();
    items().addStockToItem();
    EXPECT_EQ(beeper.beeps, 1);
    EXPECT_FALSE(addStock().isOpen());
    items().editThisItem(item("Mug", "10"));
    form().addStock.trigger();
    form().cancel.trigger();
    EXPECT_FALSE(addStock().isOpen());
    addStock().quantity.edit("5");
    items().addStockDialogOK();
    EXPECT_EQ(beeper.beeps, 2);
}

TEST_F(ItemCommandsTest, aLargeStockIsAddedToAsWell)
{
    begin();
    items().editThisItem(item("Nails", "2e+06"));
    form().addStock.trigger();
    addStock().quantity.edit("500,000");
    addStock().ok.trigger();
    EXPECT_EQ(form().qty.text(), "2.5e+06");
}

TEST_F(ItemCommandsTest, aCollectiveItemsStockIsNotAddedToByHand)
{
    begin();
    Item& leg = item("Leg", "12");
    items().editThisItem(collectiveItem("Stool", {{&leg, 3}}));
    EXPECT_FALSE(form().addStock.isVisible());
    items().editThisItem(leg);
    EXPECT_TRUE(form().addStock.isVisible());
}

// No more stock management

TEST_F(ItemCommandsTest, stockManagementIsTurnedOffForEveryItemThatHasIt)
{
    begin();
    Item& mug = item("Mug");
    Item& jug = item("Jug");
    jug.setDecreaseQty(false);
    Item& pot = item("Pot");
    alerts.answer("OK");

    items().removeAllQtyManagement();

    EXPECT_EQ(lastAlert().text, "2 Items updated");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    for (const Item* each : {&mug, &jug, &pot})
        EXPECT_FALSE(each->getDecreaseQty());
    EXPECT_FALSE(readFile("items.xml").contains("<key>decreaseQty</key>\n\t\t\t<string>YES</string>"));
    alerts.answer("OK");
    items().removeAllQtyManagement();
    EXPECT_EQ(lastAlert().text, "0 Items updated");
    mug.setDecreaseQty(true);
    alerts.answer("OK");
    items().removeAllQtyManagement();
    EXPECT_EQ(lastAlert().text, "1 Item updated");
}

TEST_F(ItemCommandsTest, anItemThatIsOpenDoesNotTurnItOnAgain)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    alerts.answer("OK");
    items().removeAllQtyManagement();
    form().save.trigger();
    EXPECT_FALSE(mug.getDecreaseQty());
}

TEST_F(ItemCommandsTest, aReaderTurnsNothingOff)
{
    beginReadOnly();
    Item& mug = item("Mug");
    alerts.answer("OK");
    items().removeAllQtyManagement();
    EXPECT_EQ(lastAlert().title, "Read-only mode");
    EXPECT_TRUE(mug.getDecreaseQty());
}

// Where it is used

TEST_F(ItemCommandsTest, theEditorListsWhereTheItemIsUsedAndOpensIt)
{
    begin();
    Item& leg = item("Leg");
    Item& stool = collectiveItem("Stool", {{&leg, 3}});
    Item& bench = collectiveItem("Bench", {{&leg, 4}, {&leg, 2}});
    bench.setCode("B-1");
    collectiveItem("Row", {{&bench, 2}});
    items().editThisItem(leg);
    ASSERT_EQ(items().usedIn.numberOfRows(), 2);
    EXPECT_THAT(cells(items().usedIn, 0), ElementsAre("", "Stool", "3"));
    EXPECT_THAT(cells(items().usedIn, 1), ElementsAre("B-1", "Bench", "6"));
    items().openUsedIn();
    EXPECT_EQ(items().currentItem(), &leg);
    items().usedIn.selectRow(1);
    items().openUsedIn();
    EXPECT_EQ(items().currentItem(), &bench);
    EXPECT_EQ(form().item.text(), "Bench");
    EXPECT_TRUE(form().isOpen());
    EXPECT_THAT(cells(items().usedIn, 0), ElementsAre("", "Row", "2"));
    items().editThisItem(stool);
    EXPECT_EQ(items().usedIn.numberOfRows(), 0);
}

TEST_F(ItemCommandsTest, aUserThatWasDeletedMeanwhileIsNotOpened)
{
    begin();
    Item& leg = item("Leg");
    Item& stool = collectiveItem("Stool", {{&leg, 3}});
    items().editThisItem(leg);
    items().usedIn.selectRow(0);
    items().deleteItem(stool);
    items().openUsedIn();
    EXPECT_EQ(items().currentItem(), &leg);
    EXPECT_TRUE(form().isOpen());
}

TEST_F(ItemCommandsTest, aNewItemIsUsedNowhere)
{
    begin();
    Item& leg = item("Leg");
    collectiveItem("Stool", {{&leg, 3}});
    items().editThisItem(leg);
    form().createSimilar.trigger();
    EXPECT_EQ(items().usedIn.numberOfRows(), 0);
}

// What the parts make

TEST_F(ItemCommandsTest, howManyCanBeMadeThroughAllLevelsStandsBesideTheQuantity)
{
    begin();
    Item& screw = item("Screw", "13");
    Item& left = collectiveItem("Left", {{&screw, 2}});
    Item& right = collectiveItem("Right", {{&screw, 3}});
    left.setQty("6");
    right.setQty("4");
    Item& gate = collectiveItem("Gate", {{&left, 1}, {&right, 1}});
    items().editThisItem(gate);
    EXPECT_EQ(form().qty.text(), "4");
    EXPECT_EQ(form().canBeMade.text(), "2");
    EXPECT_EQ(form().limitedBy.text(), "Screw: 5 for one, 13 in stock");
    EXPECT_TRUE(form().canBeMade.isVisible());
    EXPECT_EQ(items().shortages.numberOfRows(), 0);
    form().save.trigger();
    EXPECT_EQ(gate.getQty(), "4");
    items().editThisItem(screw);
    EXPECT_FALSE(form().canBeMade.isVisible());
}

TEST_F(ItemCommandsTest, whatIsMissingFollowsTheNumberThatIsTyped)
{
    begin();
    Item& leg = item("Leg", "10");
    leg.setCode("L");
    Item& seat = item("Seat", "30");
    items().editThisItem(collectiveItem("Stool", {{&leg, 3}, {&seat, 1}}));
    EXPECT_EQ(form().numberToMake.text(), "1");
    form().numberToMake.edit("5");
    ASSERT_EQ(items().shortages.numberOfRows(), 1);
    EXPECT_THAT(cells(items().shortages, 0), ElementsAre("L", "Leg", "15", "10", "5"));
    form().numberToMake.edit("40");
    EXPECT_EQ(items().shortages.numberOfRows(), 2);
    form().numberToMake.edit("lots");
    EXPECT_EQ(items().shortages.numberOfRows(), 0);
    EXPECT_NE(form().numberToMake.fault(), "");
    form().numberToMake.edit("");
    EXPECT_EQ(form().numberToMake.fault(), "");
    EXPECT_EQ(items().shortages.numberOfRows(), 0);
}

TEST_F(ItemCommandsTest, whatTheEditorDoesToThePartsShowsAtOnce)
{
    begin();
    Item& leg = item("Leg", "10");
    Item& seat = item("Seat", "1");
    Item& stool = item("Stool", "99");
    items().editThisItem(stool);
    form().collective.edit(true);
    EXPECT_EQ(form().canBeMade.text(), "0");
    EXPECT_EQ(form().limitedBy.text(), "");
    items().addConstituent(leg);
    EXPECT_EQ(form().canBeMade.text(), "10");
    EXPECT_TRUE(items().constituentTable.setObjectValue("qty", 0, "4"));
    EXPECT_EQ(form().canBeMade.text(), "2");
    EXPECT_EQ(form().qty.text(), "2.5");
    items().addConstituent(seat);
    EXPECT_EQ(form().canBeMade.text(), "1");
    form().numberToMake.edit("2");
    EXPECT_EQ(items().shortages.numberOfRows(), 1);
    items().constituentTable.selectConstituent(1);
    form().removeConstituent.trigger();
    EXPECT_EQ(form().canBeMade.text(), "2");
    EXPECT_EQ(items().shortages.numberOfRows(), 0);
    form().collective.edit(false);
    EXPECT_EQ(items().shortages.numberOfRows(), 0);
}

TEST_F(ItemCommandsTest, anItemOfAFileThatContainsItselfOpensAndCannotBeMade)
{
    begin();
    Item& odd = collectiveItem("Odd", {});
    odd.addConstituent(odd);
    items().editThisItem(odd);
    EXPECT_EQ(form().canBeMade.text(), "0");
    EXPECT_EQ(form().limitedBy.text(), "Odd: 1 for one, 0 in stock");
}

TEST_F(ItemCommandsTest, figuresOfTheListsAreWrittenOut)
{
    EXPECT_EQ(figureText(1234567), "1234567");
    EXPECT_EQ(figureText(2.5), "2.5");
    EXPECT_EQ(figureText(1e18), "1e+18");
}

// Many levels

TEST_F(ItemCommandsTest, thousandsOfLevelsAreLookedThroughForTheItemItself)
{
    begin();
    Item& nail = item("Nail");
    Item* below = &nail;
    for (int level = 0; level < 50'000; ++level)
        below = &collectiveItem("Level", {{below, 1}});
    Item& box = collectiveItem("Box", {});
    items().editThisItem(box);
    items().addConstituent(*below);
    EXPECT_EQ(box.getConstituents().size(), 1u);
    nail.makeCollectiveItem(true);
    nail.addConstituent(box);
    Item& crate = collectiveItem("Crate", {});
    items().editThisItem(crate);
    alerts.answer("OK");
    items().addConstituent(*below);
    EXPECT_EQ(lastAlert().title, "Self referential");
    EXPECT_TRUE(crate.getConstituents().empty());
}
