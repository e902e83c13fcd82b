#include "storage/RecoveryStore.h"

#include "foundation/Log.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// What stands in this folder is not there for whoever looks; empty for none.
std::string hiddenFolder;

bool isHidden(const char* path)
{
    return !hiddenFolder.empty() && std::strncmp(path, hiddenFolder.c_str(), hiddenFolder.size()) == 0 && path[hiddenFolder.size()] == '/';
}

} // namespace

/// The program's own looks at files pass through here.
extern "C" int statx(int folder, const char* path, int flags, unsigned int mask, struct statx* found) noexcept
{
    if (isHidden(path)) {
        errno = ENOENT;
        return -1;
    }
    return static_cast<int>(syscall(SYS_statx, folder, path, flags, mask, found));
}
extern "C" int access(const char* path, int mode) noexcept
{
    if (isHidden(path)) {
        errno = ENOENT;
        return -1;
    }
    return faccessat(AT_FDCWD, path, mode, 0);
}
extern "C" int lstat(const char* path, struct stat* found) noexcept
{
    if (isHidden(path)) {
        errno = ENOENT;
        return -1;
    }
    return fstatat(AT_FDCWD, path, found, AT_SYMLINK_NOFOLLOW);
}

class RecoveryStoreTest : public testing::Test {
protected:
    RecoveryStoreTest()
    {
        setLogSink([](std::string_view) {});
    }
    ~RecoveryStoreTest() override { setLogSink({}); }

    QString store() const { return user.home() + "/Recovery"; }
    QString path() const { return user.home() + "/shop.vendb/orders.xml"; }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static void put(const QString& path, const QByteArray& bytes)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    FakeClock clock;
    FakeUser user;
    RecoveryStore recovery {store(), clock};
};

TEST_F(RecoveryStoreTest, copiesOfOneSecondGetNamesOfTheirOwn)
{
    put(path(), "first");
    const Result<QString> first = recovery.keepCopy(path(), KeptFor::unreadable);
    put(path(), "second");
    const Result<QString> second = recovery.keepCopy(path(), KeptFor::unreadable);

    ASSERT_TRUE(first.ok() && second.ok());
    EXPECT_EQ(first.value(), store() + "/20240301-101530 orders.xml");
    EXPECT_EQ(second.value(), store() + "/20240301-101530-1 orders.xml");
    EXPECT_EQ(contents(first.value()), "first");
    EXPECT_EQ(contents(second.value()), "second");
    EXPECT_EQ(contents(path()), "second");
}

TEST_F(RecoveryStoreTest, whatIsKeptIsNotReplacedWhenALookAtItSaysThatItIsNotThere)
{
    put(path(), "first");
    put(user.home() + "/other/orders.xml", "moved");
    const Result<QString> first = recovery.keepCopy(path(), KeptFor::unreadable);
    ASSERT_TRUE(first.ok());

    hiddenFolder = store().toStdString();
    EXPECT_FALSE(QFileInfo::exists(first.value())) << "it looks as if it were not there";
    const Result<QString> second = recovery.keepBytes(path(), "second", KeptFor::unsaved);
    const Result<void> moved = recovery.moveIn(user.home() + "/other/orders.xml", KeptFor::attachments);
    hiddenFolder.clear();

    ASSERT_TRUE(second.ok());
    EXPECT_TRUE(moved.ok());
    EXPECT_EQ(contents(first.value()), "first");
    EXPECT_EQ(contents(second.value()), "second");
    EXPECT_EQ(contents(store() + "/20240301-101530-2 orders.xml"), "moved");
}

TEST_F(RecoveryStoreTest, aFolderIsNotMovedIntoAnotherOfItsNameAndSecond)
{
    put(user.home() + "/a/7/letter.txt", "first");
    put(user.home() + "/b/7/letter.txt", "second");

    ASSERT_TRUE(recovery.moveIn(user.home() + "/a/7", KeptFor::attachments).ok());
    ASSERT_TRUE(recovery.moveIn(user.home() + "/b/7", KeptFor::attachments).ok());

    EXPECT_EQ(contents(store() + "/20240301-101530 7/letter.txt"), "first");
    EXPECT_EQ(contents(store() + "/20240301-101530-1 7/letter.txt"), "second");
}

