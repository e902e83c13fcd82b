#include "storage/FileSettingsStore.h"
#include "storage/RecoveryStore.h"

#include "foundation/Log.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

class SettingsTest : public testing::Test {
protected:
    SettingsTest()
    {
        setLogSink([](std::string_view) {});
    }
    ~SettingsTest() override { setLogSink({}); }

    QString path() const { return user.home() + "/Library/Preferences/Vendaro.plist"; }
    QString recoveryFolder() const { return user.home() + "/Recovery"; }
    QByteArray contents(const QString& file) const
    {
        QFile open(file);
        return open.open(QIODevice::ReadOnly) ? open.readAll() : QByteArray("(none)");
    }
    void put(const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path()).path()));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray document(const QByteArray& lines)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n"
            + lines + "</plist>\n";
    }

    FakeClock clock;
    FakeUser user;
    RecoveryStore recovery {recoveryFolder(), clock};
};

TEST_F(SettingsTest, withoutAFileNothingIsSetAndNothingIsWritten)
{
    FileSettingsStore store(path(), recovery);

    EXPECT_EQ(store.value("VendaroCurrency"), nullptr);
    EXPECT_FALSE(store.text("VendaroCurrency").has_value());
    EXPECT_FALSE(store.flag("VendaroHandlesTax"));
    EXPECT_EQ(store.takeDamage(), QStringList());
    EXPECT_TRUE(store.flush().ok());
    EXPECT_FALSE(QFileInfo::exists(path()));
}

TEST_F(SettingsTest, valuesAreSeenAtOnceAndOnDiskAfterAFlush)
{
    FileSettingsStore store(path(), recovery);
    store.setText("VendaroCurrency", "\xc2\xa3");
    store.setText("VendaroCodeSort", "2");
    EXPECT_EQ(store.text("VendaroCurrency"), "\xc2\xa3");
    EXPECT_FALSE(QFileInfo::exists(path()));

    ASSERT_TRUE(store.flush().ok());

    EXPECT_EQ(contents(path()),
        document("<dict>\n\t<key>VendaroCodeSort</key>\n\t<string>2</string>\n\t<key>VendaroCurrency</key>\n\t<string>\xc2\xa3</string>\n</"
                 "dict>\n"));
    EXPECT_EQ(FileSettingsStore(path(), recovery).text("VendaroCodeSort"), "2");
}

TEST_F(SettingsTest, registeredDefaultsAreAnsweredButNeverWritten)
{
    FileSettingsStore store(path(), recovery);
    store.registerDefault("VendaroTermOrder", "Order");
    store.setText("VendaroTermItem", "Item");
    ASSERT_TRUE(store.flush().ok());

    EXPECT_EQ(store.text("VendaroTermOrder"), "Order");
    EXPECT_FALSE(contents(path()).contains("VendaroTermOrder"));
    store.setText("VendaroTermOrder", "Job");
    EXPECT_EQ(store.text("VendaroTermOrder"), "Job");
    store.remove("VendaroTermOrder");
    EXPECT_EQ(store.text("VendaroTermOrder"), "Order");
}

TEST_F(SettingsTest, settingAnEqualValueOrRemovingNothingIsNoChange)
{
    put(document("<dict>\n\t<key>a</key>\n\t<string>1</string>\n</dict>\n"));
    FileSettingsStore store(path(), recovery);
    int told = 0;
    store.onDirty = [&] { ++told; };
    store.setText("a", "1");
    store.remove("b");
    EXPECT_EQ(told, 0);
    store.setText("a", "2");
    store.setText("a", "3");
    EXPECT_EQ(told, 1);
    ASSERT_TRUE(store.flush().ok());
    store.remove("a");
    EXPECT_EQ(told, 2);
}

TEST_F(SettingsTest, otherKindsOfValuesReadAsTextsAndFlags)
{
    put(document("<dict>\n\t<key>flag</key>\n\t<true/>\n\t<key>number</key>\n\t<integer>1</integer>\n\t<key>list</key>\n\t<array/>\n"
                 "\t<key>yes</key>\n\t<string>YES</string>\n\t<key>no</key>\n\t<string>NO</string>\n</dict>\n"));
    const FileSettingsStore store(path(), recovery);

    EXPECT_TRUE(store.flag("flag"));
    EXPECT_TRUE(store.flag("yes"));
    EXPECT_FALSE(store.flag("no"));
    EXPECT_FALSE(store.flag("list"));
    EXPECT_EQ(store.text("number"), "1");
    EXPECT_FALSE(store.text("list").has_value());
    ASSERT_NE(store.value("list"), nullptr);
    EXPECT_TRUE(store.value("list")->isArray());
}

