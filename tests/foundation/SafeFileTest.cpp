#include "foundation/SafeFile.h"

#include "support/Race.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr char intentFile[] = ".vendaro-commit";

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void put(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace

class SafeFileTest : public testing::Test {
protected:
    std::string in(const std::string& name) const { return folder() + '/' + name; }
    std::string folder() const { return m_folder.path().toStdString(); }
    /// Everything in the folder, hidden files too.
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    QTemporaryDir m_folder;
};

TEST_F(SafeFileTest, aNewFileAppearsWithItsWholeContents)
{
    ASSERT_TRUE(writeFileSafely(in("orders.xml"), "new").ok());

    EXPECT_EQ(contentsOf(in("orders.xml")), "new");
    EXPECT_EQ(names(), std::vector<std::string> {"orders.xml"});
}

TEST_F(SafeFileTest, anOldFileIsReplacedOnlyByTheCommit)
{
    put(in("orders.xml"), "old");
    SafeFile file(in("orders.xml"));
    file.append("new ");
    file.append("contents");

    ASSERT_TRUE(file.prepare().ok());
    EXPECT_EQ(contentsOf(in("orders.xml")), "old");
    EXPECT_EQ(contentsOf(file.temporaryPath()), "new contents");
    ASSERT_TRUE(file.commit().ok());

    EXPECT_EQ(contentsOf(in("orders.xml")), "new contents");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(SafeFileTest, aFileThatIsNeverCommittedLeavesNothingBehind)
{
    put(in("orders.xml"), "old");
    {
        SafeFile file(in("orders.xml"));
        file.append("new");
        ASSERT_TRUE(file.prepare().ok());
    }

    EXPECT_EQ(contentsOf(in("orders.xml")), "old");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(SafeFileTest, anEmptyFileCanBeWritten)
{
    put(in("orders.xml"), "old");

    ASSERT_TRUE(writeFileSafely(in("orders.xml"), "").ok());

    EXPECT_TRUE(fs::exists(in("orders.xml")));
    EXPECT_EQ(contentsOf(in("orders.xml")), "");
}

TEST_F(SafeFileTest, largeContentsInPiecesOfEverySizeArriveInOrder)
{
    std::string expected;
    SafeFile file(in("large"));
    std::mt19937 random(1);
    for (const std::size_t size : {1u, 1u << 20, (1u << 20) - 1, (1u << 20) + 1, 3u << 20, 7u, 1000u, 0u}) {
        std::string piece(size, '\0');
        for (char& byte : piece)
            byte = static_cast<char>(random());
        file.append(piece);
        expected += piece;
    }

    ASSERT_TRUE(file.commit().ok());

    EXPECT_EQ(contentsOf(in("large")), expected);
    EXPECT_EQ(file.written().size(), expected.size());
}

TEST_F(SafeFileTest, theNewFileKeepsTheOldOnesRights)
{
    put(in("orders.xml"), "old");
    ASSERT_EQ(chmod(in("orders.xml").c_str(), 0640), 0);

    ASSERT_TRUE(writeFileSafely(in("orders.xml"), "new").ok());

    struct stat status { };
    ASSERT_EQ(stat(in("orders.xml").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(SafeFileTest, aMissingFolderIsAnErrorThatNamesTheFile)
{
    const Result<void> written = writeFileSafely(in("nowhere/orders.xml"), "new");

    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().message, in("nowhere/orders.xml") + " could not be created: No such file or directory");
}

TEST_F(SafeFileTest, aTargetThatCannotBeReplacedIsAnErrorAndLeavesNoTemporary)
{
    fs::create_directory(in("orders.xml"));
    put(in("orders.xml/kept"), "kept");

    const Result<void> written = writeFileSafely(in("orders.xml"), "new");

    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().message.find(in("orders.xml") + " could not be put into its place"), 0u);
    EXPECT_EQ(contentsOf(in("orders.xml/kept")), "kept");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(SafeFileTest, aDiskThatTakesNoMoreLeavesTheOldFileAsItWas)
{
    put(in("orders.xml"), "old");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // No file of this process may grow beyond 1000 bytes.
        const rlimit limit {1000, 1000};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const Result<void> written = writeFileSafely(in("orders.xml"), std::string(2000, 'x'));
        _exit(!written && written.error().message.find("could not be written: File too large") != std::string::npos ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);

    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentsOf(in("orders.xml")), "old");
    EXPECT_EQ(names().size(), 1u);
}

// Reading

TEST_F(SafeFileTest, aWholeFileIsRead)
{
    const std::string bytes(3'000'001, 'b');
    put(in("file"), bytes);

    const FileBytes read = readWholeFile(in("file"));

    EXPECT_EQ(read.trouble, ReadTrouble::none);
    EXPECT_EQ(read.bytes, bytes);
    EXPECT_EQ(read.reason, "");
}

TEST_F(SafeFileTest, aFileThatWouldFillTheMemoryIsNotRead)
{
    const std::string path = in("file");
    std::ofstream(path) << "start";
    ASSERT_EQ(::truncate(path.c_str(), (1LL << 30) + 1), 0);

    const FileBytes read = readWholeFile(path);

    EXPECT_EQ(read.trouble, ReadTrouble::unreadable);
    EXPECT_EQ(read.reason, path + " is larger than 1 GB");
    EXPECT_TRUE(read.bytes.view().empty());
}

TEST_F(SafeFileTest, recordsMayFillTheMemoryButNotMore)
{
    const std::string path = in("file");
    std::ofstream(path) << "start";
    EXPECT_EQ(readRecords(path).bytes.view(), "start");
    const std::size_t most = mostOfRecords();
    ASSERT_EQ(::truncate(path.c_str(), static_cast<off_t>(most + 1)), 0);

    const FileBytes read = readRecords(path);

    EXPECT_EQ(read.trouble, ReadTrouble::unreadable);
    EXPECT_EQ(read.reason, path + " is larger than " + std::to_string(most >> 30) + " GB");
}

TEST_F(SafeFileTest, aMissingFileIsToldFromAnUnreadableOne)
{
    fs::create_directory(in("folder"));
    ASSERT_EQ(mkfifo(in("pipe").c_str(), 0600), 0);

    const FileBytes missing = readWholeFile(in("missing"));
    EXPECT_EQ(missing.trouble, ReadTrouble::missing);
    EXPECT_EQ(missing.reason, in("missing") + " could not be read: No such file or directory");
    EXPECT_EQ(readWholeFile(in("folder")).trouble, ReadTrouble::unreadable);
    EXPECT_EQ(readWholeFile(in("folder")).reason, in("folder") + " is not an ordinary file");
    EXPECT_EQ(readWholeFile(in("pipe")).trouble, ReadTrouble::unreadable);
}

// Groups

class FileGroupTest : public SafeFileTest {
protected:
    void SetUp() override
    {
        put(in("orders.xml"), "old orders");
        put(in("items.xml"), "old items");
    }

    /// Leaves the folder as a power cut does after the intent was written and this many files were renamed.
    void interruptAfterRenaming(int renamed)
    {
        // A target that cannot be replaced stops the commit with the first file renamed.
        fs::remove(in("items.xml"));
        fs::create_directories(in("items.xml/in the way"));
        FileGroup group(folder());
        group.add("orders.xml").append("new orders");
        group.add("items.xml").append("new items");
        ASSERT_FALSE(group.commit().ok());
        fs::remove_all(in("items.xml"));
        put(in("items.xml"), "old items");
        if (renamed == 0) {
            fs::rename(in("orders.xml"), temporaryOf("orders.xml"));
            put(in("orders.xml"), "old orders");
        }
        if (renamed == 2)
            fs::rename(temporaryOf("items.xml"), in("items.xml"));
    }

    /// The path of the temporary that the intent names for a file.
    std::string temporaryOf(const std::string& target) const
    {
        std::ifstream intent(in(intentFile));
        for (std::string line; std::getline(intent, line);) {
            if (line.ends_with('/' + target)) {
                const std::string names = line.substr(line.find(' ', line.find(' ') + 1) + 1);
                return in(names.substr(0, names.find('/')));
            }
        }
        ADD_FAILURE() << "the intent names no " << target;
        return in("none");
    }

    /// What a reader of the folder gets now.
    std::string seen(const std::string& name) const
    {
        const std::map<std::string, std::string> instead = FileGroup::interrupted(folder()).value();
        const auto other = instead.find(name);
        return contentsOf(other == instead.end() ? in(name) : other->second);
    }

    void expectBoth(const std::string& age)
    {
        EXPECT_EQ(seen("orders.xml"), age + " orders");
        EXPECT_EQ(seen("items.xml"), age + " items");
        ASSERT_TRUE(FileGroup::repair(folder()).ok());
        EXPECT_EQ(contentsOf(in("orders.xml")), age + " orders");
        EXPECT_EQ(contentsOf(in("items.xml")), age + " items");
        EXPECT_EQ(names(), (std::vector<std::string> {"items.xml", "orders.xml"}));
    }
};

TEST_F(FileGroupTest, aCommitReplacesEveryFileAndLeavesNothingElse)
{
    FileGroup group(folder());
    group.add("orders.xml").append("new orders");
    group.add("items.xml").append("new items");

    ASSERT_TRUE(group.commit().ok());

    EXPECT_EQ(names(), (std::vector<std::string> {"items.xml", "orders.xml"}));
    expectBoth("new");
}

TEST_F(FileGroupTest, aGroupOfOneIsAnOrdinaryFile)
{
    FileGroup group(folder());
    group.add("orders.xml").append("new orders");

    ASSERT_TRUE(group.commit().ok());

    EXPECT_EQ(contentsOf(in("orders.xml")), "new orders");
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(FileGroupTest, whenOneFileCannotBePreparedNoneChanges)
{
    FileGroup group(folder());
    group.add("orders.xml").append("new orders");
    group.add("nowhere/items.xml").append("new items");

    EXPECT_FALSE(group.commit().ok());
}

TEST_F(FileGroupTest, aFolderThatWasNotInterruptedIsReadAsItIs)
{
    EXPECT_TRUE(FileGroup::interrupted(folder()).value().empty());
    expectBoth("old");
}

TEST_F(FileGroupTest, afterACutBeforeTheIntentTheOldFilesStand)
{
    put(in(".vendaro-orders.xml.1.0.tmp"), "new orders");
    put(in(".vendaro-items.xml.1.1.tmp"), "new it");

    expectBoth("old");
}

TEST_F(FileGroupTest, afterACutBeforeTheFirstRenameTheNewFilesStand)
{
    interruptAfterRenaming(0);
    ASSERT_EQ(contentsOf(in("orders.xml")), "old orders");

    expectBoth("new");
}

TEST_F(FileGroupTest, afterACutBetweenTheRenamesTheNewFilesStand)
{
    interruptAfterRenaming(1);
    ASSERT_EQ(contentsOf(in("orders.xml")), "new orders");
    ASSERT_EQ(contentsOf(in("items.xml")), "old items");

    expectBoth("new");
}

TEST_F(FileGroupTest, afterACutBehindTheLastRenameTheNewFilesStand)
{
    interruptAfterRenaming(2);

    expectBoth("new");
}

TEST_F(FileGroupTest, readingRepairsNothing)
{
    interruptAfterRenaming(1);
    const std::vector<std::string> before = names();

    EXPECT_TRUE(FileGroup::interrupted(folder()).ok());

    EXPECT_EQ(names(), before);
    EXPECT_EQ(contentsOf(in("items.xml")), "old items");
}

TEST_F(FileGroupTest, aTemporaryThatIsNotWholeMakesTheIntentVoid)
{
    interruptAfterRenaming(0);
    put(temporaryOf("items.xml"), "new ite");

    expectBoth("old");
}

TEST_F(FileGroupTest, aTemporaryOfTheRightSizeButOtherContentsMakesTheIntentVoid)
{
    interruptAfterRenaming(0);
    put(temporaryOf("items.xml"), "new itemz");

    expectBoth("old");
}

TEST_F(FileGroupTest, anInterruptedCommitThatCannotBeReadIsNeitherVoidNorCleared)
{
    interruptAfterRenaming(1);
    for (const std::string& path : {temporaryOf("items.xml"), in(intentFile)}) {
        // A folder in the file's place cannot be read, and the file is there again later.
        fs::rename(path, path + ".aside");
        fs::create_directory(path);

        EXPECT_FALSE(FileGroup::interrupted(folder()).ok()) << path;
        EXPECT_FALSE(FileGroup::repair(folder()).ok()) << path;

        fs::remove(path);
        fs::rename(path + ".aside", path);
    }
    expectBoth("new");
}

TEST_F(FileGroupTest, anIntentCutAnywhereIsVoid)
{
    interruptAfterRenaming(0);
    const std::string intent = contentsOf(in(intentFile));
    for (std::size_t length = 0; length + 1 < intent.size(); ++length) {
        put(in(intentFile), intent.substr(0, length));
        ASSERT_TRUE(FileGroup::interrupted(folder()).value().empty()) << length;
    }
}

TEST_F(FileGroupTest, aGroupWhoseFirstFileCannotBeReplacedLeavesNothingBehind)
{
    fs::remove(in("orders.xml"));
    fs::create_directories(in("orders.xml/in the way"));
    {
        FileGroup group(folder());
        group.add("orders.xml").append("new orders");
        group.add("items.xml").append("new items");
        ASSERT_FALSE(group.commit().ok());
    }

    EXPECT_EQ(contentsOf(in("items.xml")), "old items");
    EXPECT_EQ(names(), (std::vector<std::string> {"items.xml", "orders.xml"}));
}

TEST_F(FileGroupTest, aLaterWriteIsNotUndoneByAnIntentThatWasLeft)
{
    interruptAfterRenaming(1);
    FileGroup later(folder());
    later.add("items.xml").append("later items");
    ASSERT_TRUE(later.commit().ok());

    EXPECT_EQ(seen("items.xml"), "later items");
    ASSERT_TRUE(FileGroup::repair(folder()).ok());
    EXPECT_EQ(contentsOf(in("items.xml")), "later items");
}

TEST_F(FileGroupTest, aFileThatCannotBeReplacedLeavesOneTemporaryHoweverOftenItIsTried)
{
    interruptAfterRenaming(1);
    fs::remove(in("items.xml"));
    fs::create_directories(in("items.xml/in the way"));
    for (int attempt = 0; attempt < 3; ++attempt) {
        FileGroup group(folder());
        group.add("orders.xml").append("newer orders");
        group.add("items.xml").append("newer items");
        ASSERT_FALSE(group.commit().ok());
    }
    EXPECT_EQ(names().size(), 4u) << "both files, the intent and one temporary";

    fs::remove_all(in("items.xml"));
    put(in("items.xml"), "old items");
    expectBoth("newer");
}

TEST_F(FileGroupTest, eachFileKnowsWhetherItGotIntoItsPlace)
{
    fs::remove(in("items.xml"));
    fs::create_directories(in("items.xml/in the way"));
    FileGroup group(folder());
    SafeFile& orders = group.add("orders.xml");
    SafeFile& items = group.add("items.xml");
    orders.append("new orders");
    items.append("new items");
    EXPECT_FALSE(orders.isInPlace());

    ASSERT_FALSE(group.commit().ok());

    EXPECT_TRUE(orders.isInPlace());
    EXPECT_FALSE(items.isInPlace());
}

TEST_F(FileGroupTest, anotherFilesWriteKeepsWhatWaitsToBePutInItsPlace)
{
    interruptAfterRenaming(1);
    for (const char* contents : {"first contacts", "second contacts"}) {
        FileGroup other(folder());
        other.add("contacts.xml").append(contents);
        ASSERT_TRUE(other.commit().ok());
    }

    EXPECT_EQ(seen("contacts.xml"), "second contacts");
    fs::remove(in("contacts.xml"));
    expectBoth("new");
}

TEST_F(FileGroupTest, anAttemptWhoseFirstFileCannotBeReplacedLeavesWhatWaitedBefore)
{
    interruptAfterRenaming(1);
    fs::create_directories(in("contacts.xml/in the way"));
    {
        FileGroup other(folder());
        other.add("contacts.xml").append("contacts");
        other.add("items.xml").append("items that came to nothing");
        ASSERT_FALSE(other.commit().ok());
    }
    fs::remove_all(in("contacts.xml"));

    expectBoth("new");
}

TEST_F(FileGroupTest, aProgramKilledAtAnyMomentLeavesBothFilesOfOneKind)
{
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i) {
                FileGroup group(folder());
                group.add("orders.xml").append("generation " + std::to_string(round * 1'000'000 + i));
                group.add("items.xml").append("generation " + std::to_string(round * 1'000'000 + i));
                if (!group.commit())
                    _exit(1);
            }
        }
        usleep(1000 + random() % 20'000);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child gave up by itself";
        ASSERT_EQ(seen("orders.xml").substr(0, 3), seen("items.xml").substr(0, 3));
        ASSERT_TRUE(seen("orders.xml") == "old orders" || seen("orders.xml") == seen("items.xml")) << round;
        const std::string before = seen("orders.xml");
        ASSERT_TRUE(FileGroup::repair(folder()).ok());
        ASSERT_EQ(contentsOf(in("orders.xml")), before);
        ASSERT_EQ(names(), (std::vector<std::string> {"items.xml", "orders.xml"}));
    }
}

// Creating a file that must not be there yet

TEST_F(SafeFileTest, onlyTheFirstCreatesAFile)
{
    const Result<bool> first = createExclusively(in("lock.xml"), "first");
    const Result<bool> second = createExclusively(in("lock.xml"), "second");

    ASSERT_TRUE(first.ok() && second.ok());
    EXPECT_TRUE(first.value());
    EXPECT_FALSE(second.value());
    EXPECT_EQ(contentsOf(in("lock.xml")), "first");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(SafeFileTest, whatBelongsToAFileBesideItsBytesIsThereWhenItAppears)
{
    static std::string target;
    static std::string found;
    target = in("lock.xml");
    found.clear();

    ASSERT_TRUE(createExclusively(target, "bytes", [](const std::string& path) {
        found = contentsOf(path);
        EXPECT_FALSE(fs::exists(target));
    }).ok());

    EXPECT_EQ(found, "bytes");
    EXPECT_EQ(contentsOf(target), "bytes");
}

TEST_F(SafeFileTest, creatingInAMissingFolderIsAnError)
{
    EXPECT_FALSE(createExclusively(in("nowhere/lock.xml"), "first").ok());
}

TEST_F(SafeFileTest, ofFourProgramsExactlyOneCreatesTheFileAndItIsNeverSeenHalfWritten)
{
    for (int round = 0; round < 60; ++round) {
        const std::string path = in("lock" + std::to_string(round));
        FileBytes seen;
        const std::vector<int> answers = race(
            4,
            [&](int program) {
                const Result<bool> created = createExclusively(path, std::string(5000, static_cast<char>('a' + program)));
                return !created ? 2 : created.value() ? 0 : 1;
            },
            [&] {
                while ((seen = readWholeFile(path)).trouble == ReadTrouble::missing)
                    std::this_thread::yield();
            });
        const std::string_view bytes = seen.bytes;
        ASSERT_EQ(bytes, std::string(5000, bytes.empty() ? '?' : bytes.front()));
        ASSERT_EQ(std::count(answers.begin(), answers.end(), 0), 1) << "exactly one program may think the file is its own";
        ASSERT_EQ(std::count(answers.begin(), answers.end(), 1), 3);
        const auto winner = std::find(answers.begin(), answers.end(), 0) - answers.begin();
        ASSERT_EQ(contentsOf(path), std::string(5000, static_cast<char>('a' + winner)));
    }
}
