// What a database folder on disk becomes in memory, file by file, and what happens when it changes under the program's hands.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>

class LoadingTest : public Scenario {
protected:
    static QByteArray text(const QByteArray& key, const QByteArray& value)
    {
        return "<key>" + key + "</key><string>" + value + "</string>";
    }
    static QByteArray list(const QByteArray& key, const std::vector<QByteArray>& records)
    {
        QByteArray entries;
        for (const QByteArray& record : records)
            entries += "<dict>" + record + "</dict>";
        return document("<dict><key>" + key + "</key><array>" + entries + "</array></dict>");
    }
    void writeContact(const QByteArray& name) const { writeFile("contacts.xml", list("contacts", {text("id", "1") + text("name", name)})); }
    static QByteArray lockOf(const QByteArray& who)
    {
        return document(
            "<dict>" + text("datetime", "2024-02-29 09:00:00 +0000") + text("reason", "database open") + text("user", who) + "</dict>");
    }
    std::string onlyContact()
    {
        return app().getContactManager().getCount() == 1 ? std::string(app().getContactManager().at(0).getName()) : "(none)";
    }
};

// The rules of each file

TEST_F(LoadingTest, aContactWithoutReferenceGetsItsIdAsTheFileSpellsIt)
{
    writeFile("contacts.xml",
        list("contacts",
            {text("id", "007") + text("name", "Bond"), text("id", "8") + text("ref", ""), text("id", "9") + text("ref", "K9")}));
    start();

    ContactManager& contacts = app().getContactManager();
    ASSERT_EQ(contacts.getCount(), 3);
    EXPECT_EQ(contacts.at(0).getID(), 7);
    EXPECT_EQ(contacts.at(0).getRef(), "007");
    EXPECT_EQ(contacts.at(1).getRef(), "8");
    EXPECT_EQ(contacts.at(2).getRef(), "K9");
}

TEST_F(LoadingTest, aCompanyContactWithoutCompanyIsAnIndividual)
{
    writeFile("contacts.xml",
        list("contacts",
            {text("id", "1") + text("kind", "Company Contact") + text("company", "0"), text("id", "2") + text("kind", "Company Contact"),
                text("id", "3") + text("kind", "Company Contact") + text("company", "1"), text("id", "4") + text("kind", "Company")}));
    start();

    ContactManager& contacts = app().getContactManager();
    ASSERT_EQ(contacts.getCount(), 4);
    EXPECT_EQ(contacts.at(0).getKind(), "Individual");
    EXPECT_EQ(contacts.at(1).getKind(), "Individual");
    EXPECT_EQ(contacts.at(2).getKind(), "Company Contact");
    EXPECT_EQ(contacts.at(3).getKind(), "Company");
}

TEST_F(LoadingTest, recordsStandInTheOrderOfTheirFileAndKeepTheirIds)
{
    writeFile("items.xml", list("products", {text("id", "5"), text("id", "2"), text("id", "9"), text("item", "no id")}));
    start();

    ItemManager& items = app().getItemManager();
    ASSERT_EQ(items.getCount(), 4);
    EXPECT_EQ(items.at(0).getID(), 5);
    EXPECT_EQ(items.at(1).getID(), 2);
    EXPECT_EQ(items.at(2).getID(), 9);
    EXPECT_EQ(items.at(3).getID(), 10);
    EXPECT_EQ(items.getNextId(), 11);
}

TEST_F(LoadingTest, aLineTakesItsKindFromItsOrder)
{
    writeFile("orders.xml", list("orders", {text("id", "1") + text("type", "Purchase Order"), text("id", "2") + text("type", "Enquiry")}));
    writeFile("itemsordered.xml",
        list("materials",
            {text("id", "1") + text("order", "1"), text("id", "2") + text("order", "2"), text("id", "3") + text("order", "77")}));
    start();

    BOMManager& lines = app().getBOMManager();
    ASSERT_EQ(lines.getCount(), 3);
    EXPECT_EQ(lines.at(0).getOrderType(), "Purchase Order");
    EXPECT_EQ(lines.at(1).getOrderType(), "Customer");
    EXPECT_EQ(lines.at(2).getOrderType(), "Customer");
}

