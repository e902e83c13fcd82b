#include "storage/qvDataSource.h"

#include "storage/ArticleListTest.h"

#include <limits>

namespace {

/// Counts what a list on screen is told.
struct Watcher : ListObserver {
    void listReset() override { ++resets; }
    void rowChanged(int row) override { changed.push_back(row); }
    void cellsChanged() override { ++cellChanges; }
    void selectionChanged() override { ++selections; }
    int resets = 0;
    int cellChanges = 0;
    std::vector<int> changed;
    int selections = 0;
};

} // namespace

class qvDataSourceTest : public ArticleListTest { };

// Ids

TEST_F(qvDataSourceTest, recordsKeepTheirIdsAndNewOnesGetTheNext)
{
    Article& five = articles.addNamed("a", 5);
    Article& next = articles.addNamed("b", 0);
    Article& three = articles.addNamed("c", 3);

    EXPECT_EQ(five.getID(), 5);
    EXPECT_EQ(next.getID(), 6);
    EXPECT_EQ(three.getID(), 3);
    EXPECT_EQ(articles.highestId(), 6);
    EXPECT_EQ(articles.getNextId(), 7);
    EXPECT_EQ(articles.highestId(), 7);
}

TEST_F(qvDataSourceTest, beyondTheLargestIdTheFirstFreeOneServes)
{
    articles.addNamed("a", 1);
    articles.addNamed("b", std::numeric_limits<int>::max());

    EXPECT_EQ(articles.addNamed("c").getID(), 2);
    EXPECT_EQ(articles.addNamed("d").getID(), 3);
    EXPECT_EQ(articles.highestId(), std::numeric_limits<int>::max());
}

TEST_F(qvDataSourceTest, theIdOfTheDeletedHighestRecordIsUsedAgain)
{
    addAll({"a", "b"});
    Article& last = articles.addNamed("c");
    articles.deleteItem(last);

    EXPECT_EQ(articles.getItemById(3), &last);
    Article& again = articles.addNamed("d");

    EXPECT_EQ(again.getID(), 3);
    EXPECT_EQ(articles.getItemById(3), &again);
}

TEST_F(qvDataSourceTest, theIdOfAnotherDeletedRecordIsNotUsedAgain)
{
    Article& first = articles.addNamed("a");
    articles.addNamed("b");
    articles.deleteItem(first);

    EXPECT_EQ(articles.addNamed("c").getID(), 3);
    EXPECT_EQ(articles.getItemById(1), &first);
}

TEST_F(qvDataSourceTest, anyDeletionTakesTheHighestIdFromTheRecordsThatAreLeft)
{
    addAll({"a", "b"});
    articles.getNextId();
    articles.getNextId();
    ASSERT_EQ(articles.highestId(), 4);

    articles.deleteItem(*articles.getFirstItem());
    EXPECT_EQ(articles.highestId(), 2);
    articles.deleteItem(*articles.getFirstItem());
    EXPECT_EQ(articles.highestId(), 0);
}

TEST_F(qvDataSourceTest, theHighestIdIsFoundAgainAfterAnUndoThatDidNotRaiseIt)
{
    addAll({"a", "b"});
    Article& last = articles.addNamed("c");
    articles.deleteItem(last);
    articles.setDeleteBuffer({&last});
    articles.undo();
    ASSERT_EQ(articles.highestId(), 2);

    articles.deleteItem(*articles.getFirstItem());

    EXPECT_EQ(articles.highestId(), 3);
    EXPECT_EQ(articles.addNamed("d").getID(), 4);
}

TEST_F(qvDataSourceTest, aRecordOfAnEqualIdTakesThePlaceInTheIdMap)
{
    articles.addNamed("a", 4);
    Article& second = articles.addNamed("b", 4);

    EXPECT_EQ(articles.getItemById(4), &second);
    EXPECT_EQ(articles.getCount(), 2);
}

TEST_F(qvDataSourceTest, unknownIdsAndPlacesAnswerNothing)
{
    addAll({"a"});

    EXPECT_EQ(articles.getItemById(99), nullptr);
    EXPECT_EQ(articles.getItemById(0), nullptr);
    EXPECT_EQ(articles.getnthItem(-1), nullptr);
    EXPECT_EQ(articles.getnthItem(1), nullptr);
    EXPECT_EQ(articles.getnthSortedItem(-1), nullptr);
    EXPECT_EQ(articles.getnthSortedItem(1), nullptr);
    EXPECT_EQ(articles.getnthVisibleItem(-1), nullptr);
    EXPECT_EQ(articles.getnthVisibleItem(1), nullptr);
}

