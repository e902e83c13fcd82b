#include "foundation/TemporaryFiles.h"

#include "foundation/SafeFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class TemporaryFilesTest : public testing::Test {
protected:
    std::string in(const char* name) const { return m_folder.path().toStdString() + '/' + name; }
    std::string folder() const { return m_folder.path().toStdString(); }
    void put(const char* name) const
    {
        QFile file(QString::fromStdString(in(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir m_folder;
};

TEST_F(TemporaryFilesTest, aFileIsInUseFromItsFirstByteToItsCommit)
{
    SafeFile file(in("info.plist"));
    file.append("text");
    const std::string temporary = file.temporaryPath();
    EXPECT_TRUE(temporaries::isInUse(temporary));

    ASSERT_TRUE(file.commit().ok());

    EXPECT_FALSE(temporaries::isInUse(temporary));
}

TEST_F(TemporaryFilesTest, oneThatIsGivenUpIsInUseNoMore)
{
    std::string temporary;
    {
        SafeFile file(in("info.plist"));
        file.append("text");
        temporary = file.temporaryPath();
    }

    EXPECT_FALSE(temporary.empty());
    EXPECT_FALSE(temporaries::isInUse(temporary));
}

TEST_F(TemporaryFilesTest, clearingLeftoversAwayLeavesWhatIsBeingWritten)
{
    put(".vendaro-orders.xml.999999.1.tmp");
    SafeFile file(in("info.plist"));
    file.append("text");

    ASSERT_TRUE(FileGroup::repair(folder()).ok());
    ASSERT_TRUE(file.commit().ok());

    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList {"info.plist"});
}
