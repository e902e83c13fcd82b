// BOMManager beside the table: which file a change of lines goes to and when, and what lines learn from their orders.
#include "support/Business.h"

namespace {

class LineKeepingTest : public Business {
protected:
    Material& pick(Item& item)
    {
        orders().addItemToCurrentOrder(item);
        return *lines().getnthItem(lines().numberForThisOrder() - 1, currentOrder().getID());
    }
    bool lineFileHas(const char* text) const { return readFile("itemsordered.xml").contains(text); }
};

// Files

TEST_F(LineKeepingTest, anEditedCellRewritesTheFileOfLinesAndNoOther)
{
    begin();
    orders().create();
    pick(item("Mug"));
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "3"));
    EXPECT_TRUE(lineFileHas("<key>qty</key>\n\t\t\t<string>3</string>")) << readFile("itemsordered.xml").toStdString();
    EXPECT_FALSE(hasFile("orders.xml"));
    EXPECT_FALSE(hasFile("items.xml"));
}

TEST_F(LineKeepingTest, aRefusedCellWritesNothing)
{
    begin();
    orders().create();
    pick(item("Mug"));
    EXPECT_FALSE(lines().setObjectValue("cost", 0, "dear"));
    EXPECT_FALSE(hasFile("itemsordered.xml"));
}

TEST_F(LineKeepingTest, pickingWritesNothingYet)
{
    begin();
    orders().create();
    pick(item("Mug"));
    EXPECT_FALSE(hasFile("itemsordered.xml"));
}

TEST_F(LineKeepingTest, removingByKeyWritesWhateverWasAnswered)
{
    begin();
    orders().create();
    pick(item("Mug"));
    lines().selectRow(0);
    alerts.answer("Cancel");
    lines().deleteKey();
    EXPECT_TRUE(lineFileHas("Mug"));
    alerts.answer("OK");
    lines().deleteKey();
    EXPECT_TRUE(hasFile("itemsordered.xml"));
    EXPECT_FALSE(lineFileHas("Mug"));
}

TEST_F(LineKeepingTest, removingAllLinesWritesTheFile)
{
    begin();
    orders().create();
    pick(item("Mug"));
    pick(item("Plate"));
    lines().deleteAllForCurrentOrder();
    EXPECT_TRUE(readFile("itemsordered.xml").contains("<array/>"));
}

TEST_F(LineKeepingTest, aFileThatHoldsNothingOfALineLeavesItAsItWasMade)
{
    writeFile("itemsordered.xml", document("<dict><key>materials</key><array><dict><key>id</key><string>4</string></dict></array></dict>"));
    begin();
    ASSERT_EQ(lines().getCount(), 1);
    const Material& line = lines().at(0);
    EXPECT_EQ(line.getID(), 4);
    EXPECT_EQ(line.getQty(), "1");
    EXPECT_EQ(line.getOrder(), 0);
    EXPECT_EQ(line.getContact(), 0);
    EXPECT_EQ(line.getOrderType(), "Customer");
}

// Copies

TEST_F(LineKeepingTest, copiesOfAMonthFirstUserAreDatedMonthFirst)
{
    writeSettings("<key>VendaroDateFormat</key><string>1</string>");
    start();
    const Order& source = order("source");
    const Order& copy = order("copy");
    line(source, "1.00");
    line(source, "2.00");
    lines().duplicateMaterialsFromOrder(source.getID(), copy.getID());
    const std::vector<Material*> copies = lines().linesOfOrder(copy.getID());
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(copies[0]->getTotal(), "1.00");
    EXPECT_EQ(copies[1]->getTotal(), "2.00");
    EXPECT_EQ(copies[0]->getDateAdded(), "03/01/2024");
    EXPECT_NE(copies[0]->getID(), lines().linesOfOrder(source.getID())[0]->getID());
}

// Contacts of lines

TEST_F(LineKeepingTest, linesLearnTheContactsOfTheirOrders)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& bob = contact("Bob");
    Order& first = order("first");
    Order& second = order("second");
    const Material& ofFirst = line(first, "1.00");
    const Material& ofSecond = line(second, "1.00");
    first.setContact(&ann);
    second.setContact(&bob);
    lines().setContacts();
    EXPECT_EQ(ofFirst.getContact(), ann.getID());
    EXPECT_EQ(ofSecond.getContact(), bob.getID());
    lines().updateAllMaterialsForOrder(first.getID(), 77);
    EXPECT_EQ(ofFirst.getContact(), 77);
    EXPECT_EQ(ofSecond.getContact(), bob.getID());
}

TEST_F(LineKeepingTest, aLineOnDiskWithoutAContactTakesThatOfItsOrder)
{
    writeFile("orders.xml",
        document("<dict><key>orders</key><array><dict><key>id</key><string>3</string><key>contact</key><string>5</string>"
                 "</dict></array></dict>"));
    writeFile("itemsordered.xml",
        document("<dict><key>materials</key><array>"
                 "<dict><key>id</key><string>1</string><key>order</key><string>3</string><key>contact</key><string>0</string></dict>"
                 "<dict><key>id</key><string>2</string><key>order</key><string>3</string></dict>"
                 "<dict><key>id</key><string>3</string><key>order</key><string>3</string><key>contact</key><string>8</string></dict>"
                 "</array></dict>"));
    begin();
    ASSERT_EQ(lines().getCount(), 3);
    EXPECT_EQ(lines().at(0).getContact(), 5);
    EXPECT_EQ(lines().at(1).getContact(), 5);
    EXPECT_EQ(lines().at(2).getContact(), 8);
}

