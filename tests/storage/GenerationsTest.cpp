#include "storage/Generations.h"

#include "foundation/Log.h"
#include "support/FakeDesktop.h"
#include "support/NoRoom.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <set>

#include <sys/stat.h>

class GenerationsTest : public testing::Test {
protected:
    GenerationsTest()
    {
        setLogSink([](std::string_view) {});
        QDir().mkpath(database());
    }
    ~GenerationsTest() override { setLogSink({}); }

    QString database() const { return user.home() + "/shop.vendb"; }
    void put(const QString& name, const QByteArray& bytes, const QString& folder = {}) const
    {
        QFile file((folder.isEmpty() ? database() : folder) + '/' + name);
        QFile::remove(file.fileName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static nlink_t names(const QString& path)
    {
        struct stat status { };
        return ::stat(path.toStdString().c_str(), &status) == 0 ? status.st_nlink : 0;
    }
    /// As the first write of a day does.
    Result<void> keepDaily()
    {
        return generations.hasToday(database()) ? Result<void>() : generations.keep(database(), {"orders.xml", "items.xml", "goals.xml"});
    }
    void goTo(const QDate& date, const QTime& time = QTime(9, 0)) { clock.moment = QDateTime(date, time); }

    FakeClock clock;
    FakeUser user;
    Generations generations {user.home() + "/Recovery", clock};
};

TEST_F(GenerationsTest, keepsTheFilesThatAreThereUnderASecondName)
{
    put("orders.xml", "orders");
    put("items.xml", "items");
    put("lock.xml", "lock");

    ASSERT_TRUE(keepDaily().ok());

    const std::vector<Generation> kept = generations.of(database());
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].since, QDateTime(QDate(2024, 3, 1), QTime(10, 15, 30)));
    EXPECT_EQ(QDir(kept[0].folder).entryList(QDir::Files | QDir::Hidden, QDir::Name), (QStringList {"items.xml", "orders.xml"}));
    EXPECT_EQ(contents(kept[0].folder + "/orders.xml"), "orders");
    EXPECT_EQ(names(database() + "/orders.xml"), 2U);
}

TEST_F(GenerationsTest, aFileThatTakesThePlaceOfAKeptOneLeavesItAsItWas)
{
    put("orders.xml", "before");
    ASSERT_TRUE(keepDaily().ok());

    put("orders.xml", "after");

    EXPECT_EQ(contents(generations.of(database())[0].folder + "/orders.xml"), "before");
}

TEST_F(GenerationsTest, onlyTheFirstOfADayIsKept)
{
    put("orders.xml", "morning");
    goTo(QDate(2024, 3, 1), QTime(8, 0));
    ASSERT_TRUE(keepDaily().ok());
    put("orders.xml", "evening");
    goTo(QDate(2024, 3, 1), QTime(20, 0));
    ASSERT_TRUE(keepDaily().ok());
    goTo(QDate(2024, 3, 2), QTime(0, 1));
    ASSERT_TRUE(keepDaily().ok());

    const std::vector<Generation> kept = generations.of(database());
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(contents(kept[0].folder + "/orders.xml"), "evening");
    EXPECT_EQ(contents(kept[1].folder + "/orders.xml"), "morning");
}

TEST_F(GenerationsTest, askedForByThePersonOneIsKeptWheneverItIs)
{
    put("orders.xml", "orders");
    ASSERT_TRUE(keepDaily().ok());
    ASSERT_TRUE(generations.keep(database(), {"orders.xml"}).ok());

    EXPECT_EQ(generations.of(database()).size(), 2U);
}

