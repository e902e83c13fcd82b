#include "support/Business.h"
#include "support/ListResets.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class ItemManagerTest : public Business {
protected:
    ItemForm& form() { return items().form; }
    Item& current() { return *items().currentItem(); }
};

// A new item

TEST_F(ItemManagerTest, aNewItemGetsTheNextIdAPrefixedCodeAndTheWarnLevel)
{
    begin("<key>VendaroItemPrefix</key><string>IT</string><key>VendaroStockWarn</key><string>3</string>");
    item("Mug");
    items().create();
    EXPECT_EQ(current().getID(), 2);
    EXPECT_EQ(form().code.text(), "IT2");
    EXPECT_EQ(form().warnlevel.text(), "3");
    EXPECT_TRUE(form().isOpen());
    EXPECT_EQ(items().getCount(), 1);
}

TEST_F(ItemManagerTest, aCancelledNewItemLeavesNothingNotEvenItsId)
{
    begin();
    items().create();
    form().cancel.trigger();
    EXPECT_EQ(items().getCount(), 0);
    EXPECT_FALSE(form().isOpen());
    items().create();
    EXPECT_EQ(current().getID(), 1);
}

TEST_F(ItemManagerTest, savingCopiesTheEditorIntoTheItem)
{
    begin();
    items().create();
    const std::pair<TextField*, const char*> texts[] = {{&form().item, "Mug"}, {&form().code, "M-1"}, {&form().variation, "blue"},
        {&form().brand, "Acme"}, {&form().category, "Tea, Mugs"}, {&form().description, "for tea"}, {&form().price, "4.50"},
        {&form().bought, "2.00"}, {&form().shipping, "1.00"}, {&form().qty, "12"}, {&form().warnlevel, "2"}, {&form().optimumQty, "20"},
        {&form().ean, "501"}, {&form().part, "P9"}, {&form().link, "http://a"}, {&form().imageLink, "http://b"}};
    for (const auto& [field, text] : texts)
        field->edit(text);
    form().condition.edit(static_cast<int>(form().condition.titles().indexOf("Refurbished")));
    form().taxcode.edit(static_cast<int>(form().taxcode.titles().indexOf("Z")));
    form().decreaseQty.edit(false);
    form().save.trigger();

    ASSERT_EQ(items().getCount(), 1);
    const Item& mug = items().at(0);
    const std::pair<const char*, const char*> expected[] = {{"item", "Mug"}, {"code", "M-1"}, {"variation", "blue"}, {"brand", "Acme"},
        {"category", "Tea, Mugs"}, {"description", "for tea"}, {"price", "4.50"}, {"bought", "2.00"}, {"shipping", "1.00"}, {"qty", "12"},
        {"warnlevel", "2"}, {"optimumqty", "20"}, {"ean", "501"}, {"part", "P9"}, {"link", "http://a"}, {"imagelink", "http://b"},
        {"condition", "Refurbished"}, {"taxcode", "Z"}, {"decreaseqty", "NO"}, {"supplier", "0"}, {"type", "Item"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(mug.getFieldByName(name), value) << name;
    EXPECT_FALSE(form().isOpen());
    EXPECT_TRUE(readFile("items.xml").contains("<string>Refurbished</string>"));
}

TEST_F(ItemManagerTest, conditionAndTaxCodeStayWhenNoneIsChosen)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    EXPECT_EQ(form().condition.title(), "");
    form().save.trigger();
    EXPECT_EQ(mug.getCondition(), "");
    EXPECT_EQ(mug.getTaxcode(), "");
}

TEST_F(ItemManagerTest, aConditionOrTaxCodeThatIsNotListedSurvivesASave)
{
    begin();
    Item& mug = item("Mug");
    mug.setCondition("Chipped");
    mug.setTaxcode("Q");
    items().editThisItem(mug);
    form().save.trigger();
    EXPECT_EQ(mug.getCondition(), "Chipped");
    EXPECT_EQ(mug.getTaxcode(), "Q");
}

TEST_F(ItemManagerTest, anItemMadeFromAnOrderBecomesItsLine)
{
    begin();
    orders().create();
    items().createForCurrentOrder();
    form().item.edit("Mug");
    form().price.edit("4.50");
    form().qty.edit("5");
    form().save.trigger();
    EXPECT_THAT(shown(lines(), "item"), ElementsAre("Mug"));
    EXPECT_EQ(lines().getnthItem(0, currentOrder().getID())->getProduct(), items().at(0).getID());
    EXPECT_EQ(items().at(0).getQty(), "4");
    items().create();
    form().save.trigger();
    EXPECT_EQ(lines().getCount(), 1);
}

TEST_F(ItemManagerTest, editingAnExistingItemChangesItOnlyOnSaving)
{
    begin();
    Item& mug = item("Mug");
    items().selectRow(0);
    items().edit();
    form().item.edit("Cup");
    form().cancel.trigger();
    EXPECT_EQ(mug.getItem(), "Mug");
    items().edit();
    EXPECT_EQ(form().item.text(), "Mug");
    form().item.edit("Cup");
    form().save.trigger();
    EXPECT_EQ(mug.getItem(), "Cup");
}

// Suppliers

TEST_F(ItemManagerTest, theSupplierIsKeptAsTheIdOfTheFirstContactOfThatName)
{
    begin();
    const Contact& first = contact("Potters", "Customer");
    contact("Potters", "Supplier");
    Item& mug = item("Mug");
    items().editThisItem(mug);
    form().supplier.edit("Potters");
    form().save.trigger();
    EXPECT_EQ(mug.getSupplier(), std::to_string(first.getID()));
    items().editThisItem(mug);
    EXPECT_EQ(form().supplier.text(), "Potters");
    form().supplier.edit("potters");
    form().save.trigger();
    EXPECT_EQ(mug.getSupplier(), "0");
    items().editThisItem(mug);
    EXPECT_EQ(form().supplier.text(), "");
}

TEST_F(ItemManagerTest, thePickerOffersSuppliersOnly)
{
    begin();
    contact("Ann", "Customer");
    contact("Potters", "Supplier").setAdd1("1 Kiln Lane");
    items().create();
    form().pickSupplier.trigger();
    qvPicker& picker = app().getPicker();
    ASSERT_EQ(picker.numberOfRows(), 1);
    EXPECT_EQ(picker.list.columns[0].heading, "Name");
    EXPECT_EQ(picker.list.columns[1].heading, "Address");
    EXPECT_EQ(picker.list.columns[0].width, 150);
    EXPECT_EQ(picker.list.columns[1].width, 350);
    picker.selectRow(0);
    picker.chooseSelected();
    EXPECT_EQ(form().supplier.text(), "Potters");
}

// Collective items: what they hold

TEST_F(ItemManagerTest, aCollectiveItemHoldsWhatItsScarcestPartAllows)
{
    begin();
    Item& a = item("A", "10");
    Item& b = item("B", "4");
    Item& set = collectiveItem("Set", {{&a, 3}, {&b, 1}});
    EXPECT_FLOAT_EQ(items().getQtyForCollectiveItem(set), 10.0f / 3.0f);
    b.setQty("0");
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 0.0f);
    b.setQty("-2");
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 0.0f);
    a.setQty("5");
    set.setConstituentQty(0, 2);
    set.removeConstituentAtIndex(1);
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 2.5f);
}

