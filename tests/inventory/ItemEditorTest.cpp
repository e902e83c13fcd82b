// The item editor while other things happen: orders that move stock, other items, other databases, somebody else's lock.
#include "support/Business.h"

namespace {

class ItemEditorTest : public Business {
protected:
    ItemForm& form() { return items().form; }
};

TEST_F(ItemEditorTest, stockThatAnOrderTookMeanwhileStaysTaken)
{
    begin();
    Item& mug = item("Mug", "10");
    items().editThisItem(mug);
    items().adjustQtyFor(mug, -3);
    form().price.edit("6.00");
    form().save.trigger();
    EXPECT_EQ(mug.getQty(), "7");
    EXPECT_EQ(mug.getPrice(), "6.00");
}

TEST_F(ItemEditorTest, aQuantityTypedIsStored)
{
    begin();
    Item& mug = item("Mug", "10");
    items().editThisItem(mug);
    items().adjustQtyFor(mug, -3);
    form().qty.edit("25");
    form().save.trigger();
    EXPECT_EQ(mug.getQty(), "25");
}

TEST_F(ItemEditorTest, aNewItemGetsAnotherIdAndCodeWhenItsOwnWentToAnother)
{
    begin("<key>VendaroItemPrefix</key><string>IT</string>");
    items().create();
    form().item.edit("Mug");
    items().findAndSetHighestId();
    const Item& plate = item("Plate");
    ASSERT_EQ(plate.getID(), 1);
    form().save.trigger();
    const Item& mug = items().at(1);
    EXPECT_EQ(mug.getItem(), "Mug");
    EXPECT_EQ(mug.getID(), 2);
    EXPECT_EQ(mug.getCode(), "IT2");
    EXPECT_EQ(items().getItemById(1), &plate);
}

TEST_F(ItemEditorTest, itemsThatUndoBroughtBackKeepTheirIdsToThemselves)
{
    begin();
    item("Mug");
    items().setSelectedRecords({&item("Plate"), &item("Bowl")});
    alerts.answer("OK");
    items().deleteKey();
    items().undo();
    ASSERT_EQ(items().getCount(), 3);

    items().create();
    form().item.edit("Vase");
    form().save.trigger();

    EXPECT_EQ(items().at(3).getItem(), "Vase");
    EXPECT_EQ(items().at(3).getID(), 4);
    EXPECT_EQ(items().at(3).getCode(), "4");
}

TEST_F(ItemEditorTest, openingTheOpenItemAgainKeepsWhatWasTyped)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    form().item.edit("Big mug");
    items().editThisItem(mug);
    EXPECT_EQ(form().item.text(), "Big mug");
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().item.text(), "Plate");
}

TEST_F(ItemEditorTest, anotherItemTakesThePlaceOfTheOpenOneOnlyWhenItMay)
{
    begin();
    orders().create();
    Item& mug = item("Mug");
    Item& plate = item("Plate");
    int asked = 0;
    bool may = false;
    form().mayTakeAnother = [&] {
        ++asked;
        return may;
    };
    items().editThisItem(mug);
    EXPECT_EQ(asked, 0) << "nothing was open";
    form().item.edit("Big mug");
    items().editThisItem(plate);
    items().create();
    orders().form.newItem.trigger();
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(items().currentItem(), &mug);
    EXPECT_EQ(form().item.text(), "Big mug");
    may = true;
    items().editThisItem(plate);
    EXPECT_EQ(form().item.text(), "Plate");
    form().save.trigger();
    EXPECT_EQ(lines().numberForThisOrder(), 0) << "it was not made from the order";
}

TEST_F(ItemEditorTest, anAddedPartIsTheOneThatIsSelected)
{
    begin();
    Item& a = item("A");
    Item& b = item("B");
    Item& set = collectiveItem("Set", {{&a, 1}});
    items().editThisItem(set);
    items().constituentTable.selectConstituent(0);
    items().addConstituent(b);
    form().removeConstituent.trigger();
    ASSERT_EQ(set.getConstituents().size(), 1u);
    EXPECT_EQ(set.getConstituents()[0].id(), a.getID());
    form().removeConstituent.trigger();
    EXPECT_EQ(set.getConstituents().size(), 1u) << "now none is selected";
}

TEST_F(ItemEditorTest, forAReaderThePartsStayAsTheyAre)
{
    beginReadOnly();
    ASSERT_TRUE(app().session().isReadOnly());
    Item& a = item("A");
    Item& b = item("B");
    Item& set = collectiveItem("Set", {{&a, 1}});
    items().editThisItem(set);
    for (int change = 0; change < 3; ++change)
        alerts.answer("OK");
    items().constituentTable.selectConstituent(0);
    form().removeConstituent.trigger();
    EXPECT_EQ(set.getConstituents().size(), 1u);
    items().addConstituent(b);
    EXPECT_EQ(set.getConstituents().size(), 1u);
    EXPECT_FALSE(items().constituentTable.setObjectValue("qty", 0, "5"));
    EXPECT_EQ(set.getConstituents().front().qty(), 1.0f);
    EXPECT_EQ(lastAlert().title, "Read-only mode");
}

