#include "app/PrefsForm.h"

#include "desktop/TextTable.h"

PrefsForm::PrefsForm()
{
    setTitle(localText("Preferences"));
    pricesTaxInclusive.setTitles({localText("Prices include tax"), localText("Tax is added to prices")});
    pricesTaxInclusive.setIndex(inclusive);
    dateFormat.setTitles({localText("Day first"), localText("Month first")});
    dateFormat.setIndex(dayFirst);
    defaultSort.setTitles({localText("Newest first"), localText("Oldest first")});
    defaultSort.setIndex(newestFirst);
    codeSort.setTitles({localText("By their digits"), localText("As text"), localText("In the order they were made")});
    codeSort.setIndex(byDigits);

    timeUnit.setTitles({"Hours", "Days"});

    currency.setText("£");
    currencyCode.setText("GBP");
    contactPrefix.setText("C");
    stockWarn.setText("0");
    taxStatement.setText("VAT");
    taxShipping.setText("S");

    termOrder.setText(localText("Order"));
    termOrders.setText(localText("Orders"));
    termItem.setText(localText("Item"));
    termItems.setText(localText("Items"));
    termBOM.setText(localText("Items ordered"));
    headingItem.setText(localText("Item"));
    headingCode.setText(localText("Code"));
    headingVariation.setText(localText("Variation"));
    headingBrand.setText(localText("Brand"));
    headingQty.setText(localText("Qty"));
    headingUnit.setText(localText("Unit"));
    headingPrice.setText(localText("Price"));
    headingTotal.setText(localText("Total"));
    headingTaxCode.setText(localText("Tax code"));

    invoiceCategories.setText(localText("Stock\nMaterials\nPremises\nTravel\nPostage\nAdvertising\nFees\nOther"));
    statuses.setText(localText("Enquiry\nQuoted\nOrdered\nInvoiced\nPaid\nFlagged\nComplete"));
    for (FlagField* column : {&orderDateColumn, &orderCodeColumn, &orderTitleColumn, &orderContactColumn, &orderStatusColumn,
             &lineCodeColumn, &lineTitleColumn, &lineVariationColumn, &lineBrandColumn, &lineUnitColumn, &lineTaxColumn})
        column->setOn(true);
}
