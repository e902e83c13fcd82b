// Bringing records back from an earlier state of the database.
#include "RestoringTest.h"

#include <QDir>
#include <QFile>

TEST_F(RestoringTest, listsWhatIsGoneAndWhatWasChanged)
{
    beginWithHistory();
    contacts().getnthItem(0)->setPhone("01234");
    deleteTheOrder();

    EXPECT_EQ(rowsOf(*lookAtNewest()),
        (std::vector<std::string> {"Contact | Ada Hill | Changed: phone", "Order | S1 Three stools | Deleted",
            "Line | Stool, of order 1 | Deleted", "Line | Cushion, of order 1 | Deleted"}));
}

TEST_F(RestoringTest, anUnchangedBusinessHasNothingToBringBack)
{
    beginWithHistory();

    EXPECT_EQ(lookAtNewest()->numberOfRows(), 0);
}

TEST_F(RestoringTest, anOrderComesBackWithItsLinesAndPaymentsAndIsSaved)
{
    beginWithHistory();
    const QByteArray ordersBefore = readFile("orders.xml");
    const QByteArray linesBefore = readFile("itemsordered.xml");
    deleteTheOrder();
    app().session().writeDatabase(orders());
    ASSERT_FALSE(readFile("orders.xml").contains("Three stools"));
    const auto restoring = lookAtNewest();

    restoring->selectRow(0);
    ASSERT_EQ(restoring->objectValue("field1", 0), "Order");
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    Order* const back = presentItem(orders(), 1);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getTotalPayments(), 4.0F);
    EXPECT_EQ(lines().linesOfOrder(1).size(), 2U);
    EXPECT_EQ(shown(orders(), "title"), std::vector<std::string> {"Three stools"});
    ASSERT_NE(back->getContact(), nullptr);
    EXPECT_EQ(back->getContact()->getName(), "Ada Hill");
    EXPECT_EQ(readFile("orders.xml"), ordersBefore);
    EXPECT_EQ(readFile("itemsordered.xml"), linesBefore);
    EXPECT_EQ(restoring->numberOfRows(), 0);
}

TEST_F(RestoringTest, aChangedOrderGetsThePaymentsItHad)
{
    beginWithHistory();
    Order& stools = *orders().getnthItem(0);
    payment(stools, "6.00");
    stools.setTitle("Four stools");
    app().session().writeDatabase(orders());
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring), std::vector<std::string> {"Order | S1 Three stools | Changed: paymentarray, title"});

    ASSERT_TRUE(restoring->bringBackAll().ok());

    EXPECT_EQ(stools.getTitle(), "Three stools");
    EXPECT_EQ(stools.getTotalPayments(), 4.0F);
    EXPECT_EQ(app().getPaymentManager().getCount(), 1);
}

TEST_F(RestoringTest, anOrderThatComesBackIsItsContactsOfThatTimeAgain)
{
    beginWithHistory();
    Order& stools = *orders().getnthItem(0);
    Contact& bert = contact("Bert Rivers");
    orders().connectContact(bert, stools);
    orders().connectContact2(bert, stools);
    app().session().writeDatabase(orders());

    ASSERT_TRUE(lookAtNewest()->bringBackAll().ok());

    ASSERT_NE(stools.getContact(), nullptr);
    EXPECT_EQ(stools.getContact()->getName(), "Ada Hill");
    EXPECT_EQ(stools.getContact2(Order::Fallback::none), nullptr);
}

TEST_F(RestoringTest, anOrderGoesByTheContactThatCameBack)
{
    beginWithHistory();
    contacts().selectRow(0);
    alerts.answer(0);
    contacts().deleteKey();

    ASSERT_TRUE(lookAtNewest()->bringBackAll().ok());
    contacts().getnthItem(0)->setPhone("01234");

    EXPECT_EQ(orders().getnthItem(0)->getFieldByName("contact:phone"), "01234");
}

