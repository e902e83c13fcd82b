#include "contacts/VcardBook.h"

#include "contacts/VcardReader.h"
#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/SafeFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// More about one file would bury what it is about.
constexpr std::size_t mostTroubles = 10;

void tellTroubles(AddressBookPeople& book, const QString& path, const std::vector<VcardTrouble>& troubles)
{
    for (std::size_t n = 0; n < std::min(troubles.size(), mostTroubles); ++n)
        book.troubles += fillText(localText("%@, line %@: %@"), {path, QString::number(troubles[n].line), troubles[n].sentence});
    if (troubles.size() > mostTroubles)
        book.troubles += fillText(localText("%@: %@ further lines like these."), {path, QString::number(troubles.size() - mostTroubles)});
}

void readFile(AddressBookPeople& book, const QString& path)
{
    const FileBytes file = readWholeFile(path.toStdString());
    if (file.trouble != ReadTrouble::none) {
        book.troubles += fillText(localText("The address book %@ cannot be read: %@"), {path, QString::fromStdString(file.reason)});
        return;
    }
    VcardPeople read = readVcards(file.bytes);
    if (!read.hasCards)
        book.troubles += fillText(localText("%@ holds no vCards."), {path});
    tellTroubles(book, path, read.troubles);
    std::move(read.people.begin(), read.people.end(), std::back_inserter(book.people));
}

void readFolder(AddressBookPeople& book, const QString& path)
{
    const QDir folder(path);
    if (!folder.isReadable()) {
        book.troubles += fillText(localText("The folder %@ cannot be read."), {path});
        return;
    }
    for (const QString& name : folder.entryList({"*.vcf", "*.vcard"}, QDir::Files, QDir::Name))
        readFile(book, folder.filePath(name));
}

} // namespace

AddressBookPeople VcardBook::people() const
{
    AddressBookPeople book;
    for (const QString& path : m_paths()) {
        if (QFileInfo(path).isDir())
            readFolder(book, path);
        else
            readFile(book, path);
    }
    return book;
}
