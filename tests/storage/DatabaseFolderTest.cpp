#include "storage/DatabaseFolder.h"

#include "foundation/Log.h"
#include "storage/Article.h"
#include "storage/RecoveryStore.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

class DatabaseFolderTest : public testing::Test {
protected:
    DatabaseFolderTest()
    {
        setLogSink([this](std::string_view line) {
            const std::lock_guard guard(m_logMutex);
            m_log += toQString(line);
        });
        folder.registerFile(mugFile);
        folder.registerFile(orderFile);
        folder.registerFile(lineFile);
    }
    ~DatabaseFolderTest() override { setLogSink({}); }

    QString location() const { return user.home() + "/shop.vendb"; }
    QString recoveryFolder() const { return user.home() + "/Recovery"; }
    LoadReport load()
    {
        return folder.load(location(),
            [this](RecordFile& file, bool existed) { loaded += QString("%1 %2").arg(file.fileName()).arg(existed ? "there" : "missing"); });
    }
    void write(std::initializer_list<RecordFile*> files, DatabaseFolder::When when = DatabaseFolder::When::now)
    {
        folder.write(std::span<RecordFile* const>(files.begin(), files.size()), when);
    }
    QByteArray contents(const QString& name) const
    {
        QFile file(name.startsWith('/') ? name : location() + '/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void put(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(location()));
        QFile file(location() + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray document(const QByteArray& names)
    {
        QByteArray records;
        int id = 0;
        for (const QByteArray& name : names.split(' ')) {
            if (!name.isEmpty())
                records += "\t\t<dict>\n\t\t\t<key>id</key>\n\t\t\t<string>" + QByteArray::number(++id)
                    + "</string>\n\t\t\t<key>name</key>\n\t\t\t<string>" + name
                    + "</string>\n\t\t\t<key>note</key>\n\t\t\t<string></string>\n\t\t\t<key>owner</key>\n\t\t\t<string>0</string>\n"
                      "\t\t\t<key>sold</key>\n\t\t\t<string>NO</string>\n\t\t\t<key>stocked</key>\n\t\t\t<string>YES</string>\n\t\t</"
                      "dict>\n";
        }
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n<dict>\n\t<key>articles</key>\n"
            + (records.isEmpty() ? QByteArray("\t<array/>\n") : "\t<array>\n" + records + "\t</array>\n") + "</dict>\n</plist>\n";
    }
    QStringList log() const
    {
        const std::lock_guard guard(m_logMutex);
        return m_log;
    }
    /// Files left from an unfinished write.
    QStringList leftovers() const { return QDir(location()).entryList({".vendaro*"}, QDir::Files | QDir::Hidden); }
    /// Something that no file can replace.
    void block(const QString& name) const
    {
        QFile::remove(location() + '/' + name);
        ASSERT_TRUE(QDir().mkpath(location() + '/' + name + "/in the way"));
    }
    void unblock(const QString& name) const { QDir(location() + '/' + name).removeRecursively(); }

    mutable std::mutex m_logMutex;
    QStringList m_log;
    QStringList loaded;
    FakeClock clock;
    FakeUser user;
    ArticleShop mugs;
    ArticleShop orders;
    ArticleShop lines;
    ArticleFile mugFile {mugs.articles, "mugs.xml", "mugs"};
    ArticleFile orderFile {orders.articles, "orders.xml", "orders"};
    ArticleFile lineFile {lines.articles, "itemsordered.xml", "materials"};
    RecoveryStore recovery {recoveryFolder(), clock};
    DatabaseFolder folder {recovery, clock, user};
};

// Loading

TEST_F(DatabaseFolderTest, filesAreTakenOverInTheirOrderWhetherThereOrNot)
{
    put("mugs.xml", document("a b"));
    put("itemsordered.xml", document("c"));

    const LoadReport report = load();

    EXPECT_EQ(loaded, (QStringList {"mugs.xml there", "orders.xml missing", "itemsordered.xml there"}));
    EXPECT_TRUE(report.damaged.isEmpty());
    EXPECT_EQ(folder.location(), location());
    EXPECT_EQ(mugs.articles.getCount(), 2);
    EXPECT_EQ(orders.articles.getCount(), 0);
    EXPECT_EQ(lines.articles.getFirstItem()->getFieldByName("name"), "c");
}

TEST_F(DatabaseFolderTest, loadingAFolderThatIsNotThereMakesNone)
{
    EXPECT_TRUE(load().damaged.isEmpty());

    EXPECT_EQ(loaded.size(), 3);
    EXPECT_FALSE(QFileInfo::exists(location()));
}

TEST_F(DatabaseFolderTest, loadingChangesNothingInTheFolder)
{
    put("mugs.xml", "damaged");
    put(".vendaro-orders.xml.1.0.tmp", "left over");
    load();

    EXPECT_EQ(contents("mugs.xml"), "damaged");
    EXPECT_EQ(QDir(location()).entryList(QDir::Files | QDir::Hidden), (QStringList {".vendaro-orders.xml.1.0.tmp", "mugs.xml"}));
}

TEST_F(DatabaseFolderTest, aDamagedFileIsToldAndKeptAndTheOthersAreRead)
{
    const QByteArray damaged = document("a b").chopped(30);
    put("mugs.xml", damaged);
    put("orders.xml", document("c"));

    const LoadReport report = load();

    const QString kept = recoveryFolder() + "/20240301-101530 mugs.xml";
    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].startsWith("mugs.xml could not be read (line ")) << report.damaged[0].toStdString();
    EXPECT_TRUE(report.damaged[0].endsWith("Its original is kept as " + kept + ".")) << report.damaged[0].toStdString();
    EXPECT_TRUE(log().contains(report.damaged[0]));
    EXPECT_EQ(contents(kept), damaged);
    EXPECT_EQ(mugs.articles.getCount(), 0);
    EXPECT_EQ(orders.articles.getCount(), 1);
}

TEST_F(DatabaseFolderTest, aFolderInAFilesPlaceIsDamageToo)
{
    block("mugs.xml");

    const LoadReport report = load();

    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].contains("is not an ordinary file"));
}

