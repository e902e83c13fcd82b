#include "storage/SearchIndex.h"

#include "storage/Article.h"

#include <gtest/gtest.h>

#include <random>

class SearchIndexTest : public testing::Test {
protected:
    SearchIndexTest() { articles.setDefaultSortNew(false); }

    std::string found(std::string_view words)
    {
        articles.search(words);
        return articles.shown();
    }

    ArticleShop shop;
    Articles& articles = shop.articles;
};

TEST_F(SearchIndexTest, aWordIsFoundAnywhereInASearchedFieldWhateverItsCase)
{
    articles.addNamed("teapot").setFieldByName("note", "a Blue one");
    articles.addNamed("mug").setFieldByName("code", "BLUE-7");
    articles.addNamed("cup").setFieldByName("price", "blue");

    EXPECT_EQ(found("blue"), "teapot mug ");
    EXPECT_EQ(found("LU"), "teapot mug ");
    EXPECT_EQ(found("EAPO"), "teapot ");
    EXPECT_EQ(found("green"), "");
}

TEST_F(SearchIndexTest, everyWordHasToOccurSomewhere)
{
    articles.addNamed("red-mug").setFieldByName("note", "large");
    articles.addNamed("red-cup").setFieldByName("note", "small");

    EXPECT_EQ(found("red large"), "red-mug ");
    EXPECT_EQ(found("large red"), "red-mug ");
    EXPECT_EQ(found("  red   "), "red-mug red-cup ");
    EXPECT_EQ(found("red large small"), "");
    EXPECT_EQ(found(""), "red-mug red-cup ");
    EXPECT_EQ(found("   "), "red-mug red-cup ");
}

TEST_F(SearchIndexTest, aWordNeverMatchesAcrossTwoFieldsOrRecords)
{
    Article& one = articles.addNamed("abc");
    one.setFieldByName("code", "def");
    articles.addNamed("ghi");

    EXPECT_EQ(found("cdef"), "");
    EXPECT_EQ(found("cd"), "");
    EXPECT_EQ(found("fghi"), "");
    EXPECT_EQ(found("def"), "abc ");
}

TEST_F(SearchIndexTest, lettersBeyondAsciiAreFoundInAnyCase)
{
    articles.addNamed("K\xc3\xb6ln");
    articles.addNamed("STRASSE");
    articles.addNamed("stra\xc3\x9f"
                      "e");
    articles.addNamed("\xce\x91\xce\x98\xce\x97\xce\x9d\xce\x91"); // ΑΘΗΝΑ

    EXPECT_EQ(found("K\xc3\x96LN"), "K\xc3\xb6ln ");
    EXPECT_EQ(found("\xce\xb1\xce\xb8\xce\xb7"), "\xce\x91\xce\x98\xce\x97\xce\x9d\xce\x91 ");
    EXPECT_EQ(found("strasse"), "STRASSE ");
}

TEST_F(SearchIndexTest, typingOnNarrowsAndTakingBackWidens)
{
    articles.addNamed("mug");
    articles.addNamed("mustard");
    articles.addNamed("must");

    EXPECT_EQ(found("mu"), "mug mustard must ");
    EXPECT_EQ(found("mus"), "mustard must ");
    EXPECT_EQ(found("mustar"), "mustard ");
    EXPECT_EQ(found("mustarx"), "");
    EXPECT_EQ(found("mu"), "mug mustard must ");
}

TEST_F(SearchIndexTest, aChangedRecordIsFoundByItsNewTextOnly)
{
    articles.addNamed("a");
    Article& changed = articles.addNamed("before");
    EXPECT_EQ(found("before"), "before ");
    EXPECT_EQ(found("after"), "");

    changed.setFieldByName("name", "after");

    EXPECT_EQ(found("before"), "");
    EXPECT_EQ(found("after"), "after ");
    EXPECT_EQ(found("aft"), "after ");
}

