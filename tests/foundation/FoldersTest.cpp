#include "foundation/Folders.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

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

TEST_F(FoldersTest, movingToAnotherFileSystemCopiesAndRemoves)
{
    QTemporaryDir other("/dev/shm/vendaro-XXXXXX");
    if (!other.isValid())
        GTEST_SKIP() << "there is no second file system here";
    ASSERT_TRUE(QDir().mkpath(in("from")));
    put("from/one", "1");

    ASSERT_TRUE(folders::move(in("from"), other.path() + "/to").ok());

    QFile moved(other.path() + "/to/one");
    ASSERT_TRUE(moved.open(QIODevice::ReadOnly));
    EXPECT_EQ(moved.readAll(), "1");
    EXPECT_FALSE(QFileInfo::exists(in("from")));
}

TEST_F(FoldersTest, movingWhatIsNotThereIsAnError)
{
    EXPECT_FALSE(folders::move(in("missing"), in("to")).ok());
}
