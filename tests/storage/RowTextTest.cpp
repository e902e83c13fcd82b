#include "storage/RowText.h"

#include "storage/Article.h"
#include "storage/RecordListModel.h"

#include <gtest/gtest.h>

#include <QMimeData>
#include <QStandardItemModel>

class RowTextTest : public testing::Test {
protected:
    RowTextTest()
    {
        articles.setDefaultSortNew(false);
        articles.list.columns = {{"name", "Name"}, {"note", "Note"}};
        for (const char* name : {"Mug", "Cup", "Jug"})
            articles.addNamed(name);
    }

    ArticleShop shop;
    Articles& articles = shop.articles;
};

TEST_F(RowTextTest, rowsStandInTheListsOrderWhicheverWasSelectedFirst)
{
    const RecordListModel model(articles);
    EXPECT_EQ(rowText({model.index(2, 0), model.index(0, 0)}), "Mug\t\nJug\t");
}

TEST_F(RowTextTest, aRowIsThereOnceHoweverManyCellsOfItAreSelected)
{
    const RecordListModel model(articles);
    EXPECT_EQ(rowText({model.index(1, 1), model.index(1, 0)}), "Cup\t");
}

TEST_F(RowTextTest, whatWouldBreakTheTableIsABlank)
{
    articles.at(0).setFieldByName("note", "a\tb\r\nc\u2028d");
    const RecordListModel model(articles);
    EXPECT_EQ(rowText({model.index(0, 0)}), "Mug\ta b  c d");
}

TEST_F(RowTextTest, nothingSelectedIsNoText)
{
    EXPECT_EQ(rowText({}), "");
}

TEST_F(RowTextTest, rowsBelowOthersStandAfterThem)
{
    QStandardItemModel tree;
    auto* company = new QStandardItem("Company");
    company->appendRow(new QStandardItem("Person"));
    tree.appendRow(company);
    tree.appendRow(new QStandardItem("Somebody"));
    EXPECT_EQ(rowText({tree.index(1, 0), tree.index(0, 0, tree.index(0, 0)), tree.index(0, 0)}), "Company\nPerson\nSomebody");
}

TEST_F(RowTextTest, aListHandsItsRowsOverAsText)
{
    const RecordListModel model(articles);
    EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsDragEnabled);
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0), model.index(0, 1)}));
    EXPECT_EQ(data->text(), "Mug\t");
}
