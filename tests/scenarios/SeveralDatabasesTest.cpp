// A person with more than one database: there and back with work that was not written yet, on disks that cannot be written, beside
// somebody else, with a copy on the road, and with a folder that came to harm.
#include "support/Business.h"
#include "support/OwnMounts.h"

#include <QDir>
#include <QFile>

namespace {

class SeveralDatabasesTest : public Business {
protected:
    PrefsController& preferences() { return app().getPrefsController(); }
    QString market() const { return supportFolder() + "/market.vendb"; }
    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static void put(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(bytes);
    }
    void makeMarket(const QByteArray& info = "<key>dbName</key><string>Market stall</string>") const
    {
        ASSERT_TRUE(QDir().mkpath(market()));
        put(market() + "/info.plist", document("<dict>" + info + "</dict>"));
    }
    void startAndListen()
    {
        startListening([this](Vendaro& program) {
            QObject::connect(&program.session(), &DatabaseSession::damageFound, [this](const QStringList& sentences) { told = sentences; });
        });
    }
    /// As the settings' list does it.
    void choose(const QString& name)
    {
        preferences().listDatabases();
        const int row = static_cast<int>(preferences().form.databases.titles().indexOf(name));
        ASSERT_GE(row, 0) << name.toStdString();
        alerts.answer("OK");
        preferences().form.databases.edit(row);
    }
    QStringList names()
    {
        QStringList found;
        for (const std::string& name : shown(contacts(), "name"))
            found.append(QString::fromStdString(name));
        return found;
    }
    QStringList kept(const QString& name) const
    {
        return QDir(supportFolder() + "/Recovery").entryList({"* " + name}, QDir::Files, QDir::Name);
    }

    QStringList told;
};

} // namespace

TEST_F(SeveralDatabasesTest, workThatWasNotWrittenIsThereWhenOneComesBack)
{
    makeMarket();
    begin();
    contact("Ada Quill");
    payment(order("Stools"), "12.00");
    EXPECT_FALSE(hasFile("contacts.xml"));

    choose("Market stall");
    EXPECT_TRUE(names().isEmpty());
    EXPECT_EQ(app().getPaymentManager().getCount(), 0);
    EXPECT_FALSE(hasFile("lock.xml"));
    EXPECT_TRUE(QFile::exists(market() + "/lock.xml"));
    contact("Bob Nib");

    choose("vendarodatabase");
    EXPECT_EQ(names(), QStringList("Ada Quill"));
    EXPECT_EQ(orders().at(0).getTitle(), "Stools");
    EXPECT_EQ(app().getPaymentManager().getCount(), 1);
    EXPECT_TRUE(bytes(market() + "/contacts.xml").contains("Bob Nib"));
    EXPECT_FALSE(QFile::exists(market() + "/lock.xml"));
    EXPECT_TRUE(hasFile("lock.xml"));

    choose("Market stall");
    EXPECT_EQ(names(), QStringList("Bob Nib"));
    quit();
    EXPECT_FALSE(QFile::exists(market() + "/lock.xml"));
    EXPECT_FALSE(bytes(market() + "/contacts.xml").contains("Ada Quill"));
    EXPECT_FALSE(readFile("contacts.xml").contains("Bob Nib"));
}

TEST_F(SeveralDatabasesTest, whatIsOpenIsClosedAndNothingCanBeUndoneAcross)
{
    makeMarket();
    begin();
    contact("Ada Quill");
    Contact& gone = contact("Cy Dee");
    contacts().deleteItem(gone);
    orders().editThisOrder(order("Stools"));
    ASSERT_TRUE(orders().form.isOpen());

    choose("Market stall");
    EXPECT_FALSE(orders().form.isOpen());
    contacts().undo();
    EXPECT_TRUE(names().isEmpty());
    contact("Bob Nib");
    EXPECT_EQ(contacts().at(0).getID(), 1) << "numbers begin anew";

    choose("vendarodatabase");
    contacts().undo();
    EXPECT_EQ(names(), QStringList("Ada Quill"));
}

TEST_F(SeveralDatabasesTest, eachHasItsOwnCurrency)
{
    makeMarket("<key>dbName</key><string>Market stall</string><key>VendaroCurrency</key><string>kr</string>"
               "<key>VendaroCurrencyCode</key><string>DKK</string>");
    begin("<key>VendaroCurrency</key><string>$</string>");
    Order& sale = order("Stools");
    payment(sale, "12.00");
    EXPECT_EQ(sale.getPayments(), "payment: $12.00 made by  on: 01/03/24\n");

    choose("Market stall");
    Order& stall = order("Apples");
    payment(stall, "7.00");
    EXPECT_EQ(stall.getPayments(), "payment: kr7.00 made by  on: 01/03/24\n");

    choose("vendarodatabase");
    EXPECT_EQ(orders().at(0).getPayments(), "payment: $12.00 made by  on: 01/03/24\n");
    quit();
    EXPECT_TRUE(bytes(market() + "/info.plist").contains("<string>DKK</string>"));
    EXPECT_TRUE(readFile("info.plist").contains("<string>$</string>"));
}

