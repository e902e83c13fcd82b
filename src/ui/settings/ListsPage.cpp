#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/kit/Fields.h"
#include "ui/kit/Label.h"
#include "ui/settings/SettingsPage.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

constexpr int listHeight = 220;

QLayout* makeListEditor(const QString& title, const TextField& field, const QString& note)
{
    auto* editor = settingsField<QPlainTextEdit>(field);
    editor->setTabChangesFocus(true);
    editor->setLineWrapMode(QPlainTextEdit::NoWrap);
    editor->setMinimumHeight(listHeight);
    editor->setAccessibleName(title);
    auto* heading = new Label(title, LabelSize::group);
    heading->setBuddy(editor);
    auto* below = new Label(note, LabelSize::small, LabelTone::secondary);
    below->setWordWrap(true);
    below->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* column = new QVBoxLayout;
    column->setSpacing(8);
    column->addWidget(heading);
    column->addWidget(editor, 1);
    column->addWidget(below);
    return column;
}

} // namespace

SettingsPage* settingsPages::makeLists(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Lists"));
    page->addNote(SettingsPage::tr("One entry a line. With OK they reach the lists that are chosen from."));
    page->column()->addSpacing(8);
    auto* editors = new QHBoxLayout;
    editors->setSpacing(16);
    editors->addLayout(makeListEditor(SettingsPage::tr("Statuses"), form.statuses, SettingsPage::tr("What an order goes through.")), 1);
    editors->addLayout(
        makeListEditor(SettingsPage::tr("Bill categories"), form.invoiceCategories, SettingsPage::tr("What bills are for.")), 1);
    editors->addLayout(
        makeListEditor(SettingsPage::tr("Contact types"), form.contactTypes, SettingsPage::tr("Besides the built-in ones.")), 1);
    page->column()->addLayout(editors, 1);
    page->column()->addSpacing(8);
    FormGrid* complete = page->addForm();
    auto* status = settingsField<ChoiceBox>(form.completeStatus);
    complete->addRow(SettingsPage::tr("Finished orders are"), status, 240);
    return page;
}
