// What the main window tells of the database: that it is locked, damaged, saved or not saved.
#include "MainOnScreen.h"
#include "ui/shell/Sheets.h"

#include <QDir>
#include <QStatusBar>

using namespace uitest;

TEST_F(MainOnScreen, theLockSheetSaysWhatIsKnownOfTheProgramThatHoldsIt)
{
    launch();
    const auto sentenceFor = [&](processMark::Life holder) {
        LockInfo lock;
        lock.holder = holder;
        const LockSheet sheet(lock, window.get());
        return sheet.findChild<QLabel*>("holder")->text();
    };

    EXPECT_EQ(sentenceFor(processMark::Life::running), QString("The program that holds the lock is running on this computer."));
    EXPECT_EQ(
        sentenceFor(processMark::Life::ended), QString("The program that held the lock is no longer running: the lock was left behind."));
    EXPECT_EQ(sentenceFor(processMark::Life::unknown),
        QString("Whether the program that holds the lock is still running cannot be told from here."));
}

TEST_F(MainOnScreen, theLockSheetClosesWhenTheDatabaseIsUnlockedByOtherWays)
{
    haveRecords();
    writeFile("lock.xml", document("<dict>\n<key>user</key>\n<string>bea</string>\n</dict>"));
    launch();
    ASSERT_NE(qobject_cast<LockSheet*>(SheetStack::instance().top()), nullptr);
    alerts.answer("Yes");

    desktop->session().unlockDatabase();

    EXPECT_EQ(SheetStack::instance().top(), nullptr);
    EXPECT_FALSE(desktop->session().isReadOnly());
}

TEST_F(MainOnScreen, aLockedDatabaseIsToldByASheetAndByABarThatStays)
{
    haveRecords();
    writeFile("lock.xml",
        document("<dict>\n<key>datetime</key>\n<string>2024-03-01 09:00:00 +0000</string>\n<key>user</key>\n"
                 "<string>bea</string>\n</dict>"));
    launch();
    ASSERT_NE(qobject_cast<LockSheet*>(SheetStack::instance().top()), nullptr);
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    ASSERT_EQ(barTexts().size(), 1);
    EXPECT_TRUE(barTexts().first().contains("reading only"));
    EXPECT_TRUE(barTexts().first().contains("bea"));
    alerts.answer("OK");
    command("newItem")->trigger();
    EXPECT_FALSE(desktop->getItemManager().form.isOpen());
    alerts.answer("Yes");
    for (MessageBar* bar : window->findChildren<MessageBar*>()) {
        if (bar->isVisible())
            press(*bar->findChild<QAbstractButton*>());
    }
    settle();
    EXPECT_EQ(barTexts(), QStringList());
}

TEST_F(MainOnScreen, aFileThatCannotBeReadIsToldInABar)
{
    haveRecords();
    writeFile("items.xml", "this is no property list");
    writeFile("info.plist", "this is no property list");
    launch();
    ASSERT_EQ(barTexts().size(), 1);
    EXPECT_TRUE(barTexts().first().contains("items.xml could not be read")) << barTexts().first().toStdString();
    EXPECT_TRUE(barTexts().first().contains("info.plist could not be read")) << barTexts().first().toStdString();
}

TEST_F(MainOnScreen, saysWhenItSaved)
{
    haveRecords();
    launch();
    desktop->session().writeDatabase(desktop->getItemManager());
    settle();
    const QString saved = window->statusBar()->findChildren<Label*>().last()->text();
    EXPECT_TRUE(saved.startsWith("Saved ")) << saved.toStdString();
}

TEST_F(MainOnScreen, saysThatSettingsAreNotSavedUntilTheyAre)
{
    haveRecords();
    launch();
    const auto said = [this] { return window->statusBar()->findChildren<Label*>().last()->text(); };
    ASSERT_TRUE(QDir(home() + "/Library/Preferences").removeRecursively());
    QFile inTheWay(home() + "/Library/Preferences");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    desktop->settingsStore().setText("word", "Job");

    ASSERT_FALSE(desktop->keepSettings());
    EXPECT_TRUE(said().startsWith("Not saved: ")) << said().toStdString();
    EXPECT_TRUE(said().contains("Library/Preferences")) << said().toStdString();
    // Records that are saved do not make it good.
    desktop->session().writeDatabase(desktop->getItemManager());
    settle();
    EXPECT_TRUE(said().startsWith("Not saved: ")) << said().toStdString();

    ASSERT_TRUE(inTheWay.remove());
    ASSERT_TRUE(desktop->keepSettings());
    EXPECT_TRUE(said().startsWith("Saved ")) << said().toStdString();
}
