#include "documents/TemplateUpgrade.h"

#include "foundation/Log.h"
#include "foundation/Text.h"
#include "storage/RecoveryStore.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class TemplateUpgradeTest : public testing::Test {
protected:
    TemplateUpgradeTest()
    {
        setLogSink([this](std::string_view line) { log += toQString(line); });
    }
    ~TemplateUpgradeTest() override { setLogSink({}); }

    QString support() const { return m_home.path() + "/support"; }
    QString resources() const { return m_home.path() + "/resources"; }
    static void put(const QString& path, const QByteArray& bytes)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void upgrade() { TemplateUpgrade(support(), resources(), recovery).run(); }
    QByteArray upgraded(const QByteArray& text)
    {
        put(support() + "/stationary/Invoice.rtfd/TXT.rtf", "{\\rtf1 " + text + "}");
        upgrade();
        const QByteArray result = contents(support() + "/stationary/Invoice.rtfd/TXT.rtf");
        return result.mid(7, result.size() - 8);
    }

    QStringList log;
    FakeClock clock;

private:
    QTemporaryDir m_home;

protected:
    RecoveryStore recovery {m_home.filePath("Recovery"), clock};
};

TEST_F(TemplateUpgradeTest, olderTagsBecomeThoseForPayments)
{
    EXPECT_EQ(upgraded("Balance: <currencysymbol><balance> paid: <balancepaid>"), "<payments>");
    EXPECT_EQ(upgraded("Balance: <balance> paid: <balancepaid>"), "<payments>");
    EXPECT_EQ(upgraded("[Payment method: <paymentmethod>]"), "[]");
    EXPECT_EQ(upgraded("[Deposit: <deposit> paid: <depositpaid>]"), "[]");
    EXPECT_EQ(upgraded("[Deposit: <currencysymbol><deposit> paid: <depositpaid>]"), "[]");
    EXPECT_EQ(upgraded("Balance: <balance>"), "Balance due: <totaldue>");
    EXPECT_EQ(upgraded("Total: <total>"), "Total: <totaldue>");
}

TEST_F(TemplateUpgradeTest, otherTagsStay)
{
    const QByteArray untouched = "<totaldue> <balance> <currencysymbol><balance> <deposit> <balancepaid> balance: <paymentmethod>";
    EXPECT_EQ(upgraded(untouched), untouched);
}

TEST_F(TemplateUpgradeTest, everyOccurrenceChangesAndASecondUpgradeChangesNothing)
{
    const QByteArray once = upgraded("<total>, <total>\\\nBalance: <balance>");
    EXPECT_EQ(once, "<totaldue>, <totaldue>\\\nBalance due: <totaldue>");
    EXPECT_EQ(upgraded(once), once);
}

TEST_F(TemplateUpgradeTest, allTemplatesAreUpgradedAndNothingElse)
{
    put(support() + "/stationary/A.rtfd/TXT.rtf", "{\\rtf1 <total>}");
    put(support() + "/stationary/A.rtfd/logo.png", "<total>");
    put(support() + "/stationary/B.rtfd/TXT.rtf", "{\\rtf1 <total>}");
    put(support() + "/stationary/A.css", "<total>");
    put(support() + "/stationary/C.rtf", "{\\rtf1 <total>}");
    upgrade();

    EXPECT_EQ(contents(support() + "/stationary/A.rtfd/TXT.rtf"), "{\\rtf1 <totaldue>}");
    EXPECT_EQ(contents(support() + "/stationary/B.rtfd/TXT.rtf"), "{\\rtf1 <totaldue>}");
    EXPECT_EQ(contents(support() + "/stationary/A.rtfd/logo.png"), "<total>");
    EXPECT_EQ(contents(support() + "/stationary/A.css"), "<total>");
    EXPECT_EQ(contents(support() + "/stationary/C.rtf"), "{\\rtf1 <total>}");
    EXPECT_EQ(log, (QStringList {"upgrading " + support() + "/stationary/A.rtfd", "upgrading " + support() + "/stationary/B.rtfd"}));
}

TEST_F(TemplateUpgradeTest, aTemplateThatCannotBeReadIsLoggedAndTheOthersGoOn)
{
    ASSERT_TRUE(QDir().mkpath(support() + "/stationary/A.rtfd"));
    put(support() + "/stationary/B.rtfd/TXT.rtf", "{\\rtf1 <total>}");
    upgrade();

    EXPECT_EQ(contents(support() + "/stationary/B.rtfd/TXT.rtf"), "{\\rtf1 <totaldue>}");
    ASSERT_EQ(log.size(), 3);
    EXPECT_TRUE(log[1].contains("A.rtfd/TXT.rtf")) << log[1].toStdString();
}

