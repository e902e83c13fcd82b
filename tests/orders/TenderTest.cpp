#include "support/Business.h"

namespace {

class TenderTest : public Business {
protected:
    void SetUp() override { beginWith("0"); }
    void beginWith(const char* dateFormat)
    {
        writeSettings(QByteArray("<key>VendaroDateFormat</key><string>") + dateFormat + "</string>");
        start();
        orders().create();
        line(currentOrder(), "45.00");
        orders().totals.insertBOMTotal(currentOrder());
    }
    OrderForm& editor() { return orders().form; }
    TenderForm& panel() { return orders().tender.form; }
    void choosePayment(ChoiceField& field, const char* title) { field.edit(static_cast<int>(field.titles().indexOf(title))); }
};

TEST_F(TenderTest, thePanelOpensOnWhatIsDueToday)
{
    editor().tender.trigger();
    EXPECT_TRUE(panel().isOpen());
    EXPECT_EQ(panel().datePaid.text(), "01/03/24");
    EXPECT_EQ(panel().amountDue.text(), "45.00");
    EXPECT_EQ(panel().remainingBalance.text(), "45.00");
    EXPECT_EQ(panel().remainingBalance.caption(), "Balance Remaining");
    EXPECT_EQ(panel().amountTendered.text(), "");
    EXPECT_EQ(currentOrder().getBalance(), "45.00");
}

TEST_F(TenderTest, aMonthFirstUserPaysOnAMonthFirstDate)
{
    quit();
    beginWith("1");
    editor().tender.trigger();
    EXPECT_EQ(panel().datePaid.text(), "03/01/24");
}

TEST_F(TenderTest, whatIsHandedOverTooMuchIsChange)
{
    editor().tender.trigger();
    panel().amountTendered.edit("50.00");
    EXPECT_EQ(panel().remainingBalance.text(), "5.00");
    EXPECT_EQ(panel().remainingBalance.caption(), "Change Due");
}

TEST_F(TenderTest, aLargeAmountIsRecordedToThePenny)
{
    for (const auto& [typed, recorded] : {std::pair("200000.01", "200,000.01"), std::pair("1,234,567.89", "1,234,567.89")}) {
        editor().tender.trigger();
        panel().amountTendered.edit(typed);
        panel().ok.trigger();
        EXPECT_EQ(currentOrder().getPaymentArray().back()->getAmount(), recorded);
    }
}

TEST_F(TenderTest, whatIsHandedOverTooLittleLeavesABalance)
{
    editor().tender.trigger();
    panel().amountTendered.edit("20.00");
    EXPECT_EQ(panel().remainingBalance.text(), "25.00");
    EXPECT_EQ(panel().remainingBalance.caption(), "Balance Remaining");
}

TEST_F(TenderTest, theExactAmountLeavesChangeOfNothing)
{
    editor().tender.trigger();
    panel().amountTendered.edit("45");
    EXPECT_EQ(panel().remainingBalance.text(), "0.00");
    EXPECT_EQ(panel().remainingBalance.caption(), "Change Due");
}

TEST_F(TenderTest, whileTypingWhatDoesNotReadCountsAsNothing)
{
    editor().tender.trigger();
    panel().amountTendered.edit("4x");
    EXPECT_EQ(panel().remainingBalance.text(), "45.00");
    EXPECT_FALSE(panel().ok.isEnabled());
    panel().amountTendered.edit("4");
    EXPECT_TRUE(panel().ok.isEnabled());
    panel().amountTendered.edit("");
    EXPECT_FALSE(panel().ok.isEnabled());
}

TEST_F(TenderTest, thePaymentIsAllThatWasHandedOverAndTheBalanceStopsAtNothing)
{
    editor().tender.trigger();
    panel().amountTendered.edit("50");
    panel().datePaid.edit("02/03/24");
    choosePayment(panel().paymentMethod, "Card");
    panel().ok.trigger();

    ASSERT_EQ(currentOrder().getPaymentArray().size(), 1u);
    const Payment& payment = *currentOrder().getPaymentArray().front();
    EXPECT_EQ(payment.getAmount(), "50.00");
    EXPECT_EQ(payment.getDatePaid(), "02/03/24");
    EXPECT_EQ(payment.getPaymentMethod(), "Card");
    EXPECT_EQ(payment.getOrder(), &currentOrder());
    EXPECT_TRUE(app().getPaymentManager().holds(payment));
    EXPECT_EQ(editor().balanceRemaining.text(), "0.00");
    EXPECT_EQ(currentOrder().getBalance(), "45.00");
    EXPECT_EQ(currentOrder().getBalancePaid(), "02/03/24");
    EXPECT_FALSE(panel().isOpen());
    EXPECT_EQ(orders().paymentTable.numberOfRows(), 1);
}

TEST_F(TenderTest, aPartIsTakenAndTheRestStaysDue)
{
    editor().tender.trigger();
    panel().amountTendered.edit("20");
    panel().ok.trigger();
    EXPECT_EQ(editor().balanceRemaining.text(), "25.00");
    editor().tender.trigger();
    EXPECT_EQ(panel().amountDue.text(), "25.00");
    EXPECT_EQ(panel().amountTendered.text(), "");
}

TEST_F(TenderTest, cancellingThePanelTakesNothing)
{
    editor().tender.trigger();
    panel().amountTendered.edit("20");
    panel().cancel.trigger();
    EXPECT_FALSE(panel().isOpen());
    EXPECT_TRUE(currentOrder().getPaymentArray().empty());
    EXPECT_EQ(editor().balanceRemaining.text(), "45.00");
}

TEST_F(TenderTest, thePanelGoesWithTheOrderItWasOpenedFor)
{
    Order& sale = currentOrder();
    editor().tender.trigger();
    orders().editThisOrder(order("Other"));
    EXPECT_FALSE(panel().isOpen());
    orders().editThisOrder(sale);
    editor().tender.trigger();
    editor().save.trigger();
    EXPECT_FALSE(panel().isOpen());
    orders().editThisOrder(sale);
    editor().tender.trigger();
    panel().amountTendered.edit("20");
    orders().deleteOrder(sale);
    EXPECT_FALSE(panel().isOpen());
    panel().ok.trigger();
    EXPECT_EQ(app().getPaymentManager().getCount(), 0);
}

TEST_F(TenderTest, theFullAmountIsTakenTodayWhateverThePanelSays)
{
    editor().tender.trigger();
    panel().datePaid.edit("09/09/09");
    panel().cancel.trigger();
    choosePayment(editor().paymentMethod, "Cash");
    editor().tenderFullAmount.trigger();
    ASSERT_EQ(currentOrder().getPaymentArray().size(), 1u);
    const Payment& payment = *currentOrder().getPaymentArray().front();
    EXPECT_EQ(payment.getAmount(), "45.00");
    EXPECT_EQ(payment.getDatePaid(), "01/03/24");
    EXPECT_EQ(payment.getPaymentMethod(), "Cash");
    EXPECT_EQ(currentOrder().getBalancePaid(), "01/03/24");
    EXPECT_EQ(editor().balanceRemaining.text(), "0.00");
}

TEST_F(TenderTest, theFullAmountOfASettledOrderIsNothing)
{
    editor().tenderFullAmount.trigger();
    editor().tenderFullAmount.trigger();
    EXPECT_EQ(currentOrder().getPaymentArray().size(), 1u);
}

TEST_F(TenderTest, removingAsksInTheseWords)
{
    editor().tenderFullAmount.trigger();
    orders().paymentTable.selectRow(0);
    alerts.answer("Cancel");
    editor().tenderRemove.trigger();
    EXPECT_EQ(lastAlert().title, "Delete payment");
    EXPECT_EQ(lastAlert().text, "are you sure you want to delete the selected payment?");
    EXPECT_EQ(lastAlert().buttons, QStringList({"OK", "Cancel"}));
    EXPECT_EQ(currentOrder().getPaymentArray().size(), 1u);
}

TEST_F(TenderTest, aRemovedPaymentStaysInTheMoneyInListUntilTheNextLoad)
{
    editor().tender.trigger();
    panel().amountTendered.edit("20");
    panel().ok.trigger();
    editor().tenderFullAmount.trigger();
    Payment& rest = *currentOrder().getPaymentArray().back();
    orders().paymentTable.selectRow(0);
    alerts.answer("OK");
    editor().tenderRemove.trigger();

    EXPECT_EQ(currentOrder().getPaymentArray(), std::vector<Payment*> {&rest});
    EXPECT_EQ(app().getPaymentManager().getCount(), 2);
    EXPECT_EQ(orders().paymentTable.numberOfRows(), 1);
    editor().save.trigger();
    restart();
    EXPECT_EQ(app().getPaymentManager().getCount(), 1);
    EXPECT_EQ(app().getPaymentManager().at(0).getAmount(), "25.00");
}

TEST_F(TenderTest, withoutASelectedPaymentNothingIsAsked)
{
    editor().tenderFullAmount.trigger();
    editor().tenderRemove.trigger();
    EXPECT_TRUE(alerts.asked().empty());
    EXPECT_EQ(currentOrder().getPaymentArray().size(), 1u);
}

// The table of payments

TEST_F(TenderTest, anEditedAmountGetsMoneyFormAndChangesTheBalance)
{
    editor().tenderFullAmount.trigger();
    EXPECT_TRUE(orders().paymentTable.setObjectValue("amount", 0, "1"));
    EXPECT_EQ(orders().paymentTable.objectValue("amount", 0), "1.00");
    EXPECT_EQ(editor().balanceRemaining.text(), "44.00");
}

TEST_F(TenderTest, dateAndMethodOfAPaymentCanBeEdited)
{
    editor().tenderFullAmount.trigger();
    EXPECT_TRUE(orders().paymentTable.setObjectValue("datepaid", 0, "05/03/24"));
    EXPECT_TRUE(orders().paymentTable.setObjectValue("paymentmethod", 0, "IOU"));
    EXPECT_EQ(currentOrder().getPaymentArray().front()->getDatePaid(), "05/03/24");
    EXPECT_EQ(currentOrder().getPaymentArray().front()->getPaymentMethod(), "IOU");
}

TEST_F(TenderTest, cellsBeyondThePaymentsAreEmptyAndTakeNothing)
{
    EXPECT_EQ(orders().paymentTable.objectValue("amount", 0), "");
    EXPECT_FALSE(orders().paymentTable.setObjectValue("amount", 0, "5.00"));
}

TEST_F(TenderTest, paymentsComeBackWithTheirOrder)
{
    editor().tenderFullAmount.trigger();
    editor().save.trigger();
    restart();
    ASSERT_EQ(orders().getCount(), 1);
    const Order& order = orders().at(0);
    ASSERT_EQ(order.getPaymentArray().size(), 1u);
    EXPECT_EQ(order.getPaymentArray().front()->getOrder(), &order);
    EXPECT_EQ(order.getBalanceRemaining(), "0.00");
}

} // namespace
