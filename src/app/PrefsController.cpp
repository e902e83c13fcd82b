#include "app/PrefsController.h"

#include "app/Places.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "documents/Notepad.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "orders/Order.h"
#include "storage/qvDataSource.h"

#include <QDir>
#include <QFileInfo>

#include <span>

namespace {

constexpr char defaultDatabaseName[] = "vendarodatabase";

/// A switch of the form and the list column it shows or hides.
struct ColumnSwitch {
    FlagField PrefsForm::*flag;
    const char* column;
};
constexpr std::array orderColumnSwitches {
    ColumnSwitch {&PrefsForm::orderDateColumn, "date"},
    ColumnSwitch {&PrefsForm::orderCodeColumn, "ordernum"},
    ColumnSwitch {&PrefsForm::orderTitleColumn, "title"},
    ColumnSwitch {&PrefsForm::orderContactColumn, "contactname"},
    ColumnSwitch {&PrefsForm::orderStatusColumn, "status"},
};
constexpr std::array lineColumnSwitches {
    ColumnSwitch {&PrefsForm::lineCodeColumn, "code"},
    ColumnSwitch {&PrefsForm::lineTitleColumn, "item"},
    ColumnSwitch {&PrefsForm::lineVariationColumn, "variation"},
    ColumnSwitch {&PrefsForm::lineBrandColumn, "brand"},
    ColumnSwitch {&PrefsForm::lineUnitColumn, "unit"},
    ColumnSwitch {&PrefsForm::lineTaxColumn, "taxcode"},
};

/// A heading of the line table and its column.
struct ColumnHeading {
    TextField PrefsForm::*heading;
    const char* column;
};
constexpr std::array lineHeadings {
    ColumnHeading {&PrefsForm::headingCode, "code"},
    ColumnHeading {&PrefsForm::headingItem, "item"},
    ColumnHeading {&PrefsForm::headingVariation, "variation"},
    ColumnHeading {&PrefsForm::headingBrand, "brand"},
    ColumnHeading {&PrefsForm::headingUnit, "unit"},
    ColumnHeading {&PrefsForm::headingTaxCode, "taxcode"},
    ColumnHeading {&PrefsForm::headingQty, "qty"},
    ColumnHeading {&PrefsForm::headingPrice, "cost"},
    ColumnHeading {&PrefsForm::headingTotal, "total"},
};

constexpr std::array words {&PrefsForm::termOrder, &PrefsForm::termOrders, &PrefsForm::termItem, &PrefsForm::termItems, &PrefsForm::termBOM,
    &PrefsForm::headingItem, &PrefsForm::headingCode, &PrefsForm::headingVariation, &PrefsForm::headingBrand, &PrefsForm::headingQty,
    &PrefsForm::headingUnit, &PrefsForm::headingPrice, &PrefsForm::headingTotal, &PrefsForm::headingTaxCode};

constexpr std::array lists {&PrefsForm::invoiceCategories, &PrefsForm::statuses, &PrefsForm::contactTypes};

const std::vector<TaxRate> initialTaxRates {{"S", "standard", "20"}, {"L", "lower", "5"}, {"Z", "zero", "0"}, {"E", "exempt", "0"}};

void showColumn(qvDataSource& list, const char* identifier, bool visible)
{
    if (ListColumn* column = list.list.column(identifier))
        column->visible = visible;
}

std::string textOf(const TextField& field)
{
    return field.text().toStdString();
}

QStringList linesOf(const TextField& field)
{
    return field.text().split('\n');
}

std::string entryText(const PlistValue& entry, const char* key)
{
    const PlistValue* value = entry.find(key);
    return value ? value->asText() : std::string();
}

/// What stood there and could not be read as text stays until something takes its place.
void setEntryText(PlistValue& entry, const char* key, const std::string& text)
{
    const PlistValue* stored = entry.find(key);
    if (!stored || stored->hasText() || !text.empty())
        entry.set(key, PlistValue(text));
}

} // namespace

PrefsController::PrefsController(PrefsNeeds needs)
    : taxTable(needs.sorting, needs.beeper, needs.money, m_taxRates)
    , m_needs(std::move(needs))
    , m_store(m_needs.store)
    , m_properties(m_needs.properties)
    , m_orders(m_needs.orders)
    , m_lines(m_needs.lines)
{
    connectForm();
    connectDatabases();
    connectAddressBook();
    checkValues();
    for (const auto& switches : {std::span<const ColumnSwitch>(orderColumnSwitches), std::span<const ColumnSwitch>(lineColumnSwitches)}) {
        for (const ColumnSwitch& entry : switches)
            (form.*entry.flag).onEdited = [this] { removeHiddenColumns(); };
    }
}

