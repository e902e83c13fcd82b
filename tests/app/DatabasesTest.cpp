// More than one database: making, listing, naming and opening them.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>

class DatabasesTest : public Scenario {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    PrefsForm& form() { return preferences().form; }
    std::string setting(const char* key) { return app().settingsStore().text(key).value_or("(none)"); }
    QString openFolder() { return app().session().originalDbLocation(); }
    void makeDatabase(const QString& name, const QByteArray& displayName = {}) const
    {
        const QString folder = supportFolder() + '/' + name + ".vendb";
        ASSERT_TRUE(QDir().mkpath(folder));
        if (displayName.isEmpty())
            return;
        QFile info(folder + "/info.plist");
        ASSERT_TRUE(info.open(QIODevice::WriteOnly));
        info.write(document("<dict><key>dbName</key><string>" + displayName + "</string></dict>"));
    }
    void choose(const QString& name)
    {
        const int row = static_cast<int>(form().databases.titles().indexOf(name));
        ASSERT_GE(row, 0) << name.toStdString();
        form().databases.edit(row);
    }
    QString nameIn(const QString& folder)
    {
        FolderProperties properties(m_recovery);
        return QString::fromStdString(properties.objectForKey(folder, "dbName").value_or("(none)"));
    }
    RecoveryStore m_recovery {home() + "/Recovery", clock};
};

// The list

TEST_F(DatabasesTest, theListShowsDisplayNamesOrFolderNamesAndSelectsTheOpenOne)
{
    makeDatabase("b", "Bakery");
    makeDatabase("a.old");
    ASSERT_TRUE(QDir().mkpath(supportFolder() + "/reports"));
    start();
    preferences().listDatabases();

    EXPECT_EQ(form().databases.titles(), (QStringList {"a.old", "Bakery", "vendarodatabase"}));
    EXPECT_EQ(form().databases.title(), "vendarodatabase");
}

TEST_F(DatabasesTest, aDatabaseElsewhereIsSelectedNowhere)
{
    ASSERT_TRUE(QDir().mkpath(home() + "/vendarodatabase.vendb"));
    makeDatabase("b");
    writeSettings("<key>VendaroDbLocation</key><string>~/vendarodatabase.vendb</string>");
    start();
    preferences().listDatabases();

    EXPECT_EQ(form().databases.index(), -1);
}

TEST_F(DatabasesTest, choosingAnotherAsksAndSwitches)
{
    makeDatabase("b", "Bakery");
    start();
    preferences().listDatabases();
    alerts.answer("OK");

    choose("Bakery");

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Switch Vendaro database");
    EXPECT_EQ(alerts.asked()[0].text, "Do you really want to switch database? \r\rIf so, this will happen immediately.");
    EXPECT_EQ(alerts.asked()[0].buttons, (QStringList {"OK", "Cancel"}));
    EXPECT_EQ(openFolder(), supportFolder() + "/b.vendb");
    EXPECT_EQ(setting("VendaroDbLocation"), "~/Library/Application Support/Vendaro/b.vendb");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Bakery");
    EXPECT_FALSE(hasFile("lock.xml"));
    restart();
    EXPECT_EQ(openFolder(), supportFolder() + "/b.vendb");
}

TEST_F(DatabasesTest, cancellingClearsTheSelectionAndStays)
{
    makeDatabase("b");
    start();
    for (const int answer : {1, Alerts::cancelled}) {
        preferences().listDatabases();
        alerts.answer(answer);
        choose("b");

        EXPECT_EQ(form().databases.index(), -1);
        EXPECT_EQ(openFolder(), databaseFolder());
        EXPECT_EQ(setting("VendaroDbLocation"), "(none)");
    }
}

TEST_F(DatabasesTest, choosingTheOpenOneAsksNothing)
{
    makeDatabase("b");
    start();
    preferences().listDatabases();
    form().databases.setIndex(-1);

    choose("vendarodatabase");

    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_TRUE(hasFile("lock.xml"));
}

TEST_F(DatabasesTest, renamingWritesTheDisplayNameOfTheSelectedOne)
{
    makeDatabase("b", "Bakery");
    start();
    preferences().listDatabases();
    form().databases.setTitle("Bakery");

    preferences().renameDatabase("Cakes");

    EXPECT_EQ(nameIn(supportFolder() + "/b.vendb"), "Cakes");
    EXPECT_EQ(form().databases.titles(), (QStringList {"Cakes", "vendarodatabase"}));
    EXPECT_EQ(form().databases.title(), "Cakes");
    EXPECT_TRUE(QDir(supportFolder() + "/b.vendb").exists()) << "the folder keeps its name";
}

