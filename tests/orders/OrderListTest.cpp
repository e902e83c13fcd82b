// OrderManager's list: deleting, contacts, filter and search, colours, attachments.
#include "support/Business.h"
#include "support/ListResets.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class OrderListTest : public Business {
protected:
    OrderForm& form() { return orders().form; }
    void showTab(OrderForm::Tab tab) { form().tab.edit(tab); }
    std::vector<std::string> titles() { return shown(orders(), "title"); }
    void search(const char* words) { orders().listForm.search.edit(words); }
    void choose(const char* title)
    {
        ChoiceField& filter = orders().listForm.filter;
        filter.edit(static_cast<int>(filter.titles().indexOf(title)));
    }
    QString someFile(const char* name, const char* bytes)
    {
        QFile file(home() + '/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QString attachmentFolder(const Order& order) const { return databaseFolder() + "/Attachments/order" + QString::number(order.getID()); }
};

// Deleting

TEST_F(OrderListTest, deletingAsksInTheseWords)
{
    begin();
    order("Bench");
    orders().selectRow(0);
    alerts.answer("Cancel");
    orders().deleteKey();
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(lastAlert().title, "Delete Order");
    EXPECT_EQ(lastAlert().text, "Are you sure you want to delete the selected item(s) from the database?");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK", "Cancel"}));
    EXPECT_EQ(orders().getCount(), 1);
}

TEST_F(OrderListTest, withoutASelectionNothingIsAsked)
{
    begin();
    order("Bench");
    orders().deleteKey();
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(orders().getCount(), 1);
}

TEST_F(OrderListTest, anOrderGoesWithItsLinesPaymentsBillAndAttachments)
{
    begin();
    Order& bench = order("Bench");
    Order& table = order("Table");
    line(bench, "5.00");
    const Material& kept = line(table, "6.00");
    payment(bench, "1.00");
    const Payment& received = payment(table, "2.00");
    bench.setBillId(app().getBillManager().createAndAddDataObject().getID());
    const Bill& other = app().getBillManager().createAndAddDataObject();
    orders().editThisOrder(bench);
    orders().fileDropped(someFile("plan.txt", "oak"));
    ASSERT_TRUE(QDir(attachmentFolder(bench)).exists());

    alerts.answer("OK");
    orders().selectRow(orders().rowOf(bench));
    orders().deleteKey();

    EXPECT_EQ(orders().records(), std::vector<dataObject*> {&table});
    EXPECT_EQ(lines().records().size(), 1u);
    EXPECT_TRUE(lines().holds(kept));
    EXPECT_EQ(app().getPaymentManager().getCount(), 1);
    EXPECT_TRUE(app().getPaymentManager().holds(received));
    EXPECT_EQ(app().getBillManager().getCount(), 1);
    EXPECT_TRUE(app().getBillManager().holds(other));
    EXPECT_FALSE(QDir(attachmentFolder(bench)).exists());
}

TEST_F(OrderListTest, deletingAnOrderDoesNotGiveStockBack)
{
    begin();
    Item& mug = item("Mug", "10");
    orders().create();
    orders().addItemToCurrentOrder(mug);
    form().save.trigger();
    EXPECT_EQ(mug.getQty(), "9");
    alerts.answer("OK");
    orders().selectRow(0);
    orders().deleteKey();
    EXPECT_EQ(mug.getQty(), "9");
}

TEST_F(OrderListTest, severalOrdersGoTogetherAndTheRowBeforeTheFirstIsSelected)
{
    begin();
    for (const char* title : {"a", "b", "c", "d"})
        order(title);
    const std::vector<std::string> before = titles();
    alerts.answer("OK");
    orders().setSelectedRows({1, 3});
    orders().deleteKey();
    EXPECT_THAT(titles(), ElementsAre(before[0], before[2]));
    EXPECT_EQ(orders().selectedRow(), 0);
}

TEST_F(OrderListTest, afterTheFirstRowTheNewFirstRowIsSelected)
{
    begin();
    for (const char* title : {"a", "b", "c"})
        order(title);
    const std::vector<std::string> before = titles();
    alerts.answer("OK");
    orders().selectRow(0);
    orders().deleteKey();
    EXPECT_THAT(titles(), ElementsAre(before[1], before[2]));
    EXPECT_EQ(orders().selectedRow(), 0);
}

TEST_F(OrderListTest, onlySelectedOrdersThatShowAreDeleted)
{
    begin();
    Order& hidden = order("hidden", "Paid");
    order("shown", "Quoted");
    orders().setSelectedRows({0, 1});
    choose("Quoted");
    alerts.answer("OK");
    orders().deleteKey();
    EXPECT_EQ(orders().records(), std::vector<dataObject*> {&hidden});
}

TEST_F(OrderListTest, aDeletedOrdersEditorClosesAndTheLinesAreWritten)
{
    begin();
    Order& bench = order("Bench");
    line(bench, "5.00");
    orders().editThisOrder(bench);
    orders().deleteOrder(bench);
    EXPECT_FALSE(form().isOpen());
    EXPECT_TRUE(readFile("itemsordered.xml").contains("<array/>"));
    EXPECT_EQ(orders().numberOfRows(), 0);
}

TEST_F(OrderListTest, undoBringsTheOrderBackWithItsPaymentsButWithoutLines)
{
    begin();
    Order& bench = order("Bench");
    line(bench, "5.00");
    payment(bench, "1.00");
    alerts.answer("OK");
    orders().selectRow(0);
    orders().deleteKey();
    orders().undo();
    ASSERT_TRUE(orders().holds(bench));
    EXPECT_EQ(bench.getPaymentArray().size(), 1u);
    EXPECT_EQ(lines().getCount(), 0);
}

// Contacts

TEST_F(OrderListTest, theTabThatShowsDecidesWhichContactIsConnected)
{
    begin();
    Contact& ann = contact("Ann Lee");
    Contact& bob = contact("Bob Roe");
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    showTab(OrderForm::contactTab);
    orders().setContact(ann);
    showTab(OrderForm::secondContactTab);
    orders().setContact(bob);
    EXPECT_EQ(bench.getContact(), &ann);
    EXPECT_EQ(bench.getContactId(), ann.getID());
    EXPECT_EQ(bench.getContact2(Order::Fallback::none), &bob);
    EXPECT_EQ(bench.getContact2Id(Order::Fallback::none), bob.getID());
    EXPECT_EQ(form().contactName.text(), "Ann Lee");
    EXPECT_EQ(form().contact2Name.text(), "Bob Roe");
}

TEST_F(OrderListTest, onAnotherTabNoContactIsConnected)
{
    begin();
    Contact& ann = contact("Ann Lee");
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    showTab(OrderForm::paymentsTab);
    orders().setContact(ann);
    EXPECT_EQ(bench.getContact(), nullptr);
    EXPECT_EQ(bench.getNewCustomer(), 0);
}

TEST_F(OrderListTest, theFirstOrderMarksANewCustomerTheNextAReturningOne)
{
    begin();
    Contact& ann = contact("Ann Lee");
    Order& first = order("first");
    Order& second = order("second");
    for (Order* order : {&first, &second}) {
        orders().editThisOrder(*order);
        showTab(OrderForm::contactTab);
        orders().setContact(ann);
    }
    EXPECT_EQ(orders().countOrdersForContactID(ann.getID()), 2);
    EXPECT_EQ(first.getNewCustomer(), 1);
    EXPECT_EQ(second.getNewCustomer(), 2);
}

TEST_F(OrderListTest, aSecondContactWithoutOrdersOfTheirOwnLeavesTheMark)
{
    begin();
    Order& bench = order("Bench");
    bench.setNewCustomer(2);
    orders().editThisOrder(bench);
    showTab(OrderForm::secondContactTab);
    orders().setContact(contact("Bob"));
    EXPECT_EQ(bench.getNewCustomer(), 2);
}

TEST_F(OrderListTest, theOrdersLinesLearnItsContact)
{
    begin();
    Contact& ann = contact("Ann Lee");
    Order& bench = order("Bench");
    const Material& ofBench = line(bench, "1.00");
    const Material& ofOther = line(order("other"), "1.00");
    orders().editThisOrder(bench);
    showTab(OrderForm::contactTab);
    orders().setContact(ann);
    EXPECT_EQ(ofBench.getContact(), ann.getID());
    EXPECT_EQ(ofOther.getContact(), 0);
}

TEST_F(OrderListTest, theContactIsPickedFromAList)
{
    begin();
    contact("Ann Lee");
    Contact& bob = contact("Bob Roe");
    orders().editThisOrder(order("Bench"));
    showTab(OrderForm::contactTab);
    form().pickContact.trigger();
    qvPicker& picker = app().getPicker();
    picker.form.search.edit("bob");
    picker.selectRow(0);
    picker.chooseSelected();
    EXPECT_EQ(currentOrder().getContact(), &bob);
}

TEST_F(OrderListTest, withoutContactsThePickerSaysSo)
{
    begin();
    orders().editThisOrder(order("Bench"));
    alerts.answer("OK");
    form().pickContact.trigger();
    EXPECT_EQ(lastAlert().title, "None in database");
    EXPECT_EQ(lastAlert().text,
        "There are no Contacts in the datbase. First create some by going to File > New.... or the appropriate toolbar button");
}

TEST_F(OrderListTest, contactsOfOrdersAreLinkedWhenTheDatabaseIsRead)
{
    begin();
    Contact& ann = contact("Ann Lee");
    order("Bench").setContact(&ann);
    restart();
    ASSERT_EQ(orders().getCount(), 1);
    ASSERT_NE(orders().at(0).getContact(), nullptr);
    EXPECT_EQ(orders().at(0).getContactname(), "Ann Lee");
}

TEST_F(OrderListTest, contactsAreConnectedByIdOnlyWhereThereIsOne)
{
    begin();
    Contact& ann = contact("Ann");
    Order& bench = order("Bench");
    orders().connectContactById(ann.getID(), bench);
    orders().connectContact2ById(ann.getID(), bench);
    orders().connectContactById(99, bench);
    orders().connectContact2ById(0, bench);
    EXPECT_EQ(bench.getContact(), &ann);
    EXPECT_EQ(bench.getContact2(Order::Fallback::none), &ann);
    EXPECT_EQ(bench.getNewCustomer(), 0);
}

// Filter and search

class OrderFilterTest : public OrderListTest {
protected:
    void SetUp() override
    {
        begin();
        order("enquiry", "Enquiry");
        order("quoted", "Quoted");
        order("complete", "Complete");
        order("clay", "Complete").setType("Purchase Order");
        order("kiln", "Quoted").setType("Purchase Order");
    }
};

TEST_F(OrderFilterTest, theMenuOffersThreeChoicesThenTheUsersStatuses)
{
    const QStringList choices = orders().listForm.filter.titles();
    EXPECT_EQ(choices.mid(0, 3), QStringList({"All", "Incomplete", "Purchase orders"}));
    EXPECT_EQ(choices.mid(3), QStringList({"Enquiry", "Quoted", "Ordered", "Invoiced", "Paid", "Flagged", "Complete"}));
}

TEST_F(OrderFilterTest, allHidesNothing)
{
    choose("All");
    EXPECT_EQ(titles().size(), 5u);
}

TEST_F(OrderFilterTest, purchaseOrdersAreShownByThemselves)
{
    choose("Purchase orders");
    EXPECT_THAT(titles(), UnorderedElementsAre("clay", "kiln"));
}

TEST_F(OrderFilterTest, incompleteHidesWhatIsComplete)
{
    choose("Incomplete");
    EXPECT_THAT(titles(), UnorderedElementsAre("enquiry", "quoted", "kiln"));
}

TEST_F(OrderFilterTest, theUserSaysWhichStatusIsComplete)
{
    app().settingsStore().setText(settings::completeStatus, "Quoted");
    choose("Incomplete");
    EXPECT_THAT(titles(), UnorderedElementsAre("enquiry", "complete", "clay"));
}

TEST_F(OrderFilterTest, aStatusShowsExactlyItsOrders)
{
    orders().at(0).setStatus("quoted");
    choose("Quoted");
    EXPECT_THAT(titles(), UnorderedElementsAre("quoted", "kiln"));
}

TEST_F(OrderFilterTest, theChoiceIsRememberedOverARestart)
{
    choose("Purchase orders");
    EXPECT_EQ(app().settingsStore().text(settings::orderManagerFilter), "Purchase orders");
    restart();
    EXPECT_EQ(orders().listForm.filter.title(), "Purchase orders");
    EXPECT_THAT(titles(), UnorderedElementsAre("clay", "kiln"));
}

TEST_F(OrderFilterTest, everyWordMustStandInTheOrderOrItsContact)
{
    Contact& smith = contact("Jane Smith");
    Order& hers = order("Vase 2024");
    hers.setContact(&smith);
    order("Smith and 2024");
    order("2024");
    order("Bowl").setContact(&smith);
    search("smith 2024");
    EXPECT_THAT(titles(), UnorderedElementsAre("Vase 2024", "Smith and 2024"));
}

TEST_F(OrderFilterTest, blanksBetweenWordsDoNotCount)
{
    search("  clay   complete ");
    EXPECT_THAT(titles(), ElementsAre("clay"));
    search("   ");
    EXPECT_EQ(titles().size(), 5u);
}

TEST_F(OrderFilterTest, searchingNarrowsTheChoice)
{
    choose("Purchase orders");
    search("quoted");
    EXPECT_THAT(titles(), ElementsAre("kiln"));
}

// Colours

TEST_F(OrderListTest, theFirstColourOfAStatusColoursItsRows)
{
    const auto colour = [](const char* status, const char* red, const char* green, const char* blue) {
        return QByteArray("<dict><key>Status</key><string>") + status + "</string><key>redComponent</key><string>" + red
            + "</string><key>greenComponent</key><real>" + green + "</real><key>blueComponent</key><string>" + blue + "</string></dict>";
    };
    begin("<key>VendaroFlagColours</key><array>" + colour("Quoted", "0.25", "0.5", "1") + colour("Quoted", "1", "1", "1")
        + colour("Paid", "0", "0", "0") + "</array>");
    order("quoted", "Quoted");
    const std::optional<RgbColour> found = orders().labelColorForRow(0);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->red, 0.25f);
    EXPECT_EQ(found->green, 0.5f);
    EXPECT_EQ(found->blue, 1.0f);
    orders().at(0).setStatus("quoted");
    EXPECT_FALSE(orders().labelColorForRow(0));
    EXPECT_FALSE(orders().labelColorForRow(7));
}

