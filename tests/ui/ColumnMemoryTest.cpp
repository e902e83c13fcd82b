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
    memory->setPaused(true);
    table->setColumnWidth(1, 177);
    EXPECT_EQ(list.column("name")->width, 120);
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