TEST_F(DatabasesTest, theOpenDatabasesNewNameIsToldToTheTitle)
{
    start();
    preferences().listDatabases();
    QString title;
    QObject::connect(&app().session(), &DatabaseSession::titleChanged, [&] { title = app().session().windowTitle(); });

    preferences().renameDatabase("My shop");

    EXPECT_EQ(title, "Vendaro - My shop");
}

TEST_F(DatabasesTest, aDatabaseKeepsItsNameWhenItIsToHaveNone)
{
    makeDatabase("b", "Bakery");
    start();
    preferences().listDatabases();
    form().databases.setTitle("Bakery");

    preferences().renameDatabase("  ");

    EXPECT_EQ(nameIn(supportFolder() + "/b.vendb"), "Bakery");
    EXPECT_EQ(form().databases.fault(), "A database needs a name; it keeps the one it has.");
    preferences().renameDatabase("Cakes");
    EXPECT_EQ(form().databases.fault(), "");
}

TEST_F(DatabasesTest, withoutASelectionNothingIsRenamed)
{
    start();
    preferences().listDatabases();
    form().databases.setIndex(-1);

    preferences().renameDatabase("Cakes");

    EXPECT_EQ(nameIn(databaseFolder()), "(none)");
}

// A new one

TEST_F(DatabasesTest, aNewDatabaseIsMadeNamedAndOpened)
{
    start();
    preferences().newDatabaseMenuItem();
    ASSERT_TRUE(preferences().newDatabase.isOpen());
    preferences().newDatabase.displayName.edit("My bakery");
    preferences().newDatabase.fileName.edit("bakery");
    preferences().newDatabase.confirm.trigger();

    EXPECT_FALSE(preferences().newDatabase.isOpen());
    EXPECT_EQ(openFolder(), supportFolder() + "/bakery.vendb");
    EXPECT_EQ(nameIn(openFolder()), "My bakery");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - My bakery");
    EXPECT_EQ(setting("VendaroDbLocation"), "~/Library/Application Support/Vendaro/bakery.vendb");
    EXPECT_TRUE(logged("new name is bakery"));
    EXPECT_TRUE(QFile::exists(openFolder() + "/lock.xml"));
    EXPECT_FALSE(app().session().isReadOnly());
}

TEST_F(DatabasesTest, withoutAFileNameTheDisplayNameServes)
{
    start();
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.displayName.edit("My bakery");
    preferences().newDatabase.confirm.trigger();

    EXPECT_EQ(openFolder(), supportFolder() + "/My bakery.vendb");
    EXPECT_EQ(nameIn(openFolder()), "My bakery");
}

TEST_F(DatabasesTest, withoutADisplayNameTheFileNameStandsInTheList)
{
    start();
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.fileName.edit("bakery");
    preferences().newDatabase.confirm.trigger();
    preferences().listDatabases();

    EXPECT_EQ(nameIn(openFolder()), "");
    EXPECT_EQ(form().databases.titles(), (QStringList {"bakery", "vendarodatabase"}));
    EXPECT_EQ(app().session().windowTitle(), "Vendaro");
}

TEST_F(DatabasesTest, nothingEnteredStopsNothing)
{
    start();
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.confirm.trigger();

    EXPECT_EQ(openFolder(), supportFolder() + "/.vendb");
    EXPECT_FALSE(logged("nothing entered"));
}

TEST_F(DatabasesTest, aNameWithASlashIsRefusedAndTheSheetStays)
{
    start();
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.displayName.edit("../escape");
    EXPECT_EQ(preferences().newDatabase.displayName.fault(), "The name of a database cannot contain \"/\".");
    QString focused;
    QObject::connect(&preferences().newDatabase, &Form::focusWanted, [&](const QString& name) { focused = name; });
    preferences().newDatabase.confirm.trigger();

    EXPECT_EQ(focused, "displayName");
    EXPECT_TRUE(preferences().newDatabase.isOpen());
    EXPECT_EQ(openFolder(), databaseFolder());
    EXPECT_EQ(setting("VendaroDbLocation"), "(none)");
    EXPECT_EQ(preferences().newDatabase.displayName.text(), "../escape");
}

