// OrderManager's editor beside the plain way: what is saved when, what settings, deletions and other databases do meanwhile.
#include "support/Business.h"
#include "support/ListResets.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace {

class OrderSavingTest : public Business {
protected:
    OrderForm& form() { return orders().form; }
    PrefsController& preferences() { return app().getPrefsController(); }
    static void choose(ChoiceField& field, const char* title) { field.edit(static_cast<int>(field.titles().indexOf(title))); }
    Order& purchaseOrder()
    {
        Order& clay = order("Clay");
        clay.setType("Purchase Order");
        return clay;
    }
    void savePaid(Order& purchase, const char* date)
    {
        orders().editThisOrder(purchase);
        form().balancePaid.edit(date);
        form().save.trigger();
    }
    /// Opens a second database that holds nothing but these orders.
    void openOther(const QByteArray& ordersFile)
    {
        const QString folder = home() + "/Other.vendb";
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile file(folder + "/orders.xml");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(document(ordersFile));
        file.close();
        preferences().setDbLocation(folder);
        app().session().switchDatabase();
    }
};

TEST_F(OrderSavingTest, anOrderThatStaysInItsPlaceHasOnlyItsRowShownAgain)
{
    begin();
    order("Bench");
    Order& chair = order("Chair");
    orders().filter();
    EXPECT_EQ(shown(orders(), "title"), (std::vector<std::string> {"Chair", "Bench"}));
    ListResets resets;
    orders().addObserver(resets);

    orders().editThisOrder(chair);
    form().orderTitle.edit("Armchair");
    form().save.trigger();
    EXPECT_EQ(resets.count, 0);
    EXPECT_EQ(shown(orders(), "title"), (std::vector<std::string> {"Armchair", "Bench"}));
    orders().listForm.search.edit("chair");
    const int before = resets.count;
    orders().editThisOrder(chair);
    form().orderTitle.edit("Stool");
    form().save.trigger();
    EXPECT_EQ(resets.count, before + 1) << "the search finds it no more";
    orders().removeObserver(resets);
}

TEST_F(OrderSavingTest, anOrderWhoseAttachmentsCannotBeKeptStaysAndThatIsTold)
{
    begin();
    Order& bench = order("Bench");
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/Attachments/order1"));
    writeFile("Attachments/order1/plan.txt", "plan");
    QFile inTheWay(supportFolder() + "/Recovery");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    alerts.answer("OK");
    orders().deleteOrder(bench);
    EXPECT_TRUE(orders().holds(bench));
    EXPECT_EQ(lastAlert().title, "Delete Order");
    EXPECT_EQ(readFile("Attachments/order1/plan.txt"), "plan");

    // From the list, the others go.
    Order& chair = order("Chair");
    orders().setSelectedRows({0, 1});
    alerts.answer("OK");
    alerts.answer("OK");
    orders().deleteKey();
    EXPECT_TRUE(orders().holds(bench));
    EXPECT_FALSE(orders().holds(chair));
    EXPECT_EQ(alerts.answersLeft(), 0u);
    orders().undo();
    EXPECT_EQ(orders().getCount(), 2);
}

// Figures

TEST_F(OrderSavingTest, typedFiguresAreStoredInMoneyForm)
{
    begin(taxSettings());
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    form().shipping.edit("5");
    form().taxAmount.edit("1234.5");
    form().net.edit("-.5");
    form().save.trigger();
    EXPECT_EQ(bench.getShipping(), "5.00");
    EXPECT_EQ(bench.getTax(), "1,234.50");
    EXPECT_EQ(bench.getNet(), "-0.50");
}

TEST_F(OrderSavingTest, aFigureThatDoesNotReadIsStoredAsTypedAndAnEmptyOneStaysEmpty)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    form().shipping.edit("to be told");
    form().save.trigger();
    EXPECT_EQ(bench.getShipping(), "to be told");
    EXPECT_EQ(bench.getTax(), "");
    EXPECT_EQ(bench.getValueWithTax(), "0.00");
}