void PrefsController::registerDefaults()
{
    m_store.registerDefault(settings::completeStatus, Order::usualCompleteStatus);
    m_store.registerDefault(settings::timeLoggingRate, "12.00");
    m_store.registerDefault(settings::timeLoggingUnit, "Hours");
}

void PrefsController::readDefaults()
{
    registerDefaults();
    readText(form.dbLocation, settings::dbLocation);
    readColumns();
    readTax();
    readChoices();
    readDatabaseProperties();
    readOwnText(form.stockWarn, settings::stockWarn);
    for (TextField PrefsForm::*word : words)
        readOwnText(form.*word, (form.*word).name().toLatin1());
    applyBOMTableHeadingChanges();
    readOwnText(form.invoiceCategories, settings::invoiceCategories);
    readOwnText(form.statuses, settings::statuses);
    readText(form.contactTypes, settings::contactTypes);
    readAddressBook();
    readOwnDefaults();
    Q_EMIT wordsChanged();
    m_needs.notepad.load();
    populateLists();
}

void PrefsController::readText(TextField& field, const char* key)
{
    if (const std::optional<std::string> text = m_store.text(key))
        field.setText(QString::fromStdString(*text));
}

void PrefsController::readOwnText(TextField& field, const char* key)
{
    if (m_store.text(key))
        readText(field, key);
    else
        m_store.setText(key, textOf(field));
}

void PrefsController::readColumns()
{
    const auto read = [this](const ColumnSwitch& entry) {
        FlagField& flag = form.*entry.flag;
        if (const std::optional<std::string> text = m_store.text(flag.name().toStdString()))
            flag.setOn(*text == "YES");
    };
    std::for_each(orderColumnSwitches.begin(), orderColumnSwitches.end(), read);
    std::for_each(lineColumnSwitches.begin(), lineColumnSwitches.end(), read);
}

void PrefsController::removeHiddenColumns()
{
    for (const ColumnSwitch& entry : orderColumnSwitches)
        showColumn(m_orders, entry.column, (form.*entry.flag).isOn());
    // The status column only ever goes while the contact column is there.
    if (!form.orderContactColumn.isOn())
        showColumn(m_orders, "status", true);
    for (const ColumnSwitch& entry : lineColumnSwitches)
        showColumn(m_lines, entry.column, (form.*entry.flag).isOn());
    if (!form.handlesTax.isOn())
        showColumn(m_lines, "taxcode", false);
    m_orders.columnsChanged();
    m_lines.columnsChanged();
}

void PrefsController::readTax()
{
    readOwnText(form.taxStatement, settings::taxStatement);
    readTaxRates();
    readOwnText(form.taxShipping, settings::taxShipping);
    readHandlesTax();
    readPricesInclusive();
}

void PrefsController::readHandlesTax()
{
    form.handlesTax.setOn(m_store.text(settings::handlesTax) == "YES");
    enableTaxControls();
    removeHiddenColumns();
}

void PrefsController::readTaxRates()
{
    m_taxRates = initialTaxRates;
    const PlistValue* stored = m_store.value(settings::taxRates);
    if (stored && stored->isArray()) {
        m_taxRates.clear();
        for (const PlistValue& entry : stored->array()) {
            if (entry.isDict())
                m_taxRates.push_back({entryText(entry, "code"), entryText(entry, "description"), entryText(entry, "rate"), entry});
            else
                m_store.keepUnusable(settings::taxRates);
        }
    } else {
        if (stored)
            m_store.keepUnusable(settings::taxRates);
        if (const std::optional<std::string> older = m_store.text(settings::taxRate))
            m_taxRates.front().rate = *older;
    }
    writeStandardRate();
    Q_EMIT taxRatesChanged();
}

/// Whether nobody ever saved or edited how tax is handled.
bool PrefsController::isTaxUntouched() const
{
    return !m_store.value(settings::taxRates) && !m_store.value(settings::handlesTax) && m_taxRates == initialTaxRates;
}

