#include "foundation/Folders.h"

#include "foundation/FileCalls.h"
#include "support/NoRoom.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

class FoldersTest : public testing::Test {
protected:
    QString in(const QString& name) const { return m_folder.path() + '/' + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(in(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray contents(const QString& name) const
    {
        QFile file(in(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    QTemporaryDir m_folder;
};

namespace {

/// The administrator may write everywhere; somebody else may not, to the end of this.
class NotAsAdministrator {
public:
    NotAsAdministrator() { EXPECT_TRUE(m_self != 0 || seteuid(nobody) == 0); }
    ~NotAsAdministrator() { EXPECT_EQ(seteuid(m_self), 0); }
    NotAsAdministrator(const NotAsAdministrator&) = delete;
    NotAsAdministrator& operator=(const NotAsAdministrator&) = delete;

    /// Gives the path to whom the program runs as meanwhile.
    static void give(const QString& path, mode_t mode)
    {
        const QByteArray name = path.toLocal8Bit();
        EXPECT_TRUE(geteuid() != 0 || ::chown(name.constData(), nobody, nobody) == 0);
        EXPECT_EQ(::chmod(name.constData(), mode), 0);
    }

private:
    static constexpr uid_t nobody = 65534;
    const uid_t m_self = geteuid();
};

} // namespace

TEST_F(FoldersTest, whatTheFileSystemCannotTellOfMayBeThere)
{
    put("file", "oak");
    ASSERT_TRUE(QDir().mkpath(in("folder")));
    ASSERT_TRUE(QFile::link(in("loop"), in("loop")));
    ASSERT_TRUE(QFile::link(in("nowhere"), in("dangling")));
    struct Case {
        const char* name;
        bool there;
        bool file;
    };
    for (const Case& each :
        {Case {"file", true, true}, Case {"folder", true, false}, Case {"missing", false, false}, Case {"file/below", false, false},
            Case {"dangling", false, false}, Case {"loop", true, true}, Case {"loop/below", true, true}}) {
        EXPECT_EQ(folders::mayBeThere(in(each.name)), each.there) << each.name;
        EXPECT_EQ(folders::mayBeFile(in(each.name)), each.file) << each.name;
    }
}

TEST_F(FoldersTest, onlyALeadingTildeStandsForTheHomeFolder)
{
    EXPECT_EQ(folders::expandHome("~", "/home/ada"), "/home/ada");
    EXPECT_EQ(folders::expandHome("~/Documents/x", "/home/ada"), "/home/ada/Documents/x");
    EXPECT_EQ(folders::expandHome("/tmp/~/x", "/home/ada"), "/tmp/~/x");
    EXPECT_EQ(folders::expandHome("~bob/x", "/home/ada"), "~bob/x");
    EXPECT_EQ(folders::expandHome("", "/home/ada"), "");
}

TEST_F(FoldersTest, aNameThatWouldLeaveItsFolderIsNoSingleComponent)
{
    for (const char* name : {"orders.xml", "...", ".hidden", "a b", "\xc3\xa9", "a\\b", "~"})
        EXPECT_TRUE(folders::isSingleComponent(QString::fromUtf8(name))) << name;
    for (const char* name : {"", ".", "..", "/", "a/b", "../a", "a/"})
        EXPECT_FALSE(folders::isSingleComponent(QString::fromUtf8(name))) << name;
    EXPECT_FALSE(folders::isSingleComponent(QString("a") + QChar(u'\0') + "b"));
}

TEST_F(FoldersTest, anExistingEntryIsFoundInWhateverCaseItIsSpelled)
{
    ASSERT_TRUE(QDir().mkpath(in("Order Files")));

    EXPECT_EQ(folders::resolveIgnoringCase(m_folder.path(), "order files"), in("Order Files"));
    EXPECT_EQ(folders::resolveIgnoringCase(m_folder.path(), "ORDER FILES"), in("Order Files"));
    EXPECT_EQ(folders::resolveIgnoringCase(m_folder.path(), "others"), in("others"));
    EXPECT_EQ(folders::resolveIgnoringCase(in("missing"), "x"), in("missing/x"));
}

TEST_F(FoldersTest, theExactSpellingComesFirst)
{
    ASSERT_TRUE(QDir().mkpath(in("FILES")));
    ASSERT_TRUE(QDir().mkpath(in("files")));

    EXPECT_EQ(folders::resolveIgnoringCase(m_folder.path(), "files"), in("files"));
}

TEST_F(FoldersTest, aFolderIsMadeWithThoseAboveItAndMayBeThereAlready)
{
    ASSERT_TRUE(folders::make(in("a/b/c")).ok());
    EXPECT_TRUE(QFileInfo(in("a/b/c")).isDir());
    EXPECT_TRUE(folders::make(in("a/b/c")).ok());
}

TEST_F(FoldersTest, aFileInTheWayOfAFolderIsAnErrorThatNamesIt)
{
    put("a", "x");

    const Result<void> made = folders::make(in("a"));
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().message.find("cannot make the folder " + in("a").toStdString()), 0u);
    EXPECT_EQ(made.error().message.find("Success"), std::string::npos) << made.error().message;
    EXPECT_FALSE(folders::make(in("a/b")).ok());
    EXPECT_EQ(contents("a"), "x");
}

TEST_F(FoldersTest, aTreeIsCopiedWithItsHiddenFilesAndItsLinksAsLinks)
{
    ASSERT_TRUE(QDir().mkpath(in("from/sub")));
    put("from/one", "1");
    put("from/.hidden", "h");
    put("from/sub/two", "2");
    ASSERT_TRUE(QFile::link("one", in("from/link")));
    ASSERT_TRUE(QFile::link("/nowhere", in("from/broken")));

    ASSERT_TRUE(folders::copyTree(in("from"), in("to")).ok());

    EXPECT_EQ(contents("to/one"), "1");
    EXPECT_EQ(contents("to/.hidden"), "h");
    EXPECT_EQ(contents("to/sub/two"), "2");
    EXPECT_TRUE(QFileInfo(in("to/link")).isSymLink());
    EXPECT_EQ(contents("to/link"), "1");
    EXPECT_TRUE(QFileInfo(in("to/broken")).isSymLink());
    EXPECT_EQ(contents("from/one"), "1");
}

TEST_F(FoldersTest, ofALinkWhatItLeadsToIsCopied)
{
    ASSERT_TRUE(QDir().mkpath(in("real")));
    put("real/one", "1");
    ASSERT_TRUE(QFile::link(in("real"), in("link")));

    ASSERT_TRUE(folders::copyTree(in("link"), in("copy")).ok());

    EXPECT_FALSE(QFileInfo(in("copy")).isSymLink());
    put("copy/one", "changed");
    EXPECT_EQ(contents("real/one"), "1");
}

TEST_F(FoldersTest, aFolderThatNobodyWritesIntoIsCopiedToo)
{
    ASSERT_TRUE(QDir().mkpath(in("from/sub")));
    put("from/sub/one", "1");
    for (const char* name : {"from/sub", "from"})
        ASSERT_EQ(::chmod(in(name).toLocal8Bit().constData(), 0555), 0);
    ASSERT_EQ(::chmod(m_folder.path().toLocal8Bit().constData(), 0777), 0);

    const Result<void> copied = [this] {
        const NotAsAdministrator somebody;
        return folders::copyTree(in("from"), in("to"));
    }();

    ASSERT_TRUE(copied.ok()) << copied.error().message;
    EXPECT_EQ(contents("to/sub/one"), "1");
    struct stat status { };
    ASSERT_EQ(::stat(in("to/sub").toLocal8Bit().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0755u) << "its owner may add to the copy";
    for (const char* name : {"from/sub", "from"})
        ASSERT_EQ(::chmod(in(name).toLocal8Bit().constData(), 0755), 0);
}

TEST_F(FoldersTest, aFileSystemThatSetsNoRightsTakesFoldersAllTheSame)
{
    ASSERT_TRUE(QDir().mkpath(in("from/sub")));
    ASSERT_EQ(::chmod(in("from/sub").toLocal8Bit().constData(), 0750), 0);
    FileCalls calls;
    calls.hasRights = false;

    const Result<void> copied = folders::copyTree(in("from"), in("to"));

    ASSERT_TRUE(copied.ok()) << copied.error().message;
    struct stat status { };
    ASSERT_EQ(::stat(in("to/sub").toLocal8Bit().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0750u);
}

TEST_F(FoldersTest, pipesAreLeftOutOfACopy)
{
    ASSERT_TRUE(QDir().mkpath(in("from")));
    put("from/one", "1");
    ASSERT_EQ(mkfifo(in("from/pipe").toLocal8Bit().constData(), 0600), 0);

    const Result<void> copied = folders::copyTree(in("from"), in("to"));

    ASSERT_TRUE(copied.ok()) << copied.error().message;
    EXPECT_EQ(contents("to/one"), "1");
    EXPECT_FALSE(QFileInfo::exists(in("to/pipe")));
}

TEST_F(FoldersTest, nothingIsCopiedOverWhatIsThere)
{
    ASSERT_TRUE(QDir().mkpath(in("from")));
    put("from/one", "new");
    ASSERT_TRUE(QDir().mkpath(in("to")));
    put("to/one", "old");

    const Result<void> copied = folders::copyTree(in("from"), in("to"));

    ASSERT_FALSE(copied.ok());
    EXPECT_EQ(copied.error().message, in("to").toStdString() + " exists already");
    EXPECT_EQ(contents("to/one"), "old");
}

TEST_F(FoldersTest, aMissingTreeIsAnError)
{
    EXPECT_FALSE(folders::copyTree(in("missing"), in("to")).ok());
    EXPECT_FALSE(QFileInfo::exists(in("to")));
}

TEST_F(FoldersTest, movingTakesFilesAndWholeFolders)
{
    ASSERT_TRUE(QDir().mkpath(in("from/sub")));
    put("from/sub/two", "2");
    put("file", "f");

    ASSERT_TRUE(folders::move(in("from"), in("to")).ok());
    ASSERT_TRUE(folders::move(in("file"), in("to/file")).ok());

    EXPECT_EQ(contents("to/sub/two"), "2");
    EXPECT_EQ(contents("to/file"), "f");
    EXPECT_FALSE(QFileInfo::exists(in("from")));
    EXPECT_FALSE(QFileInfo::exists(in("file")));
}

TEST_F(FoldersTest, nothingIsMovedOverWhatIsThere)
{
    put("from", "new");
    put("to", "old");
    ASSERT_TRUE(QFile::link("/nowhere", in("link")));

    for (const char* target : {"to", "link"}) {
        const Result<void> moved = folders::move(in("from"), in(target));
        ASSERT_FALSE(moved.ok());
        EXPECT_EQ(moved.error().message, in(target).toStdString() + " exists already");
    }
    EXPECT_EQ(contents("to"), "old");
    EXPECT_EQ(contents("from"), "new");
    EXPECT_TRUE(QFileInfo(in("link")).isSymLink());
}

TEST_F(FoldersTest, whatIsInTheWayOfAMoveIsAnAnswer)
{
    put("from", "new");
    put("to", "old");
    ASSERT_TRUE(QDir().mkpath(in("folder")));

    for (const char* target : {"to", "folder"}) {
        const Result<bool> moved = folders::moveIfFree(in("from"), in(target));
        ASSERT_TRUE(moved.ok());
        EXPECT_FALSE(moved.value());
    }
    EXPECT_EQ(contents("to"), "old");
    EXPECT_TRUE(folders::moveIfFree(in("from"), in("free")).value());
    EXPECT_EQ(contents("free"), "new");
    EXPECT_FALSE(folders::moveIfFree(in("from"), in("anywhere")).ok()) << "it is not there any more";
}

TEST_F(FoldersTest, aCopyHasTheRightsOfItsOriginal)
{
    put("from", "text");
    ASSERT_EQ(::chmod(in("from").toLocal8Bit().constData(), 0640), 0);
    ASSERT_TRUE(folders::copyTree(in("from"), in("to")).ok());

    struct stat status { };
    ASSERT_EQ(::stat(in("to").toLocal8Bit().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(contents("to"), "text");
}

/// A folder on one file system and a place on another.
class MovingAcrossFileSystems : public FoldersTest {
protected:
    void SetUp() override
    {
        struct stat here { };
        struct stat there { };
        if (!m_other.isValid() || stat(m_folder.path().toLocal8Bit().constData(), &here) != 0
            || stat(m_other.path().toLocal8Bit().constData(), &there) != 0 || here.st_dev == there.st_dev)
            GTEST_SKIP() << "there is no second file system here";
        ASSERT_TRUE(QDir().mkpath(in("from/sub")));
        put("from/one", "1");
        put("from/sub/two", "2");
        ASSERT_TRUE(QFile::link("/nowhere", in("from/broken")));
    }

    QString there(const QString& name = {}) const { return m_other.path() + "/to" + name; }
    /// Where the copy is until it is complete.
    QString copying(const QString& name = {}) const { return m_other.path() + "/.to.unfinished" + name; }
    void expectNothingThere() const
    {
        EXPECT_EQ(QDir(m_other.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }
    bool isEmpty() const { return QDir(m_folder.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); }
    void expectSourceWhole() const
    {
        EXPECT_EQ(contents("from/one"), "1");
        EXPECT_EQ(contents("from/sub/two"), "2");
        EXPECT_TRUE(QFileInfo(in("from/broken")).isSymLink());
    }

    QTemporaryDir m_other {"/dev/shm/vendaro-XXXXXX"};
    FileCalls m_watch;
};

TEST_F(MovingAcrossFileSystems, takesEverythingAlong)
{
    ASSERT_TRUE(folders::move(in("from"), there()).ok());

    QFile moved(there("/sub/two"));
    ASSERT_TRUE(moved.open(QIODevice::ReadOnly));
    EXPECT_EQ(moved.readAll(), "2");
    EXPECT_TRUE(QFileInfo(there("/broken")).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(in("from")));
}

TEST_F(MovingAcrossFileSystems, touchesNothingThatIsInTheWay)
{
    ASSERT_TRUE(QDir().mkpath(there("/mine")));
    const Result<bool> folder = folders::moveIfFree(in("from"), there());
    const Result<bool> file = folders::moveIfFree(in("from/one"), there("/mine"));

    ASSERT_TRUE(folder.ok() && file.ok());
    EXPECT_FALSE(folder.value());
    EXPECT_FALSE(file.value());
    EXPECT_EQ(QDir(there()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("mine"));
    expectSourceWhole();
}

TEST_F(MovingAcrossFileSystems, flushesEveryFileAndFolderOfTheCopy)
{
    ASSERT_TRUE(folders::move(in("from"), there()).ok());

    for (const QString& path : {copying("/one"), copying("/sub/two"), copying("/sub"), copying(), m_other.path()})
        EXPECT_TRUE(m_watch.flushed.contains(path)) << path.toStdString();
    EXPECT_EQ(m_watch.flushed.mid(m_watch.flushed.size() - 2), (QStringList {m_other.path(), m_folder.path()}))
        << "the copy's name first, then that the source has gone";
}

TEST_F(MovingAcrossFileSystems, aCopyThatCannotBeFlushedLeavesTheSourceAndNothingElse)
{
    for (const QString& path : {copying("/sub/two"), copying("/sub"), copying()}) {
        m_watch.failing = path;
        EXPECT_FALSE(folders::move(in("from"), there()).ok()) << path.toStdString();
        expectNothingThere();
        expectSourceWhole();
    }
}

TEST_F(MovingAcrossFileSystems, theSourceStaysUntilTheNamesAreDurable)
{
    for (const QString& path : {m_other.path(), m_folder.path()}) {
        m_watch.failing = path;
        EXPECT_FALSE(folders::move(in("from"), there()).ok());
        expectNothingThere();
        expectSourceWhole();
    }
}

TEST_F(MovingAcrossFileSystems, aFolderWithAPipeStaysWhereItIs)
{
    ASSERT_EQ(mkfifo(in("from/sub/pipe").toLocal8Bit().constData(), 0600), 0);

    const Result<void> moved = folders::move(in("from"), there());

    ASSERT_FALSE(moved.ok());
    EXPECT_EQ(moved.error().message, in("from/sub/pipe").toStdString() + " is neither a file nor a folder nor a link");
    expectNothingThere();
    expectSourceWhole();
    struct stat status { };
    ASSERT_EQ(stat(in("from/sub/pipe").toLocal8Bit().constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(MovingAcrossFileSystems, aFullDiskLeavesTheSourceAndNothingElse)
{
    put("from/three", QByteArray(1 << 16, 'x'));
    {
        const NoRoom full(1 << 12);
        const Result<void> moved = folders::move(in("from"), there());
        ASSERT_FALSE(moved.ok());
        EXPECT_EQ(moved.error().message.find("cannot copy " + in("from/three").toStdString()), 0u) << moved.error().message;
    }
    expectNothingThere();
    expectSourceWhole();
}

TEST_F(MovingAcrossFileSystems, whatAnInterruptedMoveLeftIsNoPartOfTheNext)
{
    ASSERT_TRUE(QDir().mkpath(copying("/left over")));

    ASSERT_TRUE(folders::move(in("from"), there()).ok());

    EXPECT_FALSE(QFileInfo::exists(there("/left over")));
    EXPECT_FALSE(QFileInfo::exists(copying()));
}

TEST_F(MovingAcrossFileSystems, aFolderThatNobodyWritesIntoIsMovedToo)
{
    NotAsAdministrator::give(m_folder.path(), 0755);
    NotAsAdministrator::give(m_other.path(), 0755);
    for (const char* name : {"from/sub", "from"})
        NotAsAdministrator::give(in(name), 0555);

    const Result<void> moved = [this] {
        const NotAsAdministrator somebody;
        return folders::move(in("from"), there());
    }();

    EXPECT_TRUE(moved.ok()) << moved.error().message;
    EXPECT_TRUE(QFileInfo::exists(there("/sub/two")));
    EXPECT_TRUE(isEmpty());
}

TEST_F(MovingAcrossFileSystems, whatCannotBeTakenOutOfItsPlaceStaysWhole)
{
    NotAsAdministrator::give(m_other.path(), 0755);
    for (const char* name : {"from/sub", "from"})
        NotAsAdministrator::give(in(name), 0755);
    NotAsAdministrator::give(m_folder.path(), 0555);

    const Result<void> moved = [this] {
        const NotAsAdministrator somebody;
        return folders::move(in("from"), there());
    }();

    EXPECT_FALSE(moved.ok());
    expectNothingThere();
    expectSourceWhole();
    NotAsAdministrator::give(m_folder.path(), 0755);
}

TEST_F(MovingAcrossFileSystems, whatIsMovedIsOutOfItsPlaceAlsoWhenItCannotAllBeRemoved)
{
    m_watch.staying = "two";

    const Result<void> moved = folders::move(in("from"), there());

    m_watch.staying.clear();
    ASSERT_TRUE(moved.ok()) << moved.error().message;
    EXPECT_FALSE(QFileInfo::exists(in("from")));
    EXPECT_TRUE(QFileInfo::exists(there("/one")));
    EXPECT_TRUE(QFileInfo::exists(there("/sub/two")));

    put("from", "the next of that name");
    ASSERT_TRUE(folders::move(in("from"), there("-next")).ok());
    EXPECT_TRUE(isEmpty()) << "what was left of the first is gone";
}

TEST_F(FoldersTest, movingWhatIsNotThereIsAnError)
{
    EXPECT_FALSE(folders::move(in("missing"), in("to")).ok());
}

TEST_F(FoldersTest, ofALinkOnlyTheLinkIsRemoved)
{
    ASSERT_TRUE(QDir().mkpath(in("real")));
    put("real/one", "1");
    ASSERT_TRUE(QDir().mkpath(in("going")));
    ASSERT_TRUE(QFile::link(in("real"), in("going/link")));
    ASSERT_TRUE(QFile::link(in("real"), in("link")));
    ASSERT_EQ(::chmod(in("real").toLocal8Bit().constData(), 0500), 0);

    for (const char* name : {"going", "link", "missing"})
        folders::remove(in(name));

    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList("real"));
    EXPECT_EQ(contents("real/one"), "1");
    EXPECT_EQ(QFileInfo(in("real")).permissions() & QFile::WriteOwner, QFile::Permissions()) << "nothing is done to what a link leads to";
    ASSERT_EQ(::chmod(in("real").toLocal8Bit().constData(), 0700), 0);
}

TEST_F(FoldersTest, filesHaveTheSameBytesOrNot)
{
    const QByteArray large = QByteArray(300'000, 'x');
    put("large", large + "a");
    put("same", large + "a");
    put("other", large + "b");
    put("longer", large + "aa");
    put("empty", "");
    put("nothing", "");

    EXPECT_TRUE(folders::haveSameBytes(in("large"), in("same")));
    EXPECT_TRUE(folders::haveSameBytes(in("empty"), in("nothing")));
    EXPECT_FALSE(folders::haveSameBytes(in("large"), in("other")));
    EXPECT_FALSE(folders::haveSameBytes(in("large"), in("longer")));
    EXPECT_FALSE(folders::haveSameBytes(in("large"), in("missing")));
    EXPECT_FALSE(folders::haveSameBytes(in("missing"), in("missing")));
    EXPECT_FALSE(folders::haveSameBytes(m_folder.path(), m_folder.path())) << "folders have none";
}

TEST_F(FoldersTest, aPrivateFolderIsTheUsersAlsoWhenItWasThereBefore)
{
    ASSERT_TRUE(folders::make(in("store")).ok());

    ASSERT_TRUE(folders::makePrivate(in("store")).ok());
    ASSERT_TRUE(folders::makePrivate(in("new")).ok());

    for (const char* name : {"store", "new"}) {
        struct stat status { };
        ASSERT_EQ(::stat(in(name).toStdString().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0700u);
    }
}

class TrashTest : public FoldersTest {
protected:
    TrashTest()
    {
        QDir().mkpath(in("started here"));
        QDir::setCurrent(in("started here"));
        qputenv("XDG_DATA_HOME", in("home/data").toUtf8());
        put("old", "bytes");
    }
    ~TrashTest() override
    {
        QDir::setCurrent(m_workedIn);
        m_dataHome.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", m_dataHome);
    }

private:
    const QString m_workedIn = QDir::currentPath();
    const QByteArray m_dataHome = qgetenv("XDG_DATA_HOME");
};

TEST_F(TrashTest, theTrashIsMadeWhenThereIsNoneYet)
{
    EXPECT_TRUE(folders::moveToTrash(in("old")).ok());

    EXPECT_EQ(contents("home/data/Trash/files/old"), "bytes");
    EXPECT_FALSE(QFileInfo::exists(in("old")));
    EXPECT_TRUE(QDir(in("started here")).isEmpty());
}

TEST_F(TrashTest, withoutATrashEverythingStaysWhereItIs)
{
    put("home", "a file, no folder");

    EXPECT_FALSE(folders::moveToTrash(in("old")).ok());

    EXPECT_EQ(contents("old"), "bytes");
    EXPECT_TRUE(QDir(in("started here")).isEmpty());
}

TEST_F(TrashTest, aTrashThatTakesNothingLeavesEverythingWhereItIs)
{
    ASSERT_TRUE(folders::make(in("home/data/Trash")).ok());
    put("home/data/Trash/info", "a file, no folder");
    EXPECT_FALSE(folders::moveToTrash(in("old")).ok());
    ASSERT_TRUE(QFile::remove(in("home/data/Trash/info")));
    ASSERT_TRUE(folders::make(in("home/data/Trash/info")).ok());
    {
        const NoRoom full;
        EXPECT_FALSE(folders::moveToTrash(in("old")).ok());
    }
    EXPECT_EQ(contents("old"), "bytes");
    EXPECT_TRUE(QDir(in("home/data/Trash/info")).isEmpty());
}