// Walking

TEST_F(qvDataSourceTest, recordsFollowEachOtherInTheOrderTheyWereAdded)
{
    EXPECT_EQ(articles.getFirstItem(), nullptr);
    Article& a = articles.addNamed("a");
    Article& b = articles.addNamed("b");
    Article& c = articles.addNamed("c");
    b.setVisible(false);

    EXPECT_EQ(articles.getFirstItem(), &a);
    EXPECT_EQ(articles.getNextItem(a), &b);
    EXPECT_EQ(articles.getNextVisibleItem(a), &c);
    EXPECT_EQ(articles.getNextItem(c), nullptr);
    EXPECT_EQ(articles.getNextVisibleItem(c), nullptr);
    articles.deleteItem(b);
    EXPECT_EQ(articles.getNextItem(a), &c);
    EXPECT_EQ(articles.getNextItem(b), nullptr);
    EXPECT_EQ(articles.getNextVisibleItem(b), nullptr);
}

TEST_F(qvDataSourceTest, twoRecordsCanChangePlaces)
{
    Article& a = articles.addNamed("a");
    articles.addNamed("b");
    Article& c = articles.addNamed("c");
    articles.setDefaultSortNew(false);

    articles.swop(a, c);

    EXPECT_EQ(articles.shown(), "c b a ");
    EXPECT_EQ(articles.getNextItem(a), nullptr);
    EXPECT_EQ(articles.getFirstItem(), &c);
}

TEST_F(qvDataSourceTest, givenArraysAreCountedByTheirVisibleRecords)
{
    Article& a = articles.addNamed("a");
    Article& b = articles.addNamed("b");
    Article& c = articles.addNamed("c");
    a.setVisible(false);
    const std::vector<dataObject*> array {&a, &b, &c};

    EXPECT_EQ(qvDataSource::countVisibleInArray(array), 2);
    EXPECT_EQ(qvDataSource::countVisibleInArray({}), 0);
    EXPECT_EQ(qvDataSource::getnthVisibleItem(0, array), &b);
    EXPECT_EQ(qvDataSource::getnthVisibleItem(1, array), &c);
    EXPECT_EQ(qvDataSource::getnthVisibleItem(2, array), nullptr);
}

// Display order

TEST_F(qvDataSourceTest, beforeAnySortTheNewestComesFirst)
{
    addAll({"a", "b", "c"});

    EXPECT_EQ(articles.shown(), "c b a ");
    EXPECT_EQ(articles.getnthSortedItem(0), articles.getnthItem(2));
    EXPECT_TRUE(articles.getSortArray().empty());
}

TEST_F(qvDataSourceTest, beforeAnySortTheOldestComesFirstWhenWanted)
{
    articles.setDefaultSortNew(false);
    addAll({"a", "b", "c"});

    EXPECT_EQ(articles.shown(), "a b c ");
}

TEST_F(qvDataSourceTest, afterASortNewRecordsStandAtTheTopUntilTheNextSort)
{
    addAll({"b", "a"});
    sortBy("name");
    articles.addNamed("c");

    EXPECT_EQ(articles.shown(), "c a b ");
    sortBy("name");
    EXPECT_EQ(articles.shown(), "a b c ");
}

TEST_F(qvDataSourceTest, afterASortNewRecordsStandAtTheEndWhenOldestComesFirst)
{
    articles.setDefaultSortNew(false);
    addAll({"b", "c"});
    sortBy("name");
    articles.addNamed("a");

    EXPECT_EQ(articles.shown(), "b c a ");
}

TEST_F(qvDataSourceTest, hiddenRecordsAreNoRows)
{
    addAll({"a", "b", "c"});
    articles.getnthItem(1)->setVisible(false);
    articles.reloadData();

    EXPECT_EQ(articles.numberOfRows(), 2);
    EXPECT_EQ(articles.shown(), "c a ");
    articles.makeAllVisible();
    EXPECT_EQ(articles.numberOfRows(), 3);
}

TEST_F(qvDataSourceTest, whereTheSortedViewEndsTheCollectionGoesOn)
{
    addAll({"a", "b", "c"});
    articles.setSortArray({articles.getnthItem(1)});

    EXPECT_EQ(articles.getnthSortedItem(0), articles.getnthItem(1));
    EXPECT_EQ(articles.getnthSortedItem(2), articles.getnthItem(0));
}

