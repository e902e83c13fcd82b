#include "foundation/Dates.h"

#include <gtest/gtest.h>

#include <QTimeZone>

namespace {

QDate day(int year, int month, int dayOfMonth)
{
    return QDate(year, month, dayOfMonth);
}

} // namespace

TEST(Dates, bothOrdersOfDayAndMonthRead)
{
    EXPECT_EQ(dates::readDate("31/12/24", dates::dayFirst), day(2024, 12, 31));
    EXPECT_EQ(dates::readDate("12/31/24", dates::monthFirst), day(2024, 12, 31));
    EXPECT_EQ(dates::readDate("02/03/24", dates::dayFirst), day(2024, 3, 2));
    EXPECT_EQ(dates::readDate("02/03/24", dates::monthFirst), day(2024, 2, 3));
}

TEST(Dates, twoDigitYearsTurnAtSixtyNine)
{
    EXPECT_EQ(dates::readDate("1/1/00", dates::dayFirst), day(2000, 1, 1));
    EXPECT_EQ(dates::readDate("1/1/68", dates::dayFirst), day(2068, 1, 1));
    EXPECT_EQ(dates::readDate("1/1/69", dates::dayFirst), day(1969, 1, 1));
    EXPECT_EQ(dates::readDate("1/1/99", dates::dayFirst), day(1999, 1, 1));
}

TEST(Dates, fourDigitYearsReadWhereverTwoDo)
{
    EXPECT_EQ(dates::readDate("31/12/2024", dates::dayFirst), day(2024, 12, 31));
    EXPECT_EQ(dates::readDate("31/12/1850", dates::dayFirst), day(1850, 12, 31));
    EXPECT_EQ(dates::readDate("31/12/24", dates::dayFirstLong), day(2024, 12, 31));
    EXPECT_EQ(dates::readDate("12/31/2024", dates::monthFirstLong), day(2024, 12, 31));
}

TEST(Dates, oneDigitDaysAndMonthsRead)
{
    EXPECT_EQ(dates::readDate("1/2/24", dates::dayFirst), day(2024, 2, 1));
    EXPECT_EQ(dates::readDate("1/2/4", dates::dayFirst), day(2004, 2, 1));
}

TEST(Dates, blanksAroundAreSkipped)
{
    EXPECT_EQ(dates::readDate("  1/2/24\r\n", dates::dayFirst), day(2024, 2, 1));
    EXPECT_EQ(dates::readDate("\t1/2/24 ", dates::dayFirst), day(2024, 2, 1));
}

TEST(Dates, daysThatAreNotInTheCalendarDoNotRead)
{
    for (const char* text : {"31/02/24", "30/02/24", "29/02/23", "31/04/24", "00/01/24", "01/00/24", "32/01/24", "01/13/24", "1/1/0000"})
        EXPECT_FALSE(dates::readDate(text, dates::dayFirst).has_value()) << text;
    EXPECT_EQ(dates::readDate("29/02/24", dates::dayFirst), day(2024, 2, 29));
    EXPECT_EQ(dates::readDate("29/02/2000", dates::dayFirst), day(2000, 2, 29));
    EXPECT_FALSE(dates::readDate("29/02/1900", dates::dayFirst).has_value());
}

TEST(Dates, whatIsLeftOverMakesATextUnreadable)
{
    for (const char* text : {"", " ", "1", "1/2", "1/2/", "1/2/24x", "1/2/24 10:00", "1/2/20245", "1/2/024", "1-2-24", "1.2.24", "a/b/c",
             "1/2/24/5", "1 /2/24", "-1/2/24", "1//24"})
        EXPECT_FALSE(dates::readDate(text, dates::dayFirst).has_value()) << text;
}

TEST(Dates, aDateIsWrittenByItsPattern)
{
    EXPECT_EQ(dates::write(day(2024, 3, 1), dates::dayFirst), "01/03/24");
    EXPECT_EQ(dates::write(day(2024, 3, 1), dates::monthFirst), "03/01/24");
    EXPECT_EQ(dates::write(day(2024, 3, 1), dates::dayFirstLong), "01/03/2024");
    EXPECT_EQ(dates::write(day(1999, 12, 31), dates::monthFirstLong), "12/31/1999");
    EXPECT_EQ(dates::write(day(2005, 1, 9), "%y"), "05");
}

TEST(Dates, everyDayOfFourCenturiesSurvivesBeingWrittenAndRead)
{
    for (QDate date = day(1800, 1, 1); date < day(2200, 1, 1); date = date.addDays(1)) {
        ASSERT_EQ(dates::readDate(dates::write(date, dates::dayFirstLong), dates::dayFirst), date);
        ASSERT_EQ(dates::readDate(dates::write(date, dates::monthFirstLong), dates::monthFirstLong), date);
    }
}

TEST(Dates, aMomentIsWrittenAndReadWithItsTime)
{
    const QDateTime moment(day(2024, 3, 1), QTime(10, 15, 30));

    EXPECT_EQ(dates::write(moment, dates::stamp), "20240301-101530");
    EXPECT_EQ(dates::write(moment, "%d/%m/%y %H:%M"), "01/03/24 10:15");
    EXPECT_EQ(dates::read("01/03/24 10:15:30", "%d/%m/%y %H:%M:%S"), moment);
    EXPECT_EQ(dates::read("20240301-101530", dates::stamp), moment);
}

TEST(Dates, whatAPatternDoesNotNameIsTheStartOfTheDay)
{
    EXPECT_EQ(dates::read("01/03/24", dates::dayFirst), QDateTime(day(2024, 3, 1), QTime(0, 0, 0)));
    EXPECT_EQ(dates::read("01/03/24 9:05", "%d/%m/%y %H:%M"), QDateTime(day(2024, 3, 1), QTime(9, 5, 0)));
}

TEST(Dates, timesThatAreOnNoClockDoNotRead)
{
    for (const char* text : {"01/03/24 24:00", "01/03/24 12:60", "01/03/24 12", "01/03/24 12:5x"})
        EXPECT_FALSE(dates::read(text, "%d/%m/%y %H:%M").has_value()) << text;
    EXPECT_FALSE(dates::read("31/02/24 12:00", "%d/%m/%y %H:%M").has_value());
}

TEST(Dates, theFallbackIsTheFirstDayOfTheMillennium)
{
    EXPECT_EQ(dates::fallback(), day(2000, 1, 1));
}

TEST(Dates, thePlatformsFormIsUniversalTime)
{
    EXPECT_EQ(dates::platformText(QDateTime(day(2024, 3, 1), QTime(10, 15, 30), Qt::UTC)), "2024-03-01 10:15:30 +0000");
    // Half past midnight in a zone two hours ahead is still the day before.
    const QDateTime ahead(day(2024, 3, 1), QTime(0, 30, 0), Qt::OffsetFromUTC, 2 * 3600);
    EXPECT_EQ(dates::platformText(ahead), "2024-02-29 22:30:00 +0000");
}