TEST_F(DatabaseFolderTest, anOriginalThatCouldNotBeKeptIsKeptBeforeItIsReplaced)
{
    put("mugs.xml", "damaged");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const LoadReport report = load();
    ASSERT_EQ(report.damaged.size(), 1);
    EXPECT_TRUE(report.damaged[0].contains("Its original could not be copied yet")) << report.damaged[0].toStdString();
    mugs.articles.addNamed("new");

    write({&mugFile});
    EXPECT_EQ(contents("mugs.xml"), "damaged");
    EXPECT_NE(folder.unsavedReason(), "");

    ASSERT_TRUE(inTheWay.remove());
    write({&mugFile});
    EXPECT_EQ(contents("mugs.xml"), document("new"));
    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 mugs.xml"), "damaged");
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, anOriginalThatSomebodyTookAwayHoldsNothingUp)
{
    put("mugs.xml", "damaged");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    load();
    ASSERT_TRUE(QFile::remove(location() + "/mugs.xml"));
    mugs.articles.addNamed("new");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("new"));
}

// Writing

TEST_F(DatabaseFolderTest, whatIsWrittenNowIsOnDiskWhenItReturns)
{
    load();
    mugs.articles.addNamed("a");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_FALSE(QFileInfo::exists(location() + "/orders.xml"));
    EXPECT_TRUE(leftovers().isEmpty());
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, severalFilesAreWrittenTogether)
{
    load();
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");

    write({&orderFile, &lineFile, &mugFile});

    EXPECT_EQ(contents("orders.xml"), document("order"));
    EXPECT_EQ(contents("itemsordered.xml"), document("line"));
    EXPECT_EQ(contents("mugs.xml"), document(""));
    EXPECT_TRUE(leftovers().isEmpty());
}

