#include "storage/DatabaseFolderTest.h"

#include "support/NoRoom.h"

#include <functional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// What somebody else does right before the program makes its next folder.
std::function<void()> beforeNextFolder;

} // namespace

extern "C" int mkdir(const char* path, mode_t mode) noexcept
{
    if (const auto first = std::exchange(beforeNextFolder, nullptr))
        first();
    return mkdirat(AT_FDCWD, path, mode);
}

// Interrupted writes

TEST_F(DatabaseFolderTest, anInterruptedWriteIsReadThroughAndPutRightByTheFirstWrite)
{
    // Given a group that was cut off between its renames.
    put("orders.xml", document("old"));
    put("itemsordered.xml", document("old"));
    load();
    interruptWriting();
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

TEST_F(DatabaseFolderTest, anInterruptedWriteThatSomebodyFinishesWhileItIsReadIsReadAllTheSame)
{
    put("itemsordered.xml", document("old"));
    load();
    interruptWriting();

    ArticleShop otherMugs;
    ArticleShop otherLines;
    ArticleShop otherOrders;
    ArticleFile otherMugFile(otherMugs.articles, "mugs.xml", "mugs");
    ArticleFile otherOrderFile(otherOrders.articles, "orders.xml", "orders");
    ArticleFile otherLineFile(otherLines.articles, "itemsordered.xml", "materials");
    DatabaseFolder other(recovery, clock, user);
    for (ArticleFile* file : {&otherMugFile, &otherOrderFile, &otherLineFile})
        other.registerFile(*file);
    other.load(location(), [this](RecordFile& file, bool) {
        if (QByteArray(file.fileName()) == "mugs.xml")
            folder.retry();
        folder.drain();
    });

    EXPECT_TRUE(leftovers().isEmpty()) << "the write was finished while the folder was read";
    EXPECT_EQ(otherOrders.articles.getCount(), 1);
    EXPECT_EQ(otherLines.articles.getCount(), 2);
}

TEST_F(DatabaseFolderTest, whatCannotBePutRightYetIsPutRightLaterAndHoldsNoOtherFileUp)
{
    // Given orders and lines of which the lines cannot be replaced.
    load();
    orders.articles.addNamed("order");
    lines.articles.addNamed("line");
    QDir().mkpath(location());
    block("itemsordered.xml");
    write({&orderFile, &lineFile});

    // When the next program writes something else, twice.
    ArticleShop otherMugs;
    ArticleShop otherLines;
    ArticleFile otherMugFile(otherMugs.articles, "mugs.xml", "mugs");
    ArticleFile otherLineFile(otherLines.articles, "itemsordered.xml", "materials");
    DatabaseFolder other(recovery, clock, user);
    other.registerFile(otherMugFile);
    other.registerFile(otherLineFile);
    other.load(location(), [](RecordFile&, bool) {});
    RecordFile* const mugsOnly[] {&otherMugFile};
    otherMugs.articles.addNamed("mug");
    other.write(mugsOnly, DatabaseFolder::When::now);
    other.write(mugsOnly, DatabaseFolder::When::now);

    // Then that is written, and the lines come into their place as soon as they can.
    EXPECT_EQ(contents("mugs.xml"), document("mug"));
    unblock("itemsordered.xml");
    other.write(mugsOnly, DatabaseFolder::When::now);
    EXPECT_EQ(contents("itemsordered.xml"), document("line"));
    EXPECT_TRUE(leftovers().isEmpty());
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

TEST_F(DatabaseFolderTest, aCopyOfALinkedFolderIsAFolderOfItsOwnAndLeavesTheLiveLock)
{
    put("mugs.xml", document("a"));
    put("lock.xml", "the open database's lock");
    const QString real = user.home() + "/on a share";
    ASSERT_TRUE(QDir().rename(location(), real));
    ASSERT_TRUE(QFile::link(real, location()));
    load();
    const QString target = user.home() + "/copy.vendb";

    ASSERT_TRUE(folder.copyTo(target).ok());

    EXPECT_FALSE(QFileInfo(target).isSymLink());
    EXPECT_TRUE(contents(target + "/lock.xml").contains("offline browsing"));
    EXPECT_EQ(contents(real + "/lock.xml"), "the open database's lock");
}

TEST_F(DatabaseFolderTest, aCopyOfALinkedFolderThatFailsTakesNothingFromTheLiveOne)
{
    put("mugs.xml", document("a"));
    const QString real = user.home() + "/on a share";
    ASSERT_TRUE(QDir().rename(location(), real));
    ASSERT_TRUE(QFile::link(real, location()));
    load();
    {
        const NoRoom full;
        EXPECT_FALSE(folder.copyTo(user.home() + "/copy.vendb").ok());
    }

    EXPECT_EQ(contents(real + "/mugs.xml"), document("a"));
    EXPECT_EQ(QDir(user.home()).entryList({"copy*"}, QDir::AllEntries | QDir::Hidden), QStringList());
}

TEST_F(DatabaseFolderTest, aCopyTakesNothingAwayThatItDidNotMake)
{
    put("mugs.xml", document("a"));
    load();
    const QString target = user.home() + "/copy.vendb";
    QDir().mkpath(target + ".unfinished/somebody's work");

    ASSERT_TRUE(folder.copyTo(target).ok());

    EXPECT_EQ(contents(target + "/mugs.xml"), document("a"));
    EXPECT_TRUE(QFileInfo::exists(target + ".unfinished/somebody's work"));
    EXPECT_FALSE(QFileInfo::exists(target + ".unfinished-1"));
}

TEST_F(DatabaseFolderTest, aCopyTakesNothingAwayThatAppearsWhereItBegins)
{
    put("mugs.xml", document("a"));
    load();
    const QString target = user.home() + "/copy.vendb";
    beforeNextFolder = [&] { QDir().mkpath(target + ".unfinished/somebody's work"); };

    EXPECT_FALSE(folder.copyTo(target).ok());

    EXPECT_TRUE(QFileInfo::exists(target + ".unfinished/somebody's work"));
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

TEST_F(DatabaseFolderTest, aDatabaseThatIsNotThereCannotBeCopiedAndThatIsSaid)
{
    load();

    const Result<void> copied = folder.copyTo(user.home() + "/copy.vendb");

    ASSERT_FALSE(copied.ok());
    EXPECT_EQ(copied.error().message, location().toStdString() + " is not there");
}

// What did not read

TEST_F(DatabaseFolderTest, afterDamageAllFilesAreKeptAsTheyWereBeforeAnyIsWritten)
{
    put("mugs.xml", "damaged");
    put("orders.xml", document("old"));
    load();
    const auto states = [this] { return Generations(recoveryFolder(), clock).of(location()); };
    ASSERT_TRUE(states().empty());

    write({&orderFile});
    ASSERT_EQ(states().size(), 1U);
    orders.articles.addNamed("new");
    write({&orderFile});

    ASSERT_EQ(states().size(), 1U);
    EXPECT_EQ(contents(states()[0].folder + "/orders.xml"), document("old"));
    EXPECT_EQ(contents(states()[0].folder + "/mugs.xml"), "damaged");
}

TEST_F(DatabaseFolderTest, aFileThatHoldsMoreThanItsCollectionIsToldAndKeptBeforeItIsReplaced)
{
    class ForgetfulFile : public ArticleFile {
    public:
        using ArticleFile::ArticleFile;
        std::string leftOut() const override { return "a handle belongs to no mug"; }
    };
    ForgetfulFile handles(mugs.articles, "handles.xml", "handles");
    folder.registerFile(handles);
    put("handles.xml", document("old"));

    const LoadReport report = load();
    EXPECT_EQ(report.damaged, QStringList("handles.xml: a handle belongs to no mug. The file is kept before it is written over."));
    EXPECT_FALSE(QDir(recoveryFolder()).exists());
    mugs.articles.addNamed("new");
    write({&handles});

    EXPECT_EQ(contents(recoveryFolder() + "/20240301-101530 handles.xml"), document("old"));
    EXPECT_TRUE(contents("handles.xml").contains("<string>new</string>"));
}
