// What the text cases in tests/cases/totals cannot say: the controls, the order's own balance, and when what is worked
// out.
#include "support/Business.h"

namespace {

class OrderTotalsTest : public Business {
protected:
    void begin(const QByteArray& settings = taxSettings())
    {
        Business::begin(settings);
        orders().create();
    }
    OrderForm& form() { return orders().form; }
};

TEST_F(OrderTotalsTest, theBalanceIsKeptOnTheOrderBeforePaymentsAndMayGoBelowNothing)
{
    begin();
    line(currentOrder(), "-20.00");
    payment(currentOrder(), "5.00");
    orders().totals.insertBOMTotal(currentOrder());
    EXPECT_EQ(currentOrder().getBalance(), "-20.00");
    EXPECT_EQ(form().balanceRemaining.text(), "0.00");
}

TEST_F(OrderTotalsTest, theDiscountTakenOffIsLogged)
{
    begin();
    form().applyDiscount.edit(true);
    form().discount.edit("12.5");
    EXPECT_TRUE(logged("substracting 12.500000 %"));
    form().discountChoice.edit(1);
    EXPECT_TRUE(logged("substracting 12.500000"));
}

TEST_F(OrderTotalsTest, discountControlsShowOnlyWhileADiscountApplies)
{
    begin();
    EXPECT_FALSE(form().discount.isVisible());
    EXPECT_FALSE(form().discountChoice.isVisible());
    form().applyDiscount.edit(true);
    EXPECT_TRUE(form().discount.isVisible());
    EXPECT_TRUE(form().discountChoice.isVisible());
    form().applyDiscount.edit(false);
    EXPECT_FALSE(form().discount.isVisible());
    EXPECT_FALSE(form().discountChoice.isVisible());
}

TEST_F(OrderTotalsTest, eachDiscountControlWorksOutSubtotalAndBalanceAgain)
{
    begin();
    line(currentOrder(), "100.00");
    form().applyDiscount.edit(true);
    EXPECT_EQ(form().subtotal.text(), "100.00");
    form().discount.edit("10");
    EXPECT_EQ(form().subtotal.text(), "90.00");
    form().discountChoice.edit(1);
    EXPECT_EQ(form().subtotal.text(), "90.00");
    form().discount.edit("25");
    EXPECT_EQ(form().subtotal.text(), "75.00");
    form().applyDiscount.edit(false);
    EXPECT_EQ(form().subtotal.text(), "100.00");
    EXPECT_EQ(form().balanceRemaining.text(), "100.00");
    EXPECT_EQ(form().taxAmount.text(), "");
}

TEST_F(OrderTotalsTest, aChangedDiscountSaysThatTheTaxDoesNotCountItUntilItDoes)
{
    begin();
    line(currentOrder(), "100.00");
    form().calculateTax.trigger();
    EXPECT_EQ(form().taxNote.text(), "");
    form().applyDiscount.edit(true);
    EXPECT_NE(form().taxNote.text(), "");
    form().calculateTax.trigger();
    EXPECT_EQ(form().taxNote.text(), "");
}

TEST_F(OrderTotalsTest, typingShippingOrTaxWorksOutTheBalanceOnly)
{
    begin();
    line(currentOrder(), "100.00");
    form().calculateTax.trigger();
    form().shipping.edit("10.00");
    EXPECT_EQ(form().balanceRemaining.text(), "130.00");
    EXPECT_EQ(form().taxAmount.text(), "20.00");
    form().taxAmount.edit("1.00");
    EXPECT_EQ(form().balanceRemaining.text(), "111.00");
    EXPECT_EQ(currentOrder().getBalance(), "111.00");
}

TEST_F(OrderTotalsTest, aChangedLineWorksOutTheTaxWhereTaxIsHandled)
{
    begin();
    line(currentOrder(), "100.00");
    orders().totals.linesChanged(currentOrder());
    EXPECT_EQ(form().taxAmount.text(), "20.00");
    EXPECT_EQ(form().net.text(), "100.00");
    EXPECT_EQ(form().balanceRemaining.text(), "120.00");
}

TEST_F(OrderTotalsTest, aChangedLineLeavesTheTaxAloneWhereItIsNot)
{
    begin("<key>VendaroHandlesTax</key><string>NO</string><key>VendaroPricesTaxInclusive</key><string>1</string>");
    line(currentOrder(), "100.00");
    currentOrder().setTax("7.00");
    orders().setItem(currentOrder());
    orders().totals.linesChanged(currentOrder());
    EXPECT_EQ(form().taxAmount.text(), "7.00");
    EXPECT_EQ(form().net.text(), "");
    EXPECT_EQ(form().subtotal.text(), "100.00");
    EXPECT_EQ(form().balanceRemaining.text(), "107.00");
}

TEST_F(OrderTotalsTest, taxControlsCanBeUsedOnlyWhereTaxIsHandled)
{
    begin();
    EXPECT_TRUE(form().net.isEnabled() && form().taxAmount.isEnabled() && form().calculateTax.isEnabled());
}

TEST_F(OrderTotalsTest, whereTaxIsNotHandledItsStoredFiguresAreStillShown)
{
    begin("<key>VendaroHandlesTax</key><string>NO</string>");
    Order& old = order("old");
    old.setTax("20.00");
    old.setNet("80.00");
    orders().editThisOrder(old);
    EXPECT_FALSE(form().net.isEnabled() || form().taxAmount.isEnabled() || form().calculateTax.isEnabled());
    EXPECT_EQ(form().taxAmount.text(), "20.00");
    EXPECT_EQ(form().net.text(), "80.00");
}

TEST_F(OrderTotalsTest, theUsersWordForTaxStandsAtTheTax)
{
    begin(taxSettings() + "<key>VendaroTaxStatement</key><string>VAT</string>");
    EXPECT_EQ(form().taxAmount.caption(), "VAT");
}

TEST_F(OrderTotalsTest, onlyTheLinesOfTheOrderInTheEditorCount)
{
    begin();
    line(order("other"), "50.00");
    line(currentOrder(), "10.00");
    orders().totals.insertBOMTotal(currentOrder());
    EXPECT_EQ(form().subtotal.text(), "10.00");
}

TEST_F(OrderTotalsTest, choosingAnotherKindOfOrderCountsFromTheNextCalculation)
{
    begin(taxSettings("0"));
    line(currentOrder(), "100.00");
    form().calculateTax.trigger();
    EXPECT_EQ(form().taxAmount.text(), "16.67");
    form().type.edit(static_cast<int>(form().type.titles().indexOf("Purchase Order")));
    form().calculateTax.trigger();
    EXPECT_EQ(form().taxAmount.text(), "20.00");
    EXPECT_EQ(form().balanceRemaining.text(), "120.00");
}

TEST_F(OrderTotalsTest, theTaxRateOfTheOrderDoesNotCount)
{
    begin();
    currentOrder().setFieldByName("taxrate", "50");
    line(currentOrder(), "100.00");
    form().calculateTax.trigger();
    EXPECT_EQ(form().taxAmount.text(), "20.00");
}

TEST_F(OrderTotalsTest, savingKeepsTheDiscountAsItStands)
{
    begin();
    Order& order = currentOrder();
    form().applyDiscount.edit(true);
    form().discountChoice.edit(1);
    form().discount.edit("7.50");
    form().save.trigger();
    EXPECT_TRUE(order.getApplyDiscount());
    EXPECT_EQ(order.getDiscount(), "7.50");
    EXPECT_FALSE(order.getDiscountIsPercentage());

    orders().editThisOrder(order);
    EXPECT_EQ(form().discount.text(), "7.50");
    EXPECT_EQ(form().discountChoice.index(), 1);
    form().applyDiscount.edit(false);
    form().save.trigger();
    EXPECT_FALSE(order.getApplyDiscount());
    EXPECT_EQ(order.getDiscount(), "");
    EXPECT_TRUE(order.getDiscountIsPercentage());
}

TEST_F(OrderTotalsTest, aFlatDiscountOfTheFirstOrderOpenedIsInMoney)
{
    begin();
    const int id = currentOrder().getID();
    form().applyDiscount.edit(true);
    form().discountChoice.edit(1);
    form().discount.edit("7.50");
    form().save.trigger();

    restart();
    orders().editThisOrder(static_cast<Order&>(*orders().getItemById(id)));
    EXPECT_EQ(form().discountChoice.index(), 1);
    EXPECT_EQ(form().discountChoice.title(), "£");
}

} // namespace