TEST_F(DatabaseFolderTest, aWriteInTheBackgroundHoldsTheStateOfItsMoment)
{
    load();
    Article& mug = mugs.articles.addNamed("before");
    int told = 0;
    folder.onSavedStateChanged = [&] { ++told; };

    write({&mugFile}, DatabaseFolder::When::inBackground);
    mug.setFieldByName("name", "after");
    folder.drain();

    EXPECT_EQ(contents("mugs.xml"), document("before"));
    EXPECT_EQ(told, 1);
}

TEST_F(DatabaseFolderTest, writesOfOneFileNeverOvertakeEachOther)
{
    load();
    Article& mug = mugs.articles.addNamed("0");
    for (int i = 1; i <= 50; ++i) {
        mug.setFieldByName("name", std::to_string(i));
        write({&mugFile}, DatabaseFolder::When::inBackground);
    }
    mug.setFieldByName("name", "last");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("last"));
}

TEST_F(DatabaseFolderTest, whatIsQueuedIsWrittenBeforeTheProgramEnds)
{
    {
        DatabaseFolder brief(recovery, clock, user);
        brief.registerFile(mugFile);
        brief.load(location(), [](RecordFile&, bool) {});
        mugs.articles.addNamed("a");
        RecordFile* const files[] {&mugFile};
        brief.write(files, DatabaseFolder::When::inBackground);
    }

    EXPECT_EQ(contents("mugs.xml"), document("a"));
}

TEST_F(DatabaseFolderTest, aFileThatCannotBeWrittenIsLoggedAndTheOthersGo)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");

    write({&mugFile, &orderFile, &lineFile});

    EXPECT_EQ(contents("orders.xml"), document("order"));
    EXPECT_EQ(contents("itemsordered.xml"), document("line"));
    EXPECT_TRUE(log().contains("mugs not written successfully"));
    EXPECT_FALSE(log().contains("orders not written successfully"));
    EXPECT_TRUE(folder.unsavedReason().contains("mugs.xml could not be put into its place"));
    EXPECT_TRUE(leftovers().isEmpty()) << leftovers().join(' ').toStdString();
}

