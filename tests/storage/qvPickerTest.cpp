#include "storage/qvPicker.h"

#include "foundation/Log.h"
#include "storage/Article.h"
#include "storage/RecordListModel.h"

#include <gtest/gtest.h>

class qvPickerTest : public testing::Test {
protected:
    Article& addArticle(const char* name, const char* code, const char* price)
    {
        Article& article = shop.articles.addNamed(name);
        article.setFieldByName("code", code);
        article.setFieldByName("price", price);
        return article;
    }
    void begin()
    {
        picker.beginfor([this](dataObject& record) { chosen.push_back(&record); }, shop.articles, {"code", "name", "price"}, {50, 200, 80},
            {"Code", "Name", "Price"}, "Item");
    }
    std::string rows(const std::string& column) const
    {
        std::string texts;
        for (int row = 0; row < picker.numberOfRows(); ++row)
            texts += picker.objectValue(column, row) + ' ';
        return texts;
    }

    ArticleShop shop;
    FakeAlerts alerts;
    qvPicker picker {shop.sorting, shop.beeper, alerts};
    std::vector<dataObject*> chosen;
};

TEST_F(qvPickerTest, anEmptyCollectionIsToldInsteadOfShown)
{
    alerts.answer("OK");

    begin();

    ASSERT_EQ(alerts.asked().size(), 1u);
    EXPECT_EQ(alerts.asked()[0].title, "None in database");
    EXPECT_EQ(alerts.asked()[0].text,
        "There are no Items in the datbase. First create some by going to File > New.... or the appropriate toolbar button");
    EXPECT_EQ(alerts.asked()[0].buttons, QStringList {"OK"});
    EXPECT_FALSE(picker.form.isOpen());
}

TEST_F(qvPickerTest, opensWithAColumnForEachField)
{
    addArticle("Mug", "M1", "4.50");

    begin();

    EXPECT_TRUE(picker.form.isOpen());
    EXPECT_EQ(picker.form.title(), "Select Item");
    ASSERT_EQ(picker.list.columns.size(), 3u);
    EXPECT_EQ(picker.list.columns[0].identifier, "1");
    EXPECT_EQ(picker.list.columns[0].heading, "Code");
    EXPECT_EQ(picker.list.columns[0].width, 50);
    EXPECT_EQ(picker.list.columns[2].identifier, "3");
    EXPECT_EQ(picker.list.columns[2].heading, "Price");
    EXPECT_EQ(picker.objectValue("1", 0), "M1");
    EXPECT_EQ(picker.objectValue("2", 0), "Mug");
    EXPECT_EQ(picker.objectValue("3", 0), "4.50");
    EXPECT_EQ(picker.objectValue("4", 0), "");
    EXPECT_EQ(picker.objectValue("1", 9), "");
}

TEST_F(qvPickerTest, theRowsStandAsTheirListShowsThem)
{
    addArticle("b", "", "");
    addArticle("c", "", "");
    addArticle("a", "", "");
    begin();
    EXPECT_EQ(rows("2"), "a c b ");

    shop.articles.sortByColumn("name", true);
    begin();
    EXPECT_EQ(rows("2"), "a b c ");
}

TEST_F(qvPickerTest, hiddenRecordsCanBePickedToo)
{
    addArticle("a", "", "").setVisible(false);

    begin();

    EXPECT_EQ(picker.numberOfRows(), 1);
}

TEST_F(qvPickerTest, choosingHandsTheRecordOverOnceAndCloses)
{
    Article& mug = addArticle("Mug", "M1", "4.50");
    addArticle("Cup", "C1", "3.00");
    begin();
    picker.selectRow(1);

    picker.form.choose.trigger();

    EXPECT_EQ(chosen, std::vector<dataObject*> {&mug});
    EXPECT_FALSE(picker.form.isOpen());
    picker.chooseSelected();
    EXPECT_EQ(chosen.size(), 1u);
}

