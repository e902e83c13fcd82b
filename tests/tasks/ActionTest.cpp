#include "tasks/Action.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* texts[] = {
    "details", "enddate", "endtime", "startdate", "starttime", "totalcharge", "totaltime", "totaltimeunits", "title"};
constexpr const char* setInAnyCase[] = {"enddate", "startdate", "endtime", "starttime", "totalcharge", "totaltime", "totaltimeunits"};

std::int64_t day(int year, int month, int dayOfMonth)
{
    return QDate(year, month, dayOfMonth).toJulianDay();
}

} // namespace

TEST(Action, aNewTaskIsEmptyButForKindAndUnits)
{
    const Action task;

    EXPECT_EQ(task.getType(), "Task");
    EXPECT_EQ(task.getFieldByName("totaltimeunits"), "Hours");
    for (const std::string name : texts) {
        if (name != "totaltimeunits") {
            EXPECT_EQ(task.getFieldByName(name), "") << name;
        }
    }
    EXPECT_FALSE(task.isComplete());
    EXPECT_EQ(task.getOrder(), 0);
    EXPECT_EQ(task.getMaterial(), 0);
}

TEST(Action, textsAreSetAndReadByTheirNames)
{
    Action task;
    for (const std::string name : texts) {
        task.setFieldByName(name, "my " + name);
        EXPECT_EQ(task.getFieldByName(name), "my " + name);
    }
}

TEST(Action, datesTimesAndFiguresAreSetInAnyCaseTitleAndDetailsAreNot)
{
    for (const std::string name : setInAnyCase) {
        Action task;
        std::string shouted = name;
        for (char& letter : shouted)
            letter = static_cast<char>(std::toupper(letter));
        EXPECT_TRUE(task.setFieldByName(shouted, "x")) << shouted;
        EXPECT_EQ(task.getFieldByName(name), "x");
    }
    Action task;
    for (const char* name : {"Title", "Details", "Rate", "Order", "Complete"})
        EXPECT_FALSE(task.setFieldByName(name, "Yes")) << name;
}

TEST(Action, rateAndOrderAreSetByNameButNotReadByIt)
{
    Action task;
    EXPECT_TRUE(task.setFieldByName("rate", "12.00"));
    EXPECT_TRUE(task.setFieldByName("order", "42"));

    EXPECT_EQ(task.values().rate.string(), "12.00");
    EXPECT_EQ(task.getOrder(), 42);
    EXPECT_EQ(task.getFieldByName("rate"), "");
    EXPECT_EQ(task.getFieldByName("order"), "");
    task.setFieldByName("order", "soon");
    EXPECT_EQ(task.getOrder(), 0);
}

TEST(Action, completionIsSetByExactlyYes)
{
    Action task;
    task.setFieldByName("complete", "Yes");
    EXPECT_TRUE(task.isComplete());
    EXPECT_EQ(task.getFieldByName("complete"), "Yes");
    EXPECT_EQ(task.getComplete(), "YES");

    for (const char* other : {"YES", "yes", "", "Yes "}) {
        task.setFieldByName("complete", "Yes");
        task.setFieldByName("complete", other);
        EXPECT_FALSE(task.isComplete()) << other;
    }
    EXPECT_EQ(task.getFieldByName("complete"), "No");
    EXPECT_EQ(task.getComplete(), "NO");
}

TEST(Action, otherNamesAreNeitherReadNorSet)
{
    Action task;
    for (const char* name : {"type", "material", "alarm", "alarmacknowledged", "id", "", "nonsense"}) {
        EXPECT_FALSE(task.setFieldByName(name, "1")) << name;
        EXPECT_EQ(task.getFieldByName(name), "") << name;
    }
    EXPECT_EQ(task.getID(), 0);
}

TEST(Action, datesAreDayFirst)
{
    Action task;
    task.setFieldByName("startdate", "03/04/24");
    task.setFieldByName("enddate", "31/12/2024");

    EXPECT_EQ(task.getStartdateasdate(), QDate(2024, 4, 3));
    EXPECT_EQ(task.getEnddateasdate(), QDate(2024, 12, 31));
    EXPECT_EQ(task.getDateByName("startdateasdate"), day(2024, 4, 3));
    EXPECT_EQ(task.getDateByName("enddateasdate"), day(2024, 12, 31));
}

TEST(Action, aDateThatDoesNotReadIsTheFirstDayOf2000)
{
    Action task;
    for (const char* wrong : {"", "tomorrow", "31/02/24", "12/31/24"}) {
        task.setFieldByName("startdate", wrong);
        EXPECT_EQ(task.getStartdateasdate(), QDate(2000, 1, 1)) << wrong;
    }
}

TEST(Action, titleAndDetailsAreSearched)
{
    Action task;
    task.setFieldByName("title", "Ring ADA");
    task.setFieldByName("details", "about the tea");
    task.setFieldByName("rate", "12");

    EXPECT_TRUE(task.contains("ada"));
    EXPECT_TRUE(task.contains("TEA"));
    EXPECT_FALSE(task.contains("12"));
    EXPECT_FALSE(task.contains("ada about"));
}