TEST_F(OrderListTest, withoutColoursRowsAreClear)
{
    begin("<key>VendaroFlagColours</key><array/>");
    order("quoted", "Quoted");
    EXPECT_FALSE(orders().labelColorForRow(0));
}

TEST_F(OrderListTest, ordersOfTheCompleteStatusAreDoneWith)
{
    const auto isFinished = [&](int n) { return orders().isFinishedRow(orders().rowOf(orders().at(n))); };
    begin();
    order("open", "Enquiry");
    order("done", "Complete");
    EXPECT_FALSE(isFinished(0));
    EXPECT_TRUE(isFinished(1));
    EXPECT_FALSE(orders().isFinishedRow(7));
    quit();

    begin("<key>completeStatus</key><string>Enquiry</string>");
    ASSERT_EQ(orders().at(0).getTitle(), "open");
    EXPECT_TRUE(isFinished(0));
    EXPECT_FALSE(isFinished(1));
}

// Attachments

TEST_F(OrderListTest, aDroppedFileIsCopiedIntoTheOrdersFolder)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    EXPECT_EQ(form().attachments.text(), "There are no attachments");
    EXPECT_FALSE(form().viewAttachments.isEnabled());

    orders().fileDropped(someFile("plan.txt", "oak"));
    EXPECT_EQ(form().attachments.text(), "There is 1 attachment");
    EXPECT_TRUE(form().viewAttachments.isEnabled());
    QFile copy(attachmentFolder(bench) + "/plan.txt");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), "oak");
    EXPECT_TRUE(QFile::exists(home() + "/plan.txt"));

    orders().fileDropped(someFile("second.txt", "ash"));
    EXPECT_EQ(form().attachments.text(), "There are  2  attachments");
    EXPECT_EQ(orders().getNumberOfAttachments(), 2);
}