TEST_F(SearchIndexTest, recordsThatComeGoOrMoveAreFoundWhereTheyAre)
{
    articles.addNamed("one");
    Article& two = articles.addNamed("two");
    EXPECT_EQ(found("o"), "one two ");

    articles.addNamed("four");
    EXPECT_EQ(found("o"), "one two four ");
    articles.deleteItem(two);
    EXPECT_EQ(found("o"), "one four ");
    articles.restore(two);
    EXPECT_EQ(found("o"), "one four two ");
    articles.swop(*articles.getnthItem(0), two);
    EXPECT_EQ(found("o"), "two four one ");
    EXPECT_EQ(found("tw"), "two ");
    articles.clear();
    EXPECT_EQ(found("o"), "");
}

TEST_F(SearchIndexTest, aRecordThatGoesTakesNoOthersWithIt)
{
    articles.addNamed("first");
    Article& gone = articles.addNamed("second");
    Article& changed = articles.addNamed("third");
    articles.addNamed("fourth");
    EXPECT_EQ(found("r"), "first third fourth ");
    changed.setFieldByName("name", "3rd");
    gone.setFieldByName("name", "2nd");

    articles.deleteItem(gone);

    EXPECT_EQ(found("rd"), "3rd ");
    EXPECT_EQ(found("th"), "fourth ");
    EXPECT_EQ(found("nd"), "");
    EXPECT_EQ(found("first"), "first ");
}

TEST_F(SearchIndexTest, findsWhatAskingEveryRecordWouldFind)
{
    std::mt19937 random(11);
    const auto word = [&] {
        static const char* const letters[] {"a", "b", "C", "\xc3\xa9", "\xc3\x89", "\xe2\x82\xac", "1", "-"};
        std::string text;
        for (unsigned i = 1 + random() % 3; i > 0; --i)
            text += letters[random() % 8];
        return text;
    };
    for (int i = 0; i < 300; ++i)
        articles.addNamed(word() + ' ' + word()).setFieldByName("note", word());
    const auto any = [&] { return articles.getnthItem(static_cast<int>(random() % static_cast<unsigned>(articles.getCount()))); };
    for (int round = 0; round < 400; ++round) {
        for (unsigned change = random() % 40; change > 0; --change)
            any()->setFieldByName(random() % 2 ? "name" : "note", word());
        for (unsigned change = random() % 4; change > 0; --change) {
            dataObject& gone = *any();
            articles.deleteItem(gone);
            gone.setFieldByName("name", word());
            random() % 2 ? articles.restore(gone) : static_cast<void>(articles.addNamed(word()));
            any()->setFieldByName("name", word());
        }
        const std::string first = word();
        const std::string second = word();
        articles.search(first + ' ' + second);
        for (int i = 0; i < articles.getCount(); ++i) {
            const Article& article = *articles.getnthItem(i);
            ASSERT_EQ(article.getVisible(), article.contains(first) && article.contains(second))
                << "round " << round << ", \"" << first << "\" and \"" << second << "\" in \"" << article.getFieldByName("name")
                << "\" and \"" << article.getFieldByName("note") << '"';
        }
    }
}

TEST(TextSearch, wordsAreSplitAtSingleBlanks)
{
    EXPECT_EQ(searchWords("one two"), (std::vector<std::string> {"one", "two"}));
    EXPECT_EQ(searchWords("  one  two "), (std::vector<std::string> {"one", "two"}));
    EXPECT_EQ(searchWords("one\ttwo"), std::vector<std::string> {"one\ttwo"});
    EXPECT_TRUE(searchWords("").empty());
    EXPECT_TRUE(searchWords("   ").empty());
}

TEST(TextSearch, theEmptyWordOccursNowhere)
{
    EXPECT_FALSE(FoldedText("").occursIn("anything"));
    EXPECT_FALSE(FoldedText("").occursIn(""));
    EXPECT_FALSE(FoldedText("a").occursIn(""));
    EXPECT_TRUE(FoldedText("A").occursIn("bab"));
    EXPECT_FALSE(FoldedText("bab").occursIn("ab"));
}