TEST_F(ItemEditorTest, aConditionOfAnotherItemIsNotOffered)
{
    begin();
    Item& chipped = item("Mug");
    chipped.setCondition("Chipped");
    items().editThisItem(chipped);
    EXPECT_EQ(form().condition.title(), "Chipped");
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().condition.titles(), QStringList({"New", "Refurbished", "Used"}));
}

TEST_F(ItemEditorTest, aTaxCodeOfAnotherItemIsNotOffered)
{
    begin(taxSettings());
    Item& old = item("Mug");
    old.setTaxcode("OLD");
    items().editThisItem(old);
    EXPECT_EQ(form().taxcode.title(), "OLD");
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().taxcode.titles(), QStringList("S"));
    EXPECT_EQ(form().taxcode.title(), "");
}

TEST_F(ItemEditorTest, theCategoriesOfTheListThatWasClearedAreForgotten)
{
    begin();
    items().addCategories("Tea");
    items().listForm.filter.edit(2);
    ASSERT_EQ(items().listForm.filter.title(), "Tea");
    items().clear();
    EXPECT_EQ(items().listForm.filter.titles(), QStringList({"All", "In stock"}));
    EXPECT_EQ(items().listForm.filter.title(), "All");
}

TEST_F(ItemEditorTest, afterADeletionTheStatusLineSaysWhatUndoBringsBack)
{
    begin();
    Item& a = item("A");
    collectiveItem("Set", {{&a, 1}});
    QString status;
    QObject::connect(&app(), &Vendaro::statusWanted, [&](const QString& line) { status = line; });
    alerts.answer("OK");
    alerts.answer("OK");
    items().setSelectedRecords({&a});
    items().deleteKey();
    EXPECT_EQ(status, "") << "a part that is used stays";
    items().setSelectedRecords({&items().at(1)});
    alerts.answer("OK");
    items().deleteKey();
    EXPECT_EQ(status, "Deleted. Undo brings the item back.");
}

// What does not read

TEST_F(ItemEditorTest, everyFigureThatDoesNotReadSaysSoAndIsStoredAsTyped)
{
    begin();
    Item& mug = item("Mug", "10");
    items().editThisItem(mug);
    for (TextField* amount : {&form().price, &form().bought, &form().shipping}) {
        EXPECT_EQ(amount->fault(), "") << amount->name().toStdString();
        amount->edit("dear");
        EXPECT_EQ(amount->fault(), "This does not read as an amount; it counts as 0.") << amount->name().toStdString();
    }
    for (TextField* number : {&form().qty, &form().optimumQty}) {
        number->edit("many");
        EXPECT_EQ(number->fault(), "This does not read as a number; it counts as 0.") << number->name().toStdString();
    }
    form().warnlevel.edit("2.5");
    EXPECT_EQ(form().warnlevel.fault(), "This does not read as a whole number; it counts as 2.");
    form().save.trigger();
    EXPECT_EQ(mug.getPrice(), "dear");
    EXPECT_EQ(mug.getQty(), "many");
    items().editThisItem(mug);
    EXPECT_NE(form().price.fault(), "");
    items().editThisItem(item("Plate"));
    EXPECT_EQ(form().price.fault(), "");
}

TEST_F(ItemEditorTest, aStockInTheShortFormOfAMillionIsNothingWrong)
{
    begin();
    Item& nails = item("Nails", "2e+06");
    items().editThisItem(nails);
    EXPECT_EQ(form().qty.fault(), "");
    items().adjustQtyFor(nails, -500'000);
    EXPECT_EQ(nails.getQtyAsFloat(), 1'500'000.0f);
}

TEST_F(ItemEditorTest, onlyASelectedPartCanBeRemoved)
{
    begin();
    Item& a = item("A");
    Item& set = collectiveItem("Set", {{&a, 1}});
    items().editThisItem(set);
    EXPECT_FALSE(form().removeConstituent.isEnabled());
    items().constituentTable.selectConstituent(0);
    EXPECT_TRUE(form().removeConstituent.isEnabled());
    form().removeConstituent.trigger();
    EXPECT_TRUE(set.getConstituents().empty());
    EXPECT_FALSE(form().removeConstituent.isEnabled());
}

} // namespace

TEST_F(ItemEditorTest, theKindThatIsSwitchedAndNotSavedStaysOutOfTheFile)
{
    begin();
    Item& mug = item("Mug");
    item("Jug");
    app().session().writeDatabase(items());
    items().editThisItem(mug);
    form().collective.edit(true);
    ASSERT_TRUE(mug.isCollectiveItem());

    app().session().writeDatabase(items());
    EXPECT_EQ(readFile("items.xml").count("<string>Item</string>"), 2);
    EXPECT_FALSE(readFile("items.xml").contains("Collective item"));
    // As when the screen is lost: nothing is closed before.
    app().writeForGood();
    EXPECT_FALSE(readFile("items.xml").contains("Collective item"));
}