TEST_F(OrderListTest, aFileOfTheSameNameIsNotOverwrittenButTold)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    orders().fileDropped(someFile("plan.txt", "oak"));
    orders().fileDropped(someFile("plan.txt", "ash"));
    EXPECT_EQ(orders().getNumberOfAttachments(), 1);
    EXPECT_NE(form().attachmentTrouble.text(), "");
    QFile copy(attachmentFolder(bench) + "/plan.txt");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), "oak");
}

TEST_F(OrderListTest, attachingAsksForAFile)
{
    begin();
    orders().editThisOrder(order("Bench"));
    panels.cancel();
    form().attach.trigger();
    EXPECT_EQ(orders().getNumberOfAttachments(), 0);
    panels.choose(someFile("plan.txt", "oak"));
    form().attach.trigger();
    EXPECT_EQ(orders().getNumberOfAttachments(), 1);
}

TEST_F(OrderListTest, aFileThatIsGoneIsTold)
{
    begin();
    orders().editThisOrder(order("Bench"));
    orders().fileDropped(home() + "/nothing.txt");
    EXPECT_NE(form().attachmentTrouble.text(), "");
    EXPECT_EQ(form().attachments.text(), "There are no attachments");
}

TEST_F(OrderListTest, theCountLeavesADesktopFileInFrontOut)
{
    begin();
    Order& bench = order("Bench");
    ASSERT_TRUE(QDir().mkpath(attachmentFolder(bench)));
    for (const char* name : {".DS_Store", "b.txt"}) {
        QFile file(attachmentFolder(bench) + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    orders().editThisOrder(bench);
    EXPECT_EQ(form().attachments.text(), "There is 1 attachment");
}

TEST_F(OrderListTest, attachmentsAreFoundInWhateverCaseTheFoldersAreSpelled)
{
    begin();
    Order& bench = order("Bench");
    const QString folder = databaseFolder() + "/attachments/Order" + QString::number(bench.getID());
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + "/a.txt");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    orders().editThisOrder(bench);
    EXPECT_EQ(orders().getNumberOfAttachments(), 1);
    orders().fileDropped(someFile("b.txt", "b"));
    EXPECT_TRUE(QFile::exists(folder + "/b.txt"));
    EXPECT_FALSE(QDir(databaseFolder() + "/Attachments").exists());
}

TEST_F(OrderListTest, viewingOpensTheOrdersFolder)
{
    begin();
    Order& bench = order("Bench");
    orders().editThisOrder(bench);
    orders().fileDropped(someFile("plan.txt", "oak"));
    form().viewAttachments.trigger();
    EXPECT_EQ(opener.folders, QStringList(attachmentFolder(bench)));
}

// Mail

TEST_F(OrderListTest, mailGoesToTheFirstContactOnTheirTabElseToTheSecond)
{
    begin();
    Contact& ann = contact("Ann");
    Contact& bob = contact("Bob");
    ann.setEmail("ann@example.org");
    bob.setEmail("bob@example.org");
    Order& bench = order("Bench");
    bench.setContact(&ann);
    orders().editThisOrder(bench);
    showTab(OrderForm::orderTab);
    form().sendEmail.trigger();
    EXPECT_TRUE(opener.urls.empty());
    bench.setContact2(&bob);
    form().sendEmail.trigger();
    showTab(OrderForm::contactTab);
    form().sendEmail.trigger();
    EXPECT_EQ(opener.urls, (std::vector<QUrl> {QUrl("mailto:bob@example.org"), QUrl("mailto:ann@example.org")}));
}

// Many at once

TEST_F(OrderListTest, deletingManyTellsEveryListAsOftenAsDeletingOne)
{
    const auto resetsOfDeleting = [this](int count) {
        begin();
        for (int i = 0; i < count; ++i) {
            Order& made = order("Order");
            line(made, "1.00");
            payment(made, "1.00");
            made.setBillId(app().getBillManager().createAndAddDataObject().getID());
        }
        Order& kept = order("Kept");
        line(kept, "2.00");
        std::vector<int> rows;
        for (int row = 0; row < orders().numberOfRows(); ++row) {
            if (row != orders().rowOf(kept))
                rows.push_back(row);
        }
        orders().setSelectedRows(rows);
        ListResets ofOrders;
        ListResets ofLines;
        orders().addObserver(ofOrders);
        lines().addObserver(ofLines);
        alerts.answer("OK");
        orders().deleteKey();
        EXPECT_EQ(orders().records(), std::vector<dataObject*> {&kept});
        EXPECT_EQ(lines().getCount(), 1);
        EXPECT_EQ(app().getPaymentManager().getCount(), 0);
        EXPECT_EQ(app().getBillManager().getCount(), 0);
        EXPECT_EQ(orders().deleteBuffer().size(), static_cast<std::size_t>(count));
        orders().removeObserver(ofOrders);
        lines().removeObserver(ofLines);
        const std::pair resets(ofOrders.count, ofLines.count);
        quit();
        for (const char* file : {"orders.xml", "itemsordered.xml", "bills.xml"})
            QFile::remove(databaseFolder() + '/' + file);
        return resets;
    };
    const auto one = resetsOfDeleting(1);
    const auto many = resetsOfDeleting(50);
    EXPECT_EQ(one, many);
    EXPECT_LE(many.second, 2);
}

} // namespace
