#include "storage/RecordListModel.h"

#include "storage/Article.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>

#include <random>

namespace {

/// Paints sold articles red.
class ColouredArticles : public Articles {
public:
    using Articles::Articles;
    std::optional<RgbColour> labelColorForRow(int row) const override
    {
        return getnthVisibleItem(row)->isComplete() ? std::optional(RgbColour {1, 0, 0}) : std::nullopt;
    }
};

} // namespace

class RecordListModelTest : public testing::Test {
protected:
    RecordListModelTest()
    {
        articles.setDefaultSortNew(false);
        articles.list.columns = {{"name", "Name", 120, ColumnAlign::left, true, true}, {"code", "Code", 60, ColumnAlign::left, false},
            {"price", "Price", 80, ColumnAlign::right, true, false}};
        for (const char* name : {"b", "c", "a"})
            articles.addNamed(name);
    }

    QString cell(const RecordListModel& model, int row, int column) const { return model.data(model.index(row, column)).toString(); }

    ChosenSorting sorting;
    FakeBeeper beeper;
    ColouredArticles articles {sorting, beeper};
};

TEST_F(RecordListModelTest, showsTheVisibleColumnsOfTheVisibleRows)
{
    articles.getnthItem(1)->setVisible(false);
    articles.getnthItem(0)->setFieldByName("price", "1.00");
    articles.reloadData();
    const RecordListModel model(articles);

    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(cell(model, 0, 0), "b");
    EXPECT_EQ(cell(model, 1, 0), "a");
    EXPECT_EQ(cell(model, 0, 1), "1.00");
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
    EXPECT_EQ(model.columnCount(model.index(0, 0)), 0);
    EXPECT_FALSE(model.data({}).isValid());
}

TEST_F(RecordListModelTest, showsHeadingsAndTheColumnsAlignment)
{
    const RecordListModel model(articles);

    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), "Name");
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "Price");
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical).isValid());
    EXPECT_TRUE(model.data(model.index(0, 1), Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignRight));
    EXPECT_TRUE(model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignLeft));
}

TEST_F(RecordListModelTest, tellsColourStateAndIdOfARow)
{
    articles.getnthItem(2)->setFieldByName("sold", "YES");
    const RecordListModel model(articles);

    EXPECT_EQ(model.data(model.index(2, 0), RecordListModel::StatusColourRole).value<QColor>(), QColor(255, 0, 0));
    EXPECT_FALSE(model.data(model.index(0, 0), RecordListModel::StatusColourRole).value<QColor>().isValid());
    EXPECT_TRUE(model.data(model.index(2, 0), RecordListModel::FinishedRole).toBool());
    EXPECT_FALSE(model.data(model.index(0, 0), RecordListModel::FinishedRole).toBool());
    EXPECT_EQ(model.data(model.index(2, 1), RecordListModel::RecordIdRole).toInt(), 3);
    EXPECT_EQ(model.data(model.index(2, 1), RecordListModel::IdentifierRole).toString(), "price");
}

TEST_F(RecordListModelTest, onlyEditableColumnsTakeValuesAndTheCollectionMayRefuseThem)
{
    RecordListModel model(articles);

    EXPECT_TRUE(model.flags(model.index(0, 0)).testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(model.flags(model.index(0, 1)).testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(model.setData(model.index(0, 0), "new name"));
    EXPECT_EQ(articles.getnthItem(0)->getFieldByName("name"), "new name");
    EXPECT_FALSE(model.setData(model.index(0, 0), "refused"));
    EXPECT_FALSE(model.setData(model.index(0, 0), "x", Qt::DisplayRole));
    EXPECT_FALSE(model.setData({}, "x"));
    EXPECT_EQ(articles.getnthItem(0)->getFieldByName("name"), "new name");
}

TEST_F(RecordListModelTest, anEditedCellIsAskedAgainWithoutAReset)
{
    RecordListModel model(articles);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    model.setData(model.index(1, 0), "new name");

    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.front()[0].value<QModelIndex>().row(), 1);
    EXPECT_EQ(changed.front()[1].value<QModelIndex>().row(), 1);
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(RecordListModelTest, cellsThatChangeBesideEachOtherAreAskedAgainWithoutAReset)
{
    articles.reloadData();
    RecordListModel model(articles);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    articles.reloadCells();

    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.front()[0].value<QModelIndex>(), model.index(0, 0));
    EXPECT_EQ(changed.front()[1].value<QModelIndex>(), model.index(2, 1));
    EXPECT_EQ(reset.count(), 0);
    articles.clear();
    articles.reloadCells();
    EXPECT_EQ(changed.count(), 1) << "there is no cell";
}

TEST_F(RecordListModelTest, shownAndHiddenColumnsFollowTheList)
{
    RecordListModel model(articles);
    QSignalSpy columns(&model, &RecordListModel::columnsReset);

    articles.list.column("code")->visible = true;
    articles.columnsChanged();

    EXPECT_EQ(columns.count(), 1);
    EXPECT_EQ(model.columnCount(), 3);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "Code");
    EXPECT_EQ(model.column(1).identifier, "code");
}

TEST_F(RecordListModelTest, theSelectionIsWantedAfterResetsAndWhenItChanges)
{
    const RecordListModel model(articles);
    QSignalSpy wanted(&model, &RecordListModel::selectionWanted);

    articles.selectRow(1);
    EXPECT_EQ(wanted.count(), 1);
    articles.reloadData();
    EXPECT_EQ(wanted.count(), 2);
    EXPECT_EQ(articles.selectedRow(), 1);
}

TEST_F(RecordListModelTest, anAddedRecordShowsOnlyAfterTheListIsAskedAgain)
{
    const RecordListModel model(articles);
    articles.addNamed("d");
    EXPECT_EQ(model.rowCount(), 3);
    articles.reloadData();
    EXPECT_EQ(model.rowCount(), 4);
}

TEST_F(RecordListModelTest, staysAWellBehavedModelThroughAnything)
{
    RecordListModel model(articles);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(5);
    for (int step = 0; step < 500; ++step) {
        const int count = articles.getCount();
        Article* any = count > 0 ? articles.getnthItem(static_cast<int>(random() % static_cast<unsigned>(count))) : nullptr;
        switch (random() % 8) {
        case 0:
        case 1: articles.addNamed(std::to_string(random() % 100)); break;
        case 2:
            if (any) {
                articles.deleteItem(*any);
                articles.setDeleteBuffer({any});
            }
            break;
        case 3: articles.undo(); break;
        case 4: articles.toggleSort(random() % 2 ? "name" : "price"); break;
        case 5: articles.search(random() % 2 ? "1" : ""); break;
        case 6:
            articles.list.column("code")->visible = random() % 2;
            articles.columnsChanged();
            break;
        default:
            if (any)
                any->setFieldByName("price", std::to_string(random() % 100));
        }
        if (random() % 2)
            articles.reloadData();
        for (int row = 0; row < model.rowCount(); ++row)
            model.data(model.index(row, 0));
    }
    articles.clear();
    EXPECT_EQ(model.rowCount(), 0);
}