TEST_F(OrderSavingTest, subtotalAndShippingTogetherLeaveTaxOutWhateverTheNameSays)
{
    begin(taxSettings());
    orders().create();
    line(currentOrder(), "100.00");
    form().shipping.edit("10");
    form().calculateTax.trigger();
    Order& bench = currentOrder();
    form().save.trigger();
    EXPECT_EQ(bench.getTax(), "22.00");
    EXPECT_EQ(bench.getValueWithTax(), "110.00");
    EXPECT_EQ(bench.getBalance(), "132.00");
}

// The moment of saving

TEST_F(OrderSavingTest, ordersLinesAndItemsAreWrittenAsTheyStoodWhenSaved)
{
    begin();
    Item& mug = item("Mug", "10");
    orders().create();
    Order& sale = currentOrder();
    orders().addItemToCurrentOrder(mug);
    form().orderTitle.edit("As saved");
    form().save.trigger();
    sale.setTitle("Changed later");
    mug.setQty("77");
    lines().at(0).setItem("Changed later");
    app().folder().drain();
    EXPECT_TRUE(readFile("orders.xml").contains("As saved"));
    EXPECT_TRUE(readFile("items.xml").contains("<key>qty</key>\n\t\t\t<string>9</string>")) << readFile("items.xml").toStdString();
    EXPECT_FALSE(readFile("orders.xml").contains("Changed later"));
    EXPECT_FALSE(readFile("itemsordered.xml").contains("Changed later"));
    quit();
    EXPECT_TRUE(readFile("orders.xml").contains("Changed later"));
}

TEST_F(OrderSavingTest, savesThatFollowEachOtherEndWithTheLast)
{
    begin();
    Order& bench = order("Bench");
    for (int save = 1; save <= 20; ++save) {
        orders().editThisOrder(bench);
        form().orderTitle.edit("Save " + QString::number(save) + '.');
        form().save.trigger();
    }
    app().folder().drain();
    EXPECT_TRUE(readFile("orders.xml").contains("Save 20."));
}

TEST_F(OrderSavingTest, savingFiltersTheListAnew)
{
    begin();
    Order& bench = order("Bench", "Quoted");
    choose(orders().listForm.filter, "Quoted");
    ASSERT_EQ(orders().numberOfRows(), 1);
    orders().editThisOrder(bench);
    choose(form().status, "Complete");
    EXPECT_EQ(orders().numberOfRows(), 1);
    form().save.trigger();
    EXPECT_EQ(orders().numberOfRows(), 0);
}

TEST_F(OrderSavingTest, cancellingANewOrderGivesNoStockBack)
{
    begin();
    Item& mug = item("Mug", "10");
    orders().create();
    orders().addItemToCurrentOrder(mug);
    form().cancel.trigger();
    EXPECT_EQ(mug.getQty(), "9");
    EXPECT_EQ(lines().getCount(), 0);
}

TEST_F(OrderSavingTest, nothingIsPutOnAnOrderThatIsGone)
{
    begin();
    Item& mug = item("Mug", "10");
    orders().create();
    form().cancel.trigger();
    orders().addItemToCurrentOrder(mug);
    EXPECT_EQ(mug.getQty(), "10");
    EXPECT_EQ(lines().getCount(), 0);
}

// Choices

TEST_F(OrderSavingTest, aMethodFrequencyOrKindThatIsNotListedSurvivesASave)
{
    begin();
    Order& bench = order("Bench");
    bench.setPaymentMethod("Barter");
    bench.setRepeatFrequency("decade");
    bench.setType("Loan");
    orders().editThisOrder(bench);
    form().save.trigger();
    EXPECT_EQ(bench.getPaymentMethod(), "Barter");
    EXPECT_EQ(bench.getRepeatFrequency(), "decade");
    EXPECT_EQ(bench.getType(), "Loan");
}

