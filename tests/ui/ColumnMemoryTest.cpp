// Widths a person gives to columns: into the list's state at once, and back after a restart.
#include "ui/ColumnMemory.h"

#include "UiTest.h"
#include "storage/ListState.h"
#include "ui/WindowMemory.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>

using namespace uitest;

namespace {

class RememberedColumns : public testing::Test {
protected:
    void SetUp() override
    {
        list.columns = {{"code", "Code", 80, ColumnAlign::left, true, true}, {"name", "Name", 120, ColumnAlign::left, true, true},
            {"rest", "Rest", 200, ColumnAlign::left, true, true}};
    }
    /// A table that shows the list's columns.
    std::unique_ptr<QTableView> tableOf(ListState& state)
    {
        auto table = std::make_unique<QTableView>();
        auto* model = new QStandardItemModel(2, static_cast<int>(state.visibleColumns().size()), table.get());
        table->setModel(model);
        table->horizontalHeader()->setStretchLastSection(true);
        return table;
    }
    static void wait() { QTest::qWait(700); }

    ListState list;
};

} // namespace

TEST_F(RememberedColumns, aNewWidthGoesIntoTheList)
{
    const auto table = tableOf(list);
    new ColumnMemory(list, table->horizontalHeader(), {});
    table->setColumnWidth(1, 177);
    EXPECT_EQ(list.column("name")->width, 177);
    EXPECT_EQ(list.column("rest")->width, 200) << "the last column only fills the room";
}

TEST_F(RememberedColumns, aHiddenColumnKeepsItsWidth)
{
    list.column("code")->visible = false;
    const auto table = tableOf(list);
    new ColumnMemory(list, table->horizontalHeader(), {});
    table->setColumnWidth(0, 177);
    EXPECT_EQ(list.column("name")->width, 177);
    EXPECT_EQ(list.column("code")->width, 80);
}

TEST_F(RememberedColumns, widthsSetUpByTheProgramAreNoWish)
{
    const auto table = tableOf(list);
    auto* memory = new ColumnMemory(list, table->horizontalHeader(), {});
    memory->show();
    EXPECT_EQ(table->columnWidth(1), 120);
    // 400 are asked for and 260 are there: the narrow column keeps its 80, the others share 180 as 120 to 200.
    table->verticalHeader()->hide();
    table->setFrameShape(QFrame::NoFrame);
    table->resize(260, 300);
    show(*table);
    EXPECT_EQ(table->columnWidth(0), 80);
    EXPECT_EQ(table->columnWidth(1), 67);
    EXPECT_EQ(table->columnWidth(2), 113) << "the last one has what is left";
    EXPECT_EQ(list.column("name")->width, 120);
    table->resize(500, 300);
    settle();
    EXPECT_EQ(table->columnWidth(0), 80);
    EXPECT_EQ(table->columnWidth(1), 120);
}

TEST_F(RememberedColumns, aColumnOfDatesOrCodesGivesNothingAway)
{
    list.column("code")->width = 110;
    const auto table = tableOf(list);
    new ColumnMemory(list, table->horizontalHeader(), {});
    table->verticalHeader()->hide();
    table->setFrameShape(QFrame::NoFrame);
    table->resize(260, 300);
    show(*table);
    // The other two share 150 as 120 to 200.
    EXPECT_EQ(table->columnWidth(0), 110);
    EXPECT_EQ(table->columnWidth(1), 56);
    EXPECT_EQ(table->columnWidth(2), 94);
}

TEST_F(RememberedColumns, roomThatIsLeftGoesToTheWidestColumn)
{
    list.column("name")->width = 210;
    const auto table = tableOf(list);
    auto* memory = new ColumnMemory(list, table->horizontalHeader(), {});
    table->verticalHeader()->hide();
    table->setFrameShape(QFrame::NoFrame);
    table->resize(600, 300);
    show(*table);
    memory->show();
    // 490 are asked for.
    EXPECT_EQ(table->columnWidth(0), 80);
    EXPECT_EQ(table->columnWidth(1), 320);
    EXPECT_EQ(table->columnWidth(2), 200);
    EXPECT_EQ(list.column("name")->width, 210) << "nobody wished it";
    table->resize(500, 300);
    settle();
    EXPECT_EQ(table->columnWidth(1), 220);
    EXPECT_EQ(table->columnWidth(2), 200);
}

TEST_F(RememberedColumns, onceSomebodyGaveAWidthAllStayAsTheyAre)
{
    const auto table = tableOf(list);
    auto* memory = new ColumnMemory(list, table->horizontalHeader(), {});
    memory->show();
    table->resize(500, 300);
    show(*table);
    table->setColumnWidth(1, 177);
    table->resize(200, 300);
    settle();
    EXPECT_EQ(table->columnWidth(0), 80);
    EXPECT_EQ(table->columnWidth(1), 177);
}

TEST_F(RememberedColumns, aWindowThatGrowsGivesNoWidth)
{
    const auto table = tableOf(list);
    auto* memory = new ColumnMemory(list, table->horizontalHeader(), "grown");
    memory->show();
    table->resize(300, 300);
    show(*table);
    table->resize(700, 300);
    wait();
    EXPECT_EQ(WindowMemory::state("columns/grown"), QByteArray());
}

TEST_F(RememberedColumns, theNextRunHasTheWidthsOfThisOne)
{
    const auto table = tableOf(list);
    new ColumnMemory(list, table->horizontalHeader(), "remembered");
    table->setColumnWidth(1, 177);
    wait();
    ListState next = list;
    next.column("name")->width = 120;
    const auto later = tableOf(next);
    new ColumnMemory(next, later->horizontalHeader(), "remembered");
    EXPECT_EQ(next.column("name")->width, 177);
}

TEST_F(RememberedColumns, aDamagedOrTinyWidthIsNotTaken)
{
    WindowMemory::rememberState("columns/odd", R"({"code": 3, "name": "wide", "gone": 90})");
    const auto table = tableOf(list);
    new ColumnMemory(list, table->horizontalHeader(), "odd");
    EXPECT_EQ(list.column("code")->width, 80);
    EXPECT_EQ(list.column("name")->width, 120);
    WindowMemory::rememberState("columns/odd", "no list at all");
    new ColumnMemory(list, table->horizontalHeader(), "odd");
    EXPECT_EQ(list.column("code")->width, 80);
}
