// A folder that could not be locked when it was opened, and what becomes of it and of the work done meanwhile.
#include "support/Scenario.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

class LateLockTest : public Scenario {
protected:
    /// The database lies where nothing is yet.
    void chooseShare() { writeSettings("<key>VendaroDbLocation</key><string>" + share().toUtf8() + "</string>"); }
    QString share() const { return home() + "/share/Shop.vendb"; }
    QStringList onShare() const { return QDir(share()).entryList(QDir::Files); }
    void putOnShare(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(share()));
        QFile file(share() + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray contactsOnShare() const { return bytesOf(share() + "/contacts.xml"); }
    static QByteArray bobsLock()
    {
        return document("<dict><key>datetime</key><string>2024-02-29 09:00:00 +0000</string><key>reason</key>"
                        "<string>database open</string><key>user</key><string>bob</string></dict>");
    }
    static QByteArray contactsWith(const QByteArray& name)
    {
        return document("<dict><key>contacts</key><array><dict><key>id</key><string>1</string><key>name</key><string>" + name
            + "</string></dict></array></dict>");
    }
    void startListeningToAll()
    {
        startWatched([this](Vendaro& program) {
            QObject::connect(&program.session(), &DatabaseSession::damageFound, [this](const QStringList& sentences) { told = sentences; });
            QObject::connect(&program.session(), &DatabaseSession::locked, [this] { ++sheets; });
        });
    }
    void addContact(const char* name)
    {
        auto contact = std::make_unique<Contact>();
        contact->setName(name);
        app().getContactManager().add(std::move(contact));
    }
    /// The one copy of the contacts in the recovery store; empty when there is not just one.
    QByteArray keptContacts() const
    {
        const QStringList kept = QDir(supportFolder() + "/Recovery").entryList({"* contacts.xml"}, QDir::Files);
        return kept.size() == 1 ? bytesOf(supportFolder() + "/Recovery/" + kept[0]) : QByteArray();
    }
    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList told;
    int sheets = 0;
};

TEST_F(LateLockTest, aFolderElsewhereIsLockedOnceItIsThere)
{
    chooseShare();
    start();
    ASSERT_TRUE(logged("lock not written successfully"));

    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(QFileInfo::exists(share() + "/lock.xml"));
    EXPECT_TRUE(QFileInfo::exists(share() + "/contacts.xml"));
    EXPECT_TRUE(logged("lock written successfully"));
    quit();
    EXPECT_FALSE(QFileInfo::exists(share() + "/lock.xml"));
}

TEST_F(LateLockTest, whoCouldNotLockTheFolderAndFindsItLockedLaterWritesNothingAndKeepsItsWork)
{
    chooseShare();
    startListeningToAll();
    ASSERT_FALSE(app().session().isReadOnly());
    putOnShare("lock.xml", bobsLock());
    addContact("Ada Quill");

    app().session().writeDatabase(app().getContactManager());

    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(sheets, 1);
    EXPECT_EQ(told.filter("contacts.xml could not be written. What it should hold is kept as ").size(), 1);
    EXPECT_TRUE(keptContacts().contains("Ada Quill"));
    app().session().retry();
    quit();
    EXPECT_EQ(onShare(), QStringList {"lock.xml"});
}

TEST_F(LateLockTest, whatCouldNotBeWrittenWaitsForTheLockToo)
{
    chooseShare();
    ASSERT_TRUE(QDir().mkpath(home() + "/share"));
    QFile inTheWay(share());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    start();
    app().session().writeDatabase(app().getContactManager());
    ASSERT_FALSE(app().unsavedReason().isEmpty());
    ASSERT_TRUE(inTheWay.remove());
    ASSERT_TRUE(QDir().mkpath(share()));

    app().retry();
    app().folder().drain();

    EXPECT_TRUE(QFileInfo::exists(share() + "/contacts.xml"));
    EXPECT_TRUE(QFileInfo::exists(share() + "/lock.xml"));
    EXPECT_TRUE(app().unsavedReason().isEmpty());
}

TEST_F(LateLockTest, aShareThatComesUpAfterTheStartIsNotWrittenOverByQuitting)
{
    chooseShare();
    start();
    putOnShare("contacts.xml", contactsWith("Already there"));

    quit();

    EXPECT_EQ(onShare(), QStringList {"contacts.xml"});
    EXPECT_EQ(contactsOnShare(), contactsWith("Already there"));
    EXPECT_EQ(QDir(supportFolder() + "/Recovery").entryList(QDir::Files), QStringList()) << "nothing was entered that is to be kept";
}

TEST_F(LateLockTest, whatIsEnteredBeforeAShareComesUpIsKeptAndTheShareStaysAsItIs)
{
    chooseShare();
    startListeningToAll();
    putOnShare("contacts.xml", contactsWith("Already there"));
    addContact("Ada Quill");

    app().session().writeDatabase(app().getContactManager());

    EXPECT_EQ(contactsOnShare(), contactsWith("Already there"));
    EXPECT_EQ(onShare(), QStringList {"contacts.xml"}) << "no lock of a program that does not use the folder";
    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(sheets, 0) << "nobody else holds a lock";
    EXPECT_TRUE(keptContacts().contains("Ada Quill"));
    EXPECT_EQ(told.filter("contacts.xml could not be written. What it should hold is kept as ").size(), 1);
    EXPECT_TRUE(told.contains(share()
        + " could not be locked when it was opened, and its files are others now. Nothing is written into it. Start Vendaro again to work "
          "with them."))
        << told.join('|').toStdString();
    restart();
    EXPECT_FALSE(app().session().isReadOnly());
    EXPECT_EQ(app().getContactManager().at(0).getName(), "Already there");
}

TEST_F(LateLockTest, beforeAnythingIsChangedTheLockIsTriedAgain)
{
    chooseShare();
    start();
    putOnShare("lock.xml", bobsLock());
    alerts.answer("OK");
    EXPECT_FALSE(app().session().mayWriteInto(share()));

    EXPECT_FALSE(app().session().readOnlyCheck());

    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(app().session().lockInfo().user, "bob");
}

TEST_F(LateLockTest, anUnlockIsOnlyOfTheLockThatWasAskedAbout)
{
    chooseShare();
    putOnShare("lock.xml", bobsLock());
    startListeningToAll();
    const QByteArray carols = bobsLock().replace("bob", "carol");
    alerts.meanwhile = [&] { putOnShare("lock.xml", carols); };
    alerts.answer("Yes");

    app().session().unlockDatabase();

    EXPECT_TRUE(app().session().isReadOnly());
    EXPECT_EQ(bytesOf(share() + "/lock.xml"), carols);
    EXPECT_EQ(onShare(), QStringList {"lock.xml"});
    EXPECT_EQ(app().session().lockInfo().user, "carol");
    EXPECT_EQ(sheets, 2) << "the second tells who holds it now";
}

TEST_F(LateLockTest, aLockThatGoesDuringTheQuestionIsNoLockAnyMore)
{
    chooseShare();
    putOnShare("lock.xml", bobsLock());
    start();
    alerts.meanwhile = [&] { QFile::remove(share() + "/lock.xml"); };
    alerts.answer("Yes");
    alerts.answer("OK");

    app().session().unlockDatabase();

    EXPECT_EQ(alerts.texts().last(), "The database is not locked.");
    EXPECT_TRUE(onShare().isEmpty());
}

TEST_F(LateLockTest, anEndBeforeAnythingWasReadWritesNothing)
{
    startListening([](Vendaro& program) { EXPECT_TRUE(program.session().writeEverything().isEmpty()); });

    EXPECT_FALSE(QFileInfo::exists("/contacts.xml"));
    EXPECT_FALSE(QFileInfo::exists(supportFolder() + "/Recovery"));
}
