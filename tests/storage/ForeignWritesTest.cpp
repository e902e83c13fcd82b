// What becomes of files that somebody else writes while the database is open here, and of the state before a day's first write.
#include "DatabaseFolderTest.h"

#include <sys/stat.h>

namespace {

class ForeignWritesTest : public DatabaseFolderTest {
protected:
    QStringList kept(const QString& name) const { return QDir(recoveryFolder()).entryList({"* " + name}, QDir::Files, QDir::Name); }
    std::vector<Generation> states() const { return folder.generations().of(location()); }
};

/// Somebody else is at work whenever the time is asked for so many times.
class BusyClock : public FakeClock {
public:
    QDateTime now() const override
    {
        if (--m_left == 0)
            m_deed();
        return FakeClock::now();
    }
    void interrupt(int times, std::function<void()> deed)
    {
        m_left = times;
        m_deed = std::move(deed);
    }

private:
    mutable int m_left = 0;
    std::function<void()> m_deed;
};

class BusyFolderTest : public ForeignWritesTest {
protected:
    BusyFolderTest()
    {
        busyFolder.registerFile(mugFile);
        busyFolder.registerFile(orderFile);
        busyFolder.registerFile(lineFile);
    }
    void loadBusily()
    {
        busyFolder.load(location(), [](RecordFile&, bool) {});
    }
    void writeBusily(RecordFile& file)
    {
        RecordFile* const files[] {&file};
        busyFolder.write(files, DatabaseFolder::When::now);
    }
    /// As another program saves: a new file takes the place of the one before.
    void replace(const QString& name, const QByteArray& bytes) const
    {
        put(name + ".new", bytes);
        QFile::remove(location() + '/' + name);
        ASSERT_TRUE(QFile::rename(location() + '/' + name + ".new", location() + '/' + name));
    }

    BusyClock busyClock;
    RecoveryStore busyRecovery {recoveryFolder(), busyClock};
    DatabaseFolder busyFolder {busyRecovery, busyClock, user};
};

} // namespace

TEST_F(ForeignWritesTest, whatSomebodyElseWroteIsKeptBeforeItIsWrittenOverAndThePersonIsTold)
{
    put("mugs.xml", document("ours"));
    load();
    put("mugs.xml", document("theirs longer"));

    write({&mugFile});

    const QString copy = recoveryFolder() + "/20240301-101530 mugs.xml";
    EXPECT_EQ(contents(copy), document("theirs longer"));
    EXPECT_TRUE(contents("mugs.xml").contains(">ours<"));
    EXPECT_EQ(folder.takeNews(),
        QStringList {"mugs.xml was changed by somebody else and is written over now. What they wrote is kept as " + copy + "."});
    EXPECT_TRUE(folder.takeNews().isEmpty());
    EXPECT_EQ(recovery.things().at(0).reason, KeptFor::foreign);
    EXPECT_EQ(recovery.things().at(0).origin, location() + "/mugs.xml");
}

TEST_F(ForeignWritesTest, aFileThatAppearedMeanwhileIsKeptToo)
{
    load();
    put("mugs.xml", document("theirs"));

    write({&mugFile});

    EXPECT_EQ(kept("mugs.xml").size(), 1);
}

TEST_F(ForeignWritesTest, linesWaitWithTheirOrdersWhenWhatSomebodyElseWroteCannotBeKept)
{
    put("orders.xml", document("ours"));
    put("itemsordered.xml", document("ours"));
    load();
    put("orders.xml", document("theirs longer"));
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");
    mugs.articles.addNamed("mug");
    // Nothing can be kept where a file stands in the store's place.
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    folder.writeEverything();

    EXPECT_EQ(contents("orders.xml"), document("theirs longer"));
    EXPECT_EQ(contents("itemsordered.xml"), document("ours"));
    EXPECT_TRUE(contents("mugs.xml").contains(">mug<"));
    EXPECT_FALSE(folder.unsavedReason().isEmpty());

    // Both go with the next write.
    ASSERT_TRUE(inTheWay.remove());
    folder.retry();
    folder.drain();
    EXPECT_TRUE(contents("orders.xml").contains(">order<"));
    EXPECT_TRUE(contents("itemsordered.xml").contains(">line<"));
    EXPECT_EQ(kept("orders.xml").size(), 1);
}

TEST_F(ForeignWritesTest, aFileThatDidNotReadMakesAStateOfTheOthersBeforeTheFirstWrite)
{
    put("mugs.xml", document("a"));
    load();
    folder.writeEverything(); // the state of today
    ASSERT_EQ(states().size(), 1u);
    put("mugs.xml", document("a b"));
    put("orders.xml", "<plist");
    load();

    write({&mugFile});
    write({&mugFile});

    ASSERT_EQ(states().size(), 2u);
    EXPECT_EQ(contents(states().front().folder + "/mugs.xml"), document("a b"));
    EXPECT_EQ(contents(states().front().folder + "/orders.xml"), "<plist");
}

