#include "foundation/TemporaryFiles.h"

#include "foundation/SafeFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <unistd.h>

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

TEST_F(TemporaryFilesTest, abandonedAreThoseOfProcessesThatDoNotRun)
{
    // No process has the first number: it is beyond the highest that there can be. The second always runs.
    put(".vendaro-orders.xml.4194305.0.tmp");
    put(".vendaro-items.xml.1.0.tmp");
    put(".vendaro-commit");
    put(".vendaro-nameless.tmp");
    put("orders.xml.4194305.0.tmp");
    SafeFile ours(in("info.plist"));
    ours.append("text");
    put((".vendaro-given up." + std::to_string(::getpid()) + ".9999.tmp").c_str());

    temporaries::removeAbandoned(folder());
    temporaries::removeAbandoned(folder() + "/missing");

    QStringList left = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    left.removeOne(QFileInfo(QString::fromStdString(ours.temporaryPath())).fileName());
    EXPECT_EQ(left, (QStringList {".vendaro-commit", ".vendaro-items.xml.1.0.tmp", ".vendaro-nameless.tmp", "orders.xml.4194305.0.tmp"}));
    EXPECT_TRUE(QFile::exists(QString::fromStdString(ours.temporaryPath())));
    EXPECT_TRUE(ours.commit().ok());
}

TEST_F(TemporaryFilesTest, namesAreInTheFolderOfTheFileAndNeverTheSame)
{
    const std::string first = temporaries::nameBeside("/somewhere/orders.xml");
    EXPECT_TRUE(first.starts_with("/somewhere/.vendaro-orders.xml." + std::to_string(::getpid()) + ".")) << first;
    EXPECT_NE(first, temporaries::nameBeside("/somewhere/orders.xml"));
    EXPECT_TRUE(temporaries::nameBeside("orders.xml").starts_with("./.vendaro-orders.xml."));
}
