// Which files a change writes, and what becomes of a change that cannot be written.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <map>

class SavingTest : public Scenario {
protected:
    static QStringList recordFiles()
    {
        return {"contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml", "goals.xml"};
    }
    /// Starts with every record file in place, each one marked so that a rewritten one shows.
    void startWithMarkedFiles()
    {
        start();
        restart();
        for (const QString& name : recordFiles())
            writeFile(name, "marked");
    }
    QStringList rewritten() const
    {
        QStringList names;
        for (const QString& name : recordFiles()) {
            if (readFile(name) != "marked")
                names += name;
        }
        return names;
    }
    QStringList recovered(const QString& name) const
    {
        return QDir(supportFolder() + "/Recovery").entryList({"* " + name}, QDir::Files, QDir::Name);
    }
    QByteArray recoveredBytes(const QString& name) const
    {
        QFile file(supportFolder() + "/Recovery/" + recovered(name).value(0));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A folder that is not empty in the file's place: nothing can be renamed onto it.
    void block(const QString& name) const
    {
        QFile::remove(databaseFolder() + '/' + name);
        ASSERT_TRUE(QDir().mkpath(databaseFolder() + '/' + name + "/in the way"));
    }
    void addContact(const char* name)
    {
        auto contact = std::make_unique<Contact>();
        contact->setName(name);
        app().getContactManager().add(std::move(contact));
    }
};

TEST_F(SavingTest, eachCollectionWritesItsOwnFilesAndOrdersTheirLinesToo)
{
    startWithMarkedFiles();
    const auto writtenBy = [this](const qvDataSource& sender) {
        for (const QString& name : recordFiles())
            writeFile(name, "marked");
        app().session().writeDatabase(sender);
        return rewritten();
    };

    EXPECT_EQ(writtenBy(app().getContactManager()), QStringList {"contacts.xml"});
    EXPECT_EQ(writtenBy(app().getOrderManager()), (QStringList {"orders.xml", "itemsordered.xml"}));
    EXPECT_EQ(writtenBy(app().getItemManager()), QStringList {"items.xml"});
    EXPECT_EQ(writtenBy(app().getBOMManager()), QStringList {"itemsordered.xml"});
    EXPECT_EQ(writtenBy(app().getBillManager()), QStringList {"bills.xml"});
    EXPECT_EQ(writtenBy(app().getActionManager()), QStringList {"actions.xml"});
    EXPECT_EQ(writtenBy(app().getGoalManager()), QStringList {"goals.xml"});
    EXPECT_EQ(writtenBy(app().getPaymentManager()), QStringList()) << "payments stand in their orders";
}

TEST_F(SavingTest, aWriteLeavesTheLockWhereItIs)
{
    startWithMarkedFiles();

    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(hasFile("lock.xml"));
}

TEST_F(SavingTest, inReadOnlyModeNothingIsWrittenAndNothingSaid)
{
    start();
    restart();
    crash();
    start();
    ASSERT_TRUE(app().session().isReadOnly());
    for (const QString& name : recordFiles())
        writeFile(name, "marked");

    app().session().writeDatabase(app().getContactManager());
    app().session().writeDatabaseInBackground(app().getOrderManager());
    app().session().writeEverything();
    app().folder().drain();

    EXPECT_EQ(rewritten(), QStringList());
    EXPECT_TRUE(hasFile("lock.xml"));
    EXPECT_TRUE(log().filter("not written successfully").isEmpty());
    EXPECT_FALSE(logged("error: lock not removed from database"));
}

TEST_F(SavingTest, aSaveInTheBackgroundIsOnDiskWhenTheProgramHasQuit)
{
    writeFile("orders.xml", document("<dict><key>orders</key><array><dict><key>id</key><string>1</string></dict></array></dict>"));
    start();
    app().getOrderManager().at(0).setFieldByName("title", "Tea");
    app().session().writeDatabaseInBackground(app().getOrderManager());

    quit();

    EXPECT_TRUE(readFile("orders.xml").contains("<string>Tea</string>"));
}

TEST_F(SavingTest, eachFileThatCannotBeWrittenIsLoggedInItsOwnWords)
{
    start();
    for (const QString& name : recordFiles())
        block(name);

    quit();

    for (const char* what : {"contacts", "orders", "items", "materials", "bills", "actions", "goals"})
        EXPECT_TRUE(logged(QString(what) + " not written successfully")) << what;
    EXPECT_FALSE(hasFile("lock.xml")) << "the lock goes all the same";
}

TEST_F(SavingTest, aFileThatCannotBeWrittenKeepsNoOtherFromBeingWritten)
{
    startWithMarkedFiles();
    block("items.xml");

    quit();

    EXPECT_EQ(rewritten().size(), 7);
    EXPECT_TRUE(readFile("goals.xml").contains("<key>goals</key>"));
    EXPECT_TRUE(readFile("orders.xml").contains("<key>orders</key>"));
}

TEST_F(SavingTest, whatCouldNotBeWrittenGoesWithTheNextWriteOfItsCollection)
{
    start();
    block("contacts.xml");
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    EXPECT_FALSE(app().folder().unsavedReason().isEmpty());
    ASSERT_TRUE(QDir(databaseFolder() + "/contacts.xml").removeRecursively());

    app().session().writeDatabase(app().getItemManager());
    EXPECT_FALSE(hasFile("contacts.xml"));
    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    EXPECT_TRUE(app().folder().unsavedReason().isEmpty());
}

TEST_F(SavingTest, quittingWithUnsavedWorkPutsItIntoTheRecoveryStore)
{
    start();
    block("contacts.xml");
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    EXPECT_EQ(recovered("contacts.xml"), QStringList()) << "it may still be written";

    quit();

    ASSERT_EQ(recovered("contacts.xml").size(), 1);
    EXPECT_TRUE(recoveredBytes("contacts.xml").contains("<string>Ada Quill</string>"));
    EXPECT_EQ(recovered("items.xml"), QStringList()) << "what was written needs no rescue";
}

TEST_F(SavingTest, whatWasRescuedCanBePutBackInPlace)
{
    start();
    block("contacts.xml");
    addContact("Ada Quill");
    quit();
    ASSERT_TRUE(QDir(databaseFolder() + "/contacts.xml").removeRecursively());
    writeFile("contacts.xml", recoveredBytes("contacts.xml"));

    start();

    ASSERT_EQ(app().getContactManager().getCount(), 1);
    EXPECT_EQ(app().getContactManager().at(0).getName(), "Ada Quill");
}

TEST_F(SavingTest, switchingWithUnsavedWorkRescuesItAndSaysSo)
{
    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });
    block("goals.xml");
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith("goals.xml could not be written. What it should hold is kept as " + supportFolder() + "/Recovery/"))
        << told[0].toStdString();
    EXPECT_EQ(recovered("goals.xml").size(), 1);
    EXPECT_TRUE(app().folder().unsavedReason().isEmpty()) << "the new database has nothing unsaved";
}

