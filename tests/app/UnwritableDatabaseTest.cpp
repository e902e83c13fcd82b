// A whole database folder that cannot be written: work goes on, the person sees it, and nothing of it is lost.
#include "support/OwnMounts.h"
#include "support/Scenario.h"

#include <QDir>
#include <QFile>

class UnwritableDatabaseTest : public Scenario {
protected:
    void startAndListen()
    {
        told.clear();
        startWatched([this](Vendaro& program) {
            QObject::connect(&program.session(), &DatabaseSession::damageFound, [this](const QStringList& sentences) { told = sentences; });
        });
    }
    void addContact(const char* name)
    {
        auto contact = std::make_unique<Contact>();
        contact->setName(name);
        app().getContactManager().add(std::move(contact));
    }
    QStringList recovered(const QString& name) const
    {
        return QDir(supportFolder() + "/Recovery").entryList({"* " + name}, QDir::Files, QDir::Name);
    }
    QByteArray recoveredBytes(const QString& name) const
    {
        QFile file(supportFolder() + "/Recovery/" + recovered(name).value(0));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void expectToldOfContacts()
    {
        const QString sentence = "contacts.xml could not be written. What it should hold is kept as " + supportFolder() + "/Recovery/";
        EXPECT_EQ(told.filter(sentence).size(), 1) << told.join('\n').toStdString();
    }

    QStringList told;
};

TEST_F(UnwritableDatabaseTest, aFileInTheFoldersPlaceStopsNoWorkAndIsLeftAsItIs)
{
    ASSERT_TRUE(QDir().mkpath(supportFolder()));
    QFile inTheWay(databaseFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.write("in the way");
    inTheWay.close();

    startAndListen();
    EXPECT_TRUE(logged("lock not written successfully"));
    EXPECT_FALSE(app().session().isReadOnly());
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    EXPECT_TRUE(logged("contacts not written successfully"));
    EXPECT_TRUE(app().folder().unsavedReason().contains(databaseFolder())) << app().folder().unsavedReason().toStdString();
    quit();

    EXPECT_TRUE(recoveredBytes("contacts.xml").contains("Ada Quill"));
    ASSERT_TRUE(inTheWay.open(QIODevice::ReadOnly));
    EXPECT_EQ(inTheWay.readAll(), "in the way");
    inTheWay.close();

    startAndListen();
    expectToldOfContacts();
}

TEST_F(UnwritableDatabaseTest, workIsWrittenOnceTheFolderCanBe)
{
    ASSERT_TRUE(QDir().mkpath(supportFolder()));
    QFile inTheWay(databaseFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    startAndListen();
    addContact("Ada Quill");
    app().session().writeDatabase(app().getContactManager());
    ASSERT_TRUE(inTheWay.remove());
    // Takes the number that the file in the way had.
    QFile another(supportFolder() + "/another");
    ASSERT_TRUE(another.open(QIODevice::WriteOnly));

    app().folder().retry();
    app().folder().drain();

    EXPECT_TRUE(app().folder().unsavedReason().isEmpty()) << app().folder().unsavedReason().toStdString();
    EXPECT_TRUE(readFile("contacts.xml").contains("Ada Quill"));
    quit();
    EXPECT_TRUE(recovered("contacts.xml").isEmpty());
}

TEST_F(UnwritableDatabaseTest, aReadOnlyFolderStopsNoWorkAndIsLeftAsItIs)
{
    ONLY_WITH_OWN_MOUNTS();
    start();
    addContact("Ada Quill");
    quit();
    const QByteArray before = readFile("contacts.xml");
    const QStringList entries = QDir(databaseFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    if (!forbidWriting(databaseFolder()))
        GTEST_SKIP() << "nothing can be mounted here";

    startAndListen();
    EXPECT_TRUE(logged("lock not written successfully"));
    EXPECT_EQ(app().getContactManager().getCount(), 1);
    addContact("Bob Nib");
    app().session().writeDatabase(app().getContactManager());
    EXPECT_TRUE(app().folder().unsavedReason().contains("Read-only file system")) << app().folder().unsavedReason().toStdString();
    quit();
    EXPECT_TRUE(recoveredBytes("contacts.xml").contains("Bob Nib"));
    EXPECT_EQ(readFile("contacts.xml"), before);
    EXPECT_EQ(QDir(databaseFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), entries);

    startAndListen();
    expectToldOfContacts();
    crash();
    allowWriting(databaseFolder());
}
