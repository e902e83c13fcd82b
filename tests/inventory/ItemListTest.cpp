// The list of items: its menu, its search, and which rows are shown.
#include "support/Business.h"
#include "support/ListResets.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class ItemListTest : public Business {
protected:
    ItemForm& form() { return items().form; }
    std::vector<std::string> names() { return shown(items(), "item"); }
};

TEST_F(ItemListTest, savingAnItemThatStaysInItsPlaceShowsOnlyItsRowAgain)
{
    begin();
    Item& mug = item("Mug");
    item("Jug");
    items().filter();
    EXPECT_THAT(names(), ElementsAre("Jug", "Mug"));
    ListResets resets;
    items().addObserver(resets);
    items().editThisItem(mug);
    form().price.edit("7.00");
    form().save.trigger();
    EXPECT_EQ(resets.count, 0);
    items().listForm.search.edit("mug");
    const int before = resets.count;
    items().editThisItem(mug);
    form().item.edit("Cup");
    form().save.trigger();
    items().removeObserver(resets);
    EXPECT_EQ(resets.count, before + 1) << "the search finds it no more";
    EXPECT_THAT(names(), ElementsAre());
}

TEST_F(ItemListTest, theMenuOffersAllInStockAndTheCategoriesMet)
{
    begin();
    item("A").setCategory("Tea, Mugs");
    restart();
    EXPECT_EQ(items().listForm.filter.titles(), QStringList({"All", "In stock", "Tea", "Mugs"}));
    items().addCategories(" Pots ,, Tea");
    EXPECT_EQ(items().getCategories(), QStringList({"Tea", "Mugs", "Pots"}));
}

TEST_F(ItemListTest, categoriesCalledLikeTheFirstChoicesDoNotDoubleThem)
{
    begin();
    items().addCategories("All, In stock, Tea");
    EXPECT_EQ(items().listForm.filter.titles(), QStringList({"All", "In stock", "Tea"}));
    EXPECT_EQ(items().getCategories(), QStringList({"Tea"}));
}

TEST_F(ItemListTest, inStockHidesNothingLeftButShowsUnknownQuantities)
{
    begin();
    item("many", "5");
    item("none", "0");
    item("short", "-1");
    item("unknown", "");
    item("half", "0.5");
    items().listForm.filter.edit(1);
    EXPECT_THAT(names(), UnorderedElementsAre("many", "unknown"));
    items().listForm.filter.edit(0);
    EXPECT_EQ(names().size(), 5u);
}

TEST_F(ItemListTest, aCategoryShowsEveryItemWhoseCategoriesContainItsLetters)
{
    begin();
    item("a").setCategory("Tea");
    item("b").setCategory("Teapots");
    item("c").setCategory("Mugs, Tea");
    item("d").setCategory("tea");
    item("e");
    items().addCategories("Tea");
    items().listForm.filter.edit(2);
    EXPECT_THAT(names(), UnorderedElementsAre("a", "b", "c"));
}

TEST_F(ItemListTest, everyWordOfTheSearchMustMatch)
{
    begin();
    item("Blue mug").setBrand("Acme");
    item("Blue plate").setBrand("Other");
    items().listForm.search.edit(" blue  ACME");
    EXPECT_THAT(names(), ElementsAre("Blue mug"));
}

TEST_F(ItemListTest, aNewCategoryTypedInTheEditorJoinsTheMenu)
{
    begin();
    items().create();
    form().category.edit("Bowls, Vases");
    form().save.trigger();
    EXPECT_EQ(items().getCategories(), QStringList({"Bowls", "Vases"}));
}

} // namespace
