#include "storage/qvDataSource.h"

#include "foundation/Log.h"
#include "storage/ArticleListTest.h"

#include <limits>

class RecordSortingTest : public ArticleListTest { };

TEST_F(RecordSortingTest, textSortsWithoutRegardToCase)
{
    addAll({"cherry", "Banana", "apple"});

    articles.sortByColumn("name", true);
    EXPECT_EQ(articles.shown(), "apple Banana cherry ");
    articles.sortByColumn("name", false);
    EXPECT_EQ(articles.shown(), "cherry Banana apple ");
}

TEST_F(RecordSortingTest, equalRecordsKeepTheirOrderInBothDirections)
{
    for (const char* name : {"b1", "a1", "b2", "a2", "b3"})
        addWith(name, "note", std::string(1, name[0]));

    articles.sortByColumn("note", true);
    EXPECT_EQ(articles.shown(), "a1 a2 b1 b2 b3 ");
    articles.sortByColumn("note", false);
    EXPECT_EQ(articles.shown(), "b1 b2 b3 a1 a2 ");
}

TEST_F(RecordSortingTest, codesSortByTheirDigits)
{
    for (const char* code : {"A10", "B9", "C100"})
        addWith(code, "code", code);

    sortBy("code");

    EXPECT_EQ(articles.shown(), "B9 A10 C100 ");
}

TEST_F(RecordSortingTest, codesSortAsTextWhenTheSettingIsOne)
{
    shop.sorting.chosen = "1";
    for (const char* code : {"B9", "a10", "C100"})
        addWith(code, "code", code);

    sortBy("code");

    EXPECT_EQ(articles.shown(), "a10 B9 C100 ");
}

TEST_F(RecordSortingTest, codesSortByIdWhenTheSettingIsTwo)
{
    shop.sorting.chosen = "2";
    for (const char* code : {"C100", "B9", "A10"})
        addWith(code, "code", code);

    sortBy("code");

    EXPECT_EQ(articles.shown(), "C100 B9 A10 ");
}

TEST_F(RecordSortingTest, numbersSortByTheirLeadingNumber)
{
    for (const char* price : {"12.50", "9", "apples", "-3", "1,500.00", "1.25 each"})
        addWith(price, "price", price);

    sortBy("price");

    // A group mark ends a leading number; what is none counts as 0.
    EXPECT_EQ(articles.shown(), "-3 apples 1,500.00 1.25 each 9 12.50 ");
}

TEST_F(RecordSortingTest, datesSortByTheCalendar)
{
    for (const char* date : {"01/12/24", "15/01/24", "02/02/23", "unknown"})
        addWith(date, "date", date);

    sortBy("date", false);

    EXPECT_EQ(articles.shown(), "01/12/24 15/01/24 02/02/23 unknown ");
}

TEST_F(RecordSortingTest, onlyTheFirstDescriptorCountsAndTheSortIsLogged)
{
    addAll({"b", "a"});
    std::vector<std::string> lines;
    const LogSink before = setLogSink([&](std::string_view line) { lines.emplace_back(line); });
    const SortDescriptor descriptors[] {{"name", true}, {"name", false}};

    articles.sortUsingDescriptors(descriptors);
    sortBy("date");
    articles.sortUsingDescriptors({});

    setLogSink(before);
    EXPECT_EQ(lines, (std::vector<std::string> {"sorting by 'name'", "sorting by 'date'", "sorting by date"}));
}

TEST_F(RecordSortingTest, sortingOneRecordLeavesAnEarlierSortedViewInPlace)
{
    Article& b = articles.addNamed("b");
    articles.addNamed("a");
    sortBy("name");
    articles.deleteItem(b);
    const std::vector<dataObject*> before = articles.getSortArray();
    ASSERT_EQ(before.size(), 1u);
    articles.selectRow(0);

    sortBy("name");

    EXPECT_EQ(articles.getSortArray(), before);
    EXPECT_EQ(articles.selectedRow(), 0);
}

TEST_F(RecordSortingTest, anUnknownOptionDiscardsTheSortedView)
{
    addAll({"b", "a"});
    sortBy("name");

    articles.sortByColumn("name", true, static_cast<SortOptions>(7));

    EXPECT_TRUE(articles.getSortArray().empty());
    EXPECT_EQ(articles.shown(), "a b ");
}

TEST_F(RecordSortingTest, sortingClearsTheSelection)
{
    addAll({"b", "a"});
    articles.selectRow(1);

    sortBy("name");

    EXPECT_EQ(articles.selectedRow(), -1);
    EXPECT_EQ(articles.getSelectedItem(), nullptr);
}

