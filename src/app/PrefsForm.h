// The settings form: every value of the settings, as edited. The getters of PrefsController answer from here, committed or not.
#pragma once

#include "desktop/Form.h"
#include "storage/Settings.h"

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

    TextField dbLocation {*this, settings::dbLocation};
    /// The databases beside each other in the user's folder, by the names they show.
    ChoiceField databases {*this, "databases"};
    /// The status whose colour is shown and set.
    ChoiceField colourStatus {*this, "colourStatus"};

    TextField taxStatement {*this, settings::taxStatement};
    TextField taxShipping {*this, settings::taxShipping};
    FlagField handlesTax {*this, settings::handlesTax};
    /// Its caption reads "(Exclusive)" or "(Inclusive)".
    ChoiceField pricesTaxInclusive {*this, settings::pricesTaxInclusive};

    /// Its caption reads "dd/mm/yy" or "mm/dd/yy", as the nine captions beside date fields do.
    ChoiceField dateFormat {*this, settings::dateFormat};
    ChoiceField defaultSort {*this, settings::defaultSort};
    ChoiceField codeSort {*this, settings::codeSort};

    TextField currency {*this, settings::currency};
    TextField currencyCode {*this, settings::currencyCode};
    TextField orderPrefix {*this, settings::orderPrefix};
    TextField itemPrefix {*this, settings::itemPrefix};
    TextField contactPrefix {*this, settings::contactPrefix};
    TextField stockWarn {*this, settings::stockWarn};

    TextField termOrder {*this, settings::termOrder};
    TextField termOrders {*this, settings::termOrders};
    TextField termItem {*this, settings::termItem};
    TextField termItems {*this, settings::termItems};
    TextField termBOM {*this, settings::termBOM};
    TextField headingItem {*this, settings::termBOMItem};
    TextField headingCode {*this, settings::termBOMCode};
    TextField headingVariation {*this, settings::termBOMVariation};
    TextField headingBrand {*this, settings::termBOMBrand};
    TextField headingQty {*this, settings::termBOMQty};
    TextField headingUnit {*this, settings::termBOMUnit};
    TextField headingPrice {*this, settings::termBOMPrice};
    TextField headingTotal {*this, settings::termBOMTotal};
    TextField headingTaxCode {*this, settings::termBOMTaxCode};

    /// One entry a line.
    TextField invoiceCategories {*this, settings::invoiceCategories};
    TextField statuses {*this, settings::statuses};
    TextField contactTypes {*this, settings::contactTypes};

    FlagField orderDateColumn {*this, settings::orderTableDateColumn};
    FlagField orderCodeColumn {*this, settings::orderTableCodeColumn};
    FlagField orderTitleColumn {*this, settings::orderTableTitleColumn};
    FlagField orderContactColumn {*this, settings::orderTableContactColumn};
    FlagField orderStatusColumn {*this, settings::orderTableStatusColumn};
    FlagField lineCodeColumn {*this, settings::bomTableCodeColumn};
    FlagField lineTitleColumn {*this, settings::bomTableTitleColumn};
    FlagField lineVariationColumn {*this, settings::bomTableVariationColumn};
    FlagField lineBrandColumn {*this, settings::bomTableBrandColumn};
    FlagField lineUnitColumn {*this, settings::bomTableUnitColumn};
    FlagField lineTaxColumn {*this, settings::bomTableTaxColumn};

    // These count, and are stored, as soon as they are edited.
    ChoiceField completeStatus {*this, settings::completeStatus};
    TextField timeRate {*this, settings::timeLoggingRate};
    ChoiceField timeUnit {*this, settings::timeLoggingUnit};
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
    ChoiceField addressBook {*this, settings::addressBook};
    CommandField addAddressBookFile {*this, "addAddressBookFile"};
    CommandField addAddressBookFolder {*this, "addAddressBookFolder"};
    CommandField removeFromAddressBook {*this, "removeFromAddressBook"};

    /// Follows the switch of the tips.
    FlagField prefDontShowTips {*this, "prefDontShowTips"};

    // Of the update check; stored as soon as they are edited.
    FlagField automaticUpdateCheck {*this, settings::automaticUpdateCheck};
    TextField updateEndpoint {*this, settings::updateEndpoint};

    /// Fills in what a form shows that was never edited.
    PrefsForm();
};