TEST_F(DatabaseFolderTest, whatCouldNotBeWrittenIsTriedAgain)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    write({&mugFile});
    unblock("mugs.xml");
    mugs.articles.addNamed("another");

    folder.retry();
    folder.drain();

    EXPECT_EQ(contents("mugs.xml"), document("mug another"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, aWriteOfAnotherCollectionDoesNotTakeAlongWhatIsUnsaved)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    mugs.articles.addNamed("mug");
    write({&mugFile});
    unblock("mugs.xml");

    write({&orderFile});

    EXPECT_EQ(contents("mugs.xml"), "(none)");
    EXPECT_NE(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, ordersAndTheirLinesGoBothOrNeither)
{
    put("orders.xml", document("old"));
    put("itemsordered.xml", document("old"));
    load();
    block("orders.xml");
    lines.articles.addNamed("line");

    write({&orderFile, &lineFile, &mugFile});

    EXPECT_EQ(contents("itemsordered.xml"), document("old"));
    EXPECT_EQ(contents("mugs.xml"), document(""));
    EXPECT_TRUE(log().contains("orders not written successfully"));
    EXPECT_TRUE(log().contains("materials not written successfully"));
}

TEST_F(DatabaseFolderTest, anInterruptedWriteIsReadThroughAndPutRightByTheFirstWrite)
{
    // Given a group that was cut off between its renames.
    put("orders.xml", document("old"));
    put("itemsordered.xml", document("old"));
    load();
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");
    block("itemsordered.xml");
    write({&orderFile, &lineFile});
    unblock("itemsordered.xml");
    put("itemsordered.xml", document("old"));
    ASSERT_FALSE(leftovers().isEmpty());

    // When another program reads the folder.
    ArticleShop otherOrders;
    ArticleShop otherLines;
    ArticleFile otherOrderFile(otherOrders.articles, "orders.xml", "orders");
    ArticleFile otherLineFile(otherLines.articles, "itemsordered.xml", "materials");
    DatabaseFolder other(recovery, clock, user);
    other.registerFile(otherOrderFile);
    other.registerFile(otherLineFile);
    other.load(location(), [](RecordFile&, bool) {});

    // Then it sees both files new, and its first write leaves nothing of the interruption.
    EXPECT_EQ(otherOrders.articles.getCount(), 2);
    EXPECT_EQ(otherLines.articles.getCount(), 2);
    EXPECT_EQ(contents("itemsordered.xml"), document("old"));
    RecordFile* const files[] {&otherLineFile};
    other.write(files, DatabaseFolder::When::now);
    EXPECT_TRUE(leftovers().isEmpty());
    EXPECT_EQ(otherLines.articles.shown(), "line old ");
    EXPECT_EQ(contents("orders.xml").count("<dict>"), 3);
}

TEST_F(DatabaseFolderTest, writesGoToTheFolderThatWasLoaded)
{
    load();
    mugs.articles.addNamed("a");
    write({&mugFile}, DatabaseFolder::When::inBackground);
    folder.load(user.home() + "/other.vendb", [](RecordFile&, bool) {});
    write({&orderFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_EQ(contents("orders.xml"), "(none)");
    EXPECT_EQ(contents(user.home() + "/other.vendb/orders.xml"), document(""));
}

TEST_F(DatabaseFolderTest, aSecondLoadForgetsWhatWasUnsavedInTheFirst)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    write({&mugFile});
    ASSERT_NE(folder.unsavedReason(), "");

    folder.load(user.home() + "/other.vendb", [](RecordFile&, bool) {});

    EXPECT_EQ(folder.unsavedReason(), "");
}

// Somebody else's hands

TEST_F(DatabaseFolderTest, aFileThatCameWentOrChangedSinceItWasReadIsSeen)
{
    put("mugs.xml", document("a"));
    load();
    EXPECT_FALSE(folder.changedSinceRead());

    put("mugs.xml", document("a b"));
    EXPECT_TRUE(folder.changedSinceRead());
    load();
    EXPECT_FALSE(folder.changedSinceRead());
    put("orders.xml", document("c"));
    EXPECT_TRUE(folder.changedSinceRead());
    load();
    QFile::remove(location() + "/mugs.xml");
    EXPECT_TRUE(folder.changedSinceRead());
}

TEST_F(DatabaseFolderTest, otherFilesOfTheFolderMayChange)
{
    put("mugs.xml", document("a"));
    load();

    put("notes.txt", "somebody's");

    EXPECT_FALSE(folder.changedSinceRead());
}

TEST_F(DatabaseFolderTest, readingAgainTakesWhatIsThereNowAndLeavesTheLock)
{
    put("mugs.xml", document("a"));
    load();
    ASSERT_TRUE(folder.lock().acquire().value());
    put("mugs.xml", document("b c"));
    mugs.articles.clear();
    loaded.clear();

    folder.readAgain([this](RecordFile& file, bool) { loaded += file.fileName(); });

    EXPECT_EQ(loaded, (QStringList {"mugs.xml", "orders.xml", "itemsordered.xml"}));
    EXPECT_EQ(mugs.articles.getCount(), 2);
    EXPECT_TRUE(folder.lock().isOurs());
    EXPECT_FALSE(folder.changedSinceRead());
}

// Rescue

TEST_F(DatabaseFolderTest, whatCouldNotBeWrittenIsKeptAsItIsNow)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    Article& mug = mugs.articles.addNamed("before");
    write({&mugFile, &orderFile});
    mug.setFieldByName("name", "now");

    const QStringList sentences = folder.keepUnsaved();

    const QString kept = recoveryFolder() + "/20240301-101530 mugs.xml";
    EXPECT_EQ(sentences, QStringList {"mugs.xml could not be written. What it should hold is kept as " + kept + "."});
    EXPECT_EQ(contents(kept), document("now"));
    EXPECT_EQ(QDir(recoveryFolder()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(log().contains(sentences.value(0)));
}

TEST_F(DatabaseFolderTest, whenAllIsSavedNothingIsKept)
{
    load();
    write({&mugFile});

    EXPECT_TRUE(folder.keepUnsaved().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(recoveryFolder()));
}

TEST_F(DatabaseFolderTest, whatCannotBeKeptEitherIsSaid)
{
    load();
    QDir().mkpath(location());
    block("mugs.xml");
    write({&mugFile});
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    const QStringList sentences = folder.keepUnsaved();

    ASSERT_EQ(sentences.size(), 1);
    EXPECT_TRUE(sentences[0].startsWith("mugs.xml could not be written. cannot make the folder")) << sentences[0].toStdString();
}

TEST_F(DatabaseFolderTest, aFolderThatWentAwayIsMadeAnewAndEachFileKeptBesides)
{
    QDir().mkpath(location());
    load();
    mugs.articles.addNamed("a");
    write({&mugFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));

    write({&mugFile});
    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a"));
    EXPECT_EQ(contents(user.home() + "/gone.vendb/mugs.xml"), document("a"));
    EXPECT_EQ(QDir(recoveryFolder()).entryList({"* mugs.xml"}).size(), 1) << "the newest copy is enough";
    EXPECT_EQ(folder.unsavedReason(), location() + " is not the folder that was opened");
}

TEST_F(DatabaseFolderTest, whenItComesBackWritingGoesOnAsBefore)
{
    QDir().mkpath(location());
    load();
    mugs.articles.addNamed("a");
    write({&mugFile});
    ASSERT_TRUE(QDir().rename(location(), user.home() + "/gone.vendb"));
    write({&mugFile});
    ASSERT_TRUE(QDir(location()).removeRecursively());
    ASSERT_TRUE(QDir().rename(user.home() + "/gone.vendb", location()));
    mugs.articles.addNamed("b");

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("a b"));
    EXPECT_EQ(folder.unsavedReason(), "");
}

TEST_F(DatabaseFolderTest, aFolderMadeByTheFirstWriteIsNotAnotherOne)
{
    load();
    write({&mugFile});
    write({&mugFile});

    EXPECT_EQ(folder.unsavedReason(), "");
    EXPECT_FALSE(QFileInfo::exists(recoveryFolder()));
}

// Copies

TEST_F(DatabaseFolderTest, aCopyHasEverythingAndALockOfItsOwn)
{
    put("mugs.xml", document("a"));
    put("lock.xml", "the open database's lock");
    QDir().mkpath(location() + "/Attachments/7");
    put("Attachments/7/letter.txt", "letter");
    load();

    const QString target = user.home() + "/copy.vendb";
    ASSERT_TRUE(folder.copyTo(target).ok());

    EXPECT_EQ(contents(target + "/mugs.xml"), document("a"));
    EXPECT_EQ(contents(target + "/Attachments/7/letter.txt"), "letter");
    EXPECT_EQ(contents(target + "/lock.xml"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n\t<key>datetime</key>\n\t<string>2024-03-01 10:15:30 +0000</string>\n\t<key>reason</key>\n"
        "\t<string>offline browsing</string>\n\t<key>user</key>\n\t<string>ada</string>\n</dict>\n</plist>\n");
    EXPECT_EQ(contents("lock.xml"), "the open database's lock");
}

TEST_F(DatabaseFolderTest, aCopyIsNeverMadeOverSomethingOrIntoItself)
{
    put("mugs.xml", document("a"));
    load();
    const QString taken = user.home() + "/taken.vendb";
    QDir().mkpath(taken);

    EXPECT_FALSE(folder.copyTo(taken).ok());
    EXPECT_FALSE(folder.copyTo(location() + "/copy.vendb").ok());
    EXPECT_FALSE(folder.copyTo(location()).ok());

    EXPECT_TRUE(QDir(taken).isEmpty());
    EXPECT_EQ(QDir(location()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList {"mugs.xml"});
    EXPECT_FALSE(QFileInfo::exists(taken + ".unfinished"));
    EXPECT_FALSE(QFileInfo::exists(location() + ".unfinished"));
}
