#include "storage/FolderProperties.h"

#include "foundation/Log.h"
#include "storage/RecoveryStore.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

class FolderPropertiesTest : public testing::Test {
protected:
    FolderPropertiesTest()
    {
        setLogSink([this](std::string_view line) { log.emplace_back(line); });
        QDir().mkpath(folder);
    }
    ~FolderPropertiesTest() override { setLogSink({}); }

    QByteArray contents(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void put(const QByteArray& bytes) const
    {
        QFile file(folder + "/info.plist");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray document(const QByteArray& value)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n"
            + value + "</plist>\n";
    }

    std::vector<std::string> log;
    FakeClock clock;
    FakeUser user;
    QString folder = user.home() + "/shop.vendb";
    RecoveryStore recovery {user.home() + "/Recovery", clock};
    FolderProperties properties {recovery};
};

TEST_F(FolderPropertiesTest, aFolderWithoutPropertiesAnswersNothing)
{
    EXPECT_FALSE(properties.objectForKey(folder, "dbName").has_value());
    EXPECT_FALSE(properties.objectForKey(folder + "/missing", "dbName").has_value());
}

TEST_F(FolderPropertiesTest, aPropertyIsWrittenIntoTheFolderAndReadBack)
{
    properties.setObjectForKey(folder, "My Shop & Co", "dbName");

    EXPECT_EQ(properties.objectForKey(folder, "dbName"), "My Shop & Co");
    EXPECT_EQ(contents(folder + "/info.plist"), document("<dict>\n\t<key>dbName</key>\n\t<string>My Shop &amp; Co</string>\n</dict>\n"));
}

TEST_F(FolderPropertiesTest, otherPropertiesOfTheFolderStay)
{
    put(document("<dict>\n\t<key>dbName</key>\n\t<string>Old</string>\n\t<key>other</key>\n\t<array>\n\t\t<integer>1</integer>\n\t</"
                 "array>\n</dict>\n"));

    properties.setObjectForKey(folder, "New", "dbName");

    EXPECT_EQ(contents(folder + "/info.plist"),
        document("<dict>\n\t<key>dbName</key>\n\t<string>New</string>\n\t<key>other</key>\n\t<array>\n\t\t<integer>1</integer>\n\t</"
                 "array>\n</dict>\n"));
    EXPECT_FALSE(properties.objectForKey(folder, "other").has_value());
}

TEST_F(FolderPropertiesTest, anEmptyTextIsAValue)
{
    properties.setObjectForKey(folder, "", "dbName");

    EXPECT_EQ(properties.objectForKey(folder, "dbName"), "");
}

TEST_F(FolderPropertiesTest, eachFolderHasItsOwn)
{
    QDir().mkpath(folder + "2");
    properties.setObjectForKey(folder, "one", "dbName");
    properties.setObjectForKey(folder + "2", "two", "dbName");

    EXPECT_EQ(properties.objectForKey(folder, "dbName"), "one");
    EXPECT_EQ(properties.objectForKey(folder + "2", "dbName"), "two");
}

TEST_F(FolderPropertiesTest, anEqualValueLeavesTheFileAlone)
{
    const QByteArray bytes = "<plist><dict><key>dbName</key><string>Same</string></dict></plist>";
    put(bytes);

    properties.setObjectForKey(folder, "Same", "dbName");

    EXPECT_EQ(contents(folder + "/info.plist"), bytes);
}

TEST_F(FolderPropertiesTest, aDamagedFileIsKeptBeforeItIsReplaced)
{
    for (const char* damaged : {"damaged", "", "<plist><array/></plist>"}) {
        put(damaged);
        QDir(user.home() + "/Recovery").removeRecursively();
        EXPECT_FALSE(properties.objectForKey(folder, "dbName").has_value());

        properties.setObjectForKey(folder, "New", "dbName");

        EXPECT_EQ(properties.objectForKey(folder, "dbName"), "New");
        EXPECT_EQ(contents(user.home() + "/Recovery/20240301-101530 info.plist"), damaged);
    }
}

TEST_F(FolderPropertiesTest, aDamagedFileThatCannotBeKeptIsNotReplaced)
{
    put("damaged");
    QFile inTheWay(user.home() + "/Recovery");
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    properties.setObjectForKey(folder, "New", "dbName");

    EXPECT_EQ(contents(folder + "/info.plist"), "damaged");
    ASSERT_EQ(log.size(), 2u) << "that, and why";
    EXPECT_EQ(log.front(), "couldn't write database's properties");
}

TEST_F(FolderPropertiesTest, aFolderThatIsNotThereYetIsNoFailure)
{
    properties.onTrouble = [](const QString& sentence) { ADD_FAILURE() << sentence.toStdString(); };

    properties.setObjectForKey(folder + "/missing", "New", "dbName");

    EXPECT_TRUE(log.empty()) << log.front();
    EXPECT_FALSE(QFileInfo::exists(folder + "/missing"));
}

TEST_F(FolderPropertiesTest, aFileThatCannotBeReadIsNotReplacedAndThatIsTold)
{
    // A folder of that name cannot be read as a file, and might be a file again the next moment.
    QDir().mkpath(folder + "/info.plist");
    QStringList told;
    properties.onTrouble = [&](const QString& sentence) { told += sentence; };
    EXPECT_FALSE(properties.objectForKey(folder, "currency").has_value());

    properties.setObjectForKey(folder, "GBP", "currency");

    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith(folder + "/info.plist could not be written (")) << told[0].toStdString();
    EXPECT_TRUE(QDir(folder + "/info.plist").exists());
}

