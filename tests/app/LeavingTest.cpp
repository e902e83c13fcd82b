// What is in memory and was never asked to be written is on disk after quitting, whatever of it changed.
#include "support/Business.h"

namespace {

class LeavingTest : public Business {
protected:
    /// One record of every kind, written, and read again by another start.
    void beginWithOneOfEach()
    {
        begin();
        Contact& ada = contact("Ada Penrose");
        Item& leg = item("Leg");
        Item& seat = item("Seat");
        collectiveItem("Stool", {{&leg, 3.0f}, {&seat, 1.0f}});
        Order& made = order("Bench");
        made.setContact(&ada);
        payment(made, "10.00");
        line(made, "5.00");
        app().getBillManager().add(std::make_unique<Bill>(app().settingsStore())).setDetails("Rent");
        Action& task = app().getActionManager().add(std::make_unique<Action>());
        task.setFieldByName("title", "Saw");
        app().getGoalManager().add(std::make_unique<Goal>()).addAction(task);
        restart();
        restart();
    }
    /// What the file holds after the change and quitting.
    QByteArray afterChange(const char* file, const std::function<void()>& change)
    {
        const QByteArray before = readFile(file);
        change();
        restart();
        const QByteArray after = readFile(file);
        EXPECT_NE(after, before) << file;
        return after;
    }
    void expectWritten(const char* file, dataObject& record, std::string_view field)
    {
        EXPECT_TRUE(afterChange(file, [&] { record.setFieldByName(field, "changed"); }).contains("<string>changed</string>")) << file;
    }
};

} // namespace

TEST_F(LeavingTest, aFieldOfEveryKind)
{
    beginWithOneOfEach();
    expectWritten("contacts.xml", contacts().at(0), "name");
    expectWritten("orders.xml", orders().at(0), "title");
    expectWritten("items.xml", items().at(0), "item");
    expectWritten("itemsordered.xml", lines().at(0), "item");
    EXPECT_TRUE(afterChange("bills.xml", [&] { app().getBillManager().at(0).setDetails("Light"); }).contains("Light"));
    EXPECT_TRUE(afterChange("actions.xml", [&] { app().getActionManager().at(0).setFieldByName("title", "Plane"); }).contains("Plane"));
    EXPECT_TRUE(afterChange("goals.xml", [&] { app().getGoalManager().at(0).setName("Workshop"); }).contains("Workshop"));
}

TEST_F(LeavingTest, whatIsNoFieldOfTheRecordItself)
{
    beginWithOneOfEach();
    EXPECT_TRUE(afterChange("orders.xml", [&] { orders().at(0).getPaymentArray().at(0)->setAmount("77.00"); }).contains("77.00"));
    EXPECT_TRUE(afterChange("orders.xml", [&] { payment(orders().at(0), "88.00"); }).contains("88.00"));
    EXPECT_FALSE(afterChange("orders.xml", [&] { orders().at(0).removePaymentAtIndex(0); }).contains("77.00"));
    EXPECT_TRUE(
        afterChange("orders.xml", [&] { orders().at(0).setContact(nullptr); }).contains("<key>contact</key>\n\t\t\t<string>0</string>"));
    EXPECT_TRUE(afterChange("items.xml", [&] { items().at(2).setConstituentQty(0, 44); }).contains("44"));
    afterChange("items.xml", [&] { items().at(2).removeConstituentAtIndex(1); });
    afterChange("goals.xml", [&] { app().getGoalManager().at(0).removeActionAtIndex(0); });
}

TEST_F(LeavingTest, recordsThatCameWentAndChangedPlaces)
{
    beginWithOneOfEach();
    EXPECT_TRUE(afterChange("contacts.xml", [&] { contact("Cleo Marsh"); }).contains("Cleo Marsh"));
    afterChange("contacts.xml", [&] { contacts().swop(contacts().at(0), contacts().at(1)); });
    EXPECT_FALSE(afterChange("contacts.xml", [&] { contacts().deleteItem(contacts().at(0)); }).contains("Cleo Marsh"));
    EXPECT_FALSE(afterChange("itemsordered.xml", [&] { lines().deleteItem(lines().at(0)); }).contains("<dict>\n\t\t\t<key>"));
}

TEST_F(LeavingTest, nothingIsWrittenWhereNothingChanged)
{
    beginWithOneOfEach();
    const QByteArray before = readFile("orders.xml");
    const FileStamp stamp = fileStamp((databaseFolder() + "/orders.xml").toStdString());
    restart();
    EXPECT_EQ(readFile("orders.xml"), before);
    EXPECT_EQ(fileStamp((databaseFolder() + "/orders.xml").toStdString()), stamp);
}

TEST_F(LeavingTest, thatStockWasAddedIsForgottenByTheNextStartAndInTheFileWhenThatOneEnds)
{
    const QByteArray added = "<key>stockadded</key>\n\t\t\t<string>YES</string>";
    beginWithOneOfEach();
    EXPECT_TRUE(afterChange("orders.xml", [&] { orders().at(0).setStockAdded(true); }).contains(added));
    EXPECT_FALSE(orders().at(0).getStockAdded());
    restart();
    EXPECT_FALSE(readFile("orders.xml").contains(added));
}