TEST_F(ItemManagerTest, partsThatAreGoneOrNeededNoTimesDoNotCount)
{
    begin();
    Item& a = item("A", "10");
    Item& b = item("B", "4");
    Item& set = collectiveItem("Set", {{&a, 0}, {&b, -1}});
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 0.0f);
    set.setConstituents({Constituent(999, "", ""), Constituent(b.getID(), "", "")});
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 4.0f);
    set.setConstituents({});
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 0.0f);
    EXPECT_EQ(items().getQtyForCollectiveItem(a), 0.0f);
}

TEST_F(ItemManagerTest, aDeletedPartIsSkippedAndStaysInTheList)
{
    begin();
    Item& a = item("A", "1");
    Item& b = item("B", "4");
    Item& set = collectiveItem("Set", {{&a, 1}, {&b, 2}});
    items().deleteItem(a);
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 2.0f);
    EXPECT_FALSE(items().collectiveItemContainsItem(set, a));
    items().deleteItem(b);
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 0.0f);
    EXPECT_EQ(set.getConstituents().size(), 2u);
}

TEST_F(ItemManagerTest, whereAnItemIsUsedIsToldOneLevelUp)
{
    begin();
    Item& a = item("A");
    Item& inner = collectiveItem("Inner", {{&a, 1}});
    Item& outer = collectiveItem("Outer", {{&inner, 1}});
    Item& other = collectiveItem("Other", {{&a, 2}});
    EXPECT_EQ(items().whereUsed(a), (std::vector<Item*> {&inner, &other}));
    EXPECT_EQ(items().whereUsed(inner), std::vector<Item*> {&outer});
    other.makeCollectiveItem(false);
    EXPECT_EQ(items().whereUsed(a), std::vector<Item*> {&inner});
}

// Collective items: the editor

