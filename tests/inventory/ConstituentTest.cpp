#include "foundation/Money.h"
#include "inventory/ConstituentTable.h"
#include "storage/WriteGate.h"
#include "inventory/Item.h"
#include "support/FakeDesktop.h"
#include "support/MemorySettings.h"

#include <gtest/gtest.h>

namespace {

struct NoSorting : SortSettings {
    std::string codeSort() const override { return {}; }
};

/// Every change is allowed.
class OpenGate : public WriteGate {
public:
    bool readOnlyCheck() override { return true; }
    bool isReadOnly() const override { return false; }
    void writeDatabase(const qvDataSource&) override { }
    void writeDatabaseInBackground(const qvDataSource&) override { }
    void setChangeFlag() override { }
};

class ConstituentTest : public testing::Test {
protected:
    ConstituentTest()
    {
        wheel.setID(7);
        wheel.setCode("W-1");
        wheel.setItem("Wheel");
        cart.makeCollectiveItem(true);
    }
    PlistValue::Kind kindOfQty(int index) const
    {
        return cart.getConstituents()[static_cast<std::size_t>(index)].entry().find("qty")->kind();
    }

    MemorySettings memory;
    MoneyFormatter formatter {"en_GB"};
    ItemRules rules {memory, formatter};
    NoSorting sorting;
    FakeBeeper beeper;
    Item cart {rules};
    Item wheel {rules};
    OpenGate gate;
    ConstituentTable table {sorting, beeper, gate};
};

TEST_F(ConstituentTest, anAddedPartKeepsIdCodeAndNameAndIsNeededOnce)
{
    cart.addConstituent(wheel);
    ASSERT_EQ(cart.getConstituents().size(), 1u);
    const Constituent& part = cart.getConstituents().front();
    EXPECT_EQ(part.id(), 7);
    EXPECT_EQ(part.text("code"), "W-1");
    EXPECT_EQ(part.text("item"), "Wheel");
    EXPECT_EQ(part.qty(), 1.0f);
}

TEST_F(ConstituentTest, changingTheItemLaterDoesNotChangeThePart)
{
    cart.addConstituent(wheel);
    wheel.setItem("Big wheel");
    wheel.setCode("W-2");
    EXPECT_EQ(cart.getConstituents().front().text("item"), "Wheel");
    EXPECT_EQ(cart.getConstituents().front().text("code"), "W-1");
}

TEST_F(ConstituentTest, aWholeQuantityIsKeptAsAnInteger)
{
    cart.addConstituent(wheel);
    cart.setConstituentQty(0, 4);
    EXPECT_EQ(kindOfQty(0), PlistValue::Kind::integer);
    cart.setConstituentQty(0, 4.00005f);
    EXPECT_EQ(kindOfQty(0), PlistValue::Kind::integer);
    EXPECT_EQ(cart.getConstituents().front().qty(), 4.0f);
}

TEST_F(ConstituentTest, aQuantityWithAFractionIsKeptAsAReal)
{
    cart.addConstituent(wheel);
    for (const float qty : {0.5f, 2.001f, -1.25f}) {
        cart.setConstituentQty(0, qty);
        EXPECT_EQ(kindOfQty(0), PlistValue::Kind::real) << qty;
        EXPECT_EQ(cart.getConstituents().front().qty(), qty);
    }
}

TEST_F(ConstituentTest, aQuantityIsReadAsItIsWrittenHoweverLargeOrSmall)
{
    cart.addConstituent(wheel);
    cart.setConstituentQty(0, 3e9f);
    EXPECT_EQ(cart.getConstituents().front().qty(), 3e9f);
    const auto read = [](PlistValue qty) {
        PlistValue entry = PlistValue::makeDict();
        entry.set("qty", std::move(qty));
        return Constituent(std::move(entry)).qty();
    };
    // Reals of other programs come with all their digits, and with an exponent below 0.0001.
    EXPECT_EQ(read(PlistValue::makeScalar(PlistValue::Kind::real, "1.5000000712461770e-04")), 1.5e-4f);
    EXPECT_EQ(read(PlistValue::makeScalar(PlistValue::Kind::real, " 0.10000000149011612\n")), 0.1f);
    EXPECT_EQ(read(PlistValue(std::string("2.5 pieces"))), 2.5f);
    EXPECT_EQ(read(PlistValue(std::string("2e3"))), 2000.0f);
}

TEST_F(ConstituentTest, whatIsNoNumberAnyMoreIsNone)
{
    PlistValue entry = PlistValue::makeDict();
    EXPECT_EQ(Constituent(entry).qty(), 0.0f);
    for (const char* text : {"inf", "nan", "-inf", "1e300", "1e-300"}) {
        entry.set("qty", PlistValue::makeScalar(PlistValue::Kind::real, text));
        EXPECT_EQ(Constituent(entry).qty(), 0.0f) << text;
    }
    entry.set("qty", PlistValue(std::string(60, '9')));
    EXPECT_EQ(Constituent(entry).qty(), 0.0f);
    entry.set("qty", PlistValue::makeBoolean(true));
    EXPECT_EQ(Constituent(entry).qty(), 0.0f);
}

TEST_F(ConstituentTest, justBelowAWholeNumberIsAFraction)
{
    // The integer part of 3.99995 is 3, which is further off than 0.0001.
    cart.addConstituent(wheel);
    cart.setConstituentQty(0, 3.99995f);
    EXPECT_EQ(kindOfQty(0), PlistValue::Kind::real);
}

TEST_F(ConstituentTest, removingAPartOutsideTheListChangesNothing)
{
    cart.addConstituent(wheel);
    cart.removeConstituentAtIndex(1);
    cart.removeConstituentAtIndex(-1);
    EXPECT_EQ(cart.getConstituents().size(), 1u);
    cart.removeConstituentAtIndex(0);
    EXPECT_TRUE(cart.getConstituents().empty());
}

// The table

TEST_F(ConstituentTest, theTableShowsARowAPartByTheKeysOfItsEntry)
{
    cart.addConstituent(wheel);
    cart.addConstituent(cart);
    cart.setConstituentQty(0, 2.5f);
    table.setItem(&cart);
    ASSERT_EQ(table.numberOfRows(), 2);
    EXPECT_EQ(table.objectValue("code", 0), "W-1");
    EXPECT_EQ(table.objectValue("item", 0), "Wheel");
    EXPECT_EQ(table.objectValue("qty", 0), "2.5");
    EXPECT_EQ(table.objectValue("qty", 1), "1");
    EXPECT_EQ(table.objectValue("unknown", 0), "");
    EXPECT_EQ(table.objectValue("code", 2), "");
    EXPECT_EQ(table.objectValue("code", -1), "");
}

TEST_F(ConstituentTest, quantitiesAreShownShort)
{
    cart.addConstituent(wheel);
    table.setItem(&cart);
    const std::pair<float, const char*> cases[] = {{12, "12"}, {0.1f, "0.1"}, {1234567.0f, "1.23457e+06"}, {0.333333f, "0.333333"}};
    for (const auto& [qty, text] : cases) {
        cart.setConstituentQty(0, qty);
        EXPECT_EQ(table.objectValue("qty", 0), text);
    }
}

TEST_F(ConstituentTest, onlyTheQuantityCanBeEdited)
{
    for (const ListColumn& column : table.list.columns)
        EXPECT_EQ(column.editable, column.identifier == "qty") << column.identifier;
    cart.addConstituent(wheel);
    table.setItem(&cart);
    EXPECT_FALSE(table.setObjectValue("item", 0, "Sail"));
    EXPECT_EQ(table.objectValue("item", 0), "Wheel");
}

TEST_F(ConstituentTest, anEditedQuantityIsTakenAndTold)
{
    int told = 0;
    table.onEdited = [&] { ++told; };
    cart.addConstituent(wheel);
    table.setItem(&cart);
    EXPECT_TRUE(table.setObjectValue("qty", 0, "3.5"));
    EXPECT_EQ(cart.getConstituents().front().qty(), 3.5f);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(beeper.beeps, 0);
}

TEST_F(ConstituentTest, aQuantityThatIsNoNumberIsRefusedWithABeep)
{
    cart.addConstituent(wheel);
    table.setItem(&cart);
    for (const char* text : {"two", "", "2x", "1,5"}) {
        beeper.beeps = 0;
        EXPECT_FALSE(table.setObjectValue("qty", 0, text)) << text;
        EXPECT_EQ(beeper.beeps, 1) << text;
    }
    EXPECT_EQ(cart.getConstituents().front().qty(), 1.0f);
}

TEST_F(ConstituentTest, withoutAnItemTheTableIsEmpty)
{
    EXPECT_EQ(table.numberOfRows(), 0);
    table.setItem(&cart);
    table.selectConstituent(3);
    table.setItem(nullptr);
    EXPECT_EQ(table.numberOfRows(), 0);
    EXPECT_EQ(table.selectedConstituent(), -1);
}

} // namespace
