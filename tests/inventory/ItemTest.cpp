#include "inventory/Item.h"
#include "foundation/Money.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class ItemTest : public testing::Test {
protected:
    MemorySettings memory;
    MoneyFormatter formatter {"en_GB"};
    ItemRules rules {memory, formatter};
    Item item {rules};
};

// A new item

TEST_F(ItemTest, aNewItemsTextsAreEmptyButForKindAndWebsiteFolder)
{
    for (const char* name :
        {"item", "code", "variation", "brand", "category", "description", "comments", "price", "bought", "qty", "warnlevel", "optimumqty",
            "shipping", "status", "supplier", "taxcode", "condition", "ean", "part", "link", "imagelink", "buttoncode", "quantitymethod"})
        EXPECT_EQ(item.getFieldByName(name), "") << name;
    EXPECT_EQ(item.getFieldByName("type"), "Item");
    EXPECT_EQ(item.getFieldByName("websitefolder"), "~/sites/mysite/");
}

TEST_F(ItemTest, aNewItemsStockIsManagedAndItsButtonCodeHidden)
{
    EXPECT_EQ(item.getFieldByName("decreaseqty"), "YES");
    EXPECT_EQ(item.getFieldByName("hidebuttoncode"), "YES");
    EXPECT_EQ(item.getFieldByName("exportbrevand"), "NO");
    EXPECT_EQ(item.getFieldByName("exportgoogle"), "NO");
    EXPECT_TRUE(item.getConstituents().empty());
    EXPECT_FALSE(item.isCollectiveItem());
}

// By name

TEST_F(ItemTest, everyTextButTheQuantityMethodIsSetAndReadByItsName)
{
    for (const char* name :
        {"item", "code", "variation", "brand", "category", "description", "price", "bought", "qty", "warnlevel", "optimumqty", "shipping",
            "status", "supplier", "taxcode", "type", "condition", "ean", "part", "link", "imagelink", "buttoncode", "websitefolder"}) {
        EXPECT_TRUE(item.setFieldByName(name, std::string("my ") + name)) << name;
        EXPECT_EQ(item.getFieldByName(name), std::string("my ") + name);
    }
}

TEST_F(ItemTest, commentsAndDescriptionAreOneField)
{
    item.setFieldByName("comments", "oak");
    EXPECT_EQ(item.getFieldByName("description"), "oak");
    item.setFieldByName("description", "ash");
    EXPECT_EQ(item.getFieldByName("comments"), "ash");
}

TEST_F(ItemTest, theQuantityMethodIsNotSetByName)
{
    item.setQuantityMethod("exact");
    EXPECT_FALSE(item.setFieldByName("quantitymethod", "none"));
    EXPECT_EQ(item.getFieldByName("quantitymethod"), "exact");
}

TEST_F(ItemTest, flagsAreSetByTheExactWordYes)
{
    for (const char* name : {"decreaseqty", "exportbrevand", "exportgoogle", "hidebuttoncode"}) {
        item.setFieldByName(name, "YES");
        EXPECT_EQ(item.getFieldByName(name), "YES") << name;
        for (const char* other : {"Yes", "yes", "NO", "1", "", "YES "}) {
            item.setFieldByName(name, "YES");
            item.setFieldByName(name, other);
            EXPECT_EQ(item.getFieldByName(name), "NO") << name << " = " << other;
        }
    }
}

TEST_F(ItemTest, theIdReadsAsTextAndIsSetFromText)
{
    item.setID(12);
    EXPECT_EQ(item.getFieldByName("id"), "12");
    item.setFieldByName("id", "34");
    EXPECT_EQ(item.getID(), 34);
}

TEST_F(ItemTest, namesAreMatchedExactlyAndUnknownOnesAnswerNothing)
{
    item.setItem("a");
    item.setOptimumQty("5");
    item.setImageLink("http://x");
    for (const char* name : {"Item", "ITEM", "optimumQty", "imageLink", "decreaseQty", "constituents", "numericCode", ""})
        EXPECT_EQ(item.getFieldByName(name), "") << name;
    EXPECT_FALSE(item.setFieldByName("Item", "b"));
    EXPECT_FALSE(item.setFieldByName("availability", "in stock"));
    EXPECT_FALSE(item.setFieldByName("stockcost", "5"));
    EXPECT_EQ(item.getItem(), "a");
}