TEST_F(RestoringTest, whatWasAddedSinceStays)
{
    beginWithHistory();
    contact("Bert Rivers");
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = lookAtNewest();

    ASSERT_TRUE(restoring->bringBackAll().ok());

    EXPECT_EQ(contacts().getCount(), 2);
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Hill");
    EXPECT_TRUE(readFile("contacts.xml").contains("Bert Rivers"));
}

TEST_F(RestoringTest, howThingsStoodBeforeIsKeptFirst)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = lookAtNewest();
    const std::size_t before = restoring->generations().size();

    ASSERT_TRUE(restoring->bringBackAll().ok());

    const std::vector<Generation> states = restoring->generations();
    ASSERT_EQ(states.size(), before + 1);
    look(*restoring, states.front());
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {"Contact | Ada Vale | Changed: name"});
}

TEST_F(RestoringTest, nothingComesBackWhileAnEditorHoldsARecord)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = lookAtNewest();
    orders().editThisOrder(*orders().getnthItem(0));

    const Result<void> done = restoring->bringBackAll();

    ASSERT_FALSE(done.ok());
    EXPECT_EQ(done.error().message, "Close the editors that are open first.");
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
}

TEST_F(RestoringTest, aDatabaseForReadingOnlyStaysAsItIs)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    quit();
    writeFile("lock.xml", document("<dict><key>reason</key><string>database open</string></dict>"));
    start();
    const auto restoring = lookAtNewest();

    alerts.answer(0);
    EXPECT_TRUE(restoring->bringBackAll().ok());

    EXPECT_EQ(lastAlert().text, "Database is in read-only mode.");
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
}

TEST_F(RestoringTest, nothingComesBackWhenThePresentStateCannotBeKept)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = lookAtNewest();
    QFile::remove(databaseFolder() + "/items.xml");
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/items.xml/in the way"));

    EXPECT_FALSE(restoring->bringBackAll().ok());

    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
}

TEST_F(RestoringTest, aFileOfThatTimeThatDoesNotReadIsTold)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = app().makeRestoring();
    const Generation newest = restoring->generations().front();
    QFile::remove(newest.folder + "/orders.xml");
    QFile damaged(newest.folder + "/orders.xml");
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("not a list");
    damaged.close();

    const QStringList troubles = look(*restoring, newest);

    ASSERT_EQ(troubles.size(), 1);
    EXPECT_TRUE(troubles[0].startsWith("orders.xml of that time could not be read (")) << troubles[0].toStdString();
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {"Contact | Ada Hill | Changed: name"});
}

TEST_F(RestoringTest, goalsGetTheTasksTheyHad)
{
    begin();
    ActionManager& tasks = app().getActionManager();
    GoalManager& goals = app().getGoalManager();
    Action& first = tasks.add(std::make_unique<Action>());
    Action& second = tasks.add(std::make_unique<Action>());
    first.setFieldByName("title", "Call");
    second.setFieldByName("title", "Write");
    Goal& goal = goals.add(std::make_unique<Goal>());
    goal.setName("Grow");
    goal.addAction(first);
    goal.addAction(second);
    goOnTomorrow();
    Goal& now = *app().getGoalManager().getnthItem(0);
    now.removeActionAtIndex(0);
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring), std::vector<std::string> {"Goal | Grow | Changed: actions"});

    ASSERT_TRUE(restoring->bringBackAll().ok());

    EXPECT_EQ(now.getActionsAsID(), (std::vector<int> {1, 2}));
}

// Reading

TEST_F(RestoringTest, whileAStateIsReadTheListIsEmptyAndNothingComesBack)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = lookAtNewest();
    ASSERT_EQ(restoring->numberOfRows(), 1);
    std::vector<int> progress;
    restoring->onProgress = [&](int percent) { progress.push_back(percent); };

    restoring->startLooking(restoring->generations().front());

    EXPECT_TRUE(restoring->isLooking());
    EXPECT_EQ(restoring->numberOfRows(), 0);
    EXPECT_TRUE(restoring->bringBackAll().ok());
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
    waitFor(*restoring);
    EXPECT_EQ(restoring->numberOfRows(), 1);
    ASSERT_EQ(progress.size(), 7U) << "one for each file";
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_GT(progress.front(), 0);
    EXPECT_EQ(progress.back(), 100);
}

