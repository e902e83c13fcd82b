// Purchase orders that were deleted and come back, and their bills.
#include "support/Business.h"

namespace {

class UndoneOrderTest : public Business {
protected:
    Order& purchaseOrder(const char* title)
    {
        Order& made = order(title);
        made.setType("Purchase Order");
        return made;
    }
    void deleteIt(const Order& purchase)
    {
        int row = 0;
        while (orders().getnthVisibleItem(row) != &purchase)
            ++row;
        orders().selectRow(row);
        alerts.answer("OK");
        orders().deleteKey();
    }
    void savePaid(Order& purchase, const char* date)
    {
        orders().editThisOrder(purchase);
        orders().form.balancePaid.edit(date);
        orders().form.save.trigger();
    }
};

} // namespace

TEST_F(UndoneOrderTest, anUndonePurchaseOrderIsBilledAnew)
{
    begin();
    Order& clay = purchaseOrder("Clay");
    savePaid(clay, "05/03/24");
    deleteIt(clay);
    EXPECT_EQ(app().getBillManager().getCount(), 0);
    orders().undo();
    savePaid(clay, "05/03/24");
    EXPECT_EQ(app().getBillManager().getCount(), 1);
}

TEST_F(UndoneOrderTest, anUndonePurchaseOrderLeavesTheBillAloneThatGotItsNumberMeanwhile)
{
    begin();
    Order& glaze = purchaseOrder("Glaze");
    Order& clay = purchaseOrder("Clay");
    savePaid(clay, "05/03/24");
    BillManager& bills = app().getBillManager();
    const int number = clay.getBillId();
    deleteIt(clay);
    savePaid(glaze, "06/03/24");
    ASSERT_EQ(glaze.getBillId(), number) << "the number is given again";

    orders().undo();
    ASSERT_TRUE(orders().holds(clay));
    savePaid(clay, "07/03/24");

    ASSERT_EQ(bills.getCount(), 2);
    EXPECT_NE(clay.getBillId(), glaze.getBillId());
    EXPECT_EQ(bills.getItemById(glaze.getBillId())->getName(), "Glaze");
    EXPECT_EQ(bills.getItemById(glaze.getBillId())->getDatePaid(), "06/03/24");
    EXPECT_EQ(bills.getItemById(clay.getBillId())->getDatePaid(), "07/03/24");
    deleteIt(clay);
    ASSERT_EQ(bills.getCount(), 1);
    EXPECT_EQ(bills.at(0).getName(), "Glaze");
}