TEST_F(qvPickerTest, theFirstRowIsSelectedFromTheStart)
{
    addArticle("Mug", "M1", "4.50");
    Article& cup = addArticle("Cup", "C1", "3.00");
    begin();

    picker.chooseSelected();

    EXPECT_EQ(chosen, std::vector<dataObject*> {&cup});
}

TEST_F(qvPickerTest, cancellingHandsNothingOver)
{
    addArticle("Mug", "M1", "4.50");
    begin();

    picker.form.cancel.trigger();
    picker.chooseSelected();

    EXPECT_TRUE(chosen.empty());
    EXPECT_FALSE(picker.form.isOpen());
}

TEST_F(qvPickerTest, searchingNarrowsTheRowsAndSelectsOne)
{
    addArticle("Blue mug", "M1", "4.50");
    addArticle("Red mug", "M2", "4.50");
    addArticle("Blue cup", "C1", "3.00");
    begin();

    picker.form.search.edit("MUG blue");
    EXPECT_EQ(rows("1"), "M1 ");
    EXPECT_EQ(picker.selectedRow(), 0);
    picker.form.search.edit("nothing like it");
    EXPECT_EQ(picker.numberOfRows(), 0);
    picker.chooseSelected();
    EXPECT_TRUE(chosen.empty());
    picker.form.search.edit("");
    EXPECT_EQ(picker.numberOfRows(), 3);
}

TEST_F(qvPickerTest, anEarlierSearchIsForgotten)
{
    addArticle("Mug", "M1", "4.50");
    begin();
    picker.form.search.edit("cup");
    begin();

    EXPECT_EQ(picker.form.search.text(), "");
    EXPECT_EQ(picker.numberOfRows(), 1);
}

TEST_F(qvPickerTest, textColumnsSortAsText)
{
    addArticle("pear", "", "");
    addArticle("Apple", "", "");
    addArticle("fig", "", "");
    begin();

    picker.toggleSort("2");
    EXPECT_EQ(rows("2"), "Apple fig pear ");
    picker.toggleSort("2");
    EXPECT_EQ(rows("2"), "pear fig Apple ");
}

TEST_F(qvPickerTest, sortingIsLoggedAsThatOfEveryList)
{
    addArticle("pear", "", "");
    begin();
    std::vector<std::string> lines;
    const LogSink before = setLogSink([&](std::string_view line) { lines.emplace_back(line); });

    picker.toggleSort("2");

    setLogSink(before);
    EXPECT_EQ(lines, std::vector<std::string> {"sorting by '2'"});
}

TEST_F(qvPickerTest, numberAndCodeColumnsSortAsNumbers)
{
    addArticle("a", "A10", "9.00");
    addArticle("b", "B9", "10.00");
    addArticle("c", "C100", "1.50");
    begin();

    picker.toggleSort("1");
    EXPECT_EQ(rows("1"), "B9 A10 C100 ");
    picker.toggleSort("3");
    EXPECT_EQ(rows("3"), "1.50 9.00 10.00 ");
}

TEST_F(qvPickerTest, codesSortByTheIdsOfTheirRecordsWhenTheSettingIsTwo)
{
    shop.sorting.chosen = "2";
    addArticle("a", "C100", "");
    addArticle("b", "B9", "");
    addArticle("c", "A10", "");
    shop.articles.sortByColumn("code", true);
    begin();

    picker.toggleSort("1");

    EXPECT_EQ(rows("1"), "C100 B9 A10 ");
}

TEST_F(qvPickerTest, aListPutTogetherByTheCallerIsShownInItsOrder)
{
    Article& a = addArticle("a", "1", "");
    addArticle("b", "2", "");
    Article& c = addArticle("c", "3", "");

    picker.beginfor([](dataObject&) {}, std::vector<dataObject*> {&c, &a}, {"name"}, {100}, {"Name"}, "Item");

    EXPECT_EQ(rows("1"), "c a ");
}