TEST_F(ItemEditorTest, theKindThatIsSavedIsWritten)
{
    begin();
    Item& mug = item("Mug");
    items().editThisItem(mug);
    form().collective.edit(true);
    form().save.trigger();

    EXPECT_TRUE(readFile("items.xml").contains("<string>Collective item</string>"));
}

TEST_F(ItemEditorTest, aFileOfThousandsOfPartsAndOfItemsThatContainEachOtherIsUsedAsItStands)
{
    const auto part = [](int id, const char* qty) {
        return "<dict><key>id</key><integer>" + QByteArray::number(id) + "</integer><key>qty</key>" + qty + "</dict>";
    };
    const auto itemOf = [](int id, const QByteArray& name, const QByteArray& keys) {
        return "<dict><key>id</key><string>" + QByteArray::number(id) + "</string><key>item</key><string>" + name + "</string>" + keys
            + "</dict>";
    };
    const auto made = [](const QByteArray& parts) {
        return "<key>type</key><string>Collective item</string><key>qty</key><string>1</string><key>constituents</key><array>" + parts
            + "</array>";
    };
    constexpr int screws = 5000;
    QByteArray thousands;
    QByteArray all;
    for (int id = 10; id < 10 + screws; ++id) {
        all += itemOf(id, "Screw", "<key>qty</key><string>8</string><key>decreaseQty</key><true/>");
        thousands += part(id, id % 2 ? "<integer>2</integer>" : "<string>some</string>");
    }
    all = itemOf(1, "Crate", made(thousands)) + itemOf(2, "Hen", made(part(3, "<integer>1</integer>") + part(10, "<real>1.5</real>")))
        + itemOf(3, "Egg", made(part(2, "<integer>1</integer>") + part(2, "<integer>1</integer>"))) + all;
    writeFile("items.xml", document("<dict><key>products</key><array>" + all + "</array></dict>"));
    begin();
    Item& crate = *items().getItemById(1);
    Item& hen = *items().getItemById(2);
    ASSERT_EQ(crate.getConstituents().size(), static_cast<std::size_t>(screws));

    EXPECT_EQ(items().getQtyForCollectiveItem(crate), 4.0f);
    EXPECT_TRUE(items().adjustQtyFor(crate, -1));
    EXPECT_EQ(items().getItemById(11)->getQty(), "6");
    EXPECT_EQ(items().getItemById(10)->getQty(), "8") << "its number was none";
    EXPECT_TRUE(items().adjustQtyFor(hen, -2));
    EXPECT_EQ(items().getItemById(10)->getQty(), "5");
    items().editThisItem(crate);
    EXPECT_EQ(form().qty.text(), "3");
    EXPECT_EQ(items().constituentTable.numberOfRows(), screws);
    alerts.answer("OK");
    items().addConstituent(hen);
    EXPECT_EQ(lastAlert().title, "Self referential");
    form().save.trigger();
    EXPECT_EQ(crate.getQty(), "3");
    EXPECT_EQ(crate.getConstituents().size(), static_cast<std::size_t>(screws));
    alerts.answer("OK");
    deleteItem(hen);
    EXPECT_EQ(lastAlert().text, "Unable to delete Hen because it is used in collective item(s): Egg");
}

TEST_F(ItemEditorTest, anEntryAmongThePartsThatIsNoDictionaryIsKept)
{
    const QByteArray parts = "\t\t\t<key>constituents</key>\n\t\t\t<array>\n\t\t\t\t<string>KEEP</string>\n\t\t\t\t<dict>\n"
                             "\t\t\t\t\t<key>id</key>\n\t\t\t\t\t<integer>2</integer>\n\t\t\t\t\t<key>qty</key>\n"
                             "\t\t\t\t\t<integer>3</integer>\n\t\t\t\t</dict>\n\t\t\t</array>\n";
    writeFile("items.xml",
        document("<dict><key>products</key><array><dict><key>id</key><string>1</string><key>type</key><string>Collective item</string>"
            + parts + "</dict><dict><key>id</key><string>2</string><key>qty</key><string>9</string></dict></array></dict>"));
    begin();
    Item& set = *items().getItemById(1);
    EXPECT_EQ(items().getQtyForCollectiveItem(set), 3.0f);
    items().editThisItem(set);
    // It is a row without a part, and has no quantity.
    EXPECT_FALSE(set.getConstituents()[0].entry().isDict());
    set.setConstituentQty(0, 5);

    app().session().writeDatabase(items());

    EXPECT_TRUE(readFile("items.xml").contains(parts)) << readFile("items.xml").toStdString();
}
