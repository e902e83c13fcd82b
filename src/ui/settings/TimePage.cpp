#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/settings/SettingsPage.h"

#include <QVBoxLayout>

SettingsPage* settingsPages::makeTime(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Time"));
    FormGrid* fields = page->addForm();
    auto* rate = settingsField<NumberField>(form.timeRate);
    rate->setFixedWidth(110);
    fields->addRow(SettingsPage::tr("Charge"),
        {rate, new Label(SettingsPage::tr("a unit, for tasks without a rate of their own"), LabelSize::body, LabelTone::secondary)});
    fields->addRow(SettingsPage::tr("Time is logged in"), settingsField<ChoiceBox>(form.timeUnit), 160);
    page->column()->addStretch(1);
    return page;
}