TEST_F(OrderSavingTest, aNewOrderStartsWithTheUsualStatusWhereItsOwnIsNotListed)
{
    begin("<key>VendaroStatuses</key><string>Asked\nDone\nPaid</string>");
    Order& old = order("Old", "Paid");
    orders().editThisOrder(old);
    choose(form().status, "Done");
    EXPECT_EQ(app().settingsStore().text(settings::selectedStatus), "1");
    form().cancel.trigger();
    orders().editThisOrder(old);
    EXPECT_EQ(form().status.title(), "Paid");
    form().cancel.trigger();

    orders().create();
    EXPECT_EQ(form().status.title(), "Done");
    Order& made = currentOrder();
    EXPECT_EQ(made.getStatus(), "Enquiry");
    form().save.trigger();
    EXPECT_EQ(made.getStatus(), "Done");
}

TEST_F(OrderSavingTest, savingTheSettingsLeavesTheStatusOfTheOrderInTheEditor)
{
    begin();
    Order& bench = order("Bench", "Quoted");
    orders().editThisOrder(bench);
    preferences().form.statuses.edit("Asked\nDone");
    preferences().OKButton();
    EXPECT_EQ(form().status.title(), "Quoted");
    form().save.trigger();
    EXPECT_EQ(bench.getStatus(), "Quoted");
}

TEST_F(OrderSavingTest, aStatusThatIsNoLongerListedNoLongerFilters)
{
    begin();
    order("Bench", "Quoted");
    order("Table", "Paid");
    choose(orders().listForm.filter, "Quoted");
    EXPECT_EQ(orders().numberOfRows(), 1);
    preferences().form.statuses.edit("Asked\nDone");
    preferences().OKButton();
    EXPECT_EQ(orders().listForm.filter.title(), "All");
    EXPECT_EQ(orders().numberOfRows(), 2);
}

TEST_F(OrderSavingTest, anUnreadableLastRepeatIsShownAsItIsWithoutANextOne)
{
    begin();
    Order& bench = order("Bench");
    bench.setLastRepeatDate("soon");
    bench.setRepeats(true);
    orders().editThisOrder(bench);
    EXPECT_EQ(form().repeatInformation.text(), "Last repeated on soon. ");
}

// Bills

TEST_F(OrderSavingTest, aDeletedBillIsMadeAnew)
{
    begin();
    Order& clay = purchaseOrder();
    savePaid(clay, "05/03/24");
    BillManager& bills = app().getBillManager();
    bills.deleteItem(bills.at(0));
    savePaid(clay, "06/03/24");
    ASSERT_EQ(bills.getCount(), 1);
    EXPECT_EQ(bills.at(0).getDatePaid(), "06/03/24");
    EXPECT_EQ(clay.getBillId(), bills.at(0).getID());
}

// Contacts

TEST_F(OrderSavingTest, theLinesFollowWhoeverWasPickedLastAlsoOnTheSecondTab)
{
    begin();
    Order& bench = order("Bench");
    const Material& ofBench = line(bench, "1.00");
    Contact& bob = contact("Bob");
    orders().editThisOrder(bench);
    form().tab.edit(OrderForm::secondContactTab);
    orders().setContact(bob);
    EXPECT_EQ(ofBench.getContact(), bob.getID());
    EXPECT_EQ(bench.getContactId(), 0);
}

TEST_F(OrderSavingTest, aContactOfADatabaseThatWasOpenBeforeIsNotTakenForAnotherOfItsId)
{
    begin();
    const Contact& ann = contact("Ann");
    ASSERT_EQ(ann.getID(), 1);
    order("Bench");
    openOther("<dict><key>orders</key><array><dict><key>id</key><string>9</string><key>contact</key><string>1</string>"
              "<key>contact2</key><string>1</string></dict></array></dict>");
    ASSERT_EQ(orders().getCount(), 1);
    const Order& other = orders().at(0);
    EXPECT_EQ(other.getContact(), nullptr);
    EXPECT_EQ(other.getContact2(Order::Fallback::none), nullptr);
    EXPECT_EQ(other.getFieldByName("contactname"), "");
    EXPECT_EQ(other.getContactId(), 1);
}

