#include "storage/TableExport.h"

#include "foundation/Log.h"
#include "storage/Article.h"

#include <gtest/gtest.h>

class TableExportTest : public testing::Test {
protected:
    TableExportTest()
    {
        setLogSink([this](std::string_view line) { log.emplace_back(line); });
        articles.setDefaultSortNew(false);
        articles.list.columns = {{"name", "Name"}, {"code", "Code", 60, ColumnAlign::left, false}, {"note", "Notes & \"more\""}};
    }
    ~TableExportTest() override { setLogSink({}); }

    Article& addNoted(const char* name, const char* note)
    {
        Article& article = articles.addNamed(name);
        article.setFieldByName("note", note);
        article.setFieldByName("code", "never shown");
        return article;
    }

    std::vector<std::string> log;
    ArticleShop shop;
    Articles& articles = shop.articles;
};

TEST_F(TableExportTest, commaSeparatedCellsAreQuotedAndHeadingsAreNot)
{
    addNoted("Mug", "blue, large");
    addNoted("Cup", "");

    EXPECT_EQ(getDataAsCSV(articles), "Name,Notes & \"more\"\r\"Mug\",\"blue, large\"\r\"Cup\",\"\"\r");
    EXPECT_EQ(log, std::vector<std::string> {"writing csv"});
}

TEST_F(TableExportTest, aDoubleQuoteInACommaSeparatedCellBecomesASingleOne)
{
    addNoted("6\" pot \"blue\"", "it's");

    EXPECT_EQ(getDataAsCSV(articles), "Name,Notes & \"more\"\r\"6' pot 'blue'\",\"it's\"\r");
}

TEST_F(TableExportTest, lineBreaksInCellsAreWrittenAsTheyAre)
{
    addNoted("a\nb", "c\rd\te");

    EXPECT_EQ(getDataAsCSV(articles), "Name,Notes & \"more\"\r\"a\nb\",\"c\rd\te\"\r");
    EXPECT_EQ(getDataAsTDL(articles), "Name\tNotes & \"more\"\ra\nb\tc\rd e\r");
}

TEST_F(TableExportTest, tabsSeparateCellsAndBecomeBlanksInThem)
{
    addNoted("Mug\tlarge", "\"blue\"\t");

    EXPECT_EQ(getDataAsTDL(articles), "Name\tNotes & \"more\"\rMug large\t\"blue\" \r");
    EXPECT_TRUE(log.empty());
}

TEST_F(TableExportTest, anEmptyTableHasItsHeadingsOnly)
{
    EXPECT_EQ(getDataAsCSV(articles), "Name,Notes & \"more\"\r");
    EXPECT_EQ(getDataAsTDL(articles), "Name\tNotes & \"more\"\r");
    EXPECT_EQ(getDataAsHTML(articles),
        "<table width=100%><tr><th class = name>Name</th><th class = note>Notes & \"more\"</th></tr></table><br />");
}

TEST_F(TableExportTest, everySecondRowOfTheHtmlTableIsAnOtherOne)
{
    addNoted("a", "1");
    addNoted("b <i>", "2 & 3");
    addNoted("c", "4");

    EXPECT_EQ(getDataAsHTML(articles),
        "<table width=100%><tr><th class = name>Name</th><th class = note>Notes & \"more\"</th></tr>"
        "<tr><td class = name>a</td><td class = note>1</td></tr>"
        "<tr><td class = \"name alt\">b <i></td><td class = \"note alt\">2 & 3</td></tr>"
        "<tr><td class = name>c</td><td class = note>4</td></tr></table><br />");
}

TEST_F(TableExportTest, textsMayBeChangedOnTheirWayIntoTheHtmlTable)
{
    addNoted("a", "b");

    const std::string html = getDataAsHTML(articles, [](std::string text) { return '[' + text + ']'; });

    EXPECT_EQ(html,
        "<table width=100%><tr><th class = name>[Name]</th><th class = note>[Notes & \"more\"]</th></tr>"
        "<tr><td class = name>[a]</td><td class = note>[b]</td></tr></table><br />");
}

TEST_F(TableExportTest, hiddenRecordsNeverAppearAndTheOrderIsTheListsOwn)
{
    addNoted("b", "2");
    addNoted("hidden", "x").setVisible(false);
    addNoted("a", "1");
    articles.sortByColumn("name", true);

    EXPECT_EQ(getDataAsTDL(articles), "Name\tNotes & \"more\"\ra\t1\rb\t2\r");
    articles.sortByColumn("name", false);
    EXPECT_EQ(getDataAsTDL(articles), "Name\tNotes & \"more\"\rb\t2\ra\t1\r");
}

TEST_F(TableExportTest, theColumnsStandInTheListsOrder)
{
    addNoted("a", "1");
    std::swap(articles.list.columns[0], articles.list.columns[2]);

    EXPECT_EQ(getDataAsCSV(articles), "Notes & \"more\",Name\r\"1\",\"a\"\r");
}

TEST_F(TableExportTest, lettersOfAnyLanguageArriveAsUtf8)
{
    addNoted("caf\xc3\xa9", "\xe2\x82\xac\xf0\x9f\x98\x80");

    EXPECT_EQ(getDataAsCSV(articles), "Name,Notes & \"more\"\r\"caf\xc3\xa9\",\"\xe2\x82\xac\xf0\x9f\x98\x80\"\r");
}

TEST_F(TableExportTest, aLargeListGoesOutInPiecesThatMakeTheWhole)
{
    std::string expected = "Name\tNotes & \"more\"\r";
    for (int n = 0; n < 3000; ++n) {
        const std::string name = "mug " + std::to_string(n);
        addNoted(name.c_str(), "of sixty-odd letters, so that they do not all go out at once");
        expected += name + "\tof sixty-odd letters, so that they do not all go out at once\r";
    }

    std::vector<std::string> pieces;
    getDataAsTDL(articles, [&](std::string_view piece) { pieces.emplace_back(piece); });

    EXPECT_GT(pieces.size(), 2u);
    std::string together;
    for (const std::string& piece : pieces)
        together += piece;
    EXPECT_EQ(together, expected);
}

TEST_F(TableExportTest, whatCameOfAnExportIsOneSentence)
{
    EXPECT_EQ(exportOutcome("/home/ada/list.csv", {}), "Exported to list.csv");
    EXPECT_EQ(exportOutcome("/home/ada/list.csv", Error {"the disk is full"}), "Not exported: the disk is full");
}
