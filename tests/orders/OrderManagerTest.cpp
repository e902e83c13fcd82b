#include "support/Business.h"

namespace {

class OrderManagerTest : public Business {
protected:
    OrderForm& form() { return orders().form; }
};

// Making orders

TEST_F(OrderManagerTest, aNewOrderIsNumberedDatedAndOpened)
{
    begin();
    orders().create();
    const Order& order = currentOrder();
    EXPECT_TRUE(orders().holds(order));
    EXPECT_EQ(order.getID(), 1);
    EXPECT_EQ(order.getOrderNum(), "1");
    EXPECT_EQ(order.getDate(), "01/03/24");
    EXPECT_EQ(order.getStatus(), "Enquiry");
    EXPECT_TRUE(orders().isCreating());
    EXPECT_TRUE(form().isOpen());
    EXPECT_EQ(form().date.text(), "01/03/24");
    EXPECT_EQ(form().orderNum.text(), "1");
}

TEST_F(OrderManagerTest, theUsersPrefixStandsBeforeTheId)
{
    begin("<key>VendaroOrderPrefix</key><string>PO-</string>");
    for (int made = 0; made < 8; ++made)
        orders().createAndAddDataObject();
    const Order& eighth = orders().at(7);
    EXPECT_EQ(eighth.getOrderNum(), "PO-8");
    EXPECT_EQ(eighth.getNumericOrdernum(), 8.0f);
}

TEST_F(OrderManagerTest, anotherOrderTakesThePlaceOfTheOpenOneOnlyWhenItMay)
{
    begin();
    Order& bench = order("Bench");
    Order& stool = order("Stool");
    bool may = false;
    int asked = 0;
    form().mayTakeAnother = [&] {
        ++asked;
        return may;
    };
    orders().editThisOrder(bench);
    orders().editThisOrder(bench);
    EXPECT_EQ(asked, 0) << "nothing else was asked for";
    orders().editThisOrder(stool);
    orders().create();
    orders().createPurchaseOrder();
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(form().orderTitle.text(), "Bench");
    EXPECT_EQ(orders().getCount(), 2) << "no order was made that nobody sees";
    may = true;
    orders().editThisOrder(stool);
    EXPECT_EQ(form().orderTitle.text(), "Stool");
}

TEST_F(OrderManagerTest, aMonthFirstUserGetsMonthFirstDates)
{
    writeSettings("<key>VendaroDateFormat</key><string>1</string>");
    start();
    orders().create();
    EXPECT_EQ(currentOrder().getDate(), "03/01/24");
}

TEST_F(OrderManagerTest, withoutADateFormatOneIsAskedForAndNoOrderIsMade)
{
    start();
    int asked = 0;
    QObject::connect(&app(), &Vendaro::dateFormatWanted, [&] { ++asked; });
    orders().create();
    orders().createPurchaseOrder();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(orders().getCount(), 0);
    EXPECT_FALSE(form().isOpen());
    EXPECT_FALSE(orders().isCreating());
}

TEST_F(OrderManagerTest, theFirstOrderHidesTheWelcomeView)
{
    begin();
    EXPECT_TRUE(app().splashShown());
    orders().create();
    EXPECT_FALSE(app().splashShown());
}

TEST_F(OrderManagerTest, aNewPurchaseOrderIsDatedByAWordAndLeavesTheWelcomeView)
{
    begin("<key>VendaroOrderPrefix</key><string>INV</string>");
    orders().createPurchaseOrder();
    EXPECT_EQ(currentOrder().getDate(), "today");
    EXPECT_EQ(currentOrder().getType(), "Purchase Order");
    EXPECT_EQ(currentOrder().getOrderNum(), "INV1");
    EXPECT_TRUE(app().splashShown());
    EXPECT_TRUE(orders().isCreating());
    EXPECT_EQ(form().title(), "Purchase Order");
}

TEST_F(OrderManagerTest, anOrderForOtherPartsIsNumberedAndDatedButNotShown)
{
    begin();
    const Order& order = orders().createAndAddDataObject();
    EXPECT_EQ(order.getOrderNum(), "1");
    EXPECT_EQ(order.getDate(), "01/03/24");
    EXPECT_FALSE(form().isOpen());
    EXPECT_FALSE(orders().isCreating());
}

TEST_F(OrderManagerTest, anOrderThatUndoBroughtBackKeepsItsIdToItself)
{
    begin();
    order("Bench");
    Order& chair = order("Chair");
    alerts.answer("OK");
    orders().selectRow(0);
    orders().deleteKey();
    orders().undo();
    ASSERT_TRUE(orders().holds(chair));

    orders().create();

    EXPECT_EQ(chair.getID(), 2);
    EXPECT_EQ(currentOrder().getID(), 3);
    EXPECT_EQ(currentOrder().getOrderNum(), "3");
}

TEST_F(OrderManagerTest, cancellingANewOrderTakesItAwayAgainWithItsLines)
{
    begin();
    orders().create();
    line(currentOrder(), "5.00");
    form().cancel.trigger();
    EXPECT_EQ(orders().getCount(), 0);
    EXPECT_EQ(lines().getCount(), 0);
    EXPECT_FALSE(form().isOpen());
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(OrderManagerTest, cancellingAnExistingOrderOnlyClosesTheEditor)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    form().orderTitle.edit("Table");
    form().cancel.trigger();
    EXPECT_TRUE(orders().holds(bench));
    EXPECT_EQ(bench.getTitle(), "Bench");
    EXPECT_FALSE(form().isOpen());
}

// Loading the editor

TEST_F(OrderManagerTest, theEditorShowsTheOrder)
{
    begin();
    Order& bench = order("Bench", "Quoted");
    bench.setDescription("oak\nlong");
    bench.setValue("100.00");
    bench.setShipping("10.00");
    bench.setPaymentMethod("Card");
    bench.setRepeatFrequency("year");
    bench.setSent(true);
    payment(bench, "30.00");
    orders().selectRow(0);
    orders().edit();

    EXPECT_EQ(orders().currentItem(), &bench);
    EXPECT_EQ(form().orderTitle.text(), "Bench");
    EXPECT_EQ(form().description.text(), "oak\nlong");
    EXPECT_EQ(form().status.title(), "Quoted");
    EXPECT_EQ(form().type.title(), "Customer");
    EXPECT_EQ(form().paymentMethod.title(), "Card");
    EXPECT_EQ(form().repeatFrequency.title(), "year");
    EXPECT_EQ(form().subtotal.text(), "100.00");
    EXPECT_EQ(form().balanceRemaining.text(), "80.00");
    EXPECT_TRUE(form().sent.isOn());
    EXPECT_FALSE(form().repeats.isOn());
    EXPECT_EQ(form().sent.caption(), "Invoice sent");
    EXPECT_EQ(orders().paymentTable.numberOfRows(), 1);
    EXPECT_EQ(lines().currentOrder(), bench.getID());
}

TEST_F(OrderManagerTest, linesAreIncludedForEveryOrderThatIsLoadedAndSaved)
{
    begin();
    Order& bench = order("Bench");
    bench.setIncludeBOM(false);
    orders().editThisOrder(bench);
    EXPECT_TRUE(form().includeBOM.isOn());
    form().save.trigger();
    EXPECT_TRUE(bench.getIncludeBOM());
}

TEST_F(OrderManagerTest, aStatusThatIsNotListedJoinsTheList)
{
    begin();
    Order& bench = order("Bench", "On the van");
    orders().editThisOrder(bench);
    EXPECT_TRUE(form().status.titles().contains("On the van"));
    EXPECT_EQ(form().status.title(), "On the van");
    form().save.trigger();
    EXPECT_EQ(bench.getStatus(), "On the van");
}

TEST_F(OrderManagerTest, aNewOrdersStatusDoesNotJoinTheList)
{
    begin("<key>VendaroStatuses</key><string>Asked\nDone</string>");
    orders().create();
    EXPECT_FALSE(form().status.titles().contains("Enquiry"));
}

TEST_F(OrderManagerTest, aPurchaseOrderShowsItsOwnControls)
{
    begin();
    Order& bought = order("Clay");
    bought.setType("Purchase Order");
    orders().editThisOrder(bought);
    EXPECT_EQ(form().title(), "Purchase Order");
    EXPECT_EQ(form().sent.caption(), "Order placed");
    EXPECT_TRUE(form().addStock.isVisible());
    EXPECT_TRUE(form().addStock.isEnabled());
    form().close();
    bought.setStockAdded(true);
    orders().editThisOrder(bought);
    EXPECT_FALSE(form().addStock.isEnabled());
}

TEST_F(OrderManagerTest, anyOtherOrderHasTheUsersWordAsItsTitle)
{
    begin("<key>VendaroTermOrder</key><string>Job</string>");
    orders().editThisOrder(order("Bench"));
    EXPECT_EQ(form().title(), "Job");
    EXPECT_FALSE(form().addStock.isVisible());
}

TEST_F(OrderManagerTest, choosingTheKindChangesTheOrderAtOnce)
{
    begin();
    orders().editThisOrder(order("Bench"));
    form().type.edit(static_cast<int>(form().type.titles().indexOf("Purchase Order")));
    EXPECT_EQ(currentOrder().getType(), "Purchase Order");
    EXPECT_TRUE(form().addStock.isVisible());
    form().type.edit(static_cast<int>(form().type.titles().indexOf("Estimate")));
    EXPECT_EQ(currentOrder().getType(), "Estimate");
    EXPECT_FALSE(form().addStock.isVisible());
}

// Saving

TEST_F(OrderManagerTest, savingCopiesTheEditorIntoTheOrder)
{
    begin();
    orders().create();
    Order& bench = currentOrder();
    line(bench, "100.00").setQty("3");
    form().orderTitle.edit("Bench");
    form().date.edit("02/03/24");
    form().orderNum.edit("W-77");
    form().description.edit("oak");
    form().status.edit(static_cast<int>(form().status.titles().indexOf("Invoiced")));
    form().paymentMethod.edit(static_cast<int>(form().paymentMethod.titles().indexOf("Cheque")));
    form().repeatFrequency.edit(static_cast<int>(form().repeatFrequency.titles().indexOf("week")));
    form().shipping.edit("1,000.00");
    form().sent.edit(true);
    orders().totals.insertBOMTotal(bench);
    form().save.trigger();

    EXPECT_EQ(bench.getTitle(), "Bench");
    EXPECT_EQ(bench.getDate(), "02/03/24");
    EXPECT_EQ(bench.getOrderNum(), "W-77");
    EXPECT_EQ(bench.getNumericOrdernum(), 77.0f);
    EXPECT_EQ(bench.getDescription(), "oak");
    EXPECT_EQ(bench.getStatus(), "Invoiced");
    EXPECT_EQ(bench.getPaymentMethod(), "Cheque");
    EXPECT_EQ(bench.getRepeatFrequency(), "week");
    EXPECT_EQ(bench.getValue(), "100.00");
    EXPECT_EQ(bench.getShipping(), "1,000.00");
    EXPECT_EQ(bench.getValueWithTax(), "1,100.00");
    EXPECT_EQ(bench.getTotalItemsPurchased(), "3");
    EXPECT_TRUE(bench.getSent());
    EXPECT_FALSE(form().isOpen());
    EXPECT_FALSE(orders().isCreating());
}

TEST_F(OrderManagerTest, tickingRepeatsStartsFromTodayUnlessItRepeatedBefore)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    form().repeats.edit(true);
    form().save.trigger();
    EXPECT_TRUE(bench.getRepeats());
    EXPECT_EQ(bench.getLastRepeatDate(), "01/03/24");
    bench.setLastRepeatDate("05/01/24");
    orders().editThisOrder(bench);
    form().save.trigger();
    EXPECT_EQ(bench.getLastRepeatDate(), "05/01/24");
}