TEST_F(qvDataSourceTest, manyThatAreAddedAtOnceStandAsIfAddedOneByOne)
{
    for (const bool newestFirst : {true, false}) {
        articles.clear();
        articles.setDefaultSortNew(newestFirst);
        addAll({"b", "a"});
        sortBy("name");
        std::vector<std::unique_ptr<dataObject>> made;
        for (const char* name : {"d", "c"}) {
            made.push_back(std::make_unique<Article>());
            made.back()->setFieldByName("name", name);
        }
        articles.addAll(std::move(made));
        articles.reloadData();
        EXPECT_EQ(articles.shown(), newestFirst ? "c d a b " : "a b d c ");
        EXPECT_EQ(articles.getItemById(3)->getFieldByName("name"), "d");
        EXPECT_EQ(articles.highestId(), 4);
    }
    articles.clear();
    std::vector<std::unique_ptr<dataObject>> one;
    one.push_back(std::make_unique<Article>());
    articles.addAll(std::move(one));
    EXPECT_TRUE(articles.getSortArray().empty()) << "a list that is not sorted stays so";
}

TEST_F(qvDataSourceTest, clearingEmptiesTheListButNotTheIdMap)
{
    addAll({"b", "a"});
    dataObject* const second = articles.getItemById(2);
    sortBy("name");
    articles.clear();

    EXPECT_EQ(articles.getCount(), 0);
    EXPECT_EQ(articles.numberOfRows(), 0);
    EXPECT_EQ(articles.highestId(), 0);
    EXPECT_TRUE(articles.getSortArray().empty());
    EXPECT_EQ(articles.getItemById(2), second);
    EXPECT_EQ(articles.addNamed("new").getID(), 1);
}

// Undo

TEST_F(qvDataSourceTest, undoBringsBackWhatWasDeletedInItsOrder)
{
    Article& a = articles.addNamed("a");
    Article& b = articles.addNamed("b");
    articles.addNamed("c");
    articles.setDefaultSortNew(false);
    articles.deleteItem(a);
    articles.deleteItem(b);
    articles.setDeleteBuffer({&b, &a});

    articles.undo();

    EXPECT_EQ(articles.shown(), "c b a ");
    EXPECT_EQ(shop.beeper.beeps, 0);
    articles.undo();
    EXPECT_EQ(shop.beeper.beeps, 1);
    EXPECT_EQ(articles.getCount(), 3);
}

TEST_F(qvDataSourceTest, addingAnythingEndsTheChanceToUndo)
{
    Article& a = articles.addNamed("a");
    Article& b = articles.addNamed("b");
    articles.deleteItem(a);
    articles.deleteItem(b);
    articles.setDeleteBuffer({&a, &b});
    articles.addNamed("c");

    articles.undo();

    EXPECT_EQ(shop.beeper.beeps, 1);
    EXPECT_EQ(articles.getCount(), 1);
}

TEST_F(qvDataSourceTest, undoWithNothingToUndoBeepsAndRedoDoesNothing)
{
    articles.undo();
    articles.redo();

    EXPECT_EQ(shop.beeper.beeps, 1);
}

TEST_F(qvDataSourceTest, aRestoredRecordJoinsTheSortedViewAtItsTopAndRaisesTheHighestId)
{
    addAll({"b", "a"});
    Article& c = articles.addNamed("c");
    sortBy("name");
    articles.deleteItem(c);
    ASSERT_EQ(articles.highestId(), 2);

    articles.restore(c);

    EXPECT_EQ(articles.shown(), "c a b ");
    EXPECT_EQ(articles.highestId(), 3);
}

TEST_F(qvDataSourceTest, aRecordRestoredWithoutASortedViewLeavesTheHighestIdAlone)
{
    addAll({"a", "b"});
    Article& c = articles.addNamed("c");
    articles.deleteItem(c);

    articles.restore(c);

    EXPECT_EQ(articles.highestId(), 2);
    EXPECT_TRUE(articles.getSortArray().empty());
}

TEST_F(qvDataSourceTest, undoDoesNotTakeAnIdBackFromTheRecordThatGotIt)
{
    addAll({"a"});
    Article& old = articles.addNamed("old");
    articles.deleteItem(old);
    Article& fresh = articles.addNamed("fresh");
    articles.restore(old);

    EXPECT_EQ(old.getID(), fresh.getID());
    EXPECT_EQ(articles.getItemById(fresh.getID()), &fresh);
}

