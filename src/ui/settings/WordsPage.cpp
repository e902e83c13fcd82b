#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/settings/SettingsPage.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace {

struct WordRow {
    QString label;
    const TextField& field;
};

void addWords(FormGrid* form, std::initializer_list<WordRow> rows)
{
    for (const WordRow& row : rows)
        form->addRow(row.label, settingsField<QLineEdit>(row.field));
}

} // namespace

SettingsPage* settingsPages::makeWords(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Words"));
    const auto [words, headings] = page->addForms(SettingsPage::tr("What you call"), SettingsPage::tr("Headings of the lines"));
    addWords(words,
        {{SettingsPage::tr("An order"), form.termOrder}, {SettingsPage::tr("Orders"), form.termOrders},
            {SettingsPage::tr("An item"), form.termItem}, {SettingsPage::tr("Items"), form.termItems},
            {SettingsPage::tr("The lines"), form.termBOM}});
    addWords(headings,
        {{SettingsPage::tr("Item"), form.headingItem}, {SettingsPage::tr("Code"), form.headingCode},
            {SettingsPage::tr("Variation"), form.headingVariation}, {SettingsPage::tr("Brand"), form.headingBrand},
            {SettingsPage::tr("Quantity"), form.headingQty}, {SettingsPage::tr("Unit"), form.headingUnit},
            {SettingsPage::tr("Price"), form.headingPrice}, {SettingsPage::tr("Total"), form.headingTotal},
            {SettingsPage::tr("Tax code"), form.headingTaxCode}});
    page->addNote(SettingsPage::tr("Words change as they are typed, headings with OK."));
    page->column()->addStretch(1);
    return page;
}
