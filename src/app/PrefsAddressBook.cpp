// Which files and folders are the address book.
#include "app/PrefsController.h"

#include "desktop/TextTable.h"

#include <algorithm>

void PrefsController::connectAddressBook()
{
    form.addAddressBookFile.run = [this] { addToAddressBook(m_needs.panels.openFile(localText("Choose a vCard file"))); };
    form.addAddressBookFolder.run = [this] {
        SavePanel panel;
        panel.title = localText("Choose a folder of vCard files");
        panel.prompt = localText("Choose");
        panel.what = SavePanel::What::existingFolder;
        addToAddressBook(m_needs.panels.saveFile(panel));
    };
    form.removeFromAddressBook.run = [this] { removeFromAddressBook(); };
    form.follow({&form.addressBook}, this, [this] { form.removeFromAddressBook.setEnabled(form.addressBook.index() >= 0); });
}

void PrefsController::readAddressBook()
{
    const PlistValue* stored = m_store.value(settings::addressBook);
    if (!stored)
        return;
    const bool isUsable = stored->isArray()
        && std::all_of(stored->array().begin(), stored->array().end(), [](const PlistValue& path) { return path.hasText(); });
    if (!isUsable) {
        m_store.keepUnusable(settings::addressBook);
        return;
    }
    QStringList paths;
    for (const PlistValue& path : stored->array())
        paths += QString::fromStdString(path.asText());
    form.addressBook.setTitles(paths);
}

/// Once is enough, wherever it came from.
void PrefsController::addToAddressBook(const std::optional<QString>& path)
{
    if (!path)
        return;
    if (!form.addressBook.titles().contains(*path)) {
        form.addressBook.addTitle(*path);
        storeAddressBook();
    }
    form.addressBook.setTitle(*path);
}

void PrefsController::removeFromAddressBook()
{
    const int index = form.addressBook.index();
    QStringList paths = form.addressBook.titles();
    if (index < 0 || index >= paths.size())
        return;
    paths.removeAt(index);
    form.addressBook.setTitles(paths);
    form.addressBook.setIndex(std::min(index, static_cast<int>(paths.size()) - 1));
    storeAddressBook();
}

void PrefsController::storeAddressBook()
{
    PlistValue paths = PlistValue::makeArray();
    for (const QString& path : form.addressBook.titles())
        paths.append(PlistValue(path.toStdString()));
    m_store.set(settings::addressBook, std::move(paths));
}