TEST_F(DatabasesTest, whatTheNamesMakeIsSaidBesideThem)
{
    makeDatabase("b", "Bakery");
    start();
    preferences().newDatabaseMenuItem();
    NewDatabaseForm& names = preferences().newDatabase;
    EXPECT_TRUE(names.fileName.caption().startsWith("Enter a name")) << names.fileName.caption().toStdString();

    names.displayName.edit("Side business");
    EXPECT_EQ(names.fileName.caption(), "It is kept as \"Side business.vendb\".");
    names.fileName.edit("b");
    EXPECT_EQ(names.fileName.caption(), "\"b.vendb\" is there already: it is opened and takes the name above.");
    names.fileName.edit("a/b");
    EXPECT_EQ(names.fileName.fault(), "The name of a database cannot contain \"/\".");
    EXPECT_EQ(names.displayName.fault(), "");
    EXPECT_EQ(names.fileName.caption(), "Enter a file name without \"/\".");
    names.fileName.edit("side");

    EXPECT_EQ(names.fileName.fault(), "");
    EXPECT_EQ(names.fileName.caption(), "It is kept as \"side.vendb\".");
}

TEST_F(DatabasesTest, aFolderWithAnotherEndingIsNoDatabase)
{
    ASSERT_TRUE(QDir().mkpath(supportFolder() + "/Old.VENDB"));
    start();
    preferences().listDatabases();

    EXPECT_EQ(form().databases.titles(), QStringList("vendarodatabase"));
}

TEST_F(DatabasesTest, theWindowOpensWithTheDatabasesListed)
{
    makeDatabase("b", "Bakery");
    start();

    preferences().openWindow();

    EXPECT_TRUE(form().isOpen());
    EXPECT_EQ(form().databases.titles(), (QStringList {"Bakery", "vendarodatabase"}));
    EXPECT_EQ(form().databases.title(), "vendarodatabase");
}

TEST_F(DatabasesTest, aDatabaseThatCannotBeMadeIsToldAndTheSheetStays)
{
    start();
    QFile inTheWay(supportFolder() + "/taken.vendb");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.displayName.edit("taken");
    preferences().newDatabase.confirm.trigger();

    EXPECT_TRUE(preferences().newDatabase.displayName.fault().contains("taken.vendb"));
    EXPECT_TRUE(preferences().newDatabase.isOpen());
    EXPECT_EQ(openFolder(), databaseFolder());
    EXPECT_EQ(setting("VendaroDbLocation"), "(none)");
}

TEST_F(DatabasesTest, aCancelledSheetSavesAndReloadsTheOpenDatabase)
{
    start();
    auto contact = std::make_unique<Contact>();
    contact->setName("Ada Quill");
    app().getContactManager().add(std::move(contact));
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.displayName.edit("My bakery");
    preferences().newDatabase.cancel.trigger();

    EXPECT_EQ(openFolder(), databaseFolder());
    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    EXPECT_EQ(app().getContactManager().getCount(), 1);
    EXPECT_EQ(setting("VendaroDbLocation"), "~/Library/Application Support/Vendaro/vendarodatabase.vendb");
    EXPECT_FALSE(QDir(supportFolder() + "/My bakery.vendb").exists());
}

// Values of a database that were edited and not committed yet

TEST_F(DatabasesTest, whatWasEditedOfTheOpenOneStaysWithItWhenAnotherIsChosen)
{
    makeDatabase("b", "Bakery");
    start();
    preferences().openWindow();
    form().currency.edit("$");
    form().orderPrefix.edit("INV-");
    alerts.answer("OK");

    choose("Bakery");

    EXPECT_TRUE(readFile("info.plist").contains("<string>$</string>"));
    EXPECT_TRUE(readFile("info.plist").contains("<string>INV-</string>"));
    EXPECT_EQ(preferences().getCurrency(), "$") << "the user's, since the bakery has none of its own";
    EXPECT_EQ(preferences().getOrderPrefix(), "INV-");
}

