#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/settings/SettingsPage.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int shortField = 90;
constexpr int choiceWidth = 240;

Label* remark(const QString& text)
{
    auto* words = new Label(text, LabelSize::body, LabelTone::secondary);
    words->setWordWrap(true);
    return words;
}

QWidget* shortLine(const TextField& field)
{
    auto* line = settingsField<QLineEdit>(field);
    line->setFixedWidth(shortField);
    return line;
}

ChoiceBox* wideChoice(const ChoiceField& field)
{
    auto* choice = settingsField<ChoiceBox>(field);
    choice->setFixedWidth(choiceWidth);
    return choice;
}

} // namespace

SettingsPage* settingsPages::makeGeneral(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("General"));
    FormGrid* money = page->addForm();
    money->addRow(SettingsPage::tr("Currency symbol"), {shortLine(form.currency), remark(SettingsPage::tr("as on documents"))});
    money->addRow(
        SettingsPage::tr("Currency code"), {shortLine(form.currencyCode), remark(SettingsPage::tr("three letters, as in exports"))});

    page->addGroup(SettingsPage::tr("Numbers begin with"));
    FormGrid* prefixes = page->addForm();
    prefixes->addRow(SettingsPage::tr("Order numbers"), shortLine(form.orderPrefix), shortField);
    prefixes->addRow(SettingsPage::tr("Item codes"), shortLine(form.itemPrefix), shortField);
    prefixes->addRow(SettingsPage::tr("Contact references"), shortLine(form.contactPrefix), shortField);

    page->addGroup(SettingsPage::tr("Dates and lists"));
    FormGrid* lists = page->addForm();
    lists->addRow(SettingsPage::tr("Dates"), {wideChoice(form.dateFormat), settingsCaption(form.dateFormat)});
    lists->addRow(SettingsPage::tr("Lists"), {wideChoice(form.defaultSort), remark(SettingsPage::tr("on the next opening"))});
    lists->addRow(SettingsPage::tr("Codes and numbers"), {wideChoice(form.codeSort), remark(SettingsPage::tr("after OK"))});

    page->addGroup(SettingsPage::tr("Stock"));
    FormGrid* stock = page->addForm();
    auto* warnLevel = settingsField<NumberField>(form.stockWarn);
    warnLevel->setFixedWidth(shortField);
    stock->addRow(SettingsPage::tr("Warn at"), {warnLevel, remark(SettingsPage::tr("in stock, for new items"))});
    page->column()->addStretch(1);
    return page;
}