TEST_F(OrderManagerTest, aSavedOrderLiesOnDiskWithItsLine)
{
    begin();
    orders().create();
    line(currentOrder(), "100.00");
    form().orderTitle.edit("Bench & Table");
    form().save.trigger();
    app().folder().drain();
    EXPECT_TRUE(readFile("orders.xml").contains("<key>title</key>\n\t\t\t<string>Bench &amp; Table</string>"))
        << readFile("orders.xml").toStdString();
    EXPECT_TRUE(readFile("itemsordered.xml").contains("<string>100.00</string>"));
}

TEST_F(OrderManagerTest, printingCopiesTheEditorWithoutClosingIt)
{
    begin();
    orders().create();
    form().orderTitle.edit("Bench");
    orders().finish(OrderManager::Finish::keepOpen);
    EXPECT_EQ(currentOrder().getTitle(), "Bench");
    EXPECT_TRUE(form().isOpen());
    form().cancel.trigger();
    EXPECT_EQ(orders().getCount(), 0);
}

TEST_F(OrderManagerTest, aPaidPurchaseOrderFilesItsBill)
{
    begin();
    orders().createPurchaseOrder();
    Order& clay = currentOrder();
    line(clay, "80.00");
    orders().totals.insertBOMTotal(clay);
    form().orderTitle.edit("Clay");
    form().net.setText("80.00");
    form().taxAmount.setText("16.00");
    form().balancePaid.edit("05/03/24");
    form().save.trigger();

    ASSERT_EQ(app().getBillManager().getCount(), 1);
    const Bill& bill = app().getBillManager().at(0);
    EXPECT_EQ(clay.getBillId(), bill.getID());
    EXPECT_EQ(bill.getAmount(), "80.00");
    EXPECT_EQ(bill.getDatePaid(), "05/03/24");
    EXPECT_EQ(bill.getNet(), "80.00");
    EXPECT_EQ(bill.getVAT(), "16.00");
    EXPECT_EQ(bill.getName(), "Clay");

    orders().editThisOrder(clay);
    form().orderTitle.edit("White clay");
    form().save.trigger();
    EXPECT_EQ(app().getBillManager().getCount(), 1);
    EXPECT_EQ(bill.getName(), "White clay");
}

