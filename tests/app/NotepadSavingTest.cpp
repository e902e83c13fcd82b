// When the notepad is read and saved, and what becomes of it when it cannot be.
#include "documents/rtf/RichText.h"
#include "support/Business.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>

class NotepadSavingTest : public Business {
protected:
    void TearDown() override { quit(); }
    Notepad& notepad() { return app().notepad(); }
    QString words() { return plainTextOf(notepad().document()); }
    void type(const QString& text) { QTextCursor(&notepad().document()).insertText(text); }
    QByteArray onDisk() const { return readFile("notepad.rtfd/TXT.rtf"); }
    void putOnDisk(const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/notepad.rtfd"));
        writeFile("notepad.rtfd/TXT.rtf", bytes);
    }
    static QByteArray lockOf(const char* who)
    {
        return document(
            QByteArray("<dict><key>reason</key><string>database open</string><key>user</key><string>") + who + "</string></dict>");
    }
    QString other() const { return supportFolder() + "/Other.vendb"; }
    void openOther()
    {
        ASSERT_TRUE(QDir().mkpath(other()));
        app().getPrefsController().setDbLocation(other());
        app().session().switchDatabase();
    }
    /// What the main window would show.
    QStringList told;
    void startHearing()
    {
        startWatched([this](Vendaro& program) {
            QObject::connect(&program.session(), &DatabaseSession::damageFound, [this](const QStringList& sentences) { told = sentences; });
        });
    }
};

TEST_F(NotepadSavingTest, theFirstCommitMakesAnEmptyOne)
{
    begin();
    EXPECT_FALSE(hasFile("notepad.rtfd/TXT.rtf"));
    app().getPrefsController().OKButton();
    EXPECT_TRUE(onDisk().startsWith("{\\rtf1"));
}

TEST_F(NotepadSavingTest, okSavesItBetweenTheListsAndTheColumns)
{
    begin();
    type("Ring Ada");
    app().getPrefsController().OKButton();

    EXPECT_TRUE(onDisk().contains("Ring Ada"));
    const QStringList lines = log();
    const auto terms = lines.indexOf("Saving terms");
    ASSERT_GE(terms, 0);
    EXPECT_EQ(lines.mid(terms, 4), (QStringList {"Saving terms", "Saving tax rates", "Saving lists", "Saving notepad"}));
}

TEST_F(NotepadSavingTest, savingEverythingSavesIt)
{
    begin();
    type("Ring Ada");
    EXPECT_EQ(app().saveEverything(), QString());
    EXPECT_TRUE(onDisk().contains("Ring Ada"));
}

TEST_F(NotepadSavingTest, savingEverythingSaysWhyItCouldNotBeSaved)
{
    begin();
    ASSERT_TRUE(QDir().mkpath(databaseFolder() + "/notepad.rtfd/TXT.rtf"));
    type("Ring Ada");
    EXPECT_TRUE(app().saveEverything().contains("TXT.rtf")) << app().unsavedReason().toStdString();
}

TEST_F(NotepadSavingTest, aFileThatCameIntoItsPlaceIsToldAndLeftAlone)
{
    begin();
    writeFile("notepad.rtfd", "in the way");
    type("Ring Ada");
    EXPECT_TRUE(app().saveEverything().contains("notepad.rtfd")) << app().unsavedReason().toStdString();
    EXPECT_EQ(readFile("notepad.rtfd"), "in the way");
}

TEST_F(NotepadSavingTest, quittingSavesItAndTheNextStartReadsIt)
{
    begin();
    type("Ring Ada \u2713");
    restart();
    EXPECT_EQ(words(), "Ring Ada \u2713");
    EXPECT_FALSE(notepad().isChanged());
}

TEST_F(NotepadSavingTest, theOneOfTheDefaultDatabaseIsShownWhicheverDatabaseIsOpen)
{
    putOnDisk("{\\rtf1 of the default database}");
    ASSERT_TRUE(QDir().mkpath(other() + "/notepad.rtfd"));
    QFile own(other() + "/notepad.rtfd/TXT.rtf");
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("{\\rtf1 of the other}");
    own.close();
    begin("<key>VendaroDbLocation</key><string>" + other().toUtf8() + "</string>");

    EXPECT_EQ(words(), "of the default database");
    EXPECT_FALSE(notepad().isReadOnly());
    type("Now ");
    quit();

    EXPECT_TRUE(onDisk().contains("Now of the default database"));
    ASSERT_TRUE(own.open(QIODevice::ReadOnly));
    EXPECT_EQ(own.readAll(), "{\\rtf1 of the other}");
}