// Attachments

TEST_F(OrderSavingTest, filesOfADeletedOrderLieInTheRecoveryStore)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    QFile plan(home() + "/plan.txt");
    ASSERT_TRUE(plan.open(QIODevice::WriteOnly));
    plan.write("oak");
    plan.close();
    orders().fileDropped(plan.fileName());
    orders().deleteOrder(bench);
    QStringList found;
    for (QDirIterator walk(supportFolder() + "/Recovery", {"plan.txt"}, QDir::Files, QDirIterator::Subdirectories); walk.hasNext();)
        found += walk.next();
    ASSERT_EQ(found.size(), 1);
    QFile kept(found.front());
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "oak");
}

// Stationery

TEST_F(OrderSavingTest, theChooserShowsEachTemplateOnceAndTheOneChosenLast)
{
    begin("<key>chosenTemplate</key><string>2</string>");
    const QStringList names = form().stationery.titles();
    EXPECT_TRUE(names.contains("Invoice with tax"));
    EXPECT_EQ(names.count("Invoice"), 1);
    EXPECT_EQ(form().stationery.index(), 2);
    form().stationery.edit(3);
    EXPECT_EQ(app().settingsStore().text(settings::chosenTemplate), "3");
    restart();
    EXPECT_EQ(form().stationery.index(), 3);
}

TEST_F(OrderSavingTest, withoutAChoiceTheFirstTemplateIsChosen)
{
    begin();
    EXPECT_EQ(form().stationery.index(), 0);
}

TEST_F(OrderSavingTest, printingOpensTheOrdersDocumentAndLeavesTheEditorOpen)
{
    begin();
    int documents = 0;
    QObject::connect(&app(), &Vendaro::documentOpened, [&] { ++documents; });
    orders().create();
    form().orderTitle.edit("Bench");
    form().printInvoice.trigger();
    EXPECT_EQ(documents, 1);
    EXPECT_EQ(currentOrder().getTitle(), "Bench");
    EXPECT_TRUE(form().isOpen());
    EXPECT_TRUE(orders().isCreating());
}

TEST_F(OrderSavingTest, aFiledBillIsWrittenWithTheOrderThatNamesIt)
{
    begin();
    Order& clay = purchaseOrder();
    clay.setTitle("Blue clay");
    savePaid(clay, "04/03/24");
    app().folder().drain();
    EXPECT_TRUE(readFile("bills.xml").contains("Blue clay"));
    EXPECT_TRUE(readFile("orders.xml").contains("Blue clay"));
}

TEST_F(OrderSavingTest, aDeletedOrderLeavesTheOrdersFileTogetherWithItsLines)
{
    begin();
    for (const char* title : {"Bench", "Table"}) {
        Order& sale = order(title);
        line(sale, "10.00").setItem("Wood");
    }
    app().session().writeDatabase(orders());
    ASSERT_TRUE(readFile("orders.xml").contains("Bench"));
    ASSERT_TRUE(readFile("itemsordered.xml").contains("Wood"));
    orders().deleteOrder(orders().at(0));
    EXPECT_FALSE(readFile("orders.xml").contains("Bench"));
    orders().selectRow(0);
    alerts.answer("OK");
    orders().deleteKey();
    EXPECT_FALSE(readFile("orders.xml").contains("Table"));
    EXPECT_FALSE(readFile("itemsordered.xml").contains("Wood"));
}

// The editor

TEST_F(OrderSavingTest, openingTheOpenOrderAgainKeepsWhatWasTyped)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    form().orderTitle.edit("Garden bench");
    orders().editThisOrder(bench);
    EXPECT_EQ(form().orderTitle.text(), "Garden bench");
    orders().editThisOrder(order("Table"));
    EXPECT_EQ(form().orderTitle.text(), "Table");
}