TEST_F(ForeignWritesTest, ourOwnWritesAreNobodyElses)
{
    put("mugs.xml", document("a b"));
    load();
    for (int times = 0; times < 3; ++times) {
        mugs.articles.addNamed("another");
        write({&mugFile, &orderFile, &lineFile});
    }
    folder.writeEverything();
    write({&mugFile});

    EXPECT_TRUE(recovery.things().empty());
    EXPECT_TRUE(folder.takeNews().isEmpty());
    EXPECT_FALSE(folder.changedSinceRead());
}

TEST_F(ForeignWritesTest, whatOnlyHalfOfAPairCouldBeReplacedByIsOursToo)
{
    put("orders.xml", document("a"));
    put("itemsordered.xml", document("b"));
    load();
    block("itemsordered.xml");

    for (int times = 0; times < 3; ++times) {
        orders.articles.addNamed("order");
        write({&orderFile, &lineFile});
        folder.retry();
        folder.drain();
    }

    EXPECT_EQ(contents("orders.xml").count(">order<"), 3) << "it was put into its place each time";
    EXPECT_FALSE(folder.unsavedReason().isEmpty());
    EXPECT_TRUE(kept("orders.xml").isEmpty());
    EXPECT_TRUE(folder.takeNews().isEmpty());
}

TEST_F(ForeignWritesTest, anInterruptedWriteThatIsPutRightIsNobodyElses)
{
    load();
    interruptWriting();
    ArticleShop otherMugs;
    ArticleShop otherOrders;
    ArticleShop otherLines;
    ArticleFile otherMugFile {otherMugs.articles, "mugs.xml", "mugs"};
    ArticleFile otherOrderFile {otherOrders.articles, "orders.xml", "orders"};
    ArticleFile otherLineFile {otherLines.articles, "itemsordered.xml", "materials"};
    DatabaseFolder next(recovery, clock, user);
    for (RecordFile* file : std::initializer_list<RecordFile*> {&otherMugFile, &otherOrderFile, &otherLineFile})
        next.registerFile(*file);
    next.load(location(), [](RecordFile&, bool) {});
    RecordFile* const all[] {&otherMugFile, &otherOrderFile, &otherLineFile};

    next.write(all, DatabaseFolder::When::now);

    EXPECT_TRUE(contents("itemsordered.xml").contains(">line<"));
    EXPECT_TRUE(kept("orders.xml").isEmpty());
    EXPECT_TRUE(kept("itemsordered.xml").isEmpty());
}

TEST_F(ForeignWritesTest, whatCannotBeKeptIsNotWrittenOver)
{
    put("mugs.xml", document("ours"));
    load();
    put("mugs.xml", document("theirs longer"));
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    write({&mugFile});

    EXPECT_EQ(contents("mugs.xml"), document("theirs longer"));
    EXPECT_FALSE(folder.unsavedReason().isEmpty());
}

// Generations

TEST_F(ForeignWritesTest, aDaysFirstWriteKeepsWhatTheFilesHeldBefore)
{
    put("mugs.xml", document("before"));
    load();
    mugs.articles.addNamed("new");
    folder.writeEverything();
    mugs.articles.addNamed("newer");
    folder.writeEverything();

    ASSERT_EQ(states().size(), 1U);
    EXPECT_EQ(contents(states()[0].folder + "/mugs.xml"), document("before"));
    EXPECT_TRUE(recovery.things().empty()) << "a second name for our file is nobody else's write";
}

TEST_F(ForeignWritesTest, aWriteOfSomeFilesKeepsThemAllOnceADay)
{
    put("mugs.xml", document("monday"));
    put("orders.xml", document("monday"));
    load();
    mugs.articles.addNamed("later");

    write({&mugFile});
    write({&orderFile, &lineFile});
    folder.writeEverything();

    ASSERT_EQ(states().size(), 1U);
    EXPECT_EQ(contents(states()[0].folder + "/mugs.xml"), document("monday"));
    EXPECT_EQ(contents(states()[0].folder + "/orders.xml"), document("monday"));
}

TEST_F(ForeignWritesTest, whatIsMadeAfterADaysLastQuitAndDeletedTheNextMorningIsInAState)
{
    put("mugs.xml", document("old"));
    load();
    folder.writeEverything();
    mugs.articles.addNamed("jug");
    folder.writeEverything();
    clock.moment = clock.moment.addDays(1);

    mugs.articles.deleteItem(*mugs.articles.getItemById(2));
    write({&mugFile});
    folder.writeEverything();

    ASSERT_EQ(states().size(), 2U);
    EXPECT_TRUE(contents(states()[0].folder + "/mugs.xml").contains(">jug<"));
    EXPECT_FALSE(contents("mugs.xml").contains(">jug<"));
}