TEST_F(SavingTest, settingsThatCannotBeWrittenAtTheEndAreRescued)
{
    start();
    app().getPrefsController().form.currency.edit("$");
    ASSERT_TRUE(QDir(home() + "/Library/Preferences").removeRecursively());
    QFile inTheWay(home() + "/Library/Preferences");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();

    quit();

    ASSERT_EQ(recovered("Vendaro.plist").size(), 1);
    EXPECT_TRUE(recoveredBytes("Vendaro.plist").contains("<string>$</string>"));
}

TEST_F(SavingTest, whatCouldNotBeSavedAtTheEndIsToldByTheNextStartAndThenNoMore)
{
    QStringList told;
    const auto watch = [&](Vendaro& program) {
        told.clear();
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    };
    startWatched(watch);
    addContact("Ada Quill");
    block("contacts.xml");
    app().getPrefsController().form.currency.edit("$");
    ASSERT_TRUE(QDir(home() + "/Library/Preferences").removeRecursively());
    ASSERT_TRUE(QFile::link("/dev/null", home() + "/Library/Preferences"));

    quit();
    ASSERT_TRUE(QDir(databaseFolder() + "/contacts.xml").removeRecursively());
    ASSERT_TRUE(QFile::remove(home() + "/Library/Preferences"));
    startWatched(watch);

    ASSERT_EQ(told.size(), 2);
    const QString recovery = supportFolder() + "/Recovery/";
    EXPECT_EQ(told[0],
        "contacts.xml could not be written. What it should hold is kept as " + recovery + recovered("contacts.xml").value(0) + ".");
    EXPECT_EQ(told[1],
        "The settings could not be written. What they should be is kept as " + recovery + recovered("Vendaro.plist").value(0) + ".");
    EXPECT_TRUE(recoveredBytes("contacts.xml").contains("Ada Quill"));
    quit();
    startWatched(watch);
    EXPECT_EQ(told, QStringList());
}

TEST_F(SavingTest, aDatabaseWhoseFolderIsStillLooseAtTheEndIsToldByTheNextStart)
{
    start();
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    ASSERT_TRUE(QDir().rename(databaseFolder(), home() + "/share that went away"));
    quit();

    QStringList told;
    startWatched([&](Vendaro& program) {
        QObject::connect(&program.session(), &DatabaseSession::damageFound, [&](const QStringList& sentences) { told = sentences; });
    });

    EXPECT_EQ(told.filter("was written into another folder than was opened. A copy is kept as " + supportFolder() + "/Recovery/").size(), 7)
        << told.join('\n').toStdString();
}

TEST_F(SavingTest, aDatabaseWhoseFolderCameLooseIsWrittenOnAndCopied)
{
    start();
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    ASSERT_TRUE(QDir().rename(databaseFolder(), home() + "/share that went away"));

    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    EXPECT_TRUE(recoveredBytes("contacts.xml").contains("Ada Quill"));
    EXPECT_FALSE(app().folder().unsavedReason().isEmpty()) << "the window says so";
}

// The first database

TEST_F(SavingTest, aNewDatabaseNeverAsksAboutUpgrading)
{
    start();
    quit();

    EXPECT_TRUE(QFileInfo::exists(databaseFolder()));
    start();
    EXPECT_TRUE(app().settingsStore().flag("askAboutUpgrading"));
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(SavingTest, aWriteElsewhereMakesTheDefaultDatabasesFolderToo)
{
    const QString other = home() + "/Shop.vendb";
    writeSettings("<key>VendaroDbLocation</key><string>" + other.toUtf8() + "</string>");
    start();
    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(QFileInfo::exists(other + "/contacts.xml"));
    EXPECT_TRUE(QFileInfo(databaseFolder()).isDir());
    EXPECT_FALSE(hasFile("contacts.xml"));
    EXPECT_TRUE(app().settingsStore().flag("askAboutUpgrading"));
}

TEST_F(SavingTest, writesGoToTheFolderThatWasLoadedWhateverTheSettingSays)
{
    start();
    app().getPrefsController().setDbLocation(home() + "/Other.vendb");
    addContact("Ada Quill");

    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    EXPECT_FALSE(QFileInfo::exists(home() + "/Other.vendb"));
}
