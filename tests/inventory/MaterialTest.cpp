#include "support/Scenario.h"

#include <QDate>

namespace {

class MaterialTest : public Scenario {
protected:
    MaterialTest()
    {
        writeSettings("<key>VendaroDateFormat</key><string>0</string>");
        start();
    }
    const LineRules& rules() { return app().getBOMManager().rules(); }
    Order& order()
    {
        if (!m_order)
            m_order = &app().getOrderManager().createAndAddDataObject();
        return *m_order;
    }

private:
    Order* m_order = nullptr;
};

TEST_F(MaterialTest, aNewLineIsOneOfNothing)
{
    const Material line(rules());
    EXPECT_EQ(line.getQty(), "1");
    for (const char* name : {"item", "cost", "unit", "total", "code", "taxcode", "dateadded", "variation", "order:type"})
        EXPECT_EQ(line.getFieldByName(name), "") << name;
    for (const char* name : {"order", "product", "order:contact:id"})
        EXPECT_EQ(line.getFieldByName(name), "0") << name;
}

TEST_F(MaterialTest, aLineIsMadeForAnOrderAndAnItem)
{
    const Material line(rules(), 12, 34);
    EXPECT_EQ(line.getFieldByName("order"), "12");
    EXPECT_EQ(line.getFieldByName("product"), "34");
    EXPECT_EQ(line.getQty(), "1");
    EXPECT_EQ(Material(rules(), 12).getProduct(), 0);
}

TEST_F(MaterialTest, fieldsAreSetAndReadByTheirNames)
{
    Material line(rules());
    for (const char* name : {"item", "qty", "cost", "unit", "total", "code", "taxcode", "dateadded", "variation"}) {
        EXPECT_TRUE(line.setFieldByName(name, std::string("my ") + name)) << name;
        EXPECT_EQ(line.getFieldByName(name), std::string("my ") + name);
    }
}

TEST_F(MaterialTest, unknownNamesAnswerNothing)
{
    Material line(rules(), 1, 2);
    line.setItem("Mug");
    for (const char* name : {"Item", "taxCode", "id", "brand", "contact", "order:contact", "order:title", ""})
        EXPECT_EQ(line.getFieldByName(name), "") << name;
    EXPECT_FALSE(line.setFieldByName("order:number", "5"));
    EXPECT_FALSE(line.setFieldByName("id", "5"));
}

TEST_F(MaterialTest, numbersReadThroughTheMoneyFormat)
{
    Material line(rules());
    line.setQty("1,200");
    line.setCost("-2.50");
    line.setTotal("3.00 each");
    EXPECT_EQ(line.getQtyasFloat(), 1200.0f);
    EXPECT_EQ(line.getCostasFloat(), -2.5f);
    EXPECT_EQ(line.getTotalasFloat(), 0.0f);
}

TEST_F(MaterialTest, theTotalIsQuantityTimesCostAsMoney)
{
    Material line(rules());
    line.setQty("1,200");
    line.setCost("2.50");
    line.recalcTotal();
    EXPECT_EQ(line.getTotal(), "3,000.00");
    line.setQty("");
    line.recalcTotal();
    EXPECT_EQ(line.getTotal(), "0.00");
    line.setQty("-2");
    line.recalcTotal();
    EXPECT_EQ(line.getTotal(), "-5.00");
}

TEST_F(MaterialTest, theTotalIsWorkedOutInSinglePrecision)
{
    // 123.45 is kept as 123.4499969482; three thousand three hundred and thirty-three of them come to 411,458.84375,
    // not .85.
    Material line(rules());
    line.setQty("3333");
    line.setCost("123.45");
    line.recalcTotal();
    EXPECT_EQ(line.getTotal(), "411,458.84");
}

TEST_F(MaterialTest, theDateAddedIsDayFirst)
{
    Material line(rules());
    line.setDateAdded("02/03/2024");
    EXPECT_EQ(line.getDateaddedasdate(), QDate(2024, 3, 2));
    EXPECT_EQ(line.getDateByName("dateaddedasdate"), QDate(2024, 3, 2).toJulianDay());
    line.setDateAdded("soon");
    EXPECT_EQ(line.getDateaddedasdate(), QDate(2000, 1, 1));
}

TEST_F(MaterialTest, anOrdersFieldsAreReadThroughTheLine)
{
    auto contact = std::make_unique<Contact>();
    contact->setEmail("ann@example.org");
    contact->setType("Trade");
    Contact& ann = app().getContactManager().add(std::move(contact));
    order().setContact(&ann);
    order().setOrderNum("INV-9");
    order().setDate("01/03/24");
    const Material line(rules(), order().getID());

    EXPECT_EQ(line.getFieldByName("order:number"), "INV-9");
    EXPECT_EQ(line.getFieldByName("order:date"), "01/03/24");
    EXPECT_EQ(line.getFieldByName("order:contact:email"), "ann@example.org");
    EXPECT_EQ(line.getFieldByName("order:contact:type"), "Trade");
}

TEST_F(MaterialTest, theItemsCategoryIsReadThroughTheLine)
{
    auto item = std::make_unique<Item>(app().getItemManager().rules());
    item->setCategory("Tea, Mugs");
    const Item& mug = app().getItemManager().add(std::move(item));
    EXPECT_EQ(Material(rules(), 0, mug.getID()).getFieldByName("item:category"), "Tea, Mugs");
}

TEST_F(MaterialTest, whatIsNotThereIsReadAsNothing)
{
    const Material line(rules(), 999, 999);
    for (const char* name : {"order:number", "order:date", "order:contact:email", "order:contact:type", "item:category"})
        EXPECT_EQ(line.getFieldByName(name), "") << name;
    const Material ofOrder(rules(), order().getID());
    EXPECT_EQ(ofOrder.getFieldByName("order:contact:email"), "");
}

TEST_F(MaterialTest, theOrdersKindAndContactStandOnTheLineItself)
{
    Material line(rules());
    line.setOrderType("Purchase Order");
    line.setContact(5);
    EXPECT_EQ(line.getFieldByName("order:type"), "Purchase Order");
    EXPECT_EQ(line.getFieldByName("order:contact:id"), "5");
}

TEST_F(MaterialTest, theCodeSortsByItsDigits)
{
    Material line(rules());
    line.setCode("A-12b3");
    EXPECT_EQ(line.getNumericCode(), 123.0f);
}

TEST_F(MaterialTest, goodsMoveByTheQuantityCutOffAfterThePoint)
{
    const std::pair<const char*, int> cases[] {
        {"3", 3}, {"2.9", 2}, {"-2.9", -2}, {"1,000", 1000}, {"3 pieces", 3}, {"", 0}, {"few", 0}, {"10,000,000", 10'000'000}};
    Material line(rules());
    for (const auto& [text, whole] : cases) {
        line.setQty(text);
        EXPECT_EQ(line.getWholeQty(), whole) << text;
    }
}

} // namespace