TEST_F(RecoveryStoreTest, aFolderIsCopiedWithEverythingInIt)
{
    const QString package = user.home() + "/shop.vendb/notepad.rtfd";
    put(package + "/TXT.rtf", "text");
    put(package + "/inner/a.png", "picture");
    const Result<QString> first = recovery.keepCopy(package, KeptFor::unreadable);
    put(package + "/TXT.rtf", "other text");
    const Result<QString> second = recovery.keepCopy(package, KeptFor::foreign);

    ASSERT_TRUE(first.ok() && second.ok());
    EXPECT_EQ(contents(first.value() + "/TXT.rtf"), "text");
    EXPECT_EQ(contents(first.value() + "/inner/a.png"), "picture");
    EXPECT_EQ(contents(second.value() + "/TXT.rtf"), "other text");
    EXPECT_EQ(contents(package + "/TXT.rtf"), "other text");
    const std::vector<KeptThing> things = recovery.things();
    ASSERT_EQ(things.size(), 2u);
    EXPECT_EQ(things[0].name, "notepad.rtfd");
    EXPECT_EQ(things[0].origin, package);
    // Nothing but those two and what is known about them.
    EXPECT_EQ(QDir(store()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 3);
}

TEST_F(RecoveryStoreTest, whatWasLeftOfAFolderIsNoPartOfItsNextCopy)
{
    const QString package = user.home() + "/shop.vendb/notepad.rtfd";
    put(package + "/TXT.rtf", "text");
    put(store() + "/.notepad.rtfd.unfinished/old.png", "left by a crash");
    const Result<QString> kept = recovery.keepCopy(package, KeptFor::unreadable);
    ASSERT_TRUE(kept.ok());
    EXPECT_EQ(contents(kept.value() + "/old.png"), "(none)");
    EXPECT_EQ(recovery.things().size(), 1u);
}

TEST_F(RecoveryStoreTest, whatWasLeftGoesWhateverNamesItHas)
{
    const QString package = user.home() + "/shop.vendb/notepad.rtfd";
    put(package + "/TXT.rtf", "text");
    // No text at all, as other systems leave it.
    const std::string left = (store() + "/.notepad.rtfd.unfinished/").toStdString() + "caf\xe9";
    ASSERT_TRUE(QDir().mkpath(store() + "/.notepad.rtfd.unfinished"));
    std::ofstream(left) << "left by a crash";

    const Result<QString> kept = recovery.keepCopy(package, KeptFor::unreadable);

    ASSERT_TRUE(kept.ok()) << kept.error().message;
    EXPECT_EQ(contents(kept.value() + "/TXT.rtf"), "text");
    ASSERT_TRUE(QDir().mkpath(store() + "/.notepad.rtfd.unfinished"));
    std::ofstream(left) << "left by another crash";
    clock.moment = QDateTime::currentDateTime().addDays(2);
    recovery.cleanUp();
    EXPECT_FALSE(QFileInfo::exists(store() + "/.notepad.rtfd.unfinished"));
}

TEST_F(RecoveryStoreTest, theSameBytesOfTheSameFileAreNotCopiedAgainWithinAMonth)
{
    put(path(), "damaged");
    put(user.home() + "/other.vendb/orders.xml", "damaged");
    const Result<QString> first = recovery.keepCopy(path(), KeptFor::unreadable);
    clock.moment = clock.moment.addDays(30);
    const Result<QString> again = recovery.keepCopy(path(), KeptFor::unreadable);
    const Result<QString> ofAnother = recovery.keepCopy(user.home() + "/other.vendb/orders.xml", KeptFor::unreadable);
    const Result<QString> forAnotherReason = recovery.keepCopy(path(), KeptFor::foreign);
    clock.moment = clock.moment.addDays(1);
    const Result<QString> later = recovery.keepCopy(path(), KeptFor::unreadable);

    ASSERT_TRUE(first.ok() && again.ok() && ofAnother.ok() && forAnotherReason.ok() && later.ok());
    EXPECT_EQ(again.value(), first.value());
    EXPECT_NE(ofAnother.value(), first.value());
    EXPECT_NE(forAnotherReason.value(), first.value());
    EXPECT_NE(later.value(), first.value());
    EXPECT_EQ(recovery.things().size(), 4U);
}

TEST_F(RecoveryStoreTest, aCopyThatIsNoMoreAsItWasDoesNotStandForANewOne)
{
    put(path(), "damaged");
    const Result<QString> first = recovery.keepCopy(path(), KeptFor::unreadable);
    ASSERT_TRUE(first.ok());
    put(first.value(), "DAMAGED");

    const Result<QString> second = recovery.keepCopy(path(), KeptFor::unreadable);

    ASSERT_TRUE(second.ok());
    EXPECT_EQ(contents(second.value()), "damaged");
    EXPECT_EQ(contents(first.value()), "DAMAGED");
}

TEST_F(RecoveryStoreTest, whatIsGivenUpLeavesNothing)
{
    const Result<QString> kept = recovery.keepBytes(path(), "orders", KeptFor::displaced);
    ASSERT_TRUE(kept.ok());

    recovery.giveUp(kept.value());

    EXPECT_TRUE(recovery.things().empty());
    EXPECT_TRUE(QDir(store() + "/.about").isEmpty());
}

TEST_F(RecoveryStoreTest, whatAProgramThatDiedLeftHalfWrittenIsRemoved)
{
    // No process has the number: it is beyond the highest that there can be.
    const QString left = "/.vendaro-20240301-101530 orders.xml.4194305.0.tmp";
    const QString running = "/.vendaro-orders.xml.1.0.tmp";
    put(store() + left, "half");
    put(store() + running, "half");
    put(store() + "/.about" + left, "half");

    recovery.cleanUp();

    EXPECT_FALSE(QFileInfo::exists(store() + left));
    EXPECT_FALSE(QFileInfo::exists(store() + "/.about" + left));
    EXPECT_TRUE(QFileInfo::exists(store() + running));
}

TEST_F(RecoveryStoreTest, onlyTheUserCanLookIntoIt)
{
    ASSERT_TRUE(recovery.keepBytes("draft.txt", "text", KeptFor::unsaved).ok());

    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(QFileInfo(store()).permissions() & others, QFile::Permissions());
    EXPECT_EQ(contents(store() + "/20240301-101530 draft.txt"), "text");
}

TEST_F(RecoveryStoreTest, foldersAreMovedIntoItWhole)
{
    put(user.home() + "/Attachments/7/letter.txt", "letter");

    ASSERT_TRUE(recovery.moveIn(user.home() + "/Attachments/7", KeptFor::attachments).ok());

    EXPECT_FALSE(QFileInfo::exists(user.home() + "/Attachments/7"));
    EXPECT_EQ(contents(store() + "/20240301-101530 7/letter.txt"), "letter");
}

TEST_F(RecoveryStoreTest, whatIsNotThereCannotBeKept)
{
    EXPECT_FALSE(recovery.keepCopy(user.home() + "/missing", KeptFor::unreadable).ok());
    EXPECT_FALSE(recovery.moveIn(user.home() + "/missing", KeptFor::attachments).ok());
    EXPECT_TRUE(recovery.things().empty());
}

TEST_F(RecoveryStoreTest, tellsOfEachThingWhatItIsTheNewestFirst)
{
    put(path(), "not a list");
    put(user.home() + "/Attachments/7/letter.txt", "letter");
    clock.moment = QDateTime(QDate(2024, 3, 1), QTime(10, 0));
    ASSERT_TRUE(recovery.keepCopy(path(), KeptFor::unreadable).ok());
    clock.moment = QDateTime(QDate(2024, 3, 2), QTime(11, 0));
    ASSERT_TRUE(recovery.moveIn(user.home() + "/Attachments/7", KeptFor::attachments).ok());
    clock.moment = QDateTime(QDate(2024, 2, 1), QTime(9, 0));
    ASSERT_TRUE(recovery.keepBytes(path(), "unsaved", KeptFor::unsaved).ok());

    const std::vector<KeptThing> things = recovery.things();

    ASSERT_EQ(things.size(), 3U);
    EXPECT_EQ(things[0].name, "7");
    EXPECT_EQ(things[0].origin, user.home() + "/Attachments/7");
    EXPECT_EQ(things[0].reason, KeptFor::attachments);
    EXPECT_EQ(things[0].since, QDateTime(QDate(2024, 3, 2), QTime(11, 0)));
    EXPECT_EQ(things[1].name, "orders.xml");
    EXPECT_EQ(things[1].origin, path());
    EXPECT_EQ(things[1].reason, KeptFor::unreadable);
    EXPECT_EQ(things[2].reason, KeptFor::unsaved);
    EXPECT_EQ(things[2].since, QDateTime(QDate(2024, 2, 1), QTime(9, 0)));
}

TEST_F(RecoveryStoreTest, listsWhatNothingIsKnownOfAndLeavesEarlierStatesOut)
{
    put(store() + "/20240301-101530-2 an old file.txt", "old");
    put(store() + "/put here by hand", "by hand");
    put(store() + "/Generations/shop-12345678/20240301-101530/orders.xml", "orders");

    const std::vector<KeptThing> things = recovery.things();

    ASSERT_EQ(things.size(), 2U);
    const KeptThing& old = things[0].name == "put here by hand" ? things[1] : things[0];
    const KeptThing& byHand = things[0].name == "put here by hand" ? things[0] : things[1];
    EXPECT_EQ(old.name, "an old file.txt");
    EXPECT_EQ(old.since, QDateTime(QDate(2024, 3, 1), QTime(10, 15, 30)));
    EXPECT_EQ(old.reason, KeptFor::unknown);
    EXPECT_EQ(old.origin, "");
    EXPECT_EQ(byHand.name, "put here by hand");
    EXPECT_EQ(byHand.since.date(), QDate::currentDate());
}

TEST_F(RecoveryStoreTest, aCopyOfAThingNeverTakesThePlaceOfAnything)
{
    put(user.home() + "/Attachments/7/letter.txt", "letter");
    ASSERT_TRUE(recovery.moveIn(user.home() + "/Attachments/7", KeptFor::attachments).ok());
    put(user.home() + "/there", "there before");

    EXPECT_TRUE(RecoveryStore::copyOut(recovery.things()[0], user.home() + "/copy").ok());
    EXPECT_FALSE(RecoveryStore::copyOut(recovery.things()[0], user.home() + "/there").ok());

    EXPECT_EQ(contents(user.home() + "/copy/letter.txt"), "letter");
    EXPECT_EQ(contents(user.home() + "/there"), "there before");
    EXPECT_EQ(contents(recovery.things()[0].path + "/letter.txt"), "letter");
}

TEST_F(RecoveryStoreTest, whatIsOlderThanNinetyDaysGoesIntoTheTrash)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    ASSERT_TRUE(QDir().mkpath(user.home() + "/data"));
    qputenv("XDG_DATA_HOME", (user.home() + "/data").toUtf8());
    clock.moment = QDateTime(QDate(2024, 3, 1), QTime(12, 0));
    ASSERT_TRUE(recovery.keepBytes("old.xml", "old", KeptFor::unsaved).ok());
    clock.moment = QDateTime(QDate(2024, 3, 2), QTime(12, 0));
    ASSERT_TRUE(recovery.keepBytes("younger.xml", "younger", KeptFor::unsaved).ok());

    clock.moment = QDateTime(QDate(2024, 5, 30), QTime(12, 0)); // 90 days after the first of March
    EXPECT_EQ(recovery.cleanUp(), 0);
    clock.moment = QDateTime(QDate(2024, 5, 31), QTime(0, 1));
    EXPECT_EQ(recovery.cleanUp(), 1);

    const std::vector<KeptThing> things = recovery.things();
    ASSERT_EQ(things.size(), 1U);
    EXPECT_EQ(things[0].name, "younger.xml");
    EXPECT_EQ(contents(user.home() + "/data/Trash/files/20240301-120000 old.xml"), "old");
    EXPECT_FALSE(QFileInfo::exists(store() + "/.about/20240301-120000 old.xml.plist"));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST_F(RecoveryStoreTest, whatWasNeverFinishedGoesWhenNobodyCanBeAtItAnyMore)
{
    const QString copy = store() + "/.20240301-120000 order12.unfinished";
    ASSERT_TRUE(QDir().mkpath(copy + "/letters"));
    clock.moment = QDateTime::currentDateTime();
    recovery.cleanUp();
    EXPECT_TRUE(QFileInfo::exists(copy));
    clock.moment = clock.moment.addDays(2);

    recovery.cleanUp();

    EXPECT_FALSE(QFileInfo::exists(copy));
}

TEST_F(RecoveryStoreTest, whatThePersonIsJustToldOfStays)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", (user.home() + "/data").toUtf8());
    const Result<QString> told = recovery.keepBytes("orders.xml", "told", KeptFor::unsaved);
    ASSERT_TRUE(recovery.keepBytes("items.xml", "not told", KeptFor::unsaved).ok());
    EXPECT_EQ(recovery.cleanUp(), 0);
    clock.moment = clock.moment.addDays(91);

    EXPECT_EQ(recovery.cleanUp({"Something else.", "What orders.xml should hold is kept as " + told.value() + "."}), 1);

    ASSERT_EQ(recovery.things().size(), 1U);
    EXPECT_EQ(recovery.things()[0].path, told.value());
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST_F(RecoveryStoreTest, aNoteIsTakenOnceAndLongerOnesAddUp)
{
    recovery.leaveNote({});
    EXPECT_FALSE(QDir(store()).exists());
    recovery.leaveNote({"One.", "Two\nlines."});
    recovery.leaveNote({"Three."});
    EXPECT_TRUE(recovery.things().empty());

    EXPECT_EQ(recovery.takeNote(), QStringList({"One.", "Two lines.", "Three."}));
    EXPECT_EQ(recovery.takeNote(), QStringList());
    EXPECT_TRUE(QDir(store()).isEmpty());
}
