// The user's settings, through two doors: the committed store, and the getters of the settings form, which answer values that
// were edited but not committed yet. Which rule uses which stands in docs/architecture.md.
#pragma once

#include "foundation/plist/PlistValue.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Keys of the store. Each is spelled here and nowhere else.
namespace settings {
inline constexpr char completeStatus[] = "completeStatus";
inline constexpr char timeLoggingRate[] = "timeLoggingRate";
inline constexpr char timeLoggingUnit[] = "timeLoggingUnit";
inline constexpr char dbLocation[] = "VendaroDbLocation";
inline constexpr char taxRates[] = "VendaroTaxRates";
inline constexpr char taxRate[] = "VendaroTaxRate";
inline constexpr char taxStatement[] = "VendaroTaxStatement";
inline constexpr char taxShipping[] = "VendaroTaxShipping";
inline constexpr char handlesTax[] = "VendaroHandlesTax";
inline constexpr char pricesTaxInclusive[] = "VendaroPricesTaxInclusive";
inline constexpr char dateFormat[] = "VendaroDateFormat";
inline constexpr char defaultSort[] = "VendaroDefaultSort";
inline constexpr char codeSort[] = "VendaroCodeSort";
inline constexpr char currency[] = "VendaroCurrency";
inline constexpr char currencyCode[] = "VendaroCurrencyCode";
inline constexpr char orderPrefix[] = "VendaroOrderPrefix";
inline constexpr char itemPrefix[] = "VendaroItemPrefix";
inline constexpr char contactPrefix[] = "VendaroContactPrefix";
inline constexpr char stockWarn[] = "VendaroStockWarn";
inline constexpr char termOrder[] = "VendaroTermOrder";
inline constexpr char termOrders[] = "VendaroTermOrders";
inline constexpr char termItem[] = "VendaroTermItem";
inline constexpr char termItems[] = "VendaroTermItems";
inline constexpr char termBOM[] = "VendaroTermBOM";
inline constexpr char termBOMItem[] = "termBOMItem";
inline constexpr char termBOMCode[] = "termBOMCode";
inline constexpr char termBOMVariation[] = "termBOMVariation";
inline constexpr char termBOMBrand[] = "termBOMBrand";
inline constexpr char termBOMQty[] = "termBOMQty";
inline constexpr char termBOMUnit[] = "termBOMUnit";
inline constexpr char termBOMPrice[] = "termBOMPrice";
inline constexpr char termBOMTotal[] = "termBOMTotal";
inline constexpr char termBOMTaxCode[] = "termBOMTaxCode";
inline constexpr char invoiceCategories[] = "VendaroInvoiceCategories";
inline constexpr char statuses[] = "VendaroStatuses";
inline constexpr char contactTypes[] = "VendaroContactTypes";
inline constexpr char selectedStatus[] = "selectedStatus";
inline constexpr char flagColours[] = "VendaroFlagColours";
inline constexpr char orderTableDateColumn[] = "orderTableDateColumn";
inline constexpr char orderTableCodeColumn[] = "orderTableCodeColumn";
inline constexpr char orderTableTitleColumn[] = "orderTableTitleColumn";
inline constexpr char orderTableContactColumn[] = "orderTableContactColumn";
inline constexpr char orderTableStatusColumn[] = "orderTableStatusColumn";
inline constexpr char bomTableCodeColumn[] = "BOMTableCodeColumn";
inline constexpr char bomTableTitleColumn[] = "BOMTableTitleColumn";
inline constexpr char bomTableVariationColumn[] = "BOMTableVariationColumn";
inline constexpr char bomTableBrandColumn[] = "BOMTableBrandColumn";
inline constexpr char bomTableUnitColumn[] = "BOMTableUnitColumn";
inline constexpr char bomTableTaxColumn[] = "BOMTableTaxColumn";
inline constexpr char orderManagerFilter[] = "orderManagerFilter";
inline constexpr char chosenTemplate[] = "chosenTemplate";
inline constexpr char askAboutUpgrading[] = "askAboutUpgrading";
inline constexpr char dontShowTip[] = "dontShowTip";
inline constexpr char tipNumber[] = "tipNumber";
inline constexpr char automaticUpdateCheck[] = "automaticUpdateCheck";
/// Where updates are asked for; nothing is asked while it is absent.
inline constexpr char updateEndpoint[] = "updateEndpoint";
/// Files and folders of vCards that people are taken from: a list of paths.
inline constexpr char addressBook[] = "addressBook";
/// Of the database, not of the user.
inline constexpr char dbName[] = "dbName";
} // namespace settings

/// The committed store. Values are seen at once and reach the disk soon after (and for certain at quit).
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// The value, a registered default, or nothing.
    virtual const PlistValue* value(std::string_view key) const = 0;
    virtual void set(std::string_view key, PlistValue value) = 0;
    virtual void remove(std::string_view key) = 0;
    /// Values answered while nothing was set; they are not written.
    virtual void registerDefault(std::string_view key, std::string_view text) = 0;
    /// What is stored under the key is of a kind nobody can use, and something else counts instead: it is kept and the person told,
    /// once. Setting a value of another kind than the stored one does the same by itself.
    virtual void keepUnusable(std::string_view key) = 0;

    /// The value as text: nothing when absent or when it is no text.
    std::optional<std::string> text(std::string_view key) const;
    /// True for the texts "YES" and "1" and for a true flag.
    bool flag(std::string_view key) const;
    void setText(std::string_view key, std::string_view text);
};

/// What the settings form answers, edited values included.
class SettingsForm {
public:
    virtual ~SettingsForm() = default;
    virtual std::string getCurrency() const = 0;
    virtual std::string getCurrencyCode() const = 0;
    virtual std::string getOrderPrefix() const = 0;
    virtual std::string getItemPrefix() const = 0;
    virtual std::string getContactPrefix() const = 0;
    virtual std::string getStockWarn() const = 0;
    virtual std::string getTermOrder() const = 0;
    virtual std::string getTermItem() const = 0;
    virtual std::string getTaxStatement() const = 0;
    virtual std::string getDbLocation() const = 0;
    /// The rate of the first row of the tax table with exactly this code, or nothing.
    virtual std::optional<std::string> getTaxRateForCode(std::string_view code) const = 0;
    virtual std::optional<std::string> getRateForShipping() const = 0;
    /// The lines of the list; an empty text gives one empty entry.
    virtual QStringList getStatusList() const = 0;
    virtual QStringList getInvoiceCategoryList() const = 0;
    /// Nothing when the text is empty.
    virtual std::optional<QStringList> getContactTypeList() const = 0;
    virtual bool getDefaultSortNew() const = 0;
    virtual bool isUKFormat() const = 0;
    virtual bool handlesTax() const = 0;
    virtual std::string getDatabaseName() const = 0;
};
