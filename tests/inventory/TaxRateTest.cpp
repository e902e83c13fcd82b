#include "inventory/TaxRate.h"

#include "foundation/Money.h"
#include "support/Business.h"

namespace {

TEST(TaxRateTest, aRateIsTheNumberItStartsWith)
{
    const MoneyFormatter pounds("en_GB");
    EXPECT_EQ(taxRateIn("17.5", pounds), 17.5f);
    EXPECT_EQ(taxRateIn("20 %", pounds), 20.0f);
    EXPECT_EQ(taxRateIn("", pounds), 0.0f);
    EXPECT_EQ(taxRateIn("none", pounds), 0.0f);
}

TEST(TaxRateTest, aCommaIsADecimalCommaOnlyWhereAmountsAreWrittenSo)
{
    const MoneyFormatter pounds("en_GB");
    const MoneyFormatter euros("de_DE");
    EXPECT_EQ(taxRateIn("17,5", euros), 17.5f);
    EXPECT_EQ(taxRateIn("7,25%", euros), 7.25f);
    EXPECT_EQ(taxRateIn("17,5", pounds), 17.0f);
}

TEST(TaxRateTest, aPointIsUnderstoodEverywhereAndNeverGroups)
{
    const MoneyFormatter euros("de_DE");
    EXPECT_EQ(taxRateIn("17.5", euros), 17.5f);
    EXPECT_EQ(taxRateIn("20", euros), 20.0f);
}

class TaxRateInUse : public Business { };

TEST_F(TaxRateInUse, aCommaUsersHalfPercentIsTaxedOnLinesAndOnShipping)
{
    locale = "de_DE";
    QByteArray settings = taxSettings();
    settings.replace("<string>20</string>", "<string>17,5</string>");
    begin(settings);
    orders().create();
    line(currentOrder(), "200,00");
    orders().form.shipping.edit("10,00");
    orders().form.calculateTax.trigger();
    // 200 * 17.5 % = 35.00, and 10 * 17.5 % = 1.75
    EXPECT_EQ(orders().form.taxAmount.text(), "36,75");
}

} // namespace
