// The one question about templates, asked of a database whose payments are in the older form.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>

class UpgradeQuestionTest : public Scenario {
protected:
    void writeOlderOrder() const
    {
        writeFile("orders.xml",
            document("<dict><key>orders</key><array><dict><key>id</key><string>1</string><key>balance</key><string>6.00</string>"
                     "<key>balancepaid</key><string>05/02/20</string></dict></array></dict>"));
    }
    QString templatePath() const { return supportFolder() + "/stationary/Mine.rtfd/TXT.rtf"; }
    void writeTemplate() const
    {
        ASSERT_TRUE(QDir().mkpath(supportFolder() + "/stationary/Mine.rtfd"));
        QFile file(templatePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{\\rtf1 <total>}");
    }
    QByteArray templateText() const
    {
        QFile file(templatePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(UpgradeQuestionTest, isAskedOnceWordForWord)
{
    writeOlderOrder();
    alerts.answer("Yes, attempt upgrade");
    start();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Upgrade templates and reports");
    EXPECT_EQ(alerts.asked()[0].text,
        "It looks as if you're running this version for the first time. It contains an improved method of recording payments. Vendaro will "
        "now show payments in the new way, but existing data is maintained. Templates and reports should work as far as possible but will "
        "benefit from an upgrade to the new payments method. Would you like Vendaro to attempt to upgrade, or would you like more "
        "information and the option to do it yourself manually?");
    EXPECT_EQ(alerts.asked()[0].buttons, (QStringList {"Yes, attempt upgrade", "More information"}));
    EXPECT_TRUE(app().settingsStore().flag("askAboutUpgrading"));

    alerts.forget();
    quit();
    writeOlderOrder();
    start();
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(UpgradeQuestionTest, yesUpgradesTheTemplates)
{
    writeOlderOrder();
    writeTemplate();
    alerts.answer("Yes, attempt upgrade");
    start();

    EXPECT_EQ(templateText(), "{\\rtf1 <totaldue>}");
    EXPECT_TRUE(logged("upgrading " + supportFolder() + "/stationary/Mine.rtfd"));
    EXPECT_TRUE(opener.urls.empty());
}

TEST_F(UpgradeQuestionTest, moreInformationOpensTheManualAndChangesNothing)
{
    writeOlderOrder();
    writeTemplate();
    alerts.answer("More information");
    start();

    EXPECT_EQ(templateText(), "{\\rtf1 <total>}");
    ASSERT_EQ(opener.urls.size(), 1u);
    EXPECT_TRUE(QFile::exists(opener.urls[0].toLocalFile())) << opener.urls[0].toString().toStdString();
    EXPECT_TRUE(app().settingsStore().flag("askAboutUpgrading"));
}

TEST_F(UpgradeQuestionTest, dismissedItIsAskedAgain)
{
    writeOlderOrder();
    alerts.answer(Alerts::cancelled);
    start();
    EXPECT_FALSE(app().settingsStore().flag("askAboutUpgrading"));
    crash();
    QFile::remove(databaseFolder() + "/lock.xml");

    alerts.answer("More information");
    start();
    EXPECT_EQ(alerts.asked().size(), 2u);
}

TEST_F(UpgradeQuestionTest, isNotAskedInReadOnlyMode)
{
    writeOlderOrder();
    writeFile("lock.xml", document("<dict><key>reason</key><string>stock taking</string></dict>"));
    start();

    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_FALSE(app().settingsStore().flag("askAboutUpgrading"));
}

TEST_F(UpgradeQuestionTest, isNotAskedOfADatabaseWithPaymentsInTheirOwnList)
{
    writeFile("orders.xml",
        document(
            "<dict><key>orders</key><array><dict><key>id</key><string>1</string><key>balance</key><string>6.00</string>"
            "<key>balancepaid</key><string>05/02/20</string><key>paymentarray</key><array/></dict><dict><key>id</key><string>2</string>"
            "<key>deposit</key><string>6.00</string></dict></array></dict>"));
    start();

    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(UpgradeQuestionTest, isNotAskedOfTheNextDatabaseForTheLastOnesSake)
{
    writeOlderOrder();
    writeFile("lock.xml", document("<dict><key>reason</key><string>stock taking</string></dict>"));
    start();
    const QString other = supportFolder() + "/Other.vendb";
    ASSERT_TRUE(QDir().mkpath(other));
    app().getPrefsController().setDbLocation(other);

    app().session().switchDatabase();

    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_TRUE(alerts.asked().empty());
}