TEST_F(TemplateUpgradeTest, theFoldersAreMadeWhenMissingButNoReports)
{
    upgrade();

    EXPECT_TRUE(QDir(support() + "/stationary").exists());
    EXPECT_FALSE(QDir(support() + "/reports").exists());
    EXPECT_EQ(log, QStringList());
}

TEST_F(TemplateUpgradeTest, twoReportsAreReplacedByTheProgramsOwn)
{
    put(resources() + "/reports/Weekly Sales.xml", "new week");
    put(resources() + "/reports/Monthly Sales.xml", "new month");
    put(resources() + "/reports/Other.xml", "new other");
    put(support() + "/reports/Weekly Sales.xml", "old week");
    put(support() + "/reports/Other.xml", "old other");
    upgrade();

    EXPECT_EQ(contents(support() + "/reports/Weekly Sales.xml"), "new week");
    EXPECT_EQ(contents(support() + "/reports/Monthly Sales.xml"), "new month");
    EXPECT_EQ(contents(support() + "/reports/Other.xml"), "old other");
    for (const char* name : {"Weekly Sales.xml", "Monthly Sales.xml"})
        EXPECT_TRUE(log.contains("copied " + resources() + "/reports/" + name + " to " + support() + "/reports/" + name)) << name;
}

TEST_F(TemplateUpgradeTest, aReportThatIsNotShippedLeavesTheUsersOwn)
{
    put(support() + "/reports/Weekly Sales.xml", "old week");
    upgrade();

    EXPECT_EQ(contents(support() + "/reports/Weekly Sales.xml"), "old week");
    EXPECT_TRUE(log.contains("failed to copy " + resources() + "/reports/Weekly Sales.xml to " + support() + "/reports/Weekly Sales.xml"));
}

TEST_F(TemplateUpgradeTest, aTagThatAWordProcessorTookApartIsFound)
{
    EXPECT_EQ(upgraded("{\\insrsid12 <tot}{\\insrsid7 al>}"), "{\\insrsid12 <totaldue>}{\\insrsid7 }");
}

TEST_F(TemplateUpgradeTest, whatATemplateHoldsBesideItsWordsStays)
{
    const QByteArray other = "{\\*\\listtable{\\list}}{\\pict 89504e47}{\\header <total>}\\sl288\\slmult1 ";
    EXPECT_EQ(upgraded(other + "<total>"), other + "<totaldue>");
}

TEST_F(TemplateUpgradeTest, whatBecomesAnotherIsKeptAsItWas)
{
    put(support() + "/stationary/A.rtfd/TXT.rtf", "{\\rtf1 <total>}");
    put(support() + "/stationary/A.rtfd/logo.png", "picture");
    put(support() + "/stationary/B.rtfd/TXT.rtf", "{\\rtf1 nothing to do}");
    put(resources() + "/reports/Weekly Sales.xml", "new week");
    put(resources() + "/reports/Monthly Sales.xml", "same month");
    put(support() + "/reports/Weekly Sales.xml", "old week");
    put(support() + "/reports/Monthly Sales.xml", "same month");
    upgrade();

    QStringList kept;
    for (const KeptThing& thing : recovery.things()) {
        EXPECT_EQ(thing.reason, KeptFor::upgraded);
        kept += thing.name;
        if (thing.name == "A.rtfd") {
            EXPECT_EQ(contents(thing.path + "/TXT.rtf"), "{\\rtf1 <total>}");
            EXPECT_EQ(contents(thing.path + "/logo.png"), "picture");
        } else
            EXPECT_EQ(contents(thing.path), "old week");
    }
    kept.sort();
    EXPECT_EQ(kept, (QStringList {"A.rtfd", "Weekly Sales.xml"}));
}

TEST_F(TemplateUpgradeTest, whatCannotBeKeptStaysAsItIs)
{
    put(recovery.folder(), "a file where the store should be");
    put(resources() + "/reports/Weekly Sales.xml", "new week");
    put(support() + "/reports/Weekly Sales.xml", "old week");
    EXPECT_EQ(upgraded("<total>"), "<total>");
    EXPECT_EQ(contents(support() + "/reports/Weekly Sales.xml"), "old week");
}