TEST_F(SeveralDatabasesTest, whatADiskDoesNotTakeIsKeptAndTheOtherOpens)
{
    ONLY_WITH_OWN_MOUNTS();
    makeMarket();
    begin();
    contact("Ada Quill");
    quit();
    const QByteArray before = readFile("contacts.xml");
    if (!forbidWriting(databaseFolder()))
        GTEST_SKIP() << "nothing can be mounted here";

    startAndListen();
    contact("Bob Nib");
    choose("Market stall");

    EXPECT_EQ(app().session().originalDbLocation(), market());
    EXPECT_TRUE(names().isEmpty());
    EXPECT_EQ(readFile("contacts.xml"), before);
    ASSERT_EQ(kept("contacts.xml").size(), 1);
    const QString copy = supportFolder() + "/Recovery/" + kept("contacts.xml")[0];
    EXPECT_TRUE(bytes(copy).contains("Bob Nib") && bytes(copy).contains("Ada Quill"));
    EXPECT_EQ(told.filter("contacts.xml could not be written. What it should hold is kept as " + copy + '.').size(), 1)
        << told.join('\n').toStdString();
    EXPECT_TRUE(app().unsavedReason().isEmpty()) << app().unsavedReason().toStdString();
    contact("Cy Dee");
    quit();
    EXPECT_TRUE(bytes(market() + "/contacts.xml").contains("Cy Dee"));
    allowWriting(databaseFolder());
}

TEST_F(SeveralDatabasesTest, somebodyElsesIsLookedAtOnlyAndLeftAsItWas)
{
    makeMarket();
    const QByteArray lock = document("<dict><key>datetime</key><string>2024-03-01 09:00:00 +0000</string><key>reason</key>"
                                     "<string>database open</string><key>user</key><string>bob</string></dict>");
    put(market() + "/lock.xml", lock);
    put(market() + "/contacts.xml",
        document("<dict><key>contacts</key><array><dict><key>id</key><string>4</string><key>name</key><string>Bob Nib</string></dict>"
                 "</array></dict>"));
    const QByteArray before = bytes(market() + "/contacts.xml");
    begin();
    contact("Ada Quill");

    choose("Market stall");
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(app().session().lockInfo().user, "bob");
    EXPECT_EQ(names(), QStringList("Bob Nib"));
    alerts.answer("OK");
    contacts().create();
    EXPECT_EQ(lastAlert().title, "Read-only mode");

    choose("vendarodatabase");
    EXPECT_FALSE(app().session().isReadOnly());
    contacts().create();
    EXPECT_TRUE(contacts().form.isOpen());
    EXPECT_EQ(QDir(market()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
        QStringList({"contacts.xml", "info.plist", "lock.xml"}));
    EXPECT_EQ(bytes(market() + "/lock.xml"), lock);
    EXPECT_EQ(bytes(market() + "/contacts.xml"), before);
}

TEST_F(SeveralDatabasesTest, aCopyOnTheRoadHoldsWhatWasWrittenAndStaysAsItIs)
{
    begin();
    contact("Ada Quill");
    app().session().writeDatabase(contacts());
    app().folder().drain();
    contact("Bob Nib");
    const QString copy = home() + "/On the road.vendb";
    panels.choose(copy);
    app().session().copyDatabase();

    preferences().setDbLocation(copy);
    alerts.answer("OK");
    app().session().switchDatabase();
    EXPECT_EQ(lastAlert().title, "Offline Database");
    EXPECT_EQ(lastAlert().text, "This database is a copy made by ada on 2024-03-01 10:15:30 +0000 for offline read-only use");
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(names(), QStringList("Ada Quill")) << "Bob was not written when the copy was made";
    const QByteArray before = bytes(copy + "/contacts.xml");

    alerts.answer("OK");
    preferences().setDbLocationToDefault();
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_EQ(names().size(), 2);
    quit();
    EXPECT_EQ(bytes(copy + "/contacts.xml"), before);
    EXPECT_TRUE(bytes(copy + "/lock.xml").contains("offline browsing"));
}

TEST_F(SeveralDatabasesTest, damagedPropertiesAreToldKeptAndReplacedByWhatThePersonHas)
{
    ASSERT_TRUE(QDir().mkpath(market()));
    put(market() + "/info.plist", "<plist><dict><key>dbName</key><string>Market st");
    begin("<key>VendaroCurrency</key><string>$</string>");
    quit();
    startAndListen();

    choose("market");
    EXPECT_EQ(app().session().windowTitle(), "Vendaro - market");
    EXPECT_EQ(preferences().getCurrency(), "$");
    ASSERT_EQ(kept("info.plist").size(), 1);
    const QString original = supportFolder() + "/Recovery/" + kept("info.plist")[0];
    EXPECT_EQ(bytes(original), "<plist><dict><key>dbName</key><string>Market st");
    EXPECT_EQ(told.filter(market() + "/info.plist could not be read. Its original is kept as " + original).size(), 1)
        << told.join('\n').toStdString();
    quit();
    EXPECT_TRUE(bytes(market() + "/info.plist").contains("<key>VendaroCurrency</key>"));
}

TEST_F(SeveralDatabasesTest, aFolderThatIsGoneIsMadeAnewAndTheOldOneIsNotTouched)
{
    makeMarket();
    begin();
    contact("Ada Quill");
    preferences().listDatabases();
    ASSERT_TRUE(QDir(market()).removeRecursively());
    alerts.answer("OK");
    preferences().form.databases.edit(static_cast<int>(preferences().form.databases.titles().indexOf("Market stall")));

    EXPECT_EQ(app().session().originalDbLocation(), market());
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    contact("Bob Nib");
    quit();
    EXPECT_TRUE(bytes(market() + "/contacts.xml").contains("Bob Nib"));
}