TEST_F(SettingsTest, keysNobodyKnowsSurvive)
{
    const QByteArray before = document("<dict>\n\t<key>a</key>\n\t<string>1</string>\n\t<key>unknown</key>\n\t<dict>\n\t\t<key>x</key>\n"
                                       "\t\t<integer>5</integer>\n\t</dict>\n</dict>\n");
    put(before);
    FileSettingsStore store(path(), recovery);
    store.setText("a", "2");
    ASSERT_TRUE(store.flush().ok());

    EXPECT_EQ(contents(path()), QByteArray(before).replace("<string>1</string>", "<string>2</string>"));
}

TEST_F(SettingsTest, aDamagedFileIsKeptToldAndThenReplaced)
{
    const QByteArray damaged = document("<dict>\n\t<key>a</key>\n").chopped(20);
    put(damaged);
    FileSettingsStore store(path(), recovery);

    const QString kept = recoveryFolder() + "/20240301-101530 Vendaro.plist";
    EXPECT_EQ(contents(kept), damaged);
    const QString told = store.takeDamage().join('|');
    EXPECT_TRUE(told.startsWith("The settings could not be read (line ")) << told.toStdString();
    EXPECT_TRUE(told.endsWith("The original is kept as " + kept + ".")) << told.toStdString();
    EXPECT_EQ(store.takeDamage(), QStringList()) << "told once";
    store.setText("a", "1");
    EXPECT_TRUE(store.flush().ok());
    EXPECT_EQ(FileSettingsStore(path(), recovery).text("a"), "1");
}

TEST_F(SettingsTest, aFileOfAnotherShapeIsDamagedToo)
{
    put(document("<array/>\n"));
    FileSettingsStore store(path(), recovery);

    EXPECT_TRUE(store.takeDamage().join('|').contains("its root is no dictionary"));
    EXPECT_EQ(QDir(recoveryFolder()).entryList(QDir::Files).size(), 1);
}

TEST_F(SettingsTest, aDamagedFileThatCannotBeKeptIsNotReplaced)
{
    put("damaged");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    FileSettingsStore store(path(), recovery);
    store.setText("a", "1");

    EXPECT_FALSE(store.flush().ok());
    EXPECT_EQ(contents(path()), "damaged");

    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(store.flush().ok());
    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 Vendaro.plist"), "damaged");
    EXPECT_EQ(FileSettingsStore(path(), recovery).text("a"), "1");
}

TEST_F(SettingsTest, aValueOfAnotherKindIsKeptOnceBeforeItIsOverwritten)
{
    const QByteArray before = document("<dict>\n\t<key>list</key>\n\t<string>a text</string>\n\t<key>word</key>\n\t<array>\n"
                                       "\t\t<string>x</string>\n\t</array>\n</dict>\n");
    put(before);
    FileSettingsStore store(path(), recovery);
    EXPECT_EQ(store.takeDamage(), QStringList()) << "what nobody asks for harms nobody";

    store.setText("word", "Order");
    store.setText("word", "Job");
    store.set("list", PlistValue::makeArray());

    const QString kept = recoveryFolder() + "/20240301-101530 Vendaro.plist";
    EXPECT_EQ(store.takeDamage(),
        QStringList({"The setting \"word\" could not be read. The original is kept as " + kept + ".",
            "The setting \"list\" could not be read. The original is kept as " + kept + "."}));
    ASSERT_TRUE(store.flush().ok());
    EXPECT_EQ(contents(kept), before);
    EXPECT_EQ(QDir(recoveryFolder()).entryList(QDir::Files).size(), 1);
    EXPECT_EQ(FileSettingsStore(path(), recovery).text("word"), "Job");
}

TEST_F(SettingsTest, kindsThatCanStandForEachOtherReplaceEachOtherSilently)
{
    put(document("<dict>\n\t<key>flag</key>\n\t<true/>\n\t<key>number</key>\n\t<integer>5</integer>\n\t<key>rows</key>\n\t<array>\n"
                 "\t\t<string>x</string>\n\t</array>\n</dict>\n"));
    FileSettingsStore store(path(), recovery);

    store.setText("flag", "NO");
    store.setText("number", "6");
    store.set("rows", PlistValue::makeArray());

    EXPECT_EQ(store.takeDamage(), QStringList());
    EXPECT_FALSE(QDir(recoveryFolder()).exists());
}

TEST_F(SettingsTest, aValueOfAnotherKindThatCannotBeKeptIsNotOverwritten)
{
    const QByteArray before = document("<dict>\n\t<key>word</key>\n\t<array/>\n</dict>\n");
    put(before);
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    FileSettingsStore store(path(), recovery);
    store.setText("word", "Order");

    EXPECT_TRUE(store.takeDamage().join('|').startsWith("The setting \"word\" could not be read. The original could not be copied yet: "));
    EXPECT_FALSE(store.flush().ok());
    EXPECT_EQ(contents(path()), before);
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(store.flush().ok());
    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 Vendaro.plist"), before);
}