TEST_F(LoadingTest, aLineWithoutContactTakesThatOfItsOrder)
{
    writeFile("orders.xml", list("orders", {text("id", "1") + text("contact", "6")}));
    writeFile("itemsordered.xml",
        list("materials",
            {text("id", "1") + text("order", "1"), text("id", "2") + text("order", "1") + text("contact", "0"),
                text("id", "3") + text("order", "1") + text("contact", "4")}));
    start();

    BOMManager& lines = app().getBOMManager();
    ASSERT_EQ(lines.getCount(), 3);
    EXPECT_EQ(lines.at(0).getContact(), 6);
    EXPECT_EQ(lines.at(1).getContact(), 6);
    EXPECT_EQ(lines.at(2).getContact(), 4);
}

TEST_F(LoadingTest, paymentsOfAnOrderBelongToItAndToTheMoneyInList)
{
    writeFile("orders.xml",
        list("orders",
            {text("id", "1") + text("deposit", "9.00") + "<key>paymentarray</key><array><dict>" + text("amount", "10.00")
                + text("datepaid", "02/03/24") + text("paymentmethod", "Cash") + "</dict><dict>" + text("amount", "5.00")
                + "</dict></array>"}));
    start();

    ASSERT_EQ(app().getPaymentManager().getCount(), 2);
    const Order& order = app().getOrderManager().at(0);
    ASSERT_EQ(order.getPaymentArray().size(), 2u);
    EXPECT_EQ(order.getPaymentArray()[0], &app().getPaymentManager().at(0));
    EXPECT_EQ(order.getPaymentArray()[0]->getFieldByName("amount"), "10.00");
    EXPECT_EQ(order.getPaymentArray()[0]->getFieldByName("paymentmethod"), "Cash");
    EXPECT_EQ(order.getPaymentArray()[1]->getFieldByName("amount"), "5.00");
}

TEST_F(LoadingTest, depositAndPaidBalanceOfTheOlderFormBecomePayments)
{
    writeSettings("<key>askAboutUpgrading</key><true/>");
    writeFile("orders.xml",
        list("orders",
            {text("id", "1") + text("deposit", "4.00") + text("depositpaid", "01/02/20") + text("balance", "6.00")
                    + text("balancepaid", "05/02/20") + text("paymentmethod", "Card"),
                text("id", "2") + text("balance", "6.00"), text("id", "3") + text("balancepaid", "05/02/20")}));
    start();

    ASSERT_EQ(app().getPaymentManager().getCount(), 2);
    const Order& order = app().getOrderManager().at(0);
    ASSERT_EQ(order.getPaymentArray().size(), 2u);
    for (const Payment* payment : order.getPaymentArray())
        EXPECT_EQ(payment->getFieldByName("paymentmethod"), "Card");
    EXPECT_EQ(order.getPaymentArray()[0]->getFieldByName("amount"), "4.00");
    EXPECT_EQ(order.getPaymentArray()[0]->getFieldByName("datepaid"), "01/02/20");
    EXPECT_EQ(order.getPaymentArray()[1]->getFieldByName("amount"), "6.00");
    EXPECT_EQ(order.getPaymentArray()[1]->getFieldByName("datepaid"), "05/02/20");
    EXPECT_TRUE(app().getOrderManager().at(1).getPaymentArray().empty());
    EXPECT_TRUE(app().getOrderManager().at(2).getPaymentArray().empty());
}

TEST_F(LoadingTest, aGoalHasItsTasksInItsOwnOrderAndSkipsUnknownOnes)
{
    writeFile("actions.xml", list("actions", {text("id", "1") + text("title", "Ring"), text("id", "2") + text("title", "Write")}));
    writeFile("goals.xml",
        list("goals", {text("id", "1") + "<key>actions</key><array><string>2</string><string>77</string><string>1</string></array>"}));
    start();

    const std::vector<Action*>& tasks = app().getGoalManager().at(0).getActions();
    ASSERT_EQ(tasks.size(), 2u);
    EXPECT_EQ(tasks[0]->getTitle(), "Write");
    EXPECT_EQ(tasks[1]->getTitle(), "Ring");
}

