// The settings form: every value of the settings, as edited. The getters of PrefsController answer from here, committed or not.
#pragma once

#include "desktop/Form.h"

/// The sheet that asks for a new database's names.
class NewDatabaseForm : public Form {
public:
    TextField displayName {*this, "displayName"};
    /// The folder's name; empty means the display name.
    /// Its caption says what the folder will be.
    TextField fileName {*this, "fileName"};
    CommandField confirm {*this, "confirm"};
    CommandField cancel {*this, "cancel"};
};

class PrefsForm : public Form {
public:
    enum DateFormatChoice { dayFirst, monthFirst };
    enum SortChoice { newestFirst, oldestFirst };
    /// The choices of VendaroCodeSort, by their stored values.
    enum CodeSortChoice { byDigits, asText, byCreation };
    enum PricesChoice { inclusive, exclusive };

    TextField dbLocation {*this, "VendaroDbLocation"};
    /// The databases beside each other in the user's folder, by the names they show.
    ChoiceField databases {*this, "databases"};
    /// The status whose colour is shown and set.
    ChoiceField colourStatus {*this, "colourStatus"};

    TextField taxStatement {*this, "VendaroTaxStatement"};
    TextField taxShipping {*this, "VendaroTaxShipping"};
    FlagField handlesTax {*this, "VendaroHandlesTax"};
    /// Its caption reads "(Exclusive)" or "(Inclusive)".
    ChoiceField pricesTaxInclusive {*this, "VendaroPricesTaxInclusive"};

    /// Its caption reads "dd/mm/yy" or "mm/dd/yy", as the nine captions beside date fields do.
    ChoiceField dateFormat {*this, "VendaroDateFormat"};
    ChoiceField defaultSort {*this, "VendaroDefaultSort"};
    ChoiceField codeSort {*this, "VendaroCodeSort"};

    TextField currency {*this, "VendaroCurrency"};
    TextField currencyCode {*this, "VendaroCurrencyCode"};
    TextField orderPrefix {*this, "VendaroOrderPrefix"};
    TextField itemPrefix {*this, "VendaroItemPrefix"};
    TextField contactPrefix {*this, "VendaroContactPrefix"};
    TextField stockWarn {*this, "VendaroStockWarn"};

    TextField termOrder {*this, "VendaroTermOrder"};
    TextField termOrders {*this, "VendaroTermOrders"};
    TextField termItem {*this, "VendaroTermItem"};
    TextField termItems {*this, "VendaroTermItems"};
    TextField termBOM {*this, "VendaroTermBOM"};
    TextField headingItem {*this, "termBOMItem"};
    TextField headingCode {*this, "termBOMCode"};
    TextField headingVariation {*this, "termBOMVariation"};
    TextField headingBrand {*this, "termBOMBrand"};
    TextField headingQty {*this, "termBOMQty"};
    TextField headingUnit {*this, "termBOMUnit"};
    TextField headingPrice {*this, "termBOMPrice"};
    TextField headingTotal {*this, "termBOMTotal"};
    TextField headingTaxCode {*this, "termBOMTaxCode"};

    /// One entry a line.
    TextField invoiceCategories {*this, "VendaroInvoiceCategories"};
    TextField statuses {*this, "VendaroStatuses"};
    TextField contactTypes {*this, "VendaroContactTypes"};

    FlagField orderDateColumn {*this, "orderTableDateColumn"};
    FlagField orderCodeColumn {*this, "orderTableCodeColumn"};
    FlagField orderTitleColumn {*this, "orderTableTitleColumn"};
    FlagField orderContactColumn {*this, "orderTableContactColumn"};
    FlagField orderStatusColumn {*this, "orderTableStatusColumn"};
    FlagField lineCodeColumn {*this, "BOMTableCodeColumn"};
    FlagField lineTitleColumn {*this, "BOMTableTitleColumn"};
    FlagField lineVariationColumn {*this, "BOMTableVariationColumn"};
    FlagField lineBrandColumn {*this, "BOMTableBrandColumn"};
    FlagField lineUnitColumn {*this, "BOMTableUnitColumn"};
    FlagField lineTaxColumn {*this, "BOMTableTaxColumn"};

    // These count, and are stored, as soon as they are edited.
    ChoiceField completeStatus {*this, "completeStatus"};
    TextField timeRate {*this, "timeLoggingRate"};
    ChoiceField timeUnit {*this, "timeLoggingUnit"};
    /// The colour of the chosen status, each part from 0 to 255.
    TextField colourRed {*this, "redComponent"};
    TextField colourGreen {*this, "greenComponent"};
    TextField colourBlue {*this, "blueComponent"};

    CommandField addTaxRate {*this, "addTaxRate"};
    CommandField deleteTaxRate {*this, "deleteTaxRate"};
    CommandField newDatabase {*this, "newDatabaseMenuItem"};
    CommandField selectDbLocation {*this, "selectDbLocation"};
    CommandField createDbLocation {*this, "createDbLocation"};
    CommandField setDbLocationToDefault {*this, "setDbLocationToDefault"};
    /// Commits everything and closes the window.
    CommandField ok {*this, "ok"};
    /// Closes the window; what was edited goes on counting and is committed later.
    CommandField leave {*this, "leave"};

    /// Files and folders of vCards; stored as soon as they are edited.
    ChoiceField addressBook {*this, "addressBook"};
    CommandField addAddressBookFile {*this, "addAddressBookFile"};
    CommandField addAddressBookFolder {*this, "addAddressBookFolder"};
    CommandField removeFromAddressBook {*this, "removeFromAddressBook"};

    /// Follows the switch of the tips.
    FlagField prefDontShowTips {*this, "prefDontShowTips"};

    // Of the update check; stored as soon as they are edited.
    FlagField automaticUpdateCheck {*this, "automaticUpdateCheck"};
    TextField updateEndpoint {*this, "updateEndpoint"};

    /// Fills in what a form shows that was never edited.
    PrefsForm();
};
