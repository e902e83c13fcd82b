#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/ListBinder.h"
#include "ui/kit/CardFrame.h"
#include "ui/kit/Fields.h"
#include "ui/kit/IconButton.h"
#include "ui/kit/Label.h"
#include "ui/kit/MessageBar.h"
#include "ui/kit/Panels.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/TableHeader.h"
#include "ui/settings/SettingsPage.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int taxFieldWidth = 220;
constexpr int taxTableHeight = 190;

/// The row that is selected in the settings is the one with the keyboard.
void showSelectedRate(RecordTable* table, const TaxRateTable& rates)
{
    if (table->currentIndex().row() != rates.selectedRate())
        table->setCurrentIndex(table->model()->index(rates.selectedRate(), 0));
}

/// A new rate begins with its code.
void editNewRate(RecordTable* table)
{
    const QModelIndex code = table->model()->index(table->model()->rowCount() - 1, 0);
    table->setFocus();
    table->setCurrentIndex(code);
    table->edit(code);
}

RecordTable* makeTaxTable(PrefsController& preferences)
{
    auto* table = new RecordTable(RecordTable::Place::card);
    table->setObjectName("taxRates");
    table->setUnit(RowDelegate::Unit::cells);
    table->setAccessibleName(SettingsPage::tr("Tax rates"));
    table->setEmptyText(SettingsPage::tr("No rates"));
    table->tableHeader()->setStretchLastSection(true);
    TaxRateTable& rates = preferences.taxTable;
    new ListBinder(rates, table);
    QObject::connect(table, &RecordTable::removalWanted, table, [&preferences] { preferences.form.deleteTaxRate.trigger(); });
    QObject::connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, table,
        [&rates](const QModelIndex& current) { rates.selectRate(current.row()); });
    // After the table was asked again and the next row was selected.
    QObject::connect(
        &preferences, &PrefsController::taxRatesChanged, table, [table, &rates] { showSelectedRate(table, rates); }, Qt::QueuedConnection);
    return table;
}

void addRates(SettingsPage* page, PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    GroupHeader* header = page->addGroup(SettingsPage::tr("Tax rates"));
    auto* add = settingsField<IconButton>(form.addTaxRate, "list-add", SettingsPage::tr("Add a rate"));
    auto* remove = settingsField<IconButton>(form.deleteTaxRate, "list-remove", SettingsPage::tr("Delete the rate"));
    header->addButton(add);
    header->addButton(remove);
    RecordTable* table = makeTaxTable(preferences);
    auto* card = new CardFrame(table);
    card->setMinimumHeight(taxTableHeight);
    page->column()->addWidget(card, 1);
    // Once the rate is there.
    QObject::connect(
        add, &QAbstractButton::clicked, table, [table] { editNewRate(table); }, Qt::QueuedConnection);
    preferences.form.follow({&form.handlesTax}, card, [card, &form] { card->setEnabled(form.handlesTax.isOn()); });

    auto* trouble = new MessageBar(MessageBar::Kind::warning);
    trouble->setObjectName("taxTrouble");
    page->column()->addWidget(trouble);
    const auto showTrouble = [trouble, &preferences] { trouble->setText(preferences.taxTable.trouble()); };
    QObject::connect(&preferences, &PrefsController::taxRatesChanged, trouble, showTrouble);
    showTrouble();
}

} // namespace

SettingsPage* settingsPages::makeTax(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Tax"));
    FormGrid* fields = page->addForm();
    fields->addRow({}, settingsField<QCheckBox>(form.handlesTax, SettingsPage::tr("Handle tax on orders and bills")));
    fields->addRow(SettingsPage::tr("Name on documents"), settingsField<QLineEdit>(form.taxStatement), taxFieldWidth);
    auto* shipping = settingsField<QLineEdit>(form.taxShipping);
    shipping->setFixedWidth(64);
    fields->addRow(SettingsPage::tr("Code for shipping"),
        {shipping, new Label(SettingsPage::tr("a code of the table below"), LabelSize::body, LabelTone::secondary)});
    auto* prices = settingsField<ChoiceBox>(form.pricesTaxInclusive);
    prices->setFixedWidth(taxFieldWidth);
    fields->addRow(SettingsPage::tr("Prices"), {prices, settingsCaption(form.pricesTaxInclusive)});
    addRates(page, preferences);
    return page;
}
