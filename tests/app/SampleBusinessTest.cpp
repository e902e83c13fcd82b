// Looking around in the sample business: a copy of its own, which takes nothing from the user's.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class SampleBusinessTest : public Scenario {
protected:
    SampleBusinessTest()
    {
        resources = m_resources.path();
        put("Sample.vendb/contacts.xml",
            document(
                "<dict><key>contacts</key><array><dict><key>id</key><string>1</string><key>name</key><string>Sample Ltd</string></dict>"
                "</array></dict>"));
        put("Sample.vendb/info.plist", document("<dict><key>dbName</key><string>Sample business</string></dict>"));
        put("Settings.plist",
            document("<dict><key>VendaroStatuses</key><string>Open\nDone</string><key>VendaroHandlesTax</key><string>YES</string>"
                     "<key>VendaroCurrency</key><string>XYZ</string></dict>"));
    }
    void put(const QString& name, const QByteArray& bytes) const
    {
        const QString path = m_resources.path() + "/sample/" + name;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray settingsWithRates()
    {
        return document("<dict><key>VendaroStatuses</key><string>Open\nDone</string><key>VendaroHandlesTax</key><string>YES</string>"
                        "<key>VendaroTaxRates</key><array><dict><key>code</key><string>S</string><key>rate</key><string>7</string></dict>"
                        "</array></dict>");
    }
    QString sampleFolder() const { return supportFolder() + "/Sample.vendb"; }
    std::string onlyContact()
    {
        ContactManager& contacts = app().getContactManager();
        return contacts.getCount() == 1 ? std::string(contacts.at(0).getName()) : "(none)";
    }

    QTemporaryDir m_resources;
};

TEST_F(SampleBusinessTest, opensInAFolderOfItsOwn)
{
    start();
    app().openSampleBusiness();

    EXPECT_EQ(app().session().originalDbLocation(), sampleFolder());
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - Sample business");
    EXPECT_EQ(onlyContact(), "Sample Ltd");
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_FALSE(hasFile("lock.xml")) << "the user's own database is closed";
    EXPECT_TRUE(hasFile("contacts.xml")) << "and saved";
    EXPECT_TRUE(alerts.asked().empty());
}

TEST_F(SampleBusinessTest, keepsWhatWasDoneInIt)
{
    start();
    app().openSampleBusiness();
    app().getContactManager().at(0).setName("Changed Ltd");
    app().session().writeDatabase(app().getContactManager());
    app().getPrefsController().setDbLocation(databaseFolder());
    app().session().switchDatabase();

    app().openSampleBusiness();

    EXPECT_EQ(onlyContact(), "Changed Ltd");
}

TEST_F(SampleBusinessTest, bringsItsStatusesAndTaxToAUserWithoutTheirOwn)
{
    start();
    app().openSampleBusiness();

    EXPECT_EQ(app().getPrefsController().getStatusList(), (QStringList {"Open", "Done"}));
    EXPECT_TRUE(app().getPrefsController().handlesTax());
    EXPECT_EQ(app().getPrefsController().getCurrency(), "\xc2\xa3") << "nothing else is taken over";
}

TEST_F(SampleBusinessTest, leavesTheUsersOwnStatusesAlone)
{
    writeSettings("<key>VendaroStatuses</key><string>New\nPaid</string>");
    start();
    app().openSampleBusiness();

    EXPECT_EQ(app().getPrefsController().getStatusList(), (QStringList {"New", "Paid"}));
}

TEST_F(SampleBusinessTest, bringsItsRatesToAUserWithoutTheirOwn)
{
    put("Settings.plist", settingsWithRates());
    start();
    app().openSampleBusiness();

    EXPECT_EQ(app().getPrefsController().getTaxRateForCode("S"), "7");
    EXPECT_TRUE(app().getPrefsController().handlesTax());
}

TEST_F(SampleBusinessTest, leavesTheTaxOfAUserAloneWhoSavedARateOrHandlesNone)
{
    put("Settings.plist", settingsWithRates());
    for (const char* own : {"<key>VendaroTaxRate</key><string>17.5</string>",
             "<key>VendaroTaxRates</key><array><dict><key>code</key><string>S</string><key>rate</key><string>17.5</string></dict></"
             "array>"}) {
        writeSettings(own);
        start();
        app().openSampleBusiness();

        EXPECT_EQ(app().getPrefsController().getTaxRateForCode("S"), "17.5") << own;
        EXPECT_FALSE(app().getPrefsController().handlesTax()) << "it could never be switched off for good: " << own;
        quit();
    }
}

TEST_F(SampleBusinessTest, leavesAloneWhatWasEditedAndIsNotCommittedYet)
{
    put("Settings.plist", settingsWithRates());
    start();
    PrefsController& preferences = app().getPrefsController();
    preferences.form.handlesTax.edit(true);
    preferences.form.termOrder.edit("Job");
    preferences.form.taxStatement.edit("GST");
    preferences.form.currency.edit("$");
    preferences.form.statuses.edit("Mine");
    preferences.setTaxRateValue("rate", 0, "17.5");
    app().openSampleBusiness();

    EXPECT_EQ(preferences.getTermOrder(), "Job");
    EXPECT_EQ(preferences.getTaxStatement(), "GST");
    EXPECT_EQ(preferences.getCurrency(), "$");
    EXPECT_EQ(preferences.getStatusList(), QStringList {"Mine"});
    EXPECT_EQ(preferences.getTaxRateForCode("S"), "17.5");
    quit();
    EXPECT_TRUE(readFile("info.plist").contains("<string>$</string>"));
}

TEST_F(SampleBusinessTest, whatAnInterruptedCopyLeftIsNoObstacle)
{
    ASSERT_TRUE(QDir().mkpath(sampleFolder() + ".unfinished/half"));
    start();
    app().openSampleBusiness();

    EXPECT_EQ(onlyContact(), "Sample Ltd");
    EXPECT_FALSE(QFile::exists(sampleFolder() + ".unfinished"));
    EXPECT_FALSE(QFile::exists(sampleFolder() + "/half"));
}

TEST_F(SampleBusinessTest, aMissingSampleIsToldAndNothingIsSwitched)
{
    ASSERT_TRUE(QDir(m_resources.path() + "/sample").removeRecursively());
    start();
    alerts.answer("OK");

    app().openSampleBusiness();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "Sample business");
    EXPECT_EQ(app().session().originalDbLocation(), databaseFolder());
    EXPECT_FALSE(QFile::exists(sampleFolder()));
}
