#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/settings/SettingsPage.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace {

struct ColumnBox {
    QString title;
    const FlagField& field;
};

void addBoxes(FormGrid* form, std::initializer_list<ColumnBox> boxes)
{
    for (const ColumnBox& box : boxes)
        form->addWide(settingsField<QCheckBox>(box.field, box.title));
}

} // namespace

SettingsPage* settingsPages::makeColumns(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Columns"));
    const auto [orders, lines] = page->addForms(SettingsPage::tr("In the list of orders"), SettingsPage::tr("In the lines of an order"));
    addBoxes(orders,
        {{SettingsPage::tr("Date"), form.orderDateColumn}, {SettingsPage::tr("Number"), form.orderCodeColumn},
            {SettingsPage::tr("Title"), form.orderTitleColumn}, {SettingsPage::tr("Contact"), form.orderContactColumn},
            {SettingsPage::tr("Status"), form.orderStatusColumn}});
    addBoxes(lines,
        {{SettingsPage::tr("Code"), form.lineCodeColumn}, {SettingsPage::tr("Title"), form.lineTitleColumn},
            {SettingsPage::tr("Variation"), form.lineVariationColumn}, {SettingsPage::tr("Brand"), form.lineBrandColumn},
            {SettingsPage::tr("Unit"), form.lineUnitColumn}, {SettingsPage::tr("Tax code"), form.lineTaxColumn}});
    page->column()->addSpacing(8);
    page->addNote(
        SettingsPage::tr("While the contact is hidden, the status is always shown. The tax code is shown only where tax is handled."));
    page->column()->addStretch(1);
    return page;
}