// Worked-out fields

TEST_F(ItemTest, availabilityGoesByTheWholeNumberInStock)
{
    const std::pair<const char*, const char*> cases[] = {{"1", "in stock"}, {"0", "out of stock"}, {"", "out of stock"},
        {"0.9", "out of stock"}, {"-3", "out of stock"}, {"12 boxes", "in stock"}, {"many", "out of stock"}, {"1.5", "in stock"}};
    for (const auto& [qty, availability] : cases) {
        item.setQty(qty);
        EXPECT_EQ(item.getFieldByName("availability"), availability) << qty;
    }
}

TEST_F(ItemTest, thePriceIsJoinedWithTheCurrencyCode)
{
    item.setPrice("12.50");
    EXPECT_EQ(item.getFieldByName("pricewithcode"), "12.50 ");
    memory.setText(settings::currencyCode, "GBP");
    EXPECT_EQ(item.getFieldByName("currencycode"), "GBP");
    EXPECT_EQ(item.getFieldByName("pricewithcode"), "12.50 GBP");
}

TEST_F(ItemTest, feedsKnowThreeConditions)
{
    const std::pair<const char*, const char*> cases[] = {
        {"New", "new"}, {"Refurbished", "refurbished"}, {"Used", "used"}, {"", "used"}, {"new", "used"}, {"NEW", "used"}};
    for (const auto& [condition, word] : cases) {
        item.setCondition(condition);
        EXPECT_EQ(item.getFieldByName("conditionforgoogle"), word) << condition;
    }
}

TEST_F(ItemTest, feedsShippingStandsBehindThreeColons)
{
    EXPECT_EQ(item.getFieldByName("shippingforgoogle"), ":::");
    item.setShipping("3.50");
    EXPECT_EQ(item.getFieldByName("shippingforgoogle"), ":::3.50");
}

TEST_F(ItemTest, stockFiguresAreMoney)
{
    item.setQty("1,200");
    item.setBought("2.50");
    item.setPrice("4");
    EXPECT_EQ(item.getFieldByName("stockcost"), "3,000.00");
    EXPECT_EQ(item.getFieldByName("stockretail"), "4,800.00");
}

TEST_F(ItemTest, stockFiguresOfWhatDoesNotReadAreNothing)
{
    item.setQty("lots");
    item.setBought("2.50");
    EXPECT_EQ(item.getFieldByName("stockcost"), "0.00");
    EXPECT_EQ(item.getFieldByName("stockretail"), "0.00");
    EXPECT_EQ(item.getFieldByName("reorderqty"), "0.00");
}

TEST_F(ItemTest, stockFiguresAreWorkedOutInSinglePrecision)
{
    // 0.1 times 3 is 0.3000000119 in single precision; a hundred thousand and 0.07 is kept as 100,000.0703125.
    item.setQty("100,000.07");
    item.setBought("10");
    EXPECT_EQ(item.getFieldByName("stockcost"), "1,000,000.69");
}

TEST_F(ItemTest, whatToReorderMayBeBelowNothing)
{
    item.setOptimumQty("10");
    item.setQty("12");
    EXPECT_EQ(item.getFieldByName("reorderqty"), "-2.00");
}

// The code as a number

TEST_F(ItemTest, theNumericCodeIsMadeFromAllDigits)
{
    const std::pair<const char*, float> cases[] = {{"X-0012a", 12}, {"AB-12x3", 123}, {"none", 0}, {"", 0}, {"-7", 7}};
    for (const auto& [code, number] : cases) {
        item.setCode(code);
        EXPECT_EQ(item.getNumericCode(), number) << code;
    }
    item.setFieldByName("code", "T-88");
    EXPECT_EQ(item.getNumericCode(), 88.0f);
}

// Quantities

TEST_F(ItemTest, adjustingAddsToTheQuantityAndWritesItShort)
{
    item.setQty("5.00");
    EXPECT_EQ(item.adjustQty(-2), 3.0f);
    EXPECT_EQ(item.getQty(), "3");
    EXPECT_EQ(item.adjustQty(0.25f), 3.25f);
    EXPECT_EQ(item.getQty(), "3.25");
    EXPECT_EQ(item.adjustQty(-4), -0.75f);
    EXPECT_EQ(item.getQty(), "-0.75");
}

