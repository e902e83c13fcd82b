#include "storage/DatabaseLock.h"

#include "support/FakeDesktop.h"
#include "support/NoRoom.h"
#include "support/Race.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/xattr.h>

class DatabaseLockTest : public testing::Test {
protected:
    DatabaseLockTest() { lock.setFolder(folder.path()); }

    static QByteArray document(const QByteArray& lines)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n<dict>\n"
            + lines + "</dict>\n</plist>\n";
    }
    static QByteArray entry(const QByteArray& key, const QByteArray& text)
    {
        return "\t<key>" + key + "</key>\n\t<string>" + text + "</string>\n";
    }
    QByteArray contents(const QString& name) const
    {
        QFile file(folder.path() + '/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    void put(const QByteArray& bytes) const
    {
        QFile file(lock.path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    FakeClock clock;
    FakeUser user;
    DatabaseLock lock {clock, user};
};

TEST_F(DatabaseLockTest, aFreeFolderIsLockedWithTimeReasonAndUser)
{
    EXPECT_FALSE(lock.exists());

    const Result<bool> acquired = lock.acquire();

    ASSERT_TRUE(acquired.ok());
    EXPECT_TRUE(acquired.value());
    EXPECT_TRUE(lock.exists());
    EXPECT_TRUE(lock.isOurs());
    EXPECT_EQ(contents("lock.xml"),
        document(entry("datetime", "2024-03-01 10:15:30 +0000") + entry("reason", "database open") + entry("user", "ada")));
}

TEST_F(DatabaseLockTest, ourLockIsTakenAwayAgain)
{
    ASSERT_TRUE(lock.acquire().ok());

    EXPECT_TRUE(lock.release());

    EXPECT_FALSE(lock.exists());
    EXPECT_FALSE(lock.isOurs());
    EXPECT_FALSE(lock.release());
}

TEST_F(DatabaseLockTest, aForeignLockIsNeitherReplacedNorTakenAway)
{
    const QByteArray foreign =
        document(entry("datetime", "2024-02-29 09:00:00 +0000") + entry("reason", "database open") + entry("user", "bob"));
    put(foreign);

    const Result<bool> acquired = lock.acquire();

    ASSERT_TRUE(acquired.ok());
    EXPECT_FALSE(acquired.value());
    EXPECT_FALSE(lock.isOurs());
    EXPECT_FALSE(lock.release());
    EXPECT_EQ(contents("lock.xml"), foreign);
}

TEST_F(DatabaseLockTest, aLockThatSomebodyElseWroteInOursPlaceStays)
{
    ASSERT_TRUE(lock.acquire().ok());
    const QByteArray foreign = document(entry("reason", "database open") + entry("user", "bob"));
    put(foreign);

    EXPECT_FALSE(lock.isOurs());
    EXPECT_FALSE(lock.release());
    EXPECT_EQ(contents("lock.xml"), foreign);
}

TEST_F(DatabaseLockTest, aLockTellsWhatItSays)
{
    put(document(entry("datetime", "2024-02-29 09:00:00 +0000") + entry("reason", "offline browsing") + entry("user", "bob")));

    const LockInfo info = lock.read();

    EXPECT_EQ(info.datetime, "2024-02-29 09:00:00 +0000");
    EXPECT_EQ(info.reason, "offline browsing");
    EXPECT_EQ(info.user, "bob");
}

TEST_F(DatabaseLockTest, aLockWithoutAReasonOrWithoutSenseIsStillALock)
{
    put(document(entry("user", "bob")));
    EXPECT_FALSE(lock.read().reason.has_value());
    EXPECT_EQ(lock.read().user, "bob");

    for (const char* bytes : {"", "not a list at all", "<plist><array/></plist>"}) {
        put(bytes);
        EXPECT_TRUE(lock.exists());
        EXPECT_FALSE(lock.read().reason.has_value()) << bytes;
        EXPECT_EQ(lock.read().user, "") << bytes;
        EXPECT_FALSE(lock.acquire().value());
    }
}

TEST_F(DatabaseLockTest, aForcedUnlockKeepsWhatTheLockSaid)
{
    put(document(entry("datetime", "2024-02-29 09:00:00 +0000") + entry("reason", "database open") + entry("user", "bob")));

    ASSERT_TRUE(lock.forceOpen(lock.read()).ok());

    EXPECT_FALSE(lock.exists());
    EXPECT_EQ(contents("unlock20240301-101530.xml"),
        document(entry("datetime", "2024-02-29 09:00:00 +0000") + entry("reason", "database open")
            + entry("unlockDatetime", "2024-03-01 10:15:30 +0000") + entry("unlockReason", "user request after dialog")
            + entry("unlockUser", "ada") + entry("user", "bob")));
    EXPECT_FALSE(lock.release()) << "no lock is written after a forced unlock";
}

TEST_F(DatabaseLockTest, aForcedUnlockOfAnotherLockThanWasAskedAboutTakesNothing)
{
    put(document(entry("user", "bob")));
    const LockInfo asked = lock.read();
    put(document(entry("user", "carol")));

    const Result<bool> opened = lock.forceOpen(asked);

    ASSERT_TRUE(opened.ok());
    EXPECT_FALSE(opened.value());
    EXPECT_EQ(lock.read().user, "carol");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("lock.xml"));
}

TEST_F(DatabaseLockTest, whenTheLockWentByItselfThereIsNothingToForce)
{
    put("");
    const LockInfo asked = lock.read();
    ASSERT_TRUE(QFile::remove(lock.path()));

    const Result<bool> opened = lock.forceOpen(asked);

    ASSERT_TRUE(opened.ok());
    EXPECT_FALSE(opened.value());
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(DatabaseLockTest, aForcedUnlockKeepsADamagedLockByteForByte)
{
    put("not a list at all");

    ASSERT_TRUE(lock.forceOpen(lock.read()).ok());

    EXPECT_FALSE(lock.exists());
    EXPECT_EQ(contents("unlock20240301-101530.xml.damaged"), "not a list at all");
}

TEST_F(DatabaseLockTest, aForcedUnlockWhoseCopyCannotBeKeptLeavesTheLock)
{
    put(document(entry("user", "bob")));
    {
        const NoRoom full;
        EXPECT_FALSE(lock.forceOpen(lock.read()).ok());
    }

    EXPECT_TRUE(lock.exists());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("lock.xml"));
}

TEST_F(DatabaseLockTest, aForcedUnlockWhoseDamagedLockCannotBeKeptLeavesTheLock)
{
    put("not a list at all");
    ASSERT_TRUE(QDir().mkpath(folder.path() + "/unlock20240301-101530.xml.damaged/in the way"));

    EXPECT_FALSE(lock.forceOpen(lock.read()).ok());
    EXPECT_TRUE(lock.exists());
}

TEST_F(DatabaseLockTest, whatHasTheNameOfTheKeptLockStays)
{
    put(document(entry("user", "bob")));
    ASSERT_TRUE(QDir().mkpath(folder.path() + "/unlock20240301-101530.xml/in the way"));

    EXPECT_TRUE(lock.forceOpen(lock.read()).ok());

    EXPECT_TRUE(QDir(folder.path() + "/unlock20240301-101530.xml/in the way").exists());
    EXPECT_TRUE(contents("unlock20240301-101530-1.xml").contains("bob"));
}

TEST_F(DatabaseLockTest, inAMissingFolderNoLockCanBeWritten)
{
    lock.setFolder(folder.path() + "/missing");

    EXPECT_FALSE(lock.exists());
    EXPECT_FALSE(lock.acquire().ok());
}

TEST_F(DatabaseLockTest, anotherFoldersLockIsForgottenNotRemoved)
{
    ASSERT_TRUE(lock.acquire().ok());
    QTemporaryDir other;
    lock.setFolder(other.path());

    EXPECT_FALSE(lock.release());
    EXPECT_NE(contents("lock.xml"), "(none)");
}

TEST_F(DatabaseLockTest, ofFourProgramsOnlyOneGetsTheLock)
{
    for (int round = 0; round < 25; ++round) {
        QTemporaryDir contested;
        lock.setFolder(contested.path());
        const std::vector<int> answers = race(4, [&](int program) {
            user.login = "user " + QString::number(program);
            const Result<bool> acquired = lock.acquire();
            return !acquired ? 2 : acquired.value() ? 0 : 1;
        });
        std::string winners;
        for (std::size_t i = 0; i < answers.size(); ++i) {
            ASSERT_TRUE(answers[i] == 0 || answers[i] == 1);
            if (answers[i] == 0)
                winners += "user " + std::to_string(i);
        }
        ASSERT_EQ(winners, lock.read().user);
    }
}

TEST_F(DatabaseLockTest, aLockTellsWhetherItsHolderStillRuns)
{
    ASSERT_TRUE(lock.acquire().ok());
    const std::string path = lock.path().toStdString();
    if (::getxattr(path.c_str(), "user.vendaro.holder", nullptr, 0) < 0)
        GTEST_SKIP() << "files have no attributes here";
    EXPECT_EQ(lock.read().holder, processMark::Life::running);

    // Of a process that had this number before.
    std::string mark = processMark::own();
    mark.replace(mark.rfind(' '), std::string::npos, " 1");
    ASSERT_EQ(::setxattr(path.c_str(), "user.vendaro.holder", mark.data(), mark.size(), 0), 0);
    EXPECT_EQ(lock.read().holder, processMark::Life::ended);
}

TEST_F(DatabaseLockTest, nothingIsKnownOfTheHolderOfALockThatCarriesNoMark)
{
    put(document(entry("reason", "database open") + entry("user", "bob")));
    EXPECT_EQ(lock.read().holder, processMark::Life::unknown);
    EXPECT_EQ(DatabaseLock(clock, user).read().holder, processMark::Life::unknown) << "without a lock";
}

TEST_F(DatabaseLockTest, theLockForReadingElsewhereNamesNoHolder)
{
    EXPECT_EQ(QByteArray::fromStdString(lock.contents(DatabaseLock::offlineReason)),
        document(entry("datetime", "2024-03-01 10:15:30 +0000") + entry("reason", "offline browsing") + entry("user", "ada")));
}

TEST_F(DatabaseLockTest, twoForcedUnlocksOfOneSecondKeepBothLocks)
{
    put(document(entry("user", "bob")));
    ASSERT_TRUE(lock.forceOpen(lock.read()).ok());
    put(document(entry("user", "cleo")));
    ASSERT_TRUE(lock.forceOpen(lock.read()).ok());

    EXPECT_TRUE(contents("unlock20240301-101530.xml").contains("bob"));
    EXPECT_TRUE(contents("unlock20240301-101530-1.xml").contains("cleo"));
}