TEST_F(GenerationsTest, whatIsKeptNowStaysThoughTheClockStandsBeforeAllOthers)
{
    put("orders.xml", "later");
    for (int minute = 0; minute < 60; ++minute) {
        goTo(QDate(2026, 1, 5), QTime(10, minute));
        ASSERT_TRUE(generations.keep(database(), {"orders.xml"}).ok());
    }
    ASSERT_EQ(generations.of(database()).size(), 50U);
    put("orders.xml", "now");
    goTo(QDate(2020, 1, 6));

    ASSERT_TRUE(generations.keep(database(), {"orders.xml"}).ok());

    const std::vector<Generation> kept = generations.of(database());
    const auto now =
        std::find_if(kept.begin(), kept.end(), [](const Generation& generation) { return generation.since.date().year() == 2020; });
    ASSERT_NE(now, kept.end());
    EXPECT_EQ(contents(now->folder + "/orders.xml"), "now");
}

TEST_F(GenerationsTest, whatWasKeptThatDayAndTheDayBeforeStaysThoughTheClockStandsBeforeAllOthers)
{
    put("orders.xml", "later");
    for (int minute = 0; minute < 60; ++minute) {
        goTo(QDate(2026, 1, 5), QTime(10, minute));
        ASSERT_TRUE(generations.keep(database(), {"orders.xml"}).ok());
    }
    const auto keepAt = [&](int day, const char* bytes) {
        put("orders.xml", bytes);
        goTo(QDate(2020, 1, day));
        ASSERT_TRUE(generations.keep(database(), {"orders.xml"}).ok());
    };

    keepAt(6, "in the morning");
    keepAt(6, "before bringing back");
    keepAt(7, "the day after");

    const std::vector<Generation> kept = generations.of(database());
    ASSERT_EQ(kept.size(), 50U);
    EXPECT_EQ(contents(kept[47].folder + "/orders.xml"), "the day after");
    EXPECT_EQ(contents(kept[48].folder + "/orders.xml"), "before bringing back");
    EXPECT_EQ(contents(kept[49].folder + "/orders.xml"), "in the morning");
    EXPECT_EQ(kept[46].since, QDateTime(QDate(2026, 1, 5), QTime(10, 13)));
}

TEST_F(GenerationsTest, anEmptyDatabaseHasNothingToKeep)
{
    ASSERT_TRUE(keepDaily().ok());

    EXPECT_TRUE(generations.of(database()).empty());
    EXPECT_FALSE(QFileInfo::exists(user.home() + "/Recovery"));
}

TEST_F(GenerationsTest, databasesOfOneNameAreKeptApart)
{
    const QString other = user.home() + "/elsewhere/shop.vendb";
    QDir().mkpath(other);
    put("orders.xml", "here");
    put("orders.xml", "there", other);

    ASSERT_TRUE(keepDaily().ok());
    ASSERT_TRUE(generations.keep(other, {"orders.xml"}).ok());

    ASSERT_EQ(generations.of(database()).size(), 1U);
    ASSERT_EQ(generations.of(other).size(), 1U);
    EXPECT_EQ(contents(generations.of(other)[0].folder + "/orders.xml"), "there");
}

TEST_F(GenerationsTest, aSymbolicLinkIsKeptAsWhatItLeadsTo)
{
    put("orders.xml", "elsewhere", user.home());
    ASSERT_TRUE(QFile::link("../orders.xml", database() + "/orders.xml"));

    ASSERT_TRUE(keepDaily().ok());

    const QString kept = generations.of(database()).at(0).folder + "/orders.xml";
    EXPECT_FALSE(QFileInfo(kept).isSymLink());
    EXPECT_EQ(contents(kept), "elsewhere");
}

TEST_F(GenerationsTest, whatABrokenOffAttemptLeftIsNoGenerationAndDoesNotStayInTheWay)
{
    put("orders.xml", "orders");
    ASSERT_TRUE(keepDaily().ok());
    const QString place = QFileInfo(generations.of(database())[0].folder).path();
    goTo(QDate(2024, 3, 2));
    QDir().mkpath(place + "/.20240302-090000");
    put("orders.xml", "half", place + "/.20240302-090000");
    EXPECT_EQ(generations.of(database()).size(), 1U);

    ASSERT_TRUE(keepDaily().ok());

    ASSERT_EQ(generations.of(database()).size(), 2U);
    EXPECT_EQ(contents(generations.of(database())[0].folder + "/orders.xml"), "orders");
}