TEST_F(ItemTest, adjustingAnEmptyOrUnreadableQuantityStartsFromNothing)
{
    EXPECT_EQ(item.adjustQty(2), 2.0f);
    item.setQty("some");
    EXPECT_EQ(item.adjustQty(-1), -1.0f);
    EXPECT_EQ(item.getQty(), "-1");
}

TEST_F(ItemTest, countingUpAndDownGoesByTheWholeNumber)
{
    item.setQty("2.7");
    item.incQty();
    EXPECT_EQ(item.getQty(), "3");
    item.setQty("2.7");
    item.decQty();
    EXPECT_EQ(item.getQty(), "1");
    item.setQty("");
    item.decQty();
    EXPECT_EQ(item.getQty(), "-1");
}

TEST_F(ItemTest, figuresReadThroughTheMoneyFormat)
{
    item.setPrice("1,250.50");
    item.setBought("abc");
    item.setQty(" 7 ");
    EXPECT_EQ(item.getPriceAsFloat(), 1250.5f);
    EXPECT_EQ(item.getBoughtAsFloat(), 0.0f);
    EXPECT_EQ(item.getQtyAsFloat(), 7.0f);
    EXPECT_EQ(item.getOptimumQtyAsFloat(), 0.0f);
}

// Categories

TEST_F(ItemTest, theFirstCategoryStandsAlone)
{
    item.addCategory("  Tea ");
    EXPECT_EQ(item.getCategory(), "Tea");
}

TEST_F(ItemTest, furtherCategoriesAreAppendedBehindACommaAndABlank)
{
    item.setCategory("Tea");
    item.addCategory("Mugs\n");
    EXPECT_EQ(item.getCategory(), "Tea, Mugs");
}

TEST_F(ItemTest, aCategoryThatIsThereIsNotAddedAgain)
{
    item.setCategory("Tea ,Mugs");
    item.addCategory("Mugs");
    item.addCategory(" Tea");
    EXPECT_EQ(item.getCategory(), "Tea ,Mugs");
    item.addCategory("tea");
    EXPECT_EQ(item.getCategory(), "Tea ,Mugs, tea");
}

TEST_F(ItemTest, removingACategoryTurnsTheOrderOfTheOthersRound)
{
    item.setCategory("Tea, Mugs,, Pots , Trays");
    item.removeCategory(" Mugs ");
    EXPECT_EQ(item.getCategory(), "Trays, Pots, Tea");
}

TEST_F(ItemTest, theLastCategoryStays)
{
    item.setCategory(" Tea ,");
    item.removeCategory("Tea");
    EXPECT_EQ(item.getCategory(), " Tea ,");
}

TEST_F(ItemTest, removingACategoryThatIsNotThereStillTurnsTheOrderRound)
{
    item.setCategory("Tea, Mugs");
    item.removeCategory("Pots");
    EXPECT_EQ(item.getCategory(), "Mugs, Tea");
}

// Searching and comparing

TEST_F(ItemTest, searchingLooksIntoElevenFieldsWhateverTheCase)
{
    for (const char* name :
        {"category", "brand", "code", "part", "condition", "description", "ean", "item", "status", "variation", "supplier"}) {
        Item searched(rules);
        searched.setFieldByName(name, "A Needle here");
        EXPECT_TRUE(searched.contains("nEEDLE")) << name;
        EXPECT_FALSE(searched.contains("needles")) << name;
    }
}

TEST_F(ItemTest, searchingLooksIntoNoOtherField)
{
    for (const char* name : {"price", "bought", "qty", "warnlevel", "optimumqty", "shipping", "taxcode", "type", "link", "imagelink",
             "buttoncode", "websitefolder"})
        item.setFieldByName(name, "needle");
    item.setQuantityMethod("needle");
    EXPECT_FALSE(item.contains("needle"));
}

TEST_F(ItemTest, itemsAreTheSameByTheirCodesWhateverTheCase)
{
    Item other(rules);
    item.setCode("Ab-1");
    item.setItem("Mug");
    other.setCode("aB-1");
    EXPECT_TRUE(item.isTheSameItemAs(other));
    other.setCode("ab1");
    other.setItem("Mug");
    EXPECT_FALSE(item.isTheSameItemAs(other));
}

// Collective items