void PrefsController::writeStandardRate()
{
    for (const TaxRate& row : m_taxRates) {
        if (row.code == "S" || row.code == "s")
            m_store.setText(settings::taxRate, row.rate);
    }
}

void PrefsController::readPricesInclusive()
{
    if (!m_store.text(settings::pricesTaxInclusive)) {
        // A fresh installation works without tax in its prices; one that handled tax already keeps them with tax.
        m_store.setText(settings::pricesTaxInclusive, m_store.text(settings::handlesTax) ? "0" : "1");
    }
    const bool exclusive = m_store.text(settings::pricesTaxInclusive) == "1";
    form.pricesTaxInclusive.setIndex(exclusive ? PrefsForm::exclusive : PrefsForm::inclusive);
    showPrices();
}

void PrefsController::showPrices()
{
    const bool exclusive = form.pricesTaxInclusive.index() == PrefsForm::exclusive;
    form.pricesTaxInclusive.setCaption(exclusive ? "(Exclusive)" : "(Inclusive)");
}

void PrefsController::enableTaxControls()
{
    const bool handled = form.handlesTax.isOn();
    form.taxStatement.setEnabled(handled);
    form.taxShipping.setEnabled(handled);
    form.pricesTaxInclusive.setEnabled(handled);
    form.addTaxRate.setEnabled(handled);
    form.deleteTaxRate.setEnabled(handled);
}

void PrefsController::readChoices()
{
    const auto format = m_store.text(settings::dateFormat);
    m_dateFormatChosen = format.has_value();
    if (format)
        form.dateFormat.setIndex(*format == "1" ? PrefsForm::monthFirst : PrefsForm::dayFirst);
    if (const auto sort = m_store.text(settings::defaultSort))
        form.defaultSort.setIndex(*sort == "1" ? PrefsForm::oldestFirst : PrefsForm::newestFirst);
    if (const auto codes = m_store.text(settings::codeSort)) {
        // Anything but the other two choices means by digits.
        const int choice = numbers::leadingInt(*codes);
        form.codeSort.setIndex(choice == PrefsForm::asText || choice == PrefsForm::byCreation ? choice : PrefsForm::byDigits);
    }
    showDateFormat();
}

void PrefsController::switchDateFormat()
{
    showDateFormat();
    Q_EMIT dateFormatChanged();
}

void PrefsController::showDateFormat()
{
    form.dateFormat.setCaption(isUKFormat() ? "dd/mm/yy" : "mm/dd/yy");
}

void PrefsController::chooseDateFormat(PrefsForm::DateFormatChoice choice)
{
    form.dateFormat.setIndex(choice);
    m_dateFormatChosen = true;
    writeDateFormat();
    switchDateFormat();
}

void PrefsController::writeDateFormat()
{
    if (m_dateFormatChosen)
        m_store.setText(settings::dateFormat, isUKFormat() ? "0" : "1");
}

void PrefsController::applyBOMTableHeadingChanges()
{
    for (const ColumnHeading& entry : lineHeadings) {
        if (ListColumn* column = m_lines.list.column(entry.column))
            column->heading = (form.*entry.heading).text();
    }
    m_lines.columnsChanged();
}

void PrefsController::populateLists()
{
    offerStatuses();
    Q_EMIT listsChanged();
}

void PrefsController::makeDefaultFolders()
{
    if (!folders::make(expanded(places::defaultDatabase)))
        logLine("couldn't create the default database's folder");
}

void PrefsController::setDbLocation(const QString& path)
{
    form.dbLocation.setText(path);
    m_store.setText(settings::dbLocation, path.toStdString());
}

void PrefsController::commit(const TextField& field)
{
    m_store.setText(field.name().toStdString(), textOf(field));
}

void PrefsController::writeTaxRates()
{
    PlistValue rows = PlistValue::makeArray();
    for (const TaxRate& rate : m_taxRates) {
        PlistValue row = rate.stored;
        setEntryText(row, "code", rate.code);
        setEntryText(row, "description", rate.description);
        setEntryText(row, "rate", rate.rate);
        rows.append(std::move(row));
    }
    m_store.set(settings::taxRates, std::move(rows));
}

