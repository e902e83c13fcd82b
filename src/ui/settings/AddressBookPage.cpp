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
    page->column()->addSpacing(4);
    auto* list = settingsField<PickList>(form.addressBook, SettingsPage::tr("Files and folders"));
    list->setMinimumHeight(bookListHeight);
    list->setEmptyText(
        SettingsPage::tr("No files yet. Save the contacts of your telephone or mail program as a vCard file (.vcf), and add it "
                         "here."));
    page->addListWithButtons(list,
        {settingsField<Button>(form.addAddressBookFile, SettingsPage::tr("Add File…")),
            settingsField<Button>(form.addAddressBookFolder, SettingsPage::tr("Add Folder…")),
            settingsField<Button>(form.removeFromAddressBook, SettingsPage::tr("Remove"))});
    return page;
}