TEST_F(ItemTest, onlyTheExactKindMakesACollectiveItem)
{
    for (const char* kind : {"collective item", "Collective Item", "Collective", "Item", ""}) {
        item.setFieldByName("type", kind);
        EXPECT_FALSE(item.isCollectiveItem()) << kind;
    }
    item.setFieldByName("type", "Collective item");
    EXPECT_TRUE(item.isCollectiveItem());
}

TEST_F(ItemTest, makingAnItemCollectiveAndBackKeepsItsParts)
{
    Item part(rules);
    item.addConstituent(part);
    item.makeCollectiveItem(true);
    EXPECT_EQ(item.getType(), "Collective item");
    item.makeCollectiveItem(false);
    EXPECT_EQ(item.getType(), "Item");
    EXPECT_EQ(item.getConstituents().size(), 1u);
}

// Large stocks

TEST_F(ItemTest, aStockOfAMillionIsReadBackAsItWasWritten)
{
    item.setQty("2000000");
    EXPECT_EQ(item.adjustQty(-10), 1'999'990.0f);
    EXPECT_EQ(item.getQty(), "1.99999e+06");
    EXPECT_EQ(item.getQtyAsFloat(), 1'999'990.0f);
    EXPECT_EQ(item.adjustQty(10), 2'000'000.0f);
    EXPECT_EQ(item.getQty(), "2e+06");
    EXPECT_EQ(item.getQtyAsFloat(), 2'000'000.0f);
    EXPECT_EQ(item.adjustQty(-1'500'000), 500'000.0f);
    EXPECT_EQ(item.getQty(), "500000");
}

TEST_F(ItemTest, aStockBeyondTheMoneyLimitsAndBelowNothingIsNotLostEither)
{
    item.setQty("9000000");
    EXPECT_EQ(item.adjustQty(3'000'000), 12'000'000.0f);
    EXPECT_EQ(item.getQty(), "1.2e+07");
    EXPECT_EQ(item.getQtyAsFloat(), 12'000'000.0f);
    item.setQty("-1000000");
    EXPECT_EQ(item.adjustQty(-1'000'000), -2'000'000.0f);
    EXPECT_EQ(item.getQtyAsFloat(), -2'000'000.0f);
}

TEST_F(ItemTest, aStockStaysANumberWhateverIsTakenFromIt)
{
    const float most = std::numeric_limits<float>::max();
    item.setQty("-5");
    EXPECT_EQ(item.adjustQty(-most), -most);
    EXPECT_EQ(item.adjustQty(-most), -most);
    EXPECT_EQ(item.getQty(), "-3.40282e+38");
    item.setQty("3.5e+38");
    EXPECT_EQ(item.getQtyAsFloat(), 0.0f) << "no figure of ours is as large";
}

TEST_F(ItemTest, onlyTheShortFormTheProgramWritesIsReadSo)
{
    EXPECT_EQ(stockQuantity(formatter, "2e+06"), 2e6);
    EXPECT_EQ(stockQuantity(formatter, "2,000.5"), 2000.5);
    for (const char* text : {"", "1e3", "1e+03", "2E+06", "2e+06 pieces", " 2e+06", "inf", "nan", "1e+400"})
        EXPECT_EQ(stockQuantity(formatter, text), std::nullopt) << text;
}

TEST_F(ItemTest, largeStocksCountOneByOneAndAreInStock)
{
    item.setQty("2e+06");
    item.incQty();
    EXPECT_EQ(item.getQty(), "2000001");
    item.setQty("2e+06");
    item.decQty();
    EXPECT_EQ(item.getQty(), "1999999");
    item.setQty("-2e+06");
    EXPECT_EQ(item.getFieldByName("availability"), "out of stock");
    item.setQty("1e-05");
    EXPECT_EQ(item.getFieldByName("availability"), "out of stock");
    item.setQty("2e+06");
    EXPECT_EQ(item.getFieldByName("availability"), "in stock");
    item.setBought("2.00");
    EXPECT_EQ(item.getFieldByName("stockcost"), "4,000,000.00");
}

TEST_F(ItemTest, theLargestWholeNumberCountsOnWithoutTurningOver)
{
    item.setQty("2147483647");
    item.incQty();
    EXPECT_EQ(item.getQty(), "2147483648");
}

} // namespace