TEST_F(DatabasesTest, whatWasEditedOutlivesACancelledSheetAndAnswerOfNo)
{
    makeDatabase("b", "Bakery");
    start();
    form().currencyCode.edit("USD");
    form().contactPrefix.edit("K");
    preferences().newDatabaseMenuItem();
    preferences().newDatabase.cancel.trigger();
    EXPECT_EQ(preferences().getCurrencyCode(), "USD");
    EXPECT_EQ(preferences().getContactPrefix(), "K");

    form().itemPrefix.edit("I-");
    alerts.answer("Cancel");
    preferences().setDbLocationToDefault();
    EXPECT_EQ(preferences().getItemPrefix(), "I-");
}

TEST_F(DatabasesTest, aPrefixThatNobodyEditedStaysItsDatabasesOwn)
{
    makeDatabase("b", "Bakery");
    writeSettings("<key>VendaroOrderPrefix</key><string>A</string>");
    writeFile("info.plist", document("<dict><key>VendaroOrderPrefix</key><string>INV-</string></dict>"));
    start();
    preferences().listDatabases();
    alerts.answer("OK");

    choose("Bakery");

    EXPECT_EQ(setting("VendaroOrderPrefix"), "A");
    EXPECT_EQ(preferences().getOrderPrefix(), "A");
}

TEST_F(DatabasesTest, whatWasEditedWhileSomebodyElseHasTheDatabaseReachesTheUsersSettingsOnly)
{
    makeDatabase("b", "Bakery");
    writeFile("lock.xml", document("<dict><key>reason</key><string>database open</string></dict>"));
    start();
    form().currency.edit("$");
    preferences().listDatabases();
    alerts.answer("OK");

    choose("Bakery");

    EXPECT_FALSE(hasFile("info.plist"));
    EXPECT_EQ(setting("VendaroCurrency"), "$");
}

// Elsewhere

TEST_F(DatabasesTest, aDatabaseElsewhereOpensAtTheNextLoad)
{
    ASSERT_TRUE(QDir().mkpath(home() + "/share/Shop.vendb"));
    start();
    panels.choose(home() + "/share/Shop.vendb");
    alerts.answer("OK");

    preferences().selectDbLocation();

    ASSERT_EQ(panels.savePanels.size(), 1u);
    EXPECT_EQ(panels.savePanels[0].title, "Choose an existing database");
    EXPECT_EQ(panels.savePanels[0].prompt, "Choose");
    EXPECT_EQ(panels.savePanels[0].nameLabel, "database name");
    EXPECT_EQ(panels.savePanels[0].fileType, "vendb");
    EXPECT_EQ(panels.savePanels[0].what, SavePanel::What::existingFolder);
    EXPECT_EQ(panels.savePanels[0].folder, supportFolder());
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Create / switch Vendaro database");
    EXPECT_EQ(alerts.asked()[0].text, "The change will be immediate.");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
    EXPECT_EQ(openFolder(), databaseFolder());
    EXPECT_EQ(setting("VendaroDbLocation"), "(none)");
    restart();
    EXPECT_EQ(openFolder(), home() + "/share/Shop.vendb");
    EXPECT_FALSE(hasFile("lock.xml"));
}

TEST_F(DatabasesTest, untilThenTheOpenDatabaseKeepsItsOwnValues)
{
    ASSERT_TRUE(QDir().mkpath(home() + "/Shop.vendb"));
    start();
    panels.choose(home() + "/Shop.vendb");
    alerts.answer("OK");
    preferences().selectDbLocation();
    form().currency.edit("$");

    preferences().OKButton();

    EXPECT_TRUE(readFile("info.plist").contains("<string>$</string>"));
    EXPECT_FALSE(QFile::exists(home() + "/Shop.vendb/info.plist"));
    EXPECT_EQ(app().session().windowTitle(), "Vendaro");
    EXPECT_EQ(setting("VendaroDbLocation"), (home() + "/Shop.vendb").toStdString());
}

TEST_F(DatabasesTest, aNewPlaceIsAskedForInTheFolderOfTheLastOne)
{
    ASSERT_TRUE(QDir().mkpath(home() + "/share/Shop.vendb"));
    writeSettings("<key>VendaroDbLocation</key><string>~/share/Shop.vendb</string>");
    start();
    panels.choose(home() + "/New.vendb");
    alerts.answer("OK");

    preferences().createDbLocation();

    EXPECT_EQ(panels.savePanels[0].title, "Create new database");
    EXPECT_EQ(panels.savePanels[0].prompt, "Create");
    EXPECT_EQ(panels.savePanels[0].fileType, "");
    EXPECT_EQ(panels.savePanels[0].what, SavePanel::What::newFile);
    EXPECT_EQ(panels.savePanels[0].folder, home() + "/share");
    EXPECT_EQ(preferences().getDbLocation(), (home() + "/New.vendb").toStdString());
}