TEST_F(LoadingTest, listsAreSortedAsTheyWereSortedBefore)
{
    writeFile("contacts.xml",
        list("contacts",
            {text("id", "1") + text("name", "Cem"), text("id", "2") + text("name", "ada"), text("id", "3") + text("name", "Bob")}));
    startWatched([](Vendaro& program) { program.getContactManager().list.sortDescriptors = {{"name", true}}; });

    ContactManager& contacts = app().getContactManager();
    ASSERT_EQ(contacts.getSortArray().size(), 3u);
    EXPECT_EQ(contacts.getnthSortedItem(0)->getName(), "ada");
    EXPECT_EQ(contacts.getnthSortedItem(1)->getName(), "Bob");
    EXPECT_EQ(contacts.getnthSortedItem(2)->getName(), "Cem");
    EXPECT_TRUE(logged("sorting by 'name'"));
}

TEST_F(LoadingTest, theWelcomeViewShowsWhileThereIsNoOrder)
{
    start();
    EXPECT_TRUE(app().splashShown());
    quit();

    writeFile("orders.xml", list("orders", {text("id", "1")}));
    start();

    EXPECT_FALSE(app().splashShown());
}

TEST_F(LoadingTest, aFileThatIsNotWholeHasNoRecordsAndIsToldAndKept)
{
    const QByteArray whole = list("contacts", {text("id", "1") + text("name", "Ada")});
    const std::vector<QByteArray> damaged {"", whole.left(whole.size() / 2), QByteArray(whole).replace("Ada", "Ad\xe9"), "<html></html>",
        QByteArray(whole).replace("</dict></array>", "</array>"), "bplist00", document("<array/>"),
        document("<dict><key>contacts</key><string>none</string></dict>")};
    for (const QByteArray& bytes : damaged) {
        crash();
        QFile::remove(databaseFolder() + "/lock.xml");
        QDir(supportFolder() + "/Recovery").removeRecursively();
        writeFile("contacts.xml", bytes);
        writeFile("items.xml", list("products", {text("id", "1")}));
        QStringList told;
        startWatched([&](Vendaro& program) {
            QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
        });

        EXPECT_EQ(app().getContactManager().getCount(), 0) << bytes.toStdString();
        EXPECT_EQ(app().getItemManager().getCount(), 1) << "the other files are read";
        ASSERT_EQ(told.size(), 1) << bytes.toStdString();
        EXPECT_TRUE(told[0].startsWith("contacts.xml could not be read (")) << told[0].toStdString();
        QFile kept(supportFolder() + "/Recovery/20240301-101530 contacts.xml");
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), bytes);
    }
}

// Where the database lies

TEST_F(LoadingTest, aLocationMayEndInASlashOrWind)
{
    writeSettings(text("VendaroDbLocation", "~/Library/Application Support/../Application Support/Vendaro//Shop.vendb/"));
    ASSERT_TRUE(QDir().mkpath(supportFolder() + "/Shop.vendb"));
    start();

    EXPECT_EQ(app().session().originalDbLocation(), supportFolder() + "/Shop.vendb");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Shop");
    EXPECT_TRUE(QFile::exists(supportFolder() + "/Shop.vendb/lock.xml"));
}

// Somebody else

TEST_F(LoadingTest, whatSomebodyWroteBetweenTheReadingAndTheLockIsReadAgain)
{
    writeContact("Before");
    startWatched([this](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::titleChanged, &program, [this] { writeContact("Afterwards"); });
    });

    EXPECT_EQ(onlyContact(), "Afterwards");
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_TRUE(hasFile("lock.xml"));
    quit();
    EXPECT_TRUE(readFile("contacts.xml").contains("Afterwards"));
    EXPECT_FALSE(hasFile("lock.xml"));
}

TEST_F(LoadingTest, whatDidNotChangeIsReadOnce)
{
    writeContact("Ada");
    int read = 0;
    startWatched([&](Vendaro& program) { QObject::connect(&program.session(), &DatabaseSession::fileLoaded, [&] { ++read; }); });

    EXPECT_EQ(read, 7);
}

TEST_F(LoadingTest, aLockThatAppearsWhileReadingIsMetLikeOneThatWasThere)
{
    int sheets = 0;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::locked, [&] { ++sheets; });
        QObject::connect(&program.session(), &DatabaseSession::titleChanged, [this] { writeFile("lock.xml", lockOf("bob")); });
    });

    EXPECT_EQ(sheets, 1);
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(app().session().lockInfo().user, "bob");
}

