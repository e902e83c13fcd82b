#include "storage/TextRows.h"

#include "Article.h"

#include <gtest/gtest.h>

namespace {

class Towns : public TextRows {
public:
    Towns(const SortSettings& sorting, Beeper& beeper) : TextRows(sorting, beeper, {{"Town", 100}, {"River", 200}}) { }
    using TextRows::setRows;
    std::string shown() const
    {
        std::string all;
        for (int row = 0; row < numberOfRows(); ++row)
            all += objectValue("field1", row) + '/' + objectValue("field2", row) + ' ';
        return all;
    }
};

class TextRowsTest : public testing::Test {
protected:
    TextRowsTest() { towns.setRows({{"Ulm", "Donau"}, {"Bonn", "Rhein"}, {"Linz", "Donau"}}); }

    ChosenSorting sorting;
    FakeBeeper beeper;
    Towns towns {sorting, beeper};
};

} // namespace

TEST_F(TextRowsTest, rowsStandInTheOrderGivenUnderTheirHeadings)
{
    EXPECT_EQ(towns.shown(), "Ulm/Donau Bonn/Rhein Linz/Donau ");
    EXPECT_EQ(towns.list.columns.at(1).heading, "River");
    EXPECT_EQ(towns.list.columns.at(1).width, 200);
}

TEST_F(TextRowsTest, theSearchShowsRowsWithAllWords)
{
    towns.form.search.edit("don li");

    EXPECT_EQ(towns.shown(), "Linz/Donau ");
}

TEST_F(TextRowsTest, selectedPlacesAreThoseOfTheRowsAsGivenHoweverTheyAreSorted)
{
    towns.toggleSort("field1");
    EXPECT_EQ(towns.shown(), "Bonn/Rhein Linz/Donau Ulm/Donau ");
    towns.setSelectedRows({0, 2});

    EXPECT_EQ(towns.selectedPlaces(), (std::vector<std::size_t> {0, 1}));
}

TEST_F(TextRowsTest, newRowsTakeThePlaceOfTheOldOnesAndSortAndSearchGoOn)
{
    towns.toggleSort("field1");
    towns.form.search.edit("elbe");

    towns.setRows({{"Pirna", "Elbe"}, {"Ulm", "Donau"}, {"Dresden", "Elbe"}});

    EXPECT_EQ(towns.shown(), "Dresden/Elbe Pirna/Elbe ");
    EXPECT_TRUE(towns.selectedPlaces().empty());
}