// Removing and stock

TEST_F(LineKeepingTest, aRemovedSetGivesItsPartsBack)
{
    begin();
    orders().create();
    Item& a = item("A", "10");
    Item& b = item("B", "10");
    Material& line = pick(collectiveItem("Set", {{&a, 2}, {&b, 1}}));
    ASSERT_EQ(a.getQty(), "8");
    lines().deleteLine(line);
    EXPECT_EQ(a.getQty(), "10");
    EXPECT_EQ(b.getQty(), "10");
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(LineKeepingTest, moreOfASetTakesMoreOfItsParts)
{
    begin();
    orders().create();
    Item& a = item("A", "10");
    pick(collectiveItem("Set", {{&a, 2}}));
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "4"));
    EXPECT_EQ(a.getQty(), "2");
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "1"));
    EXPECT_EQ(a.getQty(), "8");
}

TEST_F(LineKeepingTest, aNegativeQuantityTakesWhatItWouldGiveBack)
{
    begin();
    orders().create();
    Item& mug = item("Mug", "10");
    Material& line = pick(mug);
    EXPECT_TRUE(lines().setObjectValue("qty", 0, "-2"));
    EXPECT_EQ(mug.getQty(), "12");
    EXPECT_EQ(line.getTotal(), "-10.00");
    lines().deleteLine(line);
    EXPECT_EQ(mug.getQty(), "10");
}

TEST_F(LineKeepingTest, theCountOfItemsStopsAtWhatAWholeNumberHolds)
{
    begin();
    const Order& stocktake = order("Stocktake");
    lines().setCurrentOrder(stocktake.getID());
    for (int n = 0; n < 215; ++n)
        line(stocktake, "0.00").setQty("10000000");
    EXPECT_EQ(lines().countTotalItemsPurchased(), "2147483647");
    for (Material* down : lines().linesOfOrder(stocktake.getID()))
        down->setQty("-10000000");
    EXPECT_EQ(lines().countTotalItemsPurchased(), "-2147483648");
}

TEST_F(LineKeepingTest, forAReaderLinesAndStockStayAsTheyAre)
{
    beginReadOnly();
    Order& bench = order("Bench");
    Item& mug = item("Mug", "10");
    Material& sold = line(bench, "5.00");
    sold.setProduct(mug.getID());
    orders().editThisOrder(bench);
    expectRefusal("add", [&] { EXPECT_FALSE(orders().addItemToCurrentOrder(mug)); });
    expectRefusal("edit", [this] { EXPECT_FALSE(lines().setObjectValue("qty", 0, "3")); });
    expectRefusal("remove", [&] { lines().deleteLine(sold); });
    expectRefusal("remove all", [this] { lines().deleteAllForCurrentOrder(); });
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_EQ(sold.getQty(), "1");
    EXPECT_EQ(lines().numberForThisOrder(), 1);
}

// What does not read

TEST_F(LineKeepingTest, aCellThatDoesNotReadSaysSo)
{
    begin(taxSettings());
    Order& bench = order("Bench");
    Material& imported = line(bench, "a lot");
    imported.setQty("some");
    imported.setCost("1e3");
    imported.setTaxCode("X");
    lines().setCurrentOrder(bench.getID());
    EXPECT_EQ(lines().cellFault("total", 0), "This does not read as an amount; it counts as 0.");
    EXPECT_EQ(lines().cellFault("cost", 0), "This does not read as an amount; it counts as 0.");
    EXPECT_EQ(lines().cellFault("qty", 0), "This does not read as a number; it counts as 0.");
    EXPECT_EQ(lines().cellFault("taxcode", 0), "No tax rate has this code; it counts as 0.");
    EXPECT_EQ(lines().cellFault("item", 0), "");
    EXPECT_EQ(lines().cellFault("total", 1), "");
    ASSERT_TRUE(lines().setObjectValue("qty", 0, "2"));
    ASSERT_TRUE(lines().setObjectValue("taxcode", 0, "S"));
    EXPECT_EQ(lines().cellFault("qty", 0), "");
    EXPECT_EQ(lines().cellFault("taxcode", 0), "");
}

TEST_F(LineKeepingTest, withoutTaxNoCodeIsWrong)
{
    begin();
    Order& bench = order("Bench");
    line(bench, "5.00", "X");
    lines().setCurrentOrder(bench.getID());
    EXPECT_EQ(lines().cellFault("taxcode", 0), "");
}

// Lines that change their order

TEST_F(LineKeepingTest, aLineWhoseOrderIsSetByNameGoesToThatOrderInCollectionOrder)
{
    begin();
    const Order& bench = order("Bench");
    const Order& table = order("Table");
    Material& first = line(bench, "1.00");
    Material& second = line(table, "2.00");
    Material& third = line(bench, "4.00");
    ASSERT_TRUE(first.setFieldByName("order", std::to_string(table.getID())));
    EXPECT_EQ(lines().linesOfOrder(bench.getID()), std::vector<Material*> {&third});
    EXPECT_EQ(lines().linesOfOrder(table.getID()), (std::vector<Material*> {&first, &second}));
    lines().deleteItem(first);
    EXPECT_EQ(lines().linesOfOrder(table.getID()), std::vector<Material*> {&second});
    ASSERT_TRUE(first.setFieldByName("order", std::to_string(bench.getID())));
    EXPECT_EQ(lines().linesOfOrder(bench.getID()), std::vector<Material*> {&third});
}

} // namespace