TEST_F(qvDataSourceTest, deletingManyAtOnceIsDeletingEach)
{
    for (int i = 0; i < 2000; ++i)
        articles.addNamed(std::to_string(i));
    sortBy("name");
    std::vector<dataObject*> even;
    for (int i = 0; i < 2000; i += 2)
        even.push_back(articles.getnthItem(i));

    articles.deleteItems(even);

    EXPECT_EQ(articles.getCount(), 1000);
    EXPECT_EQ(articles.getSortArray().size(), 1000u);
    EXPECT_EQ(articles.getFirstItem()->getFieldByName("name"), "1");
    EXPECT_EQ(articles.highestId(), 2000);
    EXPECT_FALSE(articles.holds(*even.front()));
    EXPECT_TRUE(articles.holds(*articles.getnthItem(999)));
}

TEST_F(qvDataSourceTest, deletingARecordTwiceChangesNothing)
{
    Article& a = articles.addNamed("a");
    articles.addNamed("b");
    articles.deleteItem(a);
    articles.deleteItem(a);

    EXPECT_EQ(articles.getCount(), 1);
}

TEST_F(qvDataSourceTest, afterDeletingTheRowBeforeTheFirstDeletedOneIsSelected)
{
    articles.setDefaultSortNew(false);
    addAll({"a", "b", "c", "d"});
    const auto deleteFrom = [&](int first, std::vector<int> rows) {
        articles.setSelectedRows(rows);
        const std::vector<dataObject*> gone = articles.selectedItems();
        articles.deleteItems(gone);
        articles.finishDeleting(gone, first);
        return gone;
    };
    Watcher watcher;
    articles.addObserver(watcher);

    const std::vector<dataObject*> gone = deleteFrom(2, {2, 3});
    EXPECT_EQ(watcher.resets, 1);
    EXPECT_EQ(articles.selectedRows(), std::vector<int> {1});
    EXPECT_EQ(articles.deleteBuffer(), gone);

    deleteFrom(0, {0});
    EXPECT_EQ(articles.selectedRows(), std::vector<int> {0});
    articles.removeObserver(watcher);
}

// Selection

TEST_F(qvDataSourceTest, selectedRecordsComeFromTheLastRowToTheFirst)
{
    articles.setDefaultSortNew(false);
    addAll({"a", "b", "c", "d"});
    articles.setSelectedRows({0, 3, 1});

    EXPECT_EQ(articles.selectedRows(), (std::vector<int> {0, 1, 3}));
    EXPECT_EQ(articles.getSelectedItem(), articles.getnthItem(0));
    const std::vector<dataObject*> expected {articles.getnthItem(3), articles.getnthItem(1), articles.getnthItem(0)};
    EXPECT_EQ(articles.selectedItems(), expected);
}

TEST_F(qvDataSourceTest, theSelectionMovesAlongWithItsRecordsAndSkipsHiddenOnes)
{
    articles.setDefaultSortNew(false);
    addAll({"a", "b", "c"});
    articles.setSelectedRows({1, 2});
    articles.getnthItem(0)->setVisible(false);
    articles.getnthItem(2)->setVisible(false);
    articles.reloadData();

    EXPECT_EQ(articles.selectedRows(), std::vector<int> {0});
    EXPECT_EQ(articles.getSelectedItem(), articles.getnthItem(1));
}

TEST_F(qvDataSourceTest, aDeletedRecordIsSelectedNoMore)
{
    addAll({"a", "b"});
    articles.selectRow(0);
    articles.deleteItem(*articles.getSelectedItem());

    EXPECT_EQ(articles.getSelectedItem(), nullptr);
    EXPECT_TRUE(articles.selectedItems().empty());
}

TEST_F(qvDataSourceTest, listsOnScreenAreToldOfResetsAndSelections)
{
    Watcher watcher;
    articles.addObserver(watcher);
    addAll({"b", "a"});
    sortBy("name");
    EXPECT_EQ(watcher.resets, 1);
    EXPECT_EQ(watcher.selections, 1);

    articles.selectRow(1);
    articles.selectRow(1);
    EXPECT_EQ(watcher.selections, 2);
    articles.removeObserver(watcher);
    articles.reloadData();
    EXPECT_EQ(watcher.resets, 1);
}

