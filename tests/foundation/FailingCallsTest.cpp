// What the safe writer and groups of files leave when a single call of theirs fails.
#include "foundation/SafeFile.h"

#include "foundation/FileCalls.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class FailingCallsTest : public testing::Test {
protected:
    std::string in(const char* name) const { return (m_folder.path() + '/' + name).toStdString(); }
    void put(const char* name, const char* text) const { ASSERT_TRUE(writeFileSafely(in(name), text).ok()); }
    std::string contents(const std::string& path) const { return std::string(readWholeFile(path).bytes); }
    /// What a reader of the folder gets.
    std::string seen(const char* name) const
    {
        const std::map<std::string, std::string> instead = FileGroup::interrupted(m_folder.path().toStdString()).value();
        const auto other = instead.find(name);
        return contents(other == instead.end() ? in(name) : other->second);
    }
    /// Orders have their new contents, those of the lines wait under another name.
    void leaveLinesWaiting()
    {
        put("orders.xml", "old orders");
        ASSERT_TRUE(QDir(m_folder.path()).mkpath("lines.xml/in the way"));
        FileGroup group(m_folder.path().toStdString());
        group.add("orders.xml").append("new orders");
        group.add("lines.xml").append("new lines");
        ASSERT_FALSE(group.commit().ok());
        ASSERT_TRUE(QDir(m_folder.path() + "/lines.xml").removeRecursively());
        put("lines.xml", "old lines");
        ASSERT_EQ(seen("lines.xml"), "new lines");
    }

    QTemporaryDir m_folder;
    FileCalls m_calls;
};

TEST_F(FailingCallsTest, anotherFilesFailureLeavesWhatWaitsToBePutInItsPlace)
{
    leaveLinesWaiting();
    m_calls.failing = m_folder.path();
    {
        FileGroup other(m_folder.path().toStdString());
        other.add("contacts.xml").append("contacts");
        EXPECT_FALSE(other.commit().ok());
    }
    m_calls.failing.clear();

    EXPECT_EQ(seen("orders.xml"), "new orders");
    EXPECT_EQ(seen("lines.xml"), "new lines");
    ASSERT_TRUE(FileGroup::repair(m_folder.path().toStdString()).ok());
    EXPECT_EQ(contents(in("lines.xml")), "new lines");
    EXPECT_EQ(
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), (QStringList {"lines.xml", "orders.xml"}));
}

TEST_F(FailingCallsTest, whereTheEarlierIntentCannotComeBackTheNewOneStaysWhole)
{
    leaveLinesWaiting();
    m_calls.failing = m_folder.path();
    m_calls.failsFromThenOn = true;
    {
        FileGroup other(m_folder.path().toStdString());
        other.add("contacts.xml").append("contacts");
        EXPECT_FALSE(other.commit().ok());
    }

    EXPECT_EQ(seen("orders.xml"), "new orders");
    EXPECT_EQ(seen("lines.xml"), "new lines");
}

TEST_F(FailingCallsTest, withoutSecondNamesTheNameOfANewFileIsFlushedToo)
{
    m_calls.hasHardLinks = false;

    const Result<bool> created = createExclusively(in("kept"), "bytes");

    ASSERT_TRUE(created.ok());
    EXPECT_TRUE(created.value());
    EXPECT_EQ(contents(in("kept")), "bytes");
    EXPECT_EQ(m_calls.flushed.last(), m_folder.path());
}

TEST_F(FailingCallsTest, withoutSecondNamesAFileWhoseNameMayNotLastIsNotMade)
{
    m_calls.hasHardLinks = false;
    m_calls.failing = m_folder.path();

    EXPECT_FALSE(createExclusively(in("kept"), "bytes").ok());

    EXPECT_FALSE(QFile::exists(m_folder.path() + "/kept"));
}