void PrefsController::OKButton()
{
    form.close();
    writeStandardRate();
    commit(form.taxStatement);
    commit(form.taxShipping);
    writeDatabaseTexts();
    writeDateFormat();
    m_store.setText(settings::defaultSort, getDefaultSortNew() ? "0" : "1");
    m_store.setText(settings::codeSort, std::to_string(form.codeSort.index()));
    commit(form.stockWarn);
    logLine("Saving terms");
    for (TextField PrefsForm::*word : words)
        commit(form.*word);
    logLine("Saving tax rates");
    writeTaxRates();
    // Switching tax handling off is never stored: the next start turns it on again.
    if (form.handlesTax.isOn())
        m_store.setText(settings::handlesTax, "YES");
    const bool exclusive = form.pricesTaxInclusive.index() == PrefsForm::exclusive;
    m_store.setText(settings::pricesTaxInclusive, exclusive ? "1" : "0");
    showPrices();
    logLine("Saving lists");
    for (TextField PrefsForm::*list : lists)
        commit(form.*list);
    logLine("Saving notepad");
    makeDefaultFolders();
    if (!form.dbLocation.text().isEmpty())
        commit(form.dbLocation);
    for (const ColumnSwitch& entry : orderColumnSwitches)
        m_store.setText((form.*entry.flag).name().toStdString(), (form.*entry.flag).isOn() ? "YES" : "NO");
    for (const ColumnSwitch& entry : lineColumnSwitches)
        m_store.setText((form.*entry.flag).name().toStdString(), (form.*entry.flag).isOn() ? "YES" : "NO");
    // What cannot be saved stays in the notepad, which says why.
    m_needs.notepad.save();
    populateLists();
    applyBOMTableHeadingChanges();
}

std::string PrefsController::getCurrency() const
{
    return textOf(form.currency);
}
std::string PrefsController::getCurrencyCode() const
{
    return textOf(form.currencyCode);
}
std::string PrefsController::getOrderPrefix() const
{
    return textOf(form.orderPrefix);
}
std::string PrefsController::getItemPrefix() const
{
    return textOf(form.itemPrefix);
}
std::string PrefsController::getContactPrefix() const
{
    return textOf(form.contactPrefix);
}
std::string PrefsController::getStockWarn() const
{
    return textOf(form.stockWarn);
}
std::string PrefsController::getTermOrder() const
{
    return textOf(form.termOrder);
}
std::string PrefsController::getTermItem() const
{
    return textOf(form.termItem);
}

std::string PrefsController::getTaxStatement() const
{
    return form.taxStatement.text().trimmed().toStdString();
}

std::string PrefsController::getDbLocation() const
{
    return form.dbLocation.text().isEmpty() ? places::defaultDatabase : textOf(form.dbLocation);
}

QString PrefsController::expanded(const QString& path) const
{
    return QDir::cleanPath(folders::expandHome(path, m_needs.user.home()));
}

QString PrefsController::actualDbLocation() const
{
    return expanded(m_actualDbLocation);
}

std::optional<std::string> PrefsController::getTaxRateForCode(std::string_view code) const
{
    const auto found = std::find_if(m_taxRates.begin(), m_taxRates.end(), [&](const TaxRate& row) { return row.code == code; });
    return found == m_taxRates.end() ? std::nullopt : std::optional(found->rate);
}

std::optional<std::string> PrefsController::getRateForShipping() const
{
    return getTaxRateForCode(textOf(form.taxShipping));
}

QStringList PrefsController::getStatusList() const
{
    return linesOf(form.statuses);
}

QStringList PrefsController::getInvoiceCategoryList() const
{
    return linesOf(form.invoiceCategories);
}

std::optional<QStringList> PrefsController::getContactTypeList() const
{
    return form.contactTypes.text().isEmpty() ? std::nullopt : std::optional(linesOf(form.contactTypes));
}

bool PrefsController::getDefaultSortNew() const
{
    return form.defaultSort.index() != PrefsForm::oldestFirst;
}

bool PrefsController::isUKFormat() const
{
    return form.dateFormat.index() != PrefsForm::monthFirst;
}

bool PrefsController::handlesTax() const
{
    return form.handlesTax.isOn();
}

std::string PrefsController::getDatabaseName() const
{
    if (const auto name = m_properties.objectForKey(actualDbLocation(), settings::dbName))
        return *name;
    const QString name = QFileInfo(actualDbLocation()).completeBaseName();
    return name == defaultDatabaseName ? std::string() : name.toStdString();
}