TEST_F(FolderPropertiesTest, aKeyThatCouldNotBeReadKeepsItsValueUntilItIsReadAgain)
{
    QDir().mkpath(folder + "/info.plist");
    EXPECT_FALSE(properties.objectForKey(folder, "currency").has_value());
    QDir(folder).rmdir("info.plist");
    const QByteArray bytes = document("<dict>\n\t<key>currency</key>\n\t<string>EUR</string>\n</dict>\n");
    put(bytes);

    properties.setObjectForKey(folder, "GBP", "currency");
    EXPECT_EQ(contents(folder + "/info.plist"), bytes);

    EXPECT_EQ(properties.objectForKey(folder, "currency"), "EUR");
    properties.setObjectForKey(folder, "GBP", "currency");
    EXPECT_EQ(properties.objectForKey(folder, "currency"), "GBP");
}

TEST_F(FolderPropertiesTest, aDamagedFileIsToldWheneverItIsMetAndKeptOnce)
{
    put("damaged");
    QStringList told;
    properties.onTrouble = [&](const QString& sentence) { told += sentence; };

    EXPECT_FALSE(properties.objectForKey(folder, "dbName").has_value());
    EXPECT_FALSE(properties.objectForKey(folder, "currency").has_value());
    properties.setObjectForKey(folder, "New", "dbName");

    const QString kept = user.home() + "/Recovery/20240301-101530 info.plist";
    const QString sentence = folder + "/info.plist could not be read. Its original is kept as " + kept + ".";
    EXPECT_EQ(told, QStringList({sentence, sentence, sentence}));
    EXPECT_EQ(contents(kept), "damaged");
    EXPECT_EQ(recovery.things().size(), 1U);
}

TEST_F(FolderPropertiesTest, aValueThatIsNoTextIsKeptAndToldBeforeItIsReplaced)
{
    const QByteArray bytes = document("<dict>\n\t<key>dbName</key>\n\t<array>\n\t\t<string>KEEP</string>\n\t</array>\n</dict>\n");
    put(bytes);
    QStringList told;
    properties.onTrouble = [&](const QString& sentence) { told += sentence; };
    EXPECT_FALSE(properties.objectForKey(folder, "dbName").has_value());
    EXPECT_EQ(told, QStringList()) << "it is there as it was";

    properties.setObjectForKey(folder, "New", "dbName");

    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(contents(user.home() + "/Recovery/20240301-101530 info.plist"), bytes);
    EXPECT_EQ(properties.objectForKey(folder, "dbName"), "New");
}

TEST_F(FolderPropertiesTest, whatCouldNotBeWrittenIsToldAndTriedAgainWhereThatIsAllowed)
{
    EXPECT_EQ(properties.unsavedReason(), QString());
    QDir().mkpath(folder + "/info.plist");
    properties.setObjectForKey(folder, "GBP", "currency");
    EXPECT_TRUE(properties.unsavedReason().contains(folder + "/info.plist")) << properties.unsavedReason().toStdString();
    properties.retry([](const QString&) { return true; });
    EXPECT_FALSE(properties.unsavedReason().isEmpty());
    QDir(folder).rmdir("info.plist");
    properties.retry([](const QString&) { return false; });
    EXPECT_EQ(contents(folder + "/info.plist"), "(none)");

    properties.retry([this](const QString& other) { return other == folder; });

    EXPECT_EQ(contents(folder + "/info.plist"), document("<dict>\n\t<key>currency</key>\n\t<string>GBP</string>\n</dict>\n"));
    EXPECT_EQ(properties.unsavedReason(), QString());
    EXPECT_EQ(properties.keepUnsaved(), QStringList());
}

TEST_F(FolderPropertiesTest, whatWasNeverReadIsSetLaterOnlyWhereNothingTurnsOutToBe)
{
    QDir().mkpath(folder + "/info.plist");
    for (const char* key : {"currency", "dbName"}) {
        EXPECT_FALSE(properties.objectForKey(folder, key).has_value());
        properties.setObjectForKey(folder, "Ours", key);
    }
    QDir(folder).rmdir("info.plist");
    put(document("<dict>\n\t<key>currency</key>\n\t<string>EUR</string>\n</dict>\n"));

    properties.retry([](const QString&) { return true; });
    properties.retry([](const QString&) { return true; });

    EXPECT_EQ(properties.objectForKey(folder, "currency"), "EUR");
    EXPECT_EQ(properties.objectForKey(folder, "dbName"), "Ours");
    EXPECT_FALSE(properties.unsavedReason().isEmpty());
    EXPECT_EQ(properties.keepUnsaved().size(), 1);
}

TEST_F(FolderPropertiesTest, whatCouldNotBeWrittenIsKeptAtTheEnd)
{
    QDir().mkpath(folder + "/info.plist");
    properties.setObjectForKey(folder, "GBP", "currency");
    properties.setObjectForKey(folder, "Shop", "dbName");
    QDir(folder).rmdir("info.plist");
    properties.setObjectForKey(folder, "Shop", "dbName");

    const QString kept = user.home() + "/Recovery/20240301-101530 info.plist";
    EXPECT_EQ(
        properties.keepUnsaved(), QStringList {folder + "/info.plist could not be written. What it should hold is kept as " + kept + "."});
    EXPECT_EQ(contents(kept), document("<dict>\n\t<key>currency</key>\n\t<string>GBP</string>\n</dict>\n"));
    EXPECT_EQ(properties.keepUnsaved(), QStringList()) << "once";
}
