#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/LookChoice.h"
#include "ui/settings/SettingsPage.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int addressWidth = 360;

} // namespace

SettingsPage* settingsPages::makeLook(PrefsController& preferences)
{
    auto* page = new SettingsPage(SettingsPage::tr("Look"));
    for (const LookChoice& choice : lookChoices()) {
        auto* button = new QRadioButton(QString(choice.title).remove('&'));
        button->setObjectName("look-" + Theme::nameOf(choice.mode));
        page->column()->addWidget(button);
        QObject::connect(button, &QRadioButton::clicked, page, [mode = choice.mode] { chooseLook(mode); });
        // It may have been chosen in the menu since.
        QObject::connect(page, &SettingsPage::shown, button, [button, mode = choice.mode] {
            if (Theme::current().mode() == mode)
                button->setChecked(true);
        });
    }
    page->addNote(SettingsPage::tr("Documents stay white in any look."));
    page->addGroup(SettingsPage::tr("When the program starts"));
    auto* noTips = settingsField<QCheckBox>(preferences.form.prefDontShowTips, SettingsPage::tr("Don't show tips"));
    page->column()->addWidget(noTips, 0, Qt::AlignLeft);
    auto* checks = settingsField<QCheckBox>(preferences.form.automaticUpdateCheck, SettingsPage::tr("Check for updates"));
    page->column()->addWidget(checks, 0, Qt::AlignLeft);
    page->addGroup(SettingsPage::tr("Updates"));
    auto* address = settingsField<QLineEdit>(preferences.form.updateEndpoint);
    address->setPlaceholderText("https://");
    page->addForm()->addRow(SettingsPage::tr("Address to ask"), address, addressWidth);
    page->addNote(SettingsPage::tr("While there is no address, nothing is asked of the network."));
    page->column()->addStretch(1);
    return page;
}