TEST_F(LoadingTest, aForcedUnlockReadsWhatTheHolderOfTheLockWroteMeanwhile)
{
    writeContact("Before");
    writeFile("lock.xml", lockOf("bob"));
    start();
    ASSERT_EQ(onlyContact(), "Before");
    writeContact("Afterwards");
    alerts.answer("Yes");

    app().session().unlockDatabase();

    EXPECT_EQ(onlyContact(), "Afterwards");
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_FALSE(hasFile("lock.xml")) << "no new lock is written";
    quit();
    EXPECT_TRUE(readFile("contacts.xml").contains("Afterwards"));
}

TEST_F(LoadingTest, aRefusedUnlockReadsNothing)
{
    writeContact("Before");
    writeFile("lock.xml", lockOf("bob"));
    start();
    writeContact("Afterwards");
    alerts.answer("No");

    app().session().unlockDatabase();

    EXPECT_EQ(onlyContact(), "Before");
}

// Other databases

TEST_F(LoadingTest, aSwitchFromAReadOnlyDatabaseLeavesItAndItsLockAlone)
{
    writeContact("Before");
    writeFile("lock.xml", lockOf("bob"));
    start();
    const QByteArray contactsBefore = readFile("contacts.xml");
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_EQ(readFile("lock.xml"), lockOf("bob"));
    EXPECT_EQ(readFile("contacts.xml"), contactsBefore);
    EXPECT_FALSE(hasFile("orders.xml"));
    EXPECT_FALSE(logged("error: lock not removed from database"));
}

TEST_F(LoadingTest, nothingCanBeUndoneInTheNextDatabase)
{
    writeContact("Ada");
    start();
    ContactManager& contacts = app().getContactManager();
    contacts.setDeleteBuffer({&contacts.at(0)});
    contacts.deleteItem(contacts.at(0));
    ASSERT_EQ(contacts.getCount(), 0);

    app().session().switchDatabase();
    contacts.undo();

    EXPECT_EQ(beeper.beeps, 1);
    EXPECT_EQ(contacts.getCount(), 0);
}

TEST_F(LoadingTest, aSwitchShowsTheMoneyInListOfTheNewDatabase)
{
    class Watcher : public ListObserver {
    public:
        explicit Watcher(PaymentManager& payments) : m_payments(payments) { m_payments.addObserver(*this); }
        ~Watcher() override { m_payments.removeObserver(*this); }
        void listReset() override { rows = m_payments.numberOfRows(); }
        void rowChanged(int) override { }
        int rows = -1;

    private:
        PaymentManager& m_payments;
    };
    start();
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    QFile orders(other + "/orders.xml");
    ASSERT_TRUE(orders.open(QIODevice::WriteOnly));
    orders.write(list("orders", {text("id", "1") + "<key>paymentarray</key><array><dict>" + text("amount", "10.00") + "</dict></array>"}));
    orders.close();
    const Watcher moneyIn(app().getPaymentManager());
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    EXPECT_EQ(moneyIn.rows, 1);
}

TEST_F(LoadingTest, aSwitchToTheSameDatabaseSavesAndReloadsIt)
{
    writeContact("Ada");
    start();
    app().getContactManager().at(0).setName("Ada Quill");

    app().session().switchDatabase();

    EXPECT_EQ(onlyContact(), "Ada Quill");
    EXPECT_TRUE(hasFile("lock.xml"));
    EXPECT_FALSE(app().session().isReadOnly());
}

TEST_F(LoadingTest, aGoalFindsNoTaskOfADatabaseThatWasOpenBefore)
{
    writeFile("actions.xml", list("actions", {text("id", "5") + text("title", "Ring")}));
    start();
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    QFile goals(other + "/goals.xml");
    ASSERT_TRUE(goals.open(QIODevice::WriteOnly));
    goals.write(list("goals", {text("id", "1") + "<key>actions</key><array><string>5</string></array>"}));
    goals.close();
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    ASSERT_EQ(app().getGoalManager().getCount(), 1);
    EXPECT_TRUE(app().getGoalManager().at(0).getActions().empty());
}