TEST_F(DatabasesTest, aCancelledPanelChangesNothing)
{
    start();
    panels.cancel();
    panels.cancel();
    preferences().selectDbLocation();
    preferences().createDbLocation();

    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(preferences().getDbLocation(), "~/Library/Application Support/Vendaro/vendarodatabase.vendb");
}

// Back to the default

TEST_F(DatabasesTest, backToTheDefaultDatabaseAsksAndSwitches)
{
    makeDatabase("b");
    writeSettings("<key>VendaroDbLocation</key><string>~/Library/Application Support/Vendaro/b.vendb</string>");
    start();
    preferences().listDatabases();
    alerts.answer("OK");

    preferences().setDbLocationToDefault();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Switch Vendaro database");
    EXPECT_EQ(
        alerts.asked()[0].text, "Do you really want to switch back to the default database? \r\rIf so, the change will be immediate.");
    EXPECT_EQ(alerts.asked()[0].buttons, (QStringList {"OK", "Cancel"}));
    EXPECT_EQ(openFolder(), databaseFolder());
    EXPECT_EQ(form().databases.index(), -1);
    EXPECT_EQ(setting("VendaroDbLocation"), "~/Library/Application Support/Vendaro/vendarodatabase.vendb");
}

TEST_F(DatabasesTest, answeringNoReloadsTheOpenOne)
{
    makeDatabase("b");
    writeSettings("<key>VendaroDbLocation</key><string>~/Library/Application Support/Vendaro/b.vendb</string>");
    start();
    int read = 0;
    QObject::connect(&app().session(), &DatabaseSession::databaseRead, [&] { ++read; });
    alerts.answer("Cancel");

    preferences().setDbLocationToDefault();

    EXPECT_EQ(openFolder(), supportFolder() + "/b.vendb");
    EXPECT_EQ(read, 1);
}

// What travels with a database that is not ours to write

TEST_F(DatabasesTest, nothingIsWrittenIntoADatabaseThatSomebodyElseHasOpenOrThatIsACopy)
{
    for (const char* reason : {"database open", "offline browsing"}) {
        writeFile("lock.xml", document("<dict><key>reason</key><string>" + QByteArray(reason) + "</string></dict>"));
        alerts.answer("OK");
        start();
        ASSERT_TRUE(app().session().isReadOnly()) << reason;
        form().currency.edit("$");
        preferences().OKButton();
        app().session().switchDatabase();

        quit();

        EXPECT_EQ(QDir(databaseFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList("lock.xml"))
            << reason;
    }
}

TEST_F(DatabasesTest, whatASomebodyElsesDatabaseBringsCountsAllTheSame)
{
    writeFile("lock.xml", document("<dict><key>reason</key><string>database open</string></dict>"));
    writeFile("info.plist", document("<dict><key>VendaroCurrency</key><string>kr</string></dict>"));
    const QByteArray before = readFile("info.plist");
    start();

    EXPECT_EQ(preferences().getCurrency(), "kr");
    quit();
    EXPECT_EQ(readFile("info.plist"), before);
}

TEST_F(DatabasesTest, afterAForcedUnlockTheDatabaseIsWrittenAgain)
{
    writeFile("lock.xml", document("<dict><key>reason</key><string>database open</string></dict>"));
    start();
    alerts.answer(1);
    app().session().unlockDatabase();
    ASSERT_FALSE(app().session().isReadOnly());

    quit();

    EXPECT_TRUE(readFile("info.plist").contains("VendaroCurrency"));
}

TEST_F(DatabasesTest, aDatabaseThatSomebodyElseHasOpenIsNotRenamed)
{
    makeDatabase("b", "Bakery");
    QFile lock(supportFolder() + "/b.vendb/lock.xml");
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    start();
    preferences().listDatabases();
    form().databases.setIndex(static_cast<int>(form().databases.titles().indexOf("Bakery")));
    alerts.answer("OK");

    preferences().renameDatabase("Baker & Sons");

    EXPECT_EQ(nameIn(supportFolder() + "/b.vendb"), "Bakery");
    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_TRUE(form().databases.titles().contains("Bakery"));
}