TEST_F(ItemManagerTest, theSwitchTurnsTheEditorIntoThatOfACollectiveItemAndBack)
{
    begin("<key>VendaroTermItem</key><string>Product</string>");
    items().editThisItem(item("Mug", "7"));
    EXPECT_EQ(form().title(), "Product");
    EXPECT_FALSE(form().qty.isReadOnly());
    EXPECT_FALSE(form().pickConstituent.isVisible());
    form().collective.edit(true);
    EXPECT_EQ(form().title(), "Collective Product");
    EXPECT_TRUE(form().qty.isReadOnly());
    EXPECT_EQ(form().qty.text(), "0");
    EXPECT_FALSE(form().warnlevel.isVisible());
    EXPECT_FALSE(form().optimumQty.isVisible());
    EXPECT_TRUE(form().pickConstituent.isVisible());
    form().collective.edit(false);
    EXPECT_EQ(form().title(), "Product");
    EXPECT_FALSE(form().qty.isReadOnly());
    EXPECT_EQ(form().qty.text(), "7");
    EXPECT_TRUE(form().warnlevel.isVisible());
}

TEST_F(ItemManagerTest, aSavedCollectiveItemKeepsWhatItHeldThen)
{
    begin();
    Item& a = item("A", "5");
    Item& set = item("Set", "99");
    items().editThisItem(set);
    form().collective.edit(true);
    items().addConstituent(a);
    EXPECT_EQ(form().qty.text(), "5");
    EXPECT_TRUE(items().constituentTable.setObjectValue("qty", 0, "2"));
    EXPECT_EQ(form().qty.text(), "2.5");
    form().save.trigger();
    EXPECT_TRUE(set.isCollectiveItem());
    EXPECT_EQ(set.getQty(), "2.5");
    a.setQty("50");
    EXPECT_EQ(set.getQty(), "2.5");
}

TEST_F(ItemManagerTest, cancellingLeavesTheKindAsItWasWhilePartsCountAtOnce)
{
    begin();
    Item& a = item("A", "5");
    Item& b = item("B", "5");
    Item& plain = item("Plain", "9");
    items().editThisItem(plain);
    form().collective.edit(true);
    items().addConstituent(a);
    form().cancel.trigger();
    EXPECT_FALSE(plain.isCollectiveItem());
    EXPECT_EQ(plain.getQty(), "9");
    ASSERT_EQ(plain.getConstituents().size(), 1u);
    EXPECT_EQ(plain.getConstituents().front().id(), a.getID());

    Item& set = collectiveItem("Set", {{&a, 2}});
    items().editThisItem(set);
    items().addConstituent(b);
    EXPECT_TRUE(items().constituentTable.setObjectValue("qty", 0, "7"));
    form().collective.edit(false);
    form().cancel.trigger();
    EXPECT_TRUE(set.isCollectiveItem());
    ASSERT_EQ(set.getConstituents().size(), 2u);
    EXPECT_EQ(set.getConstituents().front().qty(), 7.0f);
    EXPECT_EQ(set.getConstituents().back().id(), b.getID());
}

TEST_F(ItemManagerTest, aPartIsPickedFromTheItems)
{
    begin();
    item("A", "5");
    Item& set = item("Set");
    items().editThisItem(set);
    form().collective.edit(true);
    form().pickConstituent.trigger();
    qvPicker& picker = app().getPicker();
    EXPECT_EQ(picker.list.columns[0].width, 80);
    EXPECT_EQ(picker.list.columns[1].width, 320);
    EXPECT_EQ(picker.list.columns[2].width, 100);
    EXPECT_EQ(picker.list.columns[0].heading, "Code");
    EXPECT_EQ(picker.list.columns[1].heading, "Item");
    EXPECT_EQ(picker.list.columns[2].heading, "Variation");
    picker.form.search.edit("A");
    picker.selectRow(0);
    picker.chooseSelected();
    EXPECT_EQ(set.getConstituents().size(), 1u);
}

TEST_F(ItemManagerTest, theSelectedPartIsRemovedAndTheQuantityFollows)
{
    begin();
    Item& a = item("A", "5");
    Item& b = item("B", "2");
    Item& set = collectiveItem("Set", {{&a, 1}, {&b, 1}});
    items().editThisItem(set);
    EXPECT_EQ(form().qty.text(), "2");
    form().removeConstituent.trigger();
    EXPECT_EQ(set.getConstituents().size(), 2u);
    items().constituentTable.selectConstituent(1);
    form().removeConstituent.trigger();
    EXPECT_EQ(set.getConstituents().size(), 1u);
    EXPECT_EQ(form().qty.text(), "5");
}