TEST_F(OrderManagerTest, aBillThatIsGoneIsMadeAgain)
{
    begin();
    Order& clay = order("Clay");
    clay.setType("Purchase Order");
    clay.setBillId(77);
    orders().editThisOrder(clay);
    form().balancePaid.edit("05/03/24");
    form().save.trigger();
    ASSERT_EQ(app().getBillManager().getCount(), 1);
    EXPECT_EQ(clay.getBillId(), app().getBillManager().at(0).getID());
}

TEST_F(OrderManagerTest, anUnpaidPurchaseOrderAndAPaidSaleFileNoBill)
{
    begin();
    orders().createPurchaseOrder();
    form().save.trigger();
    Order& sale = order("Sale");
    sale.setBalancePaid("05/03/24");
    orders().editThisOrder(sale);
    form().save.trigger();
    EXPECT_EQ(app().getBillManager().getCount(), 0);
    EXPECT_EQ(sale.getBalancePaid(), "05/03/24");
}

// Repeating, as the editor shows it

TEST_F(OrderManagerTest, theRepeatTextSaysWhenAndWhenNext)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    EXPECT_EQ(form().repeatInformation.text(), "");
    form().close();
    bench.setLastRepeatDate("31/01/24");
    orders().editThisOrder(bench);
    EXPECT_EQ(form().repeatInformation.text(), "Last repeated on 31/01/24. ");
    form().repeats.edit(true);
    EXPECT_EQ(form().repeatInformation.text(), "Last repeated on 31/01/24. Next due to be repeated on 29/02/24 ");
    for (const char* other : {"week", "fortnight", "year"}) {
        form().repeatFrequency.edit(static_cast<int>(form().repeatFrequency.titles().indexOf(other)));
        EXPECT_EQ(form().repeatInformation.text(), "Last repeated on 31/01/24. Next due to be repeated on 07/02/24 ") << other;
    }
}