TEST_F(OrderSavingTest, aNewOrderThatIsOpenedAgainStillGoesWhenCancelled)
{
    begin();
    orders().create();
    orders().editThisOrder(currentOrder());
    form().cancel.trigger();
    EXPECT_EQ(orders().getCount(), 0);
}

TEST_F(OrderSavingTest, choicesOfAnotherOrderAreNotOffered)
{
    begin();
    Order& bench = order("Bench");
    bench.setPaymentMethod("Barter");
    orders().editThisOrder(bench);
    EXPECT_EQ(form().paymentMethod.title(), "Barter");
    orders().editThisOrder(order("Table"));
    EXPECT_FALSE(form().paymentMethod.titles().contains("Barter"));
}

// What does not read

TEST_F(OrderSavingTest, everyFigureThatDoesNotReadSaysSoWhileItIsTyped)
{
    begin(taxSettings());
    orders().create();
    form().applyDiscount.edit(true);
    for (TextField* amount : {&form().shipping, &form().net, &form().taxAmount}) {
        EXPECT_EQ(amount->fault(), "") << amount->name().toStdString();
        amount->edit("five");
        EXPECT_EQ(amount->fault(), "This does not read as an amount; it counts as 0.") << amount->name().toStdString();
        amount->edit("5");
        EXPECT_EQ(amount->fault(), "") << amount->name().toStdString();
    }
    form().discount.edit("half");
    EXPECT_EQ(form().discount.fault(), "This does not read as a number; it counts as 0.");
}

TEST_F(OrderSavingTest, datesAreCheckedTheWayTheyAreReadBack)
{
    writeSettings("<key>VendaroDateFormat</key><string>1</string>");
    start();
    orders().createPurchaseOrder();
    EXPECT_EQ(form().date.text(), "today");
    EXPECT_EQ(form().date.fault(), "") << "the program's own word";
    form().date.edit("soon");
    EXPECT_EQ(form().date.fault(), "This is not a date like 12/25/24; it counts as 01/01/00.");
    form().date.edit("12/24/24");
    EXPECT_EQ(form().date.fault(), "");
    // When a purchase order was paid is read day first for everybody.
    form().balancePaid.edit("12/24/24");
    EXPECT_EQ(form().balancePaid.fault(), "This is not a date like 25/12/24; it counts as 01/01/00.");
    form().balancePaid.edit("24/12/24");
    EXPECT_EQ(form().balancePaid.fault(), "");
}

TEST_F(OrderSavingTest, aStoredValueThatDoesNotReadSaysSoWhenItsOrderIsOpened)
{
    begin();
    Order& imported = order("Imported");
    imported.setDate("March");
    imported.setShipping("free");
    orders().editThisOrder(imported);
    EXPECT_NE(form().date.fault(), "");
    EXPECT_NE(form().shipping.fault(), "");
    orders().editThisOrder(order("Bench"));
    EXPECT_EQ(form().date.fault(), "");
    EXPECT_EQ(form().shipping.fault(), "");
}

TEST_F(OrderSavingTest, aPaymentsCellThatDoesNotReadSaysSo)
{
    begin();
    Order& bench = order("Bench");
    payment(bench, "lots", "01/03/24");
    orders().editThisOrder(bench);
    EXPECT_EQ(orders().paymentTable.cellFault("datepaid", 0), "");
    EXPECT_EQ(orders().paymentTable.cellFault("amount", 0), "This does not read as an amount; it counts as 0.");
    ASSERT_TRUE(orders().paymentTable.setObjectValue("datepaid", 0, "yesterday"));
    EXPECT_EQ(bench.getPaymentArray().front()->getDatePaid(), "yesterday");
    EXPECT_EQ(orders().paymentTable.cellFault("datepaid", 0), "This is not a date like 25/12/24; it counts as 01/01/00.");
    EXPECT_EQ(orders().paymentTable.cellFault("paymentmethod", 0), "");
}

// Orders that a crash took