TEST_F(ForeignWritesTest, ofWritesOfTheSameFilesThatWaitTheNewestIsEnough)
{
    load();
    std::mutex mutex;
    std::condition_variable changed;
    bool goOn = false;
    int writes = 0;
    folder.onSavedStateChanged = [&] {
        std::unique_lock guard(mutex);
        ++writes;
        changed.notify_all();
        changed.wait(guard, [&] { return goOn; });
    };
    write({&orderFile}, DatabaseFolder::When::inBackground);
    {
        std::unique_lock guard(mutex);
        changed.wait(guard, [&] { return writes == 1; });
    }
    for (const char* name : {"first", "second", "third"}) {
        mugs.articles.addNamed(name);
        write({&mugFile}, DatabaseFolder::When::inBackground);
    }
    write({&orderFile}, DatabaseFolder::When::inBackground);
    {
        const std::lock_guard guard(mutex);
        goOn = true;
    }
    changed.notify_all();
    folder.drain();

    EXPECT_EQ(writes, 3);
    EXPECT_TRUE(contents("mugs.xml").contains(">third<"));
    folder.onSavedStateChanged = nullptr;
}

TEST_F(ForeignWritesTest, aGenerationThatCannotBeKeptHoldsNoWriteUp)
{
    put("mugs.xml", document("before"));
    load();
    mugs.articles.addNamed("new");
    QFile inTheWay(recoveryFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));

    folder.writeEverything();

    EXPECT_TRUE(contents("mugs.xml").contains(">new<"));
    EXPECT_TRUE(folder.unsavedReason().isEmpty());
}

TEST_F(ForeignWritesTest, oneIsKeptWhenAskedForToo)
{
    put("mugs.xml", document("before"));
    load();

    ASSERT_TRUE(folder.keepGeneration().ok());
    ASSERT_TRUE(folder.keepGeneration().ok());
    write({&mugFile});

    EXPECT_EQ(states().size(), 2U);
    EXPECT_TRUE(recovery.things().empty());
}

TEST_F(BusyFolderTest, whatSomebodyElseWritesWhileADaysStateIsKeptIsKeptBeforeItIsWrittenOver)
{
    put("mugs.xml", document("ours"));
    put("orders.xml", document("ours"));
    loadBusily();
    // First it is asked for the day, then for the time of the state that is kept.
    busyClock.interrupt(2, [this] { replace("mugs.xml", document("theirs")); });

    writeBusily(orderFile);
    ASSERT_EQ(contents("mugs.xml"), document("theirs"));
    ASSERT_EQ(states().size(), 1U);
    writeBusily(mugFile);

    ASSERT_EQ(kept("mugs.xml").size(), 1);
    EXPECT_EQ(contents(recoveryFolder() + '/' + kept("mugs.xml").value(0)), document("theirs"));
    EXPECT_EQ(busyFolder.takeNews().size(), 1);
    EXPECT_TRUE(kept("orders.xml").isEmpty());
}

TEST_F(BusyFolderTest, soIsWhatTheyWriteWhileAStateIsKeptThatWasAskedFor)
{
    put("mugs.xml", document("ours"));
    loadBusily();
    busyClock.interrupt(1, [this] { replace("mugs.xml", document("theirs")); });

    ASSERT_TRUE(busyFolder.keepGeneration().ok());

    EXPECT_TRUE(busyFolder.changedSinceRead());
    writeBusily(mugFile);
    EXPECT_EQ(kept("mugs.xml").size(), 1);
}

TEST_F(BusyFolderTest, contentsOfAnInterruptedWriteThatWereNotReadAreNotTakenForOurs)
{
    // Given an interrupted write that does not read when the folder is loaded.
    put("orders.xml", document("old"));
    put("itemsordered.xml", document("old"));
    load();
    interruptWriting();
    const QString intent = location() + "/.vendaro-commit";
    ASSERT_TRUE(QFile::rename(intent, intent + ".away"));
    ASSERT_TRUE(QDir().mkpath(intent));
    orders.articles.clear();
    lines.articles.clear();
    loadBusily();
    ASSERT_EQ(lines.articles.shown(), "old ");

    // When it reads at the first write.
    ASSERT_TRUE(QDir().rmdir(intent));
    ASSERT_TRUE(QFile::rename(intent + ".away", intent));
    writeBusily(mugFile);
    const QByteArray theirs = contents("itemsordered.xml");
    ASSERT_TRUE(theirs.contains(">line<"));

    // Then the lines that were put into their place are nobody's that the program knows of.
    EXPECT_TRUE(busyFolder.changedSinceRead());
    writeBusily(lineFile);
    QList<QByteArray> copies;
    for (const QString& name : kept("itemsordered.xml"))
        copies += contents(recoveryFolder() + '/' + name);
    EXPECT_TRUE(copies.contains(theirs));
}