TEST_F(OrderManagerTest, aMonthFirstUserSeesTheLastRepeatMonthFirstAndTheNextDayFirst)
{
    writeSettings("<key>VendaroDateFormat</key><string>1</string>");
    start();
    Order& bench = order("Bench");
    bench.setLastRepeatDate("05/01/24");
    bench.setRepeats(true);
    orders().editThisOrder(bench);
    EXPECT_EQ(form().repeatInformation.text(), "Last repeated on 01/05/24. Next due to be repeated on 05/02/24 ");
}

// Booking in

TEST_F(OrderManagerTest, aPurchaseOrdersGoodsAreBookedInOnce)
{
    begin();
    Item& clay = item("Clay", "5");
    Item& service = item("Delivery", "0");
    service.setDecreaseQty(false);
    orders().createPurchaseOrder();
    lines().addProduct(clay, true).setQty("3.9");
    lines().addProduct(service, true).setQty("2");
    form().addStock.trigger();

    EXPECT_EQ(clay.getQty(), "8");
    EXPECT_EQ(service.getQty(), "0");
    EXPECT_TRUE(logged("increasing stock of item by 3"));
    EXPECT_TRUE(currentOrder().getStockAdded());
    EXPECT_FALSE(form().addStock.isEnabled());
    form().addStock.trigger();
    EXPECT_EQ(clay.getQty(), "8");
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(OrderManagerTest, aPurchaseOrderWithoutGoodsCountsAsBookedInToo)
{
    begin();
    orders().createPurchaseOrder();
    form().addStock.trigger();
    EXPECT_TRUE(currentOrder().getStockAdded());
}

TEST_F(OrderManagerTest, otherOrdersBookNothingIn)
{
    begin();
    Item& clay = item("Clay", "5");
    orders().create();
    lines().addProduct(clay, false);
    orders().increaseQuantitiesForPurchaseOrder();
    EXPECT_EQ(clay.getQty(), "5");
    EXPECT_FALSE(currentOrder().getStockAdded());
}

TEST_F(OrderManagerTest, aQuantityOfAThousandIsBookedInAsAThousand)
{
    begin();
    Item& clay = item("Clay", "1");
    orders().createPurchaseOrder();
    orders().addItemToCurrentOrder(clay);
    ASSERT_TRUE(lines().setObjectValue("qty", 0, "1,000"));
    form().addStock.trigger();
    EXPECT_EQ(clay.getQty(), "1001");
    EXPECT_TRUE(logged("increasing stock of item by 1000"));
}

// The filter

TEST_F(OrderManagerTest, aStatusToFilterByMayBeEmpty)
{
    begin("<key>VendaroStatuses</key><string>Enquiry\n\nQuoted</string>");
    order("enquiry", "Enquiry");
    order("none", "");
    ChoiceField& filter = orders().listForm.filter;
    EXPECT_EQ(filter.index(), 0);
    EXPECT_EQ(shown(orders(), "title").size(), 2u);

    filter.edit(4);
    EXPECT_EQ(shown(orders(), "title"), std::vector<std::string> {"none"});
    restart();
    EXPECT_EQ(orders().listForm.filter.index(), 4);
}

} // namespace