TEST_F(RecordSortingTest, aSortedNumberIsKeptInTheRecord)
{
    Article& a = addWith("a", "price", "2.5");
    addWith("b", "price", "1");
    EXPECT_FALSE(a.getTempSortNSNumber().has_value());

    sortBy("price");

    EXPECT_EQ(a.getTempSortNSNumber(), 2.5f);
}

// Numeric sort values

TEST_F(RecordSortingTest, codesAndOrderNumbersHaveTheirOwnValues)
{
    Article& a = addWith("a", "code", "INV-7");

    EXPECT_EQ(articles.getNumberFrom(a, "code", SortOptions::numeric), 7.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "ordernum", SortOptions::numeric), -7.0f);
    // Without generic columns this name is an ordinary field, here an unknown one.
    EXPECT_EQ(articles.getNumberFrom(a, "order:number", SortOptions::numeric), 0.0f);
    shop.sorting.chosen = "2";
    EXPECT_EQ(articles.getNumberFrom(a, "code", SortOptions::numeric), 1.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "ordernum", SortOptions::numeric), 1.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "price", SortOptions::numeric), 0.0f);
}

TEST_F(RecordSortingTest, genericColumnsStandForTheirFields)
{
    Article& a = addWith("a", "code", "INV-7");
    articles.fields = {"price", "code", "order:number", "ordernum"};

    EXPECT_EQ(articles.getNumberFrom(a, "field2", SortOptions::numeric), 7.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "field3", SortOptions::numeric), -7.0f);
    // "ordernum" counts only as a name of its own.
    EXPECT_EQ(articles.getNumberFrom(a, "field4", SortOptions::numeric), 0.0f);
    for (const char* name : {"field", "field0", "field5", "fieldx", "field-1", "field99999999999"})
        EXPECT_EQ(articles.getNumberFrom(a, name, SortOptions::numeric), 0.0f) << name;
}

TEST_F(RecordSortingTest, ofANameAndWhatItStandsForTheLastMatchWins)
{
    Article& a = addWith("a", "code", "INV-7");
    articles.fields = {"order:number", "code"};

    // "ordernum" is long enough to be taken for a generic column, but "num" is no number.
    EXPECT_EQ(articles.getNumberFrom(a, "ordernum", SortOptions::numeric), -7.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "field1", SortOptions::numeric), -7.0f);
    EXPECT_EQ(articles.getNumberFrom(a, "field2", SortOptions::numeric), 7.0f);
}

TEST_F(RecordSortingTest, theIdOfTheRecordBehindARowReplacesTheValue)
{
    Article& a = addWith("a", "price", "5");

    // An article has no record behind it.
    EXPECT_EQ(articles.getNumberFrom(a, "price", SortOptions::numericOfRecord), 0.0f);
}

TEST_F(RecordSortingTest, infiniteValuesBecomeTheLargestAndTheSmallestPositiveNumber)
{
    Article& large = addWith("large", "price", std::string(60, '9'));
    Article& small = addWith("small", "price", "-" + std::string(60, '9'));
    addWith("minus", "price", "-1");
    addWith("one", "price", "1");

    EXPECT_EQ(articles.getNumberFrom(large, "price", SortOptions::numeric), std::numeric_limits<float>::max());
    EXPECT_EQ(articles.getNumberFrom(small, "price", SortOptions::numeric), 1.17549435e-38f);
    sortBy("price");
    EXPECT_EQ(articles.shown(), "minus small one large ");
}

TEST_F(RecordSortingTest, pairsCompareByTheSameValues)
{
    Article& one = addWith("one", "price", "1");
    Article& two = addWith("two", "price", "2");
    Article& infinite = addWith("infinite", "price", std::string(60, '9'));
    two.setFieldByName("code", "A1");
    one.setFieldByName("code", "B9");

    EXPECT_EQ(articles.compare(one, two, "price", SortOptions::numeric), -1);
    EXPECT_EQ(articles.compare(two, one, "price", SortOptions::numeric), 1);
    EXPECT_EQ(articles.compare(one, one, "price", SortOptions::numeric), 0);
    EXPECT_EQ(articles.compare(one, infinite, "price", SortOptions::numeric), 0);
    EXPECT_EQ(articles.compare(infinite, one, "price", SortOptions::numeric), 0);
    EXPECT_EQ(articles.compare(one, two, "code", SortOptions::numeric), 1);
    EXPECT_EQ(articles.compare(one, two, "price", SortOptions::text), 0);
    EXPECT_EQ(articles.compare(one, two, "price", SortOptions::date), 0);
    EXPECT_EQ(articles.compare(one, two, "price", SortOptions::numericOfRecord), 0);
}