TEST_F(RestoringTest, whatIsGivenUpLeavesNothingBehind)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = app().makeRestoring();
    const Generation newest = restoring->generations().front();
    restoring->onLooked = [](const QStringList&) { ADD_FAILURE() << "nobody waits any more"; };
    const QByteArray before = readFile("contacts.xml");

    restoring->startLooking(newest);
    restoring->cancelLooking();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);

    EXPECT_FALSE(restoring->isLooking());
    EXPECT_EQ(restoring->numberOfRows(), 0);
    EXPECT_TRUE(restoring->bringBackAll().ok());
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
    EXPECT_EQ(readFile("contacts.xml"), before);
    EXPECT_EQ(restoring->generations().size(), 1U) << "nothing was kept for it either";
    look(*restoring, newest);
    EXPECT_EQ(restoring->numberOfRows(), 1);
}

TEST_F(RestoringTest, whatIsGivenUpInTheMiddleLeavesNothingBehindEither)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    const auto restoring = app().makeRestoring();
    restoring->onLooked = [](const QStringList&) { ADD_FAILURE() << "nobody waits any more"; };
    restoring->onProgress = [&](int) { restoring->cancelLooking(); };

    restoring->startLooking(restoring->generations().front());
    waitFor(*restoring);
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);

    EXPECT_EQ(restoring->numberOfRows(), 0);
    EXPECT_TRUE(restoring->bringBackAll().ok());
    EXPECT_EQ(contacts().getnthItem(0)->getName(), "Ada Vale");
}

TEST_F(RestoringTest, ofTwoStatesOnlyTheOneAskedForLastIsListed)
{
    beginWithHistory();
    contacts().getnthItem(0)->setName("Ada Vale");
    goOnTomorrow();
    const auto restoring = app().makeRestoring();
    const std::vector<Generation> states = restoring->generations();
    ASSERT_EQ(states.size(), 2U);
    int looked = 0;
    restoring->onLooked = [&](const QStringList&) { ++looked; };

    restoring->startLooking(states[0]);
    restoring->startLooking(states[1]);
    waitFor(*restoring);

    EXPECT_EQ(looked, 1);
    EXPECT_EQ(rowsOf(*restoring), std::vector<std::string> {"Contact | Ada Hill | Changed: name"});
}

TEST_F(RestoringTest, theListMayGoWhileItReads)
{
    beginWithHistory();
    auto restoring = app().makeRestoring();
    restoring->startLooking(restoring->generations().front());

    restoring.reset();

    QCoreApplication::processEvents();
    EXPECT_EQ(contacts().getCount(), 1);
}

// Numbers that others have by now

TEST_F(RestoringTest, anOrderWhoseNumberAnotherHasComesBackBesideItWithItsLinesAndPayments)
{
    beginWithHistory();
    deleteTheOrder();
    tomorrow();
    Order& table = order("A table");
    ASSERT_EQ(table.getID(), 1);
    Material& plank = line(table, "70.00");
    plank.setItem("Plank");
    ASSERT_EQ(plank.getID(), 1);
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring),
        (std::vector<std::string> {"Order | S1 Three stools | Deleted; its number is used by 1 A table",
            "Line | Stool, of order 1 | Deleted; its number is used by Plank", "Line | Cushion, of order 1 | Deleted"}));

    restoring->selectRow(0);
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    EXPECT_EQ(orders().getCount(), 2);
    EXPECT_EQ(presentItem(orders(), 1), &table);
    EXPECT_EQ(table.getTitle(), "A table");
    EXPECT_EQ(lines().linesOfOrder(1), std::vector<Material*> {&plank});
    EXPECT_EQ(plank.getItem(), "Plank");
    Order* const back = presentItem(orders(), 2);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getTitle(), "Three stools");
    EXPECT_EQ(back->getTotalPayments(), 4.0F);
    const std::vector<Material*> itsLines = lines().linesOfOrder(2);
    ASSERT_EQ(itsLines.size(), 2U);
    EXPECT_EQ(itsLines[0]->getItem(), "Stool");
    EXPECT_EQ(itsLines[0]->getID(), 3);
    EXPECT_EQ(itsLines[1]->getItem(), "Cushion");
    EXPECT_EQ(itsLines[1]->getID(), 2);
    EXPECT_TRUE(readFile("orders.xml").contains("Three stools"));
    EXPECT_TRUE(readFile("itemsordered.xml").contains("Cushion"));
    EXPECT_EQ(restoring->numberOfRows(), 0);
    EXPECT_EQ(lookAtOldest()->numberOfRows(), 0) << "it is known as being back";
}

