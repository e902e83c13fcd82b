#include "contacts/SupplierDataSource.h"

#include "support/Business.h"
#include "support/MemorySettings.h"

namespace {

class NoCodeSort : public SortSettings {
public:
    std::string codeSort() const override { return {}; }
};

class SupplierDataSourceTest : public Business {
protected:
    NoCodeSort sorting;
};

TEST_F(SupplierDataSourceTest, onlySuppliersAreThereInBothOrders)
{
    begin();
    contacts().setDefaultSortNew(false);
    Contact& zoe = contact("Zoe", "Supplier");
    contact("Max", "Customer");
    Contact& ann = contact("Ann", "Supplier");
    contacts().sortByColumn("name", true);
    ann.setVisible(false);
    const SupplierDataSource suppliers(sorting, beeper, contacts());
    ASSERT_EQ(suppliers.getCount(), 2);
    EXPECT_EQ(suppliers.getnthItem(0), &zoe);
    EXPECT_EQ(suppliers.getnthItem(1), &ann);
    EXPECT_EQ(suppliers.getnthSortedItem(0), &ann);
    EXPECT_EQ(suppliers.getnthSortedItem(1), &zoe);
    EXPECT_EQ(suppliers.getnthItem(2), nullptr);
    EXPECT_EQ(suppliers.getnthSortedItem(-1), nullptr);
}

TEST_F(SupplierDataSourceTest, asAnyListItAnswersWithoutRecordsOfItsOwn)
{
    begin();
    contact("Max", "Customer");
    const SupplierDataSource none(sorting, beeper, contacts());
    EXPECT_EQ(none.getCount(), 0);
    const qvDataSource& list = none;
    EXPECT_EQ(list.getnthSortedItem(0), nullptr);
}

} // namespace
