// The settings' page of databases: choosing, naming and making them with mouse and keys.
#include "SettingsOnScreen.h"
#include "ui/kit/Button.h"
#include "ui/settings/NewDatabaseSheet.h"
#include "ui/settings/Pages.h"

#include <QFile>

using namespace uitest;

TEST_F(SettingsOnScreen, selectingAnotherDatabaseAsksAndSwitches)
{
    makeDatabase("Bakery");
    launch();
    open(databases);
    ASSERT_EQ(databaseList()->count(), 2);
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("vendarodatabase"));
    alerts.answer("OK");
    QTest::mouseClick(databaseList()->viewport(), Qt::LeftButton, {}, databaseList()->visualItemRect(databaseList()->item(0)).center());
    settle();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(lastAlert().title, "Switch Vendaro database");
    EXPECT_EQ(app().session().originalDbLocation(), supportFolder() + "/Bakery.vendb");
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("Bakery"));
    EXPECT_TRUE(field("databasePlace")->text().endsWith("/Bakery.vendb"));
}

TEST_F(SettingsOnScreen, cancellingTheQuestionSelectsNothing)
{
    makeDatabase("Bakery");
    launch();
    open(databases);
    alerts.answer("Cancel");
    databaseList()->setFocus();
    QTest::keyClick(databaseList(), Qt::Key_Up);
    settle();

    EXPECT_EQ(app().session().originalDbLocation(), databaseFolder());
    EXPECT_EQ(databaseList()->currentRow(), -1);
    EXPECT_FALSE(button("rename")->isEnabled());
}

TEST_F(SettingsOnScreen, theOpenDatabaseIsRenamedInPlace)
{
    launch();
    open(databases);
    press(*button("rename"));
    QTest::keyClick(keyboard(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(keyboard(), "My shop");
    QTest::keyClick(keyboard(), Qt::Key_Return);

    EXPECT_TRUE(QTest::qWaitFor([this] { return preferences().getDatabaseName() == "My shop"; }));
    settle();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(windows->main().windowTitle(), QString("Vendaro - My shop"));
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("My shop"));
}

TEST_F(SettingsOnScreen, aNameThatIsEmptyIsToldUnderTheList)
{
    launch();
    open(databases);
    press(*button("rename"));
    QTest::keyClick(keyboard(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(keyboard(), Qt::Key_Delete);
    QTest::keyClick(keyboard(), Qt::Key_Return);

    EXPECT_TRUE(QTest::qWaitFor([this] { return isTold("A database needs a name; it keeps the one it has."); }));
    settle();
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("vendarodatabase"));
}

TEST_F(SettingsOnScreen, aNewDatabaseIsMadeOnASheet)
{
    launch();
    open(databases);
    press(*button("newDatabaseMenuItem"));
    Sheet* sheet = SheetStack::instance().top();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->hostWindow(), &window());
    EXPECT_EQ(keyboard()->objectName(), QString("displayName"));
    QTest::keyClicks(keyboard(), "a/b");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    EXPECT_TRUE(sheet->isOpen());
    EXPECT_EQ(child<QLineEdit>(*sheet, "displayName")->accessibleDescription(), QString("The name of a database cannot contain \"/\"."));
    EXPECT_FALSE(QDir(supportFolder() + "/a").exists());
    type(*child<QLineEdit>(*sheet, "displayName"), "Bakery");
    QTest::keyClick(keyboard(), Qt::Key_Return);
    settle();

    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_EQ(app().session().originalDbLocation(), supportFolder() + "/Bakery.vendb");
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("Bakery"));
}

TEST_F(SettingsOnScreen, escapeOnTheSheetReloadsTheOpenDatabase)
{
    launch();
    int read = 0;
    QObject::connect(&app().session(), &DatabaseSession::databaseRead, [&] { ++read; });
    child<QAction>(windows->main(), "newDatabase")->trigger();
    Sheet* sheet = SheetStack::instance().top();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->hostWindow(), &windows->main());
    QTest::keyClick(keyboard(), Qt::Key_Escape);

    EXPECT_EQ(read, 1);
    EXPECT_FALSE(preferences().newDatabase.isOpen());
    EXPECT_EQ(app().session().originalDbLocation(), databaseFolder());
}

TEST_F(SettingsOnScreen, aDatabaseElsewhereIsSaidToOpenLater)
{
    launch();
    open(databases);
    EXPECT_FALSE(child<Label>(window(), "databaseLater")->isVisible());
    panels.choose(home() + "/Elsewhere.vendb");
    alerts.answer("OK");
    press(*button("createDbLocation"));

    EXPECT_EQ(field("databasePlace")->text(), home() + "/Elsewhere.vendb");
    EXPECT_TRUE(child<Label>(window(), "databaseLater")->isVisible());
    alerts.answer("OK");
    press(*button("setDbLocationToDefault"));
    settle();
    EXPECT_FALSE(child<Label>(window(), "databaseLater")->isVisible());
    EXPECT_EQ(databaseList()->currentItem()->text(), QString("vendarodatabase"));
}

TEST_F(SettingsOnScreen, anOfflineCopyIsMade)
{
    launch();
    open(databases);
    panels.choose(home() + "/Copy.vendb");
    press(*button("offlineCopy"));
    EXPECT_EQ(panels.savePanels.back().title, "Choose a location and name for the copy database");
    EXPECT_TRUE(QFile::exists(home() + "/Copy.vendb/lock.xml"));
}
