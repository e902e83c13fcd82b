// Starting the program, quitting it, and starting it again.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

class StartUpTest : public Scenario {
protected:
    static QByteArray lockOf(const QByteArray& reason, const QByteArray& who = "bob")
    {
        const QByteArray line = reason.isEmpty() ? QByteArray() : "\t<key>reason</key>\n\t<string>" + reason + "</string>\n";
        return document("<dict>\n\t<key>datetime</key>\n\t<string>2024-02-29 09:00:00 +0000</string>\n" + line
            + "\t<key>user</key>\n\t<string>" + who + "</string>\n</dict>");
    }
    QStringList recordFiles() const
    {
        return {"actions.xml", "bills.xml", "contacts.xml", "goals.xml", "items.xml", "itemsordered.xml", "orders.xml"};
    }
    /// Where the lines stand in the log, in the order given; -1 for one that is missing.
    bool loggedInOrder(const QStringList& lines) const
    {
        int from = 0;
        for (const QString& line : lines) {
            from = static_cast<int>(log().indexOf(line, from));
            if (from < 0)
                return false;
            ++from;
        }
        return true;
    }
};

TEST_F(StartUpTest, theFirstStartOpensAnEmptyDatabaseLocksItAndAsksNothing)
{
    start();

    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_TRUE(app().splashShown());
    EXPECT_EQ(app().session().windowTitle(), "Vendaro");
    EXPECT_EQ(app().session().originalDbLocation(), databaseFolder());
    EXPECT_EQ(readFile("lock.xml"),
        document("<dict>\n\t<key>datetime</key>\n\t<string>2024-03-01 10:15:30 +0000</string>\n\t<key>reason</key>\n"
                 "\t<string>database open</string>\n\t<key>user</key>\n\t<string>ada</string>\n</dict>"));
}

TEST_F(StartUpTest, theStartIsLoggedStepByStep)
{
    start();

    EXPECT_TRUE(loggedInOrder({"application loaded", "can't find contacts at " + databaseFolder() + "/contacts.xml", "filtering orders",
        "lock written successfully", "Finished reading database"}))
        << log().join('\n').toStdString();
}

TEST_F(StartUpTest, theFirstStartLogsNoFailureOfADatabaseThatIsNotThereYet)
{
    start();
    EXPECT_TRUE(log().filter("couldn't write").isEmpty()) << log().join('\n').toStdString();

    quit();
    EXPECT_TRUE(log().filter("couldn't write").isEmpty()) << log().join('\n').toStdString();
    EXPECT_TRUE(readFile("info.plist").contains("GBP"));
}

TEST_F(StartUpTest, onlyAMissingContactsFileIsLogged)
{
    start();

    EXPECT_EQ(log().filter("can't find").size(), 1);
}