TEST_F(ItemManagerTest, anItemCannotBePartOfItself)
{
    begin();
    Item& set = collectiveItem("Set", {});
    items().editThisItem(set);
    alerts.answer("OK");
    items().addConstituent(set);
    EXPECT_EQ(lastAlert().title, "Self referential");
    EXPECT_EQ(lastAlert().text, "Unable to add Set. An item cannot contain an item containing itself");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    EXPECT_TRUE(set.getConstituents().empty());
}

TEST_F(ItemManagerTest, aSetThatContainsTheItemFurtherDownCannotBeItsPart)
{
    begin();
    Item& a = item("A");
    Item& bottom = collectiveItem("Bottom", {{&a, 1}});
    Item& middle = collectiveItem("Middle", {{&bottom, 1}});
    Item& top = collectiveItem("Top", {{&middle, 1}});
    items().editThisItem(bottom);
    alerts.answer("OK");
    items().addConstituent(top);
    EXPECT_EQ(lastAlert().text, "Unable to add Top. An item cannot contain an item containing itself");
    EXPECT_EQ(bottom.getConstituents().size(), 1u);
}

TEST_F(ItemManagerTest, aDiamondCountsAsSelfReferentialUnlessItsPointIsEmpty)
{
    begin();
    Item& a = item("A");
    Item& s = collectiveItem("S", {{&a, 1}});
    Item& q = collectiveItem("Q", {{&s, 1}});
    Item& r = collectiveItem("R", {{&s, 1}});
    Item& p = collectiveItem("P", {{&q, 1}, {&r, 1}});
    Item& box = collectiveItem("Box", {});
    items().editThisItem(box);
    alerts.answer("OK");
    items().addConstituent(p);
    EXPECT_EQ(lastAlert().title, "Self referential");
    EXPECT_TRUE(box.getConstituents().empty());
    s.setConstituents({});
    items().addConstituent(p);
    EXPECT_EQ(box.getConstituents().size(), 1u);
}

TEST_F(ItemManagerTest, theSamePlainPartByTwoWaysIsFine)
{
    begin();
    Item& a = item("A");
    Item& q = collectiveItem("Q", {{&a, 1}});
    Item& r = collectiveItem("R", {{&a, 1}});
    Item& p = collectiveItem("P", {{&q, 1}, {&r, 1}});
    Item& box = collectiveItem("Box", {});
    items().editThisItem(box);
    items().addConstituent(p);
    EXPECT_EQ(box.getConstituents().size(), 1u);
}

TEST_F(ItemManagerTest, aPartIsNotAddedTwice)
{
    begin();
    Item& a = item("A");
    Item& set = collectiveItem("Set", {{&a, 1}});
    items().editThisItem(set);
    alerts.answer("OK");
    items().addConstituent(a);
    EXPECT_EQ(lastAlert().title, "Already contains");
    EXPECT_EQ(lastAlert().text, "Unable to add A. Set already contains it. Simply edit the quantity.");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    EXPECT_EQ(set.getConstituents().size(), 1u);
}

TEST_F(ItemManagerTest, aNewItemThatHasThePartAlreadyIsCalledByTheNameThatWasTyped)
{
    begin();
    Item& a = item("A");
    items().create();
    form().item.edit("Stool");
    form().collective.edit(true);
    items().addConstituent(a);
    alerts.answer("OK");
    items().addConstituent(a);
    EXPECT_EQ(lastAlert().text, "Unable to add A. Stool already contains it. Simply edit the quantity.");
}

TEST_F(ItemManagerTest, partsComeBackFromDisk)
{
    begin();
    Item& a = item("A", "5");
    a.setCode("C1");
    Item& set = collectiveItem("Set", {{&a, 2}, {&a, 0.5f}});
    items().editThisItem(set);
    form().save.trigger();
    EXPECT_TRUE(readFile("items.xml").contains("<real>0.5</real>")) << readFile("items.xml").toStdString();
    EXPECT_TRUE(readFile("items.xml").contains("<integer>2</integer>"));
    restart();
    const Item& back = items().at(1);
    ASSERT_EQ(back.getConstituents().size(), 2u);
    EXPECT_EQ(back.getConstituents()[0].text("code"), "C1");
    EXPECT_EQ(back.getConstituents()[0].qty(), 2.0f);
    EXPECT_EQ(back.getConstituents()[1].qty(), 0.5f);
}

// Deleting

TEST_F(ItemManagerTest, anItemInUseIsNotDeletedAndItsUsersAreNamed)
{
    begin();
    Item& a = item("A");
    collectiveItem("Set", {{&a, 1}});
    collectiveItem("Box", {{&a, 1}});
    alerts.answer("OK");
    deleteItem(a);
    EXPECT_EQ(lastAlert().title, "Delete Item");
    EXPECT_EQ(lastAlert().text, "Unable to delete A because it is used in collective item(s): Set, Box");
    EXPECT_EQ(lastAlert().buttons, QStringList("OK"));
    EXPECT_TRUE(items().holds(a));
}