TEST_F(RestoringTest, aContactWhoseNumberAnotherHasComesBackAndItsOrderIsItsAgain)
{
    beginWithHistory();
    deleteAdaTomorrow();
    const Contact& bert = bertWithHerNumber();
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring).front(), "Contact | Ada Hill | Deleted; its number is used by Bert Rivers");

    restoring->selectRow(1);
    ASSERT_EQ(restoring->objectValue("field1", 1), "Order");
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    EXPECT_EQ(bert.getName(), "Bert Rivers");
    ASSERT_NE(presentItem(contacts(), 2), nullptr) << "whom the order names comes along";
    EXPECT_EQ(presentItem(contacts(), 2)->getName(), "Ada Hill");
    EXPECT_EQ(orders().getnthItem(0)->getContactId(), 2);
    ASSERT_NE(orders().getnthItem(0)->getContact(), nullptr);
    EXPECT_EQ(orders().getnthItem(0)->getContact()->getName(), "Ada Hill");
}

TEST_F(RestoringTest, whatGotTheNumberAfterTheLookIsNotWrittenOver)
{
    beginWithHistory();
    deleteAdaTomorrow();
    const auto restoring = lookAtNewest();
    ASSERT_EQ(rowsOf(*restoring).front(), "Contact | Ada Hill | Deleted");
    const Contact& bert = bertWithHerNumber();

    restoring->selectRow(0);
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    EXPECT_EQ(bert.getName(), "Bert Rivers");
    ASSERT_EQ(contacts().getCount(), 2);
    EXPECT_EQ(contacts().at(1).getName(), "Ada Hill");
}

TEST_F(RestoringTest, aLineBringsItsOrderAlong)
{
    beginWithHistory();
    deleteTheOrder();
    const auto restoring = lookAtNewest();
    ASSERT_EQ(restoring->objectValue("field2", 2), "Cushion, of order 1");

    restoring->selectRow(2);
    ASSERT_TRUE(restoring->bringBackSelected().ok());

    ASSERT_NE(presentItem(orders(), 1), nullptr);
    EXPECT_EQ(lines().linesOfOrder(1).size(), 2U);
}

TEST_F(RestoringTest, aCollectiveItemFindsAPartThatCameBackUnderAnotherNumber)
{
    begin();
    Item& set = collectiveItem("Set", {});
    Item& mug = item("Mug");
    mug.setDescription("Blue, of clay");
    set.addConstituent(mug);
    goOnTomorrow();
    items().deleteItem(*items().getItemById(2));
    Item& tray = item("Tray");
    tray.setDescription("Of oak");
    ASSERT_EQ(tray.getID(), 2);
    const auto restoring = lookAtNewest();

    ASSERT_TRUE(restoring->bringBackAll().ok());

    ASSERT_NE(presentItem(items(), 3), nullptr);
    EXPECT_EQ(presentItem(items(), 3)->getItem(), "Mug");
    EXPECT_EQ(items().getItemById(1)->getConstituents().at(0).id(), 3);
    EXPECT_EQ(tray.getItem(), "Tray");
}