TEST_F(qvDataSourceTest, aRecordThatStaysWhereItIsChangesOnlyItsRow)
{
    articles.setDefaultSortNew(false);
    addAll({"oak", "ash", "oak bench"});
    articles.search("oak");
    EXPECT_EQ(articles.shown(), "oak oak bench ");
    Watcher watcher;
    articles.addObserver(watcher);

    articles.getnthItem(2)->setFieldByName("name", "oak chair");
    articles.filterAfterChange(*articles.getnthItem(2));

    EXPECT_EQ(watcher.resets, 0);
    EXPECT_EQ(watcher.changed, std::vector<int> {1});
    EXPECT_EQ(articles.shown(), "oak oak chair ");
    articles.removeObserver(watcher);
}

TEST_F(qvDataSourceTest, aHiddenRecordThatStaysHiddenChangesNothing)
{
    addAll({"oak", "ash"});
    articles.search("oak");
    EXPECT_EQ(articles.shown(), "oak ");
    Watcher watcher;
    articles.addObserver(watcher);

    articles.filterAfterChange(*articles.getnthItem(1));

    EXPECT_EQ(watcher.resets, 0);
    EXPECT_TRUE(watcher.changed.empty());
    articles.removeObserver(watcher);
}

TEST_F(qvDataSourceTest, aRecordThatComesOrGoesByItsChangeHasAllRowsAskedAgain)
{
    articles.setDefaultSortNew(false);
    addAll({"oak", "ash"});
    articles.search("oak");
    EXPECT_EQ(articles.shown(), "oak ");
    Watcher watcher;
    articles.addObserver(watcher);

    articles.getnthItem(0)->setFieldByName("name", "elm");
    articles.filterAfterChange(*articles.getnthItem(0));
    EXPECT_EQ(watcher.resets, 1);
    EXPECT_EQ(articles.shown(), "");

    articles.getnthItem(1)->setFieldByName("name", "bog oak");
    articles.filterAfterChange(*articles.getnthItem(1));
    EXPECT_EQ(watcher.resets, 2);
    EXPECT_EQ(articles.shown(), "bog oak ");
    EXPECT_TRUE(watcher.changed.empty());
    articles.removeObserver(watcher);
}

TEST_F(qvDataSourceTest, rowsThatTheListWasNotToldOfAreToldWithTheNextChange)
{
    articles.setDefaultSortNew(false);
    addAll({"oak"});
    articles.reloadData();
    Watcher watcher;
    articles.addObserver(watcher);
    addAll({"ash"});
    EXPECT_EQ(articles.numberOfRows(), 2);

    articles.filterAfterChange(*articles.getnthItem(0));

    EXPECT_EQ(watcher.resets, 1);
    EXPECT_TRUE(watcher.changed.empty());
    articles.removeObserver(watcher);
}

TEST_F(qvDataSourceTest, cellsAreAskedAgainWithoutTheRowsUnlessThoseWereNotTold)
{
    addAll({"oak", "ash"});
    Watcher watcher;
    articles.addObserver(watcher);
    articles.reloadCells();
    EXPECT_EQ(watcher.resets, 1) << "the rows were never told";
    articles.reloadCells();
    articles.reloadCells();
    EXPECT_EQ(watcher.resets, 1);
    EXPECT_EQ(watcher.cellChanges, 2);

    articles.deleteItem(*articles.getnthItem(0));
    articles.reloadCells();
    EXPECT_EQ(watcher.resets, 2);
    EXPECT_EQ(watcher.cellChanges, 2);
    articles.removeObserver(watcher);
}

TEST_F(qvDataSourceTest, aClickOnAHeadingSortsAndAnotherTurnsTheDirection)
{
    addAll({"b", "c", "a"});

    articles.toggleSort("name");
    EXPECT_EQ(articles.shown(), "a b c ");
    articles.toggleSort("name");
    EXPECT_EQ(articles.shown(), "c b a ");
    articles.toggleSort("name");
    EXPECT_EQ(articles.shown(), "a b c ");
    EXPECT_EQ(articles.list.sortDescriptors, (std::vector<SortDescriptor> {{"name", true}}));
    articles.resetSortArray();
    EXPECT_TRUE(articles.list.sortDescriptors.empty());
    EXPECT_EQ(articles.shown(), "a b c ");
}