TEST_F(SettingsTest, valuesTheProgramMadeItselfAreNoOriginals)
{
    FileSettingsStore store(path(), recovery);
    store.setText("word", "Order");
    store.set("word", PlistValue::makeArray());

    EXPECT_EQ(store.takeDamage(), QStringList());
}

TEST_F(SettingsTest, whatCannotBeWrittenStaysToBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(user.home() + "/Library"));
    QFile inTheWay(user.home() + "/Library/Preferences");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    FileSettingsStore store(path(), recovery);
    store.setText("a", "1");

    EXPECT_FALSE(store.flush().ok());
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(store.flush().ok());
    EXPECT_EQ(FileSettingsStore(path(), recovery).text("a"), "1");
}

TEST_F(SettingsTest, textsAreCleanedOnTheirWayIn)
{
    FileSettingsStore store(path(), recovery);
    store.setText("a", "be\x07ll caf\xe9");

    EXPECT_EQ(store.text("a"), "bell caf\xef\xbf\xbd");
}

TEST_F(SettingsTest, whySettingsAreNotSavedIsKnownUntilTheyAre)
{
    ASSERT_TRUE(QDir().mkpath(user.home() + "/Library"));
    QFile inTheWay(user.home() + "/Library/Preferences");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    FileSettingsStore store(path(), recovery);
    EXPECT_EQ(store.unsavedReason(), "");
    store.setText("a", "1");

    EXPECT_FALSE(store.flush().ok());
    EXPECT_TRUE(store.unsavedReason().contains(user.home() + "/Library/Preferences")) << store.unsavedReason().toStdString();
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(store.flush().ok());
    EXPECT_EQ(store.unsavedReason(), "");
}

// Two programs

TEST_F(SettingsTest, whatAnotherProgramSetMeanwhileStays)
{
    put(document("<dict>\n\t<key>both</key>\n\t<string>0</string>\n\t<key>gone</key>\n\t<string>0</string>\n</dict>\n"));
    FileSettingsStore ours(path(), recovery);
    FileSettingsStore theirs(path(), recovery);
    theirs.setText("colour", "red");
    theirs.setText("both", "theirs");
    theirs.remove("gone");
    ASSERT_TRUE(theirs.flush().ok());
    EXPECT_EQ(ours.text("colour"), std::nullopt) << "what is shown does not change by itself";

    ours.setText("both", "ours");
    ours.setText("word", "Order");
    ASSERT_TRUE(ours.flush().ok());

    FileSettingsStore after(path(), recovery);
    EXPECT_EQ(after.text("colour"), "red");
    EXPECT_EQ(after.text("both"), "ours");
    EXPECT_EQ(after.text("word"), "Order");
    EXPECT_EQ(after.text("gone"), std::nullopt);
}

TEST_F(SettingsTest, whatWasWrittenBeforeIsNotWrittenOverWhatAnotherProgramSetSince)
{
    FileSettingsStore ours(path(), recovery);
    ours.setText("colour", "blue");
    ASSERT_TRUE(ours.flush().ok());
    FileSettingsStore theirs(path(), recovery);
    theirs.setText("colour", "red");
    ASSERT_TRUE(theirs.flush().ok());

    ours.setText("word", "Order");
    ASSERT_TRUE(ours.flush().ok());
    ours.setText("word", "Job");
    ASSERT_TRUE(ours.flush().ok());

    FileSettingsStore after(path(), recovery);
    EXPECT_EQ(after.text("colour"), "red");
    EXPECT_EQ(after.text("word"), "Job");
}

TEST_F(SettingsTest, whatAnotherProgramWroteAndNobodyCanReadIsKeptAndTold)
{
    put(document("<dict>\n\t<key>word</key>\n\t<string>Order</string>\n</dict>\n"));
    FileSettingsStore store(path(), recovery);
    put("damaged");

    store.setText("colour", "red");
    ASSERT_TRUE(store.flush().ok());

    const QString kept = recoveryFolder() + "/20240301-101530 Vendaro.plist";
    EXPECT_EQ(contents(kept), "damaged");
    EXPECT_EQ(store.takeDamage(), QStringList {"The settings that somebody else wrote could not be read. They are kept as " + kept + "."});
    FileSettingsStore after(path(), recovery);
    EXPECT_EQ(after.text("word"), "Order");
    EXPECT_EQ(after.text("colour"), "red");
}

TEST_F(SettingsTest, whatAProgramThatDiedLeftBesideThemIsRemoved)
{
    put("<plist/>");
    const QString left = QFileInfo(path()).path() + "/.vendaro-Vendaro.plist.4194305.0.tmp";
    QFile half(left);
    ASSERT_TRUE(half.open(QIODevice::WriteOnly));

    const FileSettingsStore store(path(), recovery);

    EXPECT_FALSE(QFileInfo::exists(left));
}
