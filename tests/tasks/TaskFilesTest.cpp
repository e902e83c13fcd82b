#include "tasks/TaskFiles.h"

#include "foundation/plist/PlistWriter.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

namespace {

class PlainSorting : public SortSettings {
public:
    std::string codeSort() const override { return {}; }
};

std::string text(const char* key, const char* value)
{
    return std::string("\t\t\t<key>") + key + "</key>\n\t\t\t<string>" + value + "</string>\n";
}

std::string document(const char* key, const std::string& record)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n\t<key>"
        + std::string(key) + "</key>\n\t<array>\n\t\t<dict>\n" + record + "\t\t</dict>\n\t</array>\n</dict>\n</plist>\n";
}

} // namespace

class TaskFiles : public testing::Test {
protected:
    static void load(RecordFile& file, const std::string& bytes)
    {
        auto parsed = file.parse(bytes);
        ASSERT_TRUE(parsed.ok());
        parsed.value()->adopt();
    }
    static std::string written(const RecordFile& file)
    {
        std::string bytes;
        PlistWriter writer([&](std::string_view piece) { bytes += piece; });
        file.snapshot()->write(writer);
        return bytes;
    }

    PlainSorting sorting;
    FakeBeeper beeper;
    ActionManager tasks {sorting, beeper};
    GoalManager goals {sorting, beeper};
    ActionFile taskFile {tasks};
    GoalFile goalFile {goals, tasks};
};

TEST_F(TaskFiles, everyKeyOfATaskIsWrittenEmptyOnesToo)
{
    tasks.add(std::make_unique<Action>());

    EXPECT_EQ(written(taskFile),
        document("actions",
            text("alarm", "NO") + text("alarmacknowledged", "NO") + text("complete", "NO") + text("details", "") + text("enddate", "")
                + text("endtime", "") + text("id", "1") + text("material", "0") + text("order", "0") + text("rate", "")
                + text("startdate", "") + text("starttime", "") + text("title", "") + text("totalcharge", "") + text("totaltime", "")
                + text("totaltimeunits", "Hours") + text("type", "Task")));
}

TEST_F(TaskFiles, aTaskComesBackAsItWasWritten)
{
    const std::string bytes = document("actions",
        text("alarm", "YES") + text("alarmacknowledged", "YES") + text("complete", "YES") + text("details", "about")
            + text("enddate", "02/03/24") + text("endtime", "10:00") + text("id", "7") + text("material", "5") + text("order", "3")
            + text("rate", "12.00") + text("startdate", "01/03/24") + text("starttime", "09:00") + text("title", "Ring")
            + text("totalcharge", "6.00") + text("totaltime", "0.50") + text("totaltimeunits", "Days") + text("type", "Time logging"));
    load(taskFile, bytes);

    ASSERT_EQ(tasks.getCount(), 1);
    EXPECT_EQ(tasks.at(0).getID(), 7);
    EXPECT_EQ(tasks.at(0).getOrder(), 3);
    EXPECT_EQ(tasks.at(0).getMaterial(), 5);
    EXPECT_EQ(tasks.at(0).getType(), "Time logging");
    EXPECT_TRUE(tasks.at(0).values().alarmAcknowledged);
    EXPECT_EQ(written(taskFile), bytes);
}

TEST_F(TaskFiles, aGoalIsWrittenWithTheIdsOfItsTasks)
{
    tasks.add(std::make_unique<Action>());
    tasks.add(std::make_unique<Action>());
    Goal& goal = goals.add(std::make_unique<Goal>());
    goal.setName("Grow");
    goal.addAction(*tasks.getItemById(2));
    goal.addAction(*tasks.getItemById(1));

    EXPECT_EQ(written(goalFile),
        document("goals",
            "\t\t\t<key>actions</key>\n\t\t\t<array>\n\t\t\t\t<string>2</string>\n\t\t\t\t<string>1</string>\n\t\t\t</array>\n"
                + text("details", "") + text("id", "1") + text("name", "Grow")));
}

TEST_F(TaskFiles, aGoalWithoutTasksIsWrittenWithAnEmptyList)
{
    goals.add(std::make_unique<Goal>());

    EXPECT_EQ(written(goalFile),
        document("goals", "\t\t\t<key>actions</key>\n\t\t\t<array/>\n" + text("details", "") + text("id", "1") + text("name", "")));
}

TEST_F(TaskFiles, aGoalFindsItsTasksAndSkipsIdsOfNone)
{
    tasks.add(std::make_unique<Action>());
    tasks.add(std::make_unique<Action>());
    load(goalFile,
        document("goals",
            "<key>id</key><string>1</string><key>actions</key><array><string>2</string><string>99</string><integer>1</integer><string/"
            "><dict/></array>"));

    ASSERT_EQ(goals.getCount(), 1);
    EXPECT_EQ(goals.at(0).getActionsAsID(), (std::vector<int> {2, 1}));
}

TEST_F(TaskFiles, whatIsNoIdAmongAGoalsTasksIsToldUntilTheNextReading)
{
    tasks.add(std::make_unique<Action>());
    const auto goalWith = [](const std::string& entries) {
        return document("goals", "<key>actions</key><array>" + entries + "</array>" + text("id", "1") + text("name", "Spring fair"));
    };
    const std::string told = "an entry among the tasks of \"Spring fair\" is no number of a task";

    for (const char* entry : {"<string>q</string>", "<dict/>", "<string/>"}) {
        goalFile.forget();
        load(goalFile, goalWith("<string>1</string>" + std::string(entry)));
        EXPECT_EQ(goalFile.leftOut(), told) << entry;
    }
    goalFile.forget();
    EXPECT_EQ(goalFile.leftOut(), "");
    // A task that was deleted since is no damage.
    load(goalFile, goalWith("<string>1</string><string>99</string>"));
    EXPECT_EQ(goalFile.leftOut(), "");
}

TEST_F(TaskFiles, whatStandsInThePlaceOfAGoalsTasksIsKeptUntilItHasSome)
{
    tasks.add(std::make_unique<Action>());
    const std::string bytes =
        document("goals", text("actions", "KEEP") + text("details", "") + text("id", "1") + text("name", "Spring fair"));
    load(goalFile, bytes);

    EXPECT_EQ(written(goalFile), bytes);
    EXPECT_EQ(goalFile.leftOut(), "");
    goals.at(0).addAction(*tasks.getItemById(1));
    EXPECT_EQ(written(goalFile),
        document("goals",
            "\t\t\t<key>actions</key>\n\t\t\t<array>\n\t\t\t\t<string>1</string>\n\t\t\t</array>\n" + text("details", "") + text("id", "1")
                + text("name", "Spring fair")));
}

TEST_F(TaskFiles, aDeletedTaskStaysKnownToItsGoal)
{
    Action& task = tasks.add(std::make_unique<Action>());
    goals.add(std::make_unique<Goal>()).addAction(task);

    tasks.deleteItem(task);

    EXPECT_EQ(goals.at(0).getActionsAsID(), std::vector<int> {1});
}

TEST_F(TaskFiles, aTaskAmongTheGoalsIsNotWrittenAsOne)
{
    Action& task = tasks.add(std::make_unique<Action>());
    goals.add(std::make_unique<Goal>()).setName("Grow");
    tasks.deleteItem(task);
    goals.setDeleteBuffer({&task});
    goals.undo();
    ASSERT_EQ(goals.getCount(), 2);

    EXPECT_EQ(written(goalFile),
        document("goals", "\t\t\t<key>actions</key>\n\t\t\t<array/>\n" + text("details", "") + text("id", "1") + text("name", "Grow")));
}