TEST_F(StartUpTest, quittingWritesEveryFileAndTakesTheLockAway)
{
    start();
    quit();

    EXPECT_FALSE(hasFile("lock.xml"));
    QStringList present = QDir(databaseFolder()).entryList({"*.xml"}, QDir::Files, QDir::Name);
    EXPECT_EQ(present, recordFiles());
    EXPECT_EQ(readFile("contacts.xml"), document("<dict>\n\t<key>contacts</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("orders.xml"), document("<dict>\n\t<key>orders</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("items.xml"), document("<dict>\n\t<key>products</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("itemsordered.xml"), document("<dict>\n\t<key>materials</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("bills.xml"), document("<dict>\n\t<key>bills</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("actions.xml"), document("<dict>\n\t<key>actions</key>\n\t<array/>\n</dict>"));
    EXPECT_EQ(readFile("goals.xml"), document("<dict>\n\t<key>goals</key>\n\t<array/>\n</dict>"));
    EXPECT_FALSE(logged("error: lock not removed from database"));
}

TEST_F(StartUpTest, aSecondStartChangesNoRecordFile)
{
    writeFile("contacts.xml",
        document("<dict>\n\t<key>contacts</key>\n\t<array>\n\t\t<dict>\n\t\t\t<key>company</key>\n\t\t\t<string>0</string>\n\t\t\t<key>id</"
                 "key>\n"
                 "\t\t\t<string>1</string>\n\t\t\t<key>kind</key>\n\t\t\t<string>Individual</string>\n\t\t\t<key>name</"
                 "key>\n\t\t\t<string>Ada Quill"
                 "</string>\n\t\t\t<key>ref</key>\n\t\t\t<string>C1</string>\n\t\t</dict>\n\t</array>\n</dict>"));
    start();
    ASSERT_EQ(app().getContactManager().getCount(), 1);
    quit();
    QMap<QString, QByteArray> before;
    for (const QString& name : recordFiles())
        before[name] = readFile(name);

    start();
    quit();

    for (const QString& name : recordFiles())
        EXPECT_EQ(readFile(name), before[name]) << name.toStdString();
}

TEST_F(StartUpTest, startingAgainFindsEverything)
{
    start();
    auto contact = std::make_unique<Contact>();
    contact->setName("Ada Quill");
    app().getContactManager().add(std::move(contact));
    auto goal = std::make_unique<Goal>();
    goal->setName("Expand");
    app().getGoalManager().add(std::move(goal));
    auto task = std::make_unique<Action>();
    task->setFieldByName("title", "Call the printer");
    app().getActionManager().add(std::move(task));

    restart();

    ASSERT_EQ(app().getContactManager().getCount(), 1);
    EXPECT_EQ(app().getContactManager().getFirstItem()->getFieldByName("name"), "Ada Quill");
    ASSERT_EQ(app().getGoalManager().getCount(), 1);
    EXPECT_EQ(app().getGoalManager().getFirstItem()->getFieldByName("name"), "Expand");
    ASSERT_EQ(app().getActionManager().getCount(), 1);
    EXPECT_EQ(app().getActionManager().getFirstItem()->getFieldByName("title"), "Call the printer");
    EXPECT_EQ(app().getContactNameforId(1), "Ada Quill");
    EXPECT_EQ(app().getContactIdForName("Ada Quill"), "1");
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(StartUpTest, lookUpsOfUnknownIdsAnswerNothing)
{
    start();

    EXPECT_EQ(app().getContactbyId(7), nullptr);
    EXPECT_EQ(app().getProductbyId(7), nullptr);
    EXPECT_EQ(app().getContactNameforId(7), "");
    EXPECT_EQ(app().getContactIdForName("Nobody"), "");
    app().getContactIdForOrder(7);
    EXPECT_TRUE(logged("can't find contact for order 7"));
}

// Locks

TEST_F(StartUpTest, aLockedDatabaseOpensReadOnlyWithTheLockSheet)
{
    writeFile("lock.xml", lockOf("database open"));
    int sheets = 0;
    // The sheet is asked for while the database is read, so the program has to be watched from its beginning.
    startWatched([&](Vendaro& program) { QObject::connect(&program.session(), &DatabaseSession::locked, [&] { ++sheets; }); });

    EXPECT_EQ(sheets, 1);
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(app().session().lockInfo().user, "bob");
    EXPECT_EQ(app().session().lockInfo().datetime, "2024-02-29 09:00:00 +0000");
    EXPECT_TRUE(alerts.asked().empty());
    quit();
    EXPECT_EQ(readFile("lock.xml"), lockOf("database open"));
    EXPECT_FALSE(hasFile("contacts.xml")) << "nothing is written in read-only mode";
}

TEST_F(StartUpTest, aLockWithoutAReasonShowsTheSheetToo)
{
    writeFile("lock.xml", lockOf(""));
    int sheets = 0;
    startWatched([&](Vendaro& program) { QObject::connect(&program.session(), &DatabaseSession::locked, [&] { ++sheets; }); });

    EXPECT_EQ(sheets, 1);
    EXPECT_TRUE(app().session().isReadOnly());
}

TEST_F(StartUpTest, aLockForAnotherReasonIsOnlyObserved)
{
    writeFile("lock.xml", lockOf("stock taking"));
    int sheets = 0;
    startWatched([&](Vendaro& program) { QObject::connect(&program.session(), &DatabaseSession::locked, [&] { ++sheets; }); });

    EXPECT_EQ(sheets, 0);
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(StartUpTest, anOfflineCopySaysWhoMadeItWhen)
{
    writeFile("lock.xml", lockOf("offline browsing"));
    alerts.answer("OK");

    start();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Offline Database");
    EXPECT_EQ(alerts.asked()[0].text, "This database is a copy made by bob on 2024-02-29 09:00:00 +0000 for offline read-only use");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
    EXPECT_TRUE(app().session().isReadOnly());
}

TEST_F(StartUpTest, editingInReadOnlyModeIsRefused)
{
    writeFile("lock.xml", lockOf("stock taking"));
    start();
    alerts.answer("OK");

    EXPECT_FALSE(app().session().readOnlyCheck());

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Read-only mode");
    EXPECT_EQ(alerts.asked()[0].text, "Database is in read-only mode.");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
}

TEST_F(StartUpTest, aCrashLeavesTheLockAndTheNextStartIsReadOnlyUntilItIsForced)
{
    start();
    crash();
    EXPECT_TRUE(hasFile("lock.xml"));

    start();
    EXPECT_TRUE(app().session().isReadOnly());
    alerts.answer("Yes");
    app().session().unlockDatabase();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Unlock database");
    EXPECT_EQ(alerts.asked()[0].text,
        "The database is locked. This may be because Vendaro didn't quit properly last time or it may be because another user is using the "
        "database. If the latter is true and you continue to unlock, then one or other of you may lose data. Are you sure no-one else is "
        "using "
        "the database and would you like to unlock it?");
    EXPECT_EQ(alerts.asked()[0].buttons, (QStringList {"No", "Yes"}));
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_FALSE(hasFile("lock.xml"));
    EXPECT_TRUE(readFile("unlock20240301-101530.xml").contains("<string>user request after dialog</string>"));
    quit();
    EXPECT_TRUE(logged("error: lock not removed from database"));
    EXPECT_TRUE(hasFile("contacts.xml"));
}

TEST_F(StartUpTest, answeringNoOrDismissingTheQuestionLeavesTheLock)
{
    writeFile("lock.xml", lockOf("stock taking"));
    start();

    alerts.answer("No");
    app().session().unlockDatabase();
    alerts.answer(Alerts::cancelled);
    app().session().unlockDatabase();

    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(readFile("lock.xml"), lockOf("stock taking"));
}

TEST_F(StartUpTest, unlockingAnUnlockedDatabaseSaysSo)
{
    writeFile("lock.xml", lockOf("stock taking"));
    start();
    QFile::remove(databaseFolder() + "/lock.xml");
    alerts.answer("OK");

    app().session().unlockDatabase();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Unlock database");
    EXPECT_EQ(alerts.asked()[0].text, "The database is not locked.");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
}

TEST_F(StartUpTest, aLockThatSomebodyElsePutThereMeanwhileStaysWhenQuitting)
{
    start();
    writeFile("lock.xml", lockOf("database open"));

    quit();

    EXPECT_EQ(readFile("lock.xml"), lockOf("database open"));
    EXPECT_TRUE(logged("error: lock not removed from database"));
}

// Damage

TEST_F(StartUpTest, aDamagedFileReadsAsEmptyIsToldAndKept)
{
    writeFile("contacts.xml", "<plist><dict><key>contacts</key><array>");
    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });

    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith("contacts.xml could not be read")) << told[0].toStdString();
    EXPECT_EQ(app().getContactManager().getCount(), 0);
    quit();
    QFile kept(supportFolder() + "/Recovery/20240301-101530 contacts.xml");
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "<plist><dict><key>contacts</key><array>");
    EXPECT_EQ(readFile("contacts.xml"), document("<dict>\n\t<key>contacts</key>\n\t<array/>\n</dict>"));
}

// Copies and other databases

TEST_F(StartUpTest, anOfflineCopyOpensReadOnly)
{
    start();
    auto contact = std::make_unique<Contact>();
    contact->setName("Ada Quill");
    app().getContactManager().add(std::move(contact));
    app().session().writeDatabase(app().getContactManager());
    panels.choose(home() + "/Copy.vendb");

    app().session().copyDatabase();

    ASSERT_EQ(panels.savePanels.size(), 1u);
    EXPECT_EQ(panels.savePanels[0].title, "Choose a location and name for the copy database");
    EXPECT_EQ(panels.savePanels[0].fileType, "vendb");
    app().getPrefsController().setDbLocation(home() + "/Copy.vendb");
    alerts.answer("OK");
    restart();
    EXPECT_EQ(alerts.texts(), QStringList {"This database is a copy made by ada on 2024-03-01 10:15:30 +0000 for offline read-only use"});
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(app().getContactManager().getCount(), 1);
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Copy");
}

TEST_F(StartUpTest, cancellingTheCopyCopiesNothing)
{
    start();
    panels.cancel();

    app().session().copyDatabase();

    EXPECT_TRUE(logged("lock not written into copy successfully"));
    EXPECT_EQ(QDir(home()).entryList({"*.vendb"}, QDir::Dirs), QStringList());
}

TEST_F(StartUpTest, aSwitchWritesTheOldDatabaseUnlocksItAndOpensTheOther)
{
    start();
    auto contact = std::make_unique<Contact>();
    contact->setName("Ada Quill");
    app().getContactManager().add(std::move(contact));
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    EXPECT_EQ(app().session().originalDbLocation(), other);
    EXPECT_EQ(app().getContactManager().getCount(), 0);
    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    EXPECT_FALSE(hasFile("lock.xml"));
    EXPECT_TRUE(QFileInfo::exists(other + "/lock.xml")) << "the other database is locked";
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Other");
}

TEST_F(StartUpTest, aFolderElsewhereThatIsNotThereIsMadeByTheFirstWriteOnly)
{
    const QString other = home() + "/share/Shop.vendb";
    writeSettings("<key>VendaroDbLocation</key><string>" + other.toUtf8() + "</string>");
    start();

    EXPECT_TRUE(logged("lock not written successfully"));
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_FALSE(QFileInfo::exists(other));
    app().session().writeDatabase(app().getContactManager());
    EXPECT_TRUE(QFileInfo::exists(other + "/contacts.xml"));
    EXPECT_FALSE(QFileInfo::exists(other + "/orders.xml"));
}

TEST_F(StartUpTest, aFolderElsewhereThatIsNotThereIsToldAndTheDefaultOneIsNot)
{
    QStringList told;
    const auto watch = [&](Vendaro& program) {
        told.clear();
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    };
    startWatched(watch);
    EXPECT_EQ(told, QStringList());
    quit();

    const QString other = home() + "/share/Shop.vendb";
    writeSettings("<key>VendaroDbLocation</key><string>" + other.toUtf8() + "</string>");
    startWatched(watch);
    EXPECT_EQ(told, QStringList(other + " was not there when it was opened. It is made with the first save."));
    ASSERT_TRUE(QDir().mkpath(other));
    app().session().switchDatabase();
    EXPECT_EQ(told, QStringList());

    // Where the person says that a new one is to be, nothing is missing.
    app().getPrefsController().setDbLocation(home() + "/share/New.vendb");
    app().session().switchDatabase();
    EXPECT_EQ(told, QStringList());
}

// The database's own settings

TEST_F(StartUpTest, damagedSettingsOfTheDatabaseAreToldOnceSomebodyListens)
{
    writeFile("info.plist", "damaged");
    QStringList told;
    // Whoever shows it is there once the settings are read.
    startListening([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });

    ASSERT_EQ(told.size(), 1) << told.join('|').toStdString();
    EXPECT_TRUE(told[0].startsWith(databaseFolder() + "/info.plist could not be read. Its original is kept as ")) << told[0].toStdString();
    QFile kept(supportFolder() + "/Recovery/20240301-101530 info.plist");
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "damaged");
}

TEST_F(StartUpTest, settingsOfTheDatabaseThatCannotBeWrittenShowAsUnsavedUntilTheyAre)
{
    start();
    app().getPrefsController().OKButton();
    EXPECT_EQ(app().unsavedReason(), QString());
    QFile::remove(databaseFolder() + "/info.plist");
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/info.plist"));
    app().getPrefsController().form.currency.setText("Fr");
    app().getPrefsController().OKButton();
    EXPECT_TRUE(app().unsavedReason().contains("info.plist")) << app().unsavedReason().toStdString();
    ASSERT_TRUE(QDir().rmdir(databaseFolder() + "/info.plist"));
    int changed = 0;
    QObject::connect(&app().session(), &DatabaseSession::savedStateChanged, [&] { ++changed; });

    app().retry();

    EXPECT_EQ(app().unsavedReason(), QString());
    EXPECT_GT(changed, 0);
    EXPECT_TRUE(readFile("info.plist").contains("<string>Fr</string>"));
}

TEST_F(StartUpTest, settingsOfTheDatabaseThatCannotBeWrittenAtTheEndAreToldByTheNextStart)
{
    start();
    QFile::remove(databaseFolder() + "/info.plist");
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/info.plist"));
    quit();

    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
        told.clear();
    });

    const QStringList kept = QDir(supportFolder() + "/Recovery").entryList({"* info.plist"}, QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(
        told.filter("/info.plist could not be written. What it should hold is kept as " + supportFolder() + "/Recovery/" + kept[0] + '.')
            .size(),
        1)
        << told.join('|').toStdString();
    QFile copy(supportFolder() + "/Recovery/" + kept[0]);
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_TRUE(copy.readAll().contains("<string>GBP</string>"));
}

TEST_F(StartUpTest, settingsThatCannotBeWrittenAreAReasonForNotBeingSaved)
{
    start();
    ASSERT_TRUE(app().keepSettings());
    int told = 0;
    QObject::connect(&app().session(), &DatabaseSession::savedStateChanged, [&] { ++told; });
    ASSERT_TRUE(QDir(home() + "/Library/Preferences").removeRecursively());
    QFile inTheWay(home() + "/Library/Preferences");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    app().settingsStore().setText("word", "Job");

    EXPECT_FALSE(app().keepSettings());
    EXPECT_TRUE(app().unsavedReason().contains("Library/Preferences")) << app().unsavedReason().toStdString();
    EXPECT_EQ(told, 1);
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(app().keepSettings());
    EXPECT_EQ(app().unsavedReason(), "");
    EXPECT_EQ(told, 2);
}

TEST_F(StartUpTest, theProgramSaysItsVersionAndWhereTheDatabaseLies)
{
    start();
    alerts.answer("OK");
    app().about();
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Vendaro " VENDARO_VERSION);
    EXPECT_EQ(alerts.asked()[0].text, "The open database lies in " + databaseFolder() + ".");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
}