TEST_F(OrderSavingTest, aNewOrderDoesNotInheritTheLinesOfOneThatACrashTook)
{
    begin();
    orders().create();
    const int lost = currentOrder().getID();
    orders().addItemToCurrentOrder(item("Mug"));
    ASSERT_TRUE(lines().setObjectValue("qty", 0, "3")); // written, unlike the order
    crash();
    QFile::remove(databaseFolder() + "/lock.xml");
    start();
    ASSERT_EQ(orders().getCount(), 0);
    ASSERT_EQ(lines().recordsOfOrder(lost).size(), 1u);
    orders().create();
    EXPECT_NE(currentOrder().getID(), lost);
    EXPECT_EQ(lines().numberForThisOrder(), 0);
    EXPECT_EQ(currentOrder().getOrderNum(), std::to_string(currentOrder().getID()));
    const int next = currentOrder().getID() + 1;
    EXPECT_EQ(order("Next").getID(), next);
}

TEST_F(OrderSavingTest, atTheEndOfAllIdsANewOrderIsStillMade)
{
    begin();
    order("Last").setID(std::numeric_limits<int>::max());
    orders().findAndSetHighestId();
    lines().add(std::make_unique<Material>(lines().rules(), 2));
    orders().create();
    EXPECT_EQ(orders().getCount(), 2);
}

// Buttons that would find nothing to do

TEST_F(OrderSavingTest, removingAwaitsASelection)
{
    begin();
    Order& bench = order("Bench");
    line(bench, "5.00");
    payment(bench, "1.00");
    orders().editThisOrder(bench);
    EXPECT_FALSE(form().removeMaterial.isEnabled());
    EXPECT_FALSE(form().tenderRemove.isEnabled());
    lines().selectRow(0);
    EXPECT_TRUE(form().removeMaterial.isEnabled());
    EXPECT_FALSE(form().tenderRemove.isEnabled());
    orders().paymentTable.selectRow(0);
    EXPECT_TRUE(form().tenderRemove.isEnabled());
    alerts.answer("OK");
    form().removeMaterial.trigger();
    EXPECT_EQ(lines().getCount(), 0);
    EXPECT_FALSE(form().removeMaterial.isEnabled());
    orders().editThisOrder(order("Table"));
    EXPECT_FALSE(form().tenderRemove.isEnabled());
}

TEST_F(OrderSavingTest, theContactsCommandsGoByTheTab)
{
    begin();
    Order& bench = order("Bench");
    bench.setContact(&contact("Ann"));
    orders().editThisOrder(bench);
    // On the first tab a message goes to the second contact, and there is none.
    EXPECT_FALSE(form().sendEmail.isEnabled());
    form().tab.edit(OrderForm::contactTab);
    EXPECT_TRUE(form().editContact.isEnabled());
    EXPECT_TRUE(form().sendEmail.isEnabled());
    form().tab.edit(OrderForm::secondContactTab);
    EXPECT_FALSE(form().editContact.isEnabled());
    EXPECT_FALSE(form().sendEmail.isEnabled());
    orders().setContact(contact("Bob"));
    EXPECT_TRUE(form().editContact.isEnabled());
    EXPECT_TRUE(form().sendEmail.isEnabled());
    orders().editThisOrder(order("Table"));
    EXPECT_FALSE(form().editContact.isEnabled());
}

TEST_F(OrderSavingTest, aContactWithoutANameCanBeEditedAndItsDetailsKeepToTheirLines)
{
    begin();
    Contact& nameless = contact("");
    nameless.setAdd1("4 Mill Lane\r\nUpper floor\tleft");
    nameless.setPhone("0123");
    Order& bench = order("Bench");
    bench.setContact(&nameless);
    orders().editThisOrder(bench);
    EXPECT_EQ(form().contactName.text(), "Contact without a name");
    EXPECT_EQ(form().contactDetails.text(), "add1\t4 Mill Lane, Upper floor, left\nphone\t0123");
    form().tab.edit(OrderForm::contactTab);
    EXPECT_TRUE(form().editContact.isEnabled());
}

} // namespace