TEST_F(ItemManagerTest, deletingTheSelectionAsksFirst)
{
    begin();
    item("A");
    items().deleteKey();
    EXPECT_TRUE(alerts.asked().empty());
    items().selectRow(0);
    alerts.answer("Cancel");
    items().deleteKey();
    EXPECT_EQ(items().getCount(), 1);
    alerts.answer("OK");
    items().deleteKey();
    EXPECT_EQ(items().getCount(), 0);
}

TEST_F(ItemManagerTest, ofSeveralItemsThoseInUseStayAndAreToldInTheirTurn)
{
    begin();
    // Newest first: the rows are Box, Tea, Cup, Set, Mug, deleted from the last on.
    Item& mug = item("Mug");
    Item& set = collectiveItem("Set", {{&mug, 1}, {&mug, 2}});
    Item& cup = item("Cup");
    Item& tea = item("Tea");
    Item& box = collectiveItem("Box", {{&cup, 1}, {&mug, 1}});
    items().setSelectedRecords({&mug, &set, &cup, &tea});
    alerts.answer("OK");
    alerts.answer("OK");
    alerts.answer("OK");

    items().deleteKey();

    ASSERT_EQ(alerts.asked().size(), 3u);
    EXPECT_EQ(alerts.asked()[1].text, "Unable to delete Mug because it is used in collective item(s): Set, Box");
    EXPECT_EQ(alerts.asked()[2].text, "Unable to delete Cup because it is used in collective item(s): Box");
    EXPECT_THAT(shown(items(), "item"), ElementsAre("Box", "Cup", "Mug"));
    EXPECT_EQ(items().deleteBuffer(), (std::vector<dataObject*> {&set, &tea}));
    items().undo();
    EXPECT_TRUE(items().holds(set) && items().holds(tea) && items().holds(box));
}

TEST_F(ItemManagerTest, whatOnlyItemsDeletedBeforeUsedGoesWithThem)
{
    begin();
    // Newest first: the collective item is the last row and goes first.
    Item& set = collectiveItem("Set", {});
    Item& mug = item("Mug");
    set.addConstituent(mug);
    items().setSelectedRecords({&set, &mug});
    alerts.answer("OK");

    items().deleteKey();

    EXPECT_EQ(items().getCount(), 0);
    EXPECT_EQ(items().deleteBuffer(), (std::vector<dataObject*> {&set, &mug}));
}

TEST_F(ItemManagerTest, manyItemsAreTakenOffTheListAtOnce)
{
    begin();
    for (int i = 0; i < 500; ++i)
        item("Mug");
    items().setSelectedRecords(items().records());
    alerts.answer("OK");
    ListResets resets;
    items().addObserver(resets);

    items().deleteKey();

    items().removeObserver(resets);
    EXPECT_EQ(items().getCount(), 0);
    EXPECT_LE(resets.count, 2);
}

TEST_F(ItemManagerTest, aDeletedItemLeavesTheLinesAndCanBeUndone)
{
    begin();
    orders().create();
    Item& mug = item("Mug");
    orders().addItemToCurrentOrder(mug);
    items().selectRow(0);
    alerts.answer("OK");
    items().deleteKey();
    EXPECT_THAT(shown(lines(), "item"), ElementsAre("Mug"));
    items().undo();
    EXPECT_TRUE(items().holds(mug));
}

// A database that is only read

TEST_F(ItemManagerTest, aReaderMakesSavesAndDeletesNothing)
{
    beginReadOnly();
    Item& mug = item("Mug", "10");
    expectRefusal("create", [this] { items().create(); });
    EXPECT_FALSE(form().isOpen());
    expectRefusal("create for an order", [this] { items().createForCurrentOrder(); });
    EXPECT_FALSE(form().isOpen());
    expectRefusal("save", [&] {
        items().editThisItem(mug);
        form().item.edit("Cup");
        form().qty.edit("99");
        form().save.trigger();
    });
    EXPECT_FALSE(form().isOpen());
    EXPECT_EQ(mug.getItem(), "Mug");
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_TRUE(items().holds(mug));
    alerts.answer("OK");
    alerts.answer("OK");
    items().selectRow(0);
    items().deleteKey();
    EXPECT_EQ(lastAlert().title, "Read-only mode");
    EXPECT_TRUE(items().holds(mug));
}

} // namespace
