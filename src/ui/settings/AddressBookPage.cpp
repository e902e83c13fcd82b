#include "ui/settings/Pages.h"

#include "app/PrefsController.h"
#include "ui/kit/Button.h"
#include "ui/kit/PickList.h"
#include "ui/settings/SettingsPage.h"

#include <QVBoxLayout>

namespace {

constexpr int bookListHeight = 200;

} // namespace

SettingsPage* settingsPages::makeAddressBook(PrefsController& preferences)
{
    const PrefsForm& form = preferences.form;
    auto* page = new SettingsPage(SettingsPage::tr("Address Book"));
    page->addNote(
        SettingsPage::tr("People can be made contacts from these vCard files, and from all vCard files of these folders. Nothing is "
                         "written into them."));
    auto* list = settingsField<PickList>(form.addressBook, SettingsPage::tr("Files and folders"));
    list->setMinimumHeight(bookListHeight);
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(settingsField<Button>(form.addAddressBookFile, SettingsPage::tr("Add File…")));
    buttons->addWidget(settingsField<Button>(form.addAddressBookFolder, SettingsPage::tr("Add Folder…")));
    buttons->addWidget(settingsField<Button>(form.removeFromAddressBook, SettingsPage::tr("Remove")));
    buttons->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(list, 1);
    row->addLayout(buttons);
    page->column()->addLayout(row, 1);
    return page;
}