TEST_F(NotepadSavingTest, switchingSavesItWhileTheDatabaseIsStillOurs)
{
    begin();
    type("before the switch");
    bool lockedWhenSaved = false;
    QObject context;
    QObject::connect(&notepad(), &Notepad::savedStateChanged, &context, [&] { lockedWhenSaved = hasFile("lock.xml"); });
    openOther();

    EXPECT_TRUE(lockedWhenSaved);
    EXPECT_TRUE(onDisk().contains("before the switch"));
    EXPECT_EQ(words(), "before the switch");
    type("and after it, ");
    app().getPrefsController().OKButton();
    EXPECT_TRUE(onDisk().contains("and after it, before the switch"));
}

TEST_F(NotepadSavingTest, aSwitchWritesNothingThatNobodyTyped)
{
    begin();
    openOther();
    EXPECT_FALSE(hasFile("notepad.rtfd/TXT.rtf"));
}

TEST_F(NotepadSavingTest, aLockedDefaultDatabaseKeepsItReadOnlyUntilItIsUnlocked)
{
    putOnDisk("{\\rtf1 first}");
    writeFile("lock.xml", lockOf("bert"));
    begin();
    ASSERT_TRUE(app().session().isReadOnly());
    EXPECT_TRUE(notepad().isReadOnly());
    EXPECT_EQ(words(), "first");
    putOnDisk("{\\rtf1 written by bert}");

    int checked = 0;
    QObject context;
    QObject::connect(&notepad(), &Notepad::readOnlyChecked, &context, [&] { ++checked; });
    alerts.answer("Yes");
    app().session().unlockDatabase();

    EXPECT_GT(checked, 0);
    EXPECT_FALSE(notepad().isReadOnly());
    EXPECT_EQ(words(), "written by bert");
}

TEST_F(NotepadSavingTest, somebodyElsesLockOnTheDefaultDatabaseCountsWhileAnotherIsOpen)
{
    begin("<key>VendaroDbLocation</key><string>" + other().toUtf8() + "</string>");
    type("mine");
    ASSERT_TRUE(QDir().mkpath(databaseFolder()));
    writeFile("lock.xml", lockOf("bert"));
    EXPECT_TRUE(notepad().isReadOnly());

    EXPECT_FALSE(notepad().save());
    EXPECT_EQ(app().unsavedReason(), notepad().unsavedReason());
    EXPECT_FALSE(hasFile("notepad.rtfd/TXT.rtf"));

    quit();
    EXPECT_FALSE(hasFile("notepad.rtfd/TXT.rtf"));
    startHearing();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(
        told[0].startsWith("The notepad could not be saved: the default database, where the notepad lies, is open for reading only. "
                           "What it should hold is kept as "
            + supportFolder() + "/Recovery/"))
        << told[0].toStdString();
    const std::vector<KeptThing> things = app().recovery().things();
    ASSERT_EQ(things.size(), 1u);
    EXPECT_EQ(things[0].name, "notepad.rtf");
    QFile kept(things[0].path);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_TRUE(kept.readAll().contains("mine"));
}

TEST_F(NotepadSavingTest, aDamagedOneIsToldAtTheStart)
{
    putOnDisk("{\\rtf1 half a no");
    startHearing();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains("notepad.rtfd/TXT.rtf could not be read: it ends too early.")) << told[0].toStdString();
    EXPECT_EQ(words(), "half a no");
}

TEST_F(NotepadSavingTest, whatWasTypedOutlivesTheSettingsOfTheSampleBusiness)
{
    const QTemporaryDir own;
    resources = own.path();
    const QString sample = own.path() + "/sample/Sample.vendb";
    ASSERT_TRUE(QDir().mkpath(sample));
    QFile people(sample + "/contacts.xml");
    ASSERT_TRUE(people.open(QIODevice::WriteOnly));
    people.write(document("<dict><key>contacts</key><array/></dict>"));
    people.close();
    QFile settings(own.path() + "/sample/Settings.plist");
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(document("<dict/>"));
    settings.close();
    begin();
    type("not saved yet");
    const QTextDocument* document = &notepad().document();
    app().openSampleBusiness();

    EXPECT_EQ(&notepad().document(), document);
    EXPECT_EQ(words(), "not saved yet");
    EXPECT_TRUE(onDisk().contains("not saved yet"));
}

TEST_F(NotepadSavingTest, whatTheProgramSaidIsSavedOutlivesACrash)
{
    begin();
    type("worth keeping");
    ASSERT_TRUE(notepad().save());
    type("typed since, ");
    crash();
    begin();
    EXPECT_EQ(words(), "worth keeping");
}