TEST_F(qvPickerTest, theNextUseStartsFromScratch)
{
    addArticle("a", "1", "");
    begin();
    picker.toggleSort("2");
    begin();

    EXPECT_TRUE(picker.list.sortDescriptors.empty());
    EXPECT_EQ(picker.numberOfRows(), 1);
    EXPECT_EQ(picker.highestId(), 1);
}

TEST_F(qvPickerTest, aRowAnswersWithItsRecordsFieldsAndTheirKinds)
{
    addArticle("Mug", "M1", "4.50");
    begin();
    const ReportItem& row = *picker.getnthVisibleItem(0);
    EXPECT_EQ(row.getFieldByName("field1"), "M1");
    EXPECT_EQ(row.getFieldByName("field3"), "4.50");
    EXPECT_EQ(row.kindOf("field1"), "NUMBER");
    EXPECT_EQ(row.kindOf("field2"), "STRING");
    for (const char* none : {"field0", "field4", "field", "name", ""}) {
        EXPECT_EQ(row.getFieldByName(none), "") << none;
        EXPECT_EQ(row.kindOf(none), "STRING") << none;
    }
    EXPECT_TRUE(row.contains("mug"));
    EXPECT_TRUE(row.contains("4.5"));
    EXPECT_FALSE(row.contains("g4"));
}

TEST_F(qvPickerTest, aRecordThatWasDeletedMeanwhileIsNotHandedOver)
{
    Article& mug = addArticle("Mug", "M1", "4.50");
    Article& cup = addArticle("Cup", "C1", "3.00");
    begin();
    picker.selectRow(1);
    shop.articles.deleteItem(mug);

    picker.chooseSelected();

    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(shop.beeper.beeps, 1);
    EXPECT_TRUE(picker.form.isOpen());
    EXPECT_EQ(rows("2"), "Cup ");
    picker.chooseSelected();
    EXPECT_EQ(chosen, std::vector<dataObject*> {&cup});
}

TEST_F(qvPickerTest, withEveryRecordDeletedMeanwhileThereIsNothingLeftToChoose)
{
    Article& mug = addArticle("Mug", "M1", "4.50");
    begin();
    shop.articles.deleteItem(mug);

    picker.chooseSelected();
    picker.chooseSelected();

    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(picker.numberOfRows(), 0);
}

TEST_F(qvPickerTest, theRowsOfTheUseBeforeAreGone)
{
    addArticle("Mug", "M1", "4.50");
    addArticle("Cup", "C1", "3.00");
    begin();
    const std::weak_ptr<TextStore> texts = picker.textStore();
    ASSERT_FALSE(texts.expired());
    shop.articles.deleteItem(shop.articles.at(0));

    begin();

    EXPECT_TRUE(texts.expired()) << "the rows keep their texts alive";
    EXPECT_EQ(picker.getItemById(2), nullptr);
    EXPECT_EQ(rows("2"), "Cup ");
}

TEST_F(qvPickerTest, whoeverShowsThePickerNeverMeetsTheColumnsOfTheUseBefore)
{
    addArticle("Mug", "M1", "4.50");
    begin();
    RecordListModel model(picker);
    std::string seen;
    QObject::connect(&model, &QAbstractItemModel::modelReset, [&] {
        seen += std::to_string(model.rowCount()) + ':';
        for (int column = 0; column < model.columnCount(); ++column)
            seen += ' ' + model.headerData(column, Qt::Horizontal).toString().toStdString();
        for (int row = 0; row < model.rowCount(); ++row)
            seen += ' ' + model.index(row, 0).data().toString().toStdString();
        seen += '\n';
    });

    picker.beginfor([](dataObject&) {}, shop.articles, {"name"}, {200}, {"Name"}, "Item");

    // Emptied, then with the new columns, then with the new rows.
    EXPECT_EQ(seen, "0: Code Name Price\n0: Name\n1: Name Mug\n");
}