TEST_F(GenerationsTest, whatWasBrokenOffAtAnotherTimeGoesToo)
{
    put("orders.xml", "orders");
    ASSERT_TRUE(keepDaily().ok());
    const QString place = QFileInfo(generations.of(database())[0].folder).path();
    QDir().mkpath(place + "/.20240229-080000");
    put("orders.xml", "half", place + "/.20240229-080000");
    goTo(QDate(2024, 3, 2));

    ASSERT_TRUE(keepDaily().ok());

    EXPECT_EQ(QDir(place).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        (QStringList {"20240301-101530", "20240302-090000"}));
}

TEST_F(GenerationsTest, oneThatFailsLeavesNothing)
{
    put("orders.xml", "orders");
    ASSERT_TRUE(keepDaily().ok());
    const QString place = QFileInfo(generations.of(database())[0].folder).path();
    goTo(QDate(2024, 3, 2));
    // A link is copied, and larger than a file may be here.
    put("large", QByteArray(5'000, 'x'), user.home());
    ASSERT_TRUE(QFile::link("../large", database() + "/items.xml"));
    {
        const NoRoom full(1'000);
        EXPECT_FALSE(keepDaily().ok());
    }

    EXPECT_EQ(QDir(place).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList {"20240301-101530"});
}

TEST_F(GenerationsTest, onlyTheUserCanLookIntoThem)
{
    put("orders.xml", "orders");

    ASSERT_TRUE(keepDaily().ok());

    struct stat status { };
    ASSERT_EQ(::stat((user.home() + "/Recovery").toStdString().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(GenerationsTest, aDayThatHasOneIsKnownAgainWhenTheClockWentBack)
{
    put("orders.xml", "orders");
    ASSERT_TRUE(keepDaily().ok());
    goTo(QDate(2024, 3, 2));
    ASSERT_TRUE(keepDaily().ok());
    ASSERT_TRUE(generations.hasToday(database()));
    goTo(QDate(2024, 3, 1), QTime(18, 0));

    EXPECT_TRUE(generations.hasToday(database()));
    goTo(QDate(2024, 2, 28));
    EXPECT_FALSE(generations.hasToday(database()));
    EXPECT_FALSE(generations.hasToday(user.home() + "/other.vendb"));
}

namespace {

/// One generation a day at nine, so many days up to the first of March 2024, the newest first.
std::vector<QDateTime> daily(int days)
{
    std::vector<QDateTime> times;
    for (int day = 0; day < days; ++day)
        times.emplace_back(QDate(2024, 3, 1).addDays(-day), QTime(9, 0));
    return times;
}

} // namespace

TEST(GenerationsToGiveUp, aFortnightStaysWhole)
{
    EXPECT_TRUE(Generations::superfluous(daily(15), QDateTime(QDate(2024, 3, 1), QTime(18, 0))).empty());
}

TEST(GenerationsToGiveUp, beforeThatTheFirstOfEachWeekStays)
{
    // Fifteen days to Friday the 16th of February; before: Thursday the 15th back to Wednesday the 7th.
    const std::vector<std::size_t> given = Generations::superfluous(daily(24), QDateTime(QDate(2024, 3, 1), QTime(18, 0)));

    // Monday the 12th is the first of its week, and the 7th the first of the week before.
    EXPECT_EQ(given, (std::vector<std::size_t> {15, 16, 17, 19, 20, 21, 22}));
}

TEST(GenerationsToGiveUp, afterAQuarterTheFirstOfEachMonthStays)
{
    const std::vector<QDateTime> times {QDateTime(QDate(2023, 8, 20), QTime(9, 0)), QDateTime(QDate(2023, 8, 10), QTime(9, 0)),
        QDateTime(QDate(2023, 8, 1), QTime(9, 0)), QDateTime(QDate(2023, 7, 31), QTime(9, 0)), QDateTime(QDate(2022, 7, 30), QTime(9, 0))};

    EXPECT_EQ(Generations::superfluous(times, QDateTime(QDate(2024, 3, 1), QTime(18, 0))), (std::vector<std::size_t> {0, 1}));
}

TEST(GenerationsToGiveUp, thereAreNeverMoreThanFiftyAndTheOldestGoFirst)
{
    std::vector<QDateTime> times;
    for (int minute = 0; minute < 53; ++minute)
        times.emplace_back(QDate(2024, 3, 1), QTime(12, 59 - minute));

    EXPECT_EQ(Generations::superfluous(times, QDateTime(QDate(2024, 3, 1), QTime(18, 0))), (std::vector<std::size_t> {50, 51, 52}));
}

TEST(GenerationsToGiveUp, thoseOfTheLastDaysGoLastThoughTheClockWasAheadBefore)
{
    std::vector<QDateTime> times;
    for (int minute = 0; minute < 50; ++minute)
        times.emplace_back(QDate(2031, 1, 1), QTime(12, 59 - minute));
    times.emplace_back(QDate(2024, 3, 1), QTime(9, 0));
    times.emplace_back(QDate(2024, 2, 16), QTime(9, 0));
    // A day older than that, and the first of its week.
    times.emplace_back(QDate(2024, 2, 15), QTime(9, 0));

    EXPECT_EQ(Generations::superfluous(times, QDateTime(QDate(2024, 3, 1), QTime(18, 0))), (std::vector<std::size_t> {48, 49, 52}));
}

TEST(GenerationsToGiveUp, aClockThatWasAheadCostsNothing)
{
    const std::vector<QDateTime> times {QDateTime(QDate(2031, 1, 1), QTime(9, 0)), QDateTime(QDate(2024, 2, 29), QTime(9, 0))};

    EXPECT_TRUE(Generations::superfluous(times, QDateTime(QDate(2024, 3, 1), QTime(18, 0))).empty());
}

TEST_F(GenerationsTest, ofTwoYearsOfDaysFiftyOrFewerAreOnDisk)
{
    put("orders.xml", "orders");
    for (QDate day(2022, 3, 1); day < QDate(2024, 3, 1); day = day.addDays(1)) {
        goTo(day);
        ASSERT_TRUE(keepDaily().ok());
    }

    const std::vector<Generation> kept = generations.of(database());
    EXPECT_LE(kept.size(), 50U);
    EXPECT_GE(kept.size(), 40U);
    EXPECT_EQ(kept.back().since.date(), QDate(2022, 3, 1));
    EXPECT_EQ(kept.front().since.date(), QDate(2024, 2, 29));
}

TEST_F(GenerationsTest, aClockThatJumpsAheadOnceLeavesYesterday)
{
    put("orders.xml", "orders");
    const QDate first(2024, 1, 1);
    const QDate last(2024, 2, 29);
    for (QDate day = first; day <= last; day = day.addDays(1)) {
        goTo(day);
        ASSERT_TRUE(keepDaily().ok());
    }
    const auto days = [this] {
        std::set<QDate> found;
        for (const Generation& generation : generations.of(database()))
            found.insert(generation.since.date());
        return found;
    };
    const std::set<QDate> before = days();

    goTo(last.addYears(1));
    ASSERT_TRUE(keepDaily().ok());
    goTo(last.addDays(1));
    ASSERT_TRUE(keepDaily().ok());

    // Two of those that were no month's first went while the clock was ahead, and the 15th of February as on any such day.
    const std::set<QDate> after = days();
    for (int back = 0; back <= 13; ++back)
        EXPECT_TRUE(after.contains(last.addDays(-back))) << back;
    EXPECT_TRUE(after.contains(first));
    EXPECT_GE(after.size() + 1, before.size());
}
