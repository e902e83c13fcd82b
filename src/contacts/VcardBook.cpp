#include "contacts/VcardBook.h"

#include "contacts/VcardReader.h"
#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

class BookReader {
public:
    explicit BookReader(const GoesOn& goesOn) : m_goesOn(goesOn) { }

    AddressBookPeople read(const QStringList& paths)
    {
        for (const QString& path : paths) {
            if (QFileInfo(path).isDir())
                addFolder(path);
            else
                add(path);
        }
        for (const File& file : m_files) {
            readFile(file);
            m_bytesRead += file.size;
            m_book.wasStopped = m_book.wasStopped || !m_goesOn(share(0));
            if (m_book.wasStopped)
                break;
        }
        return std::move(m_book);
    }

private:
    struct File {
        QString path;
        double size;
    };

    void add(const QString& path)
    {
        m_files.push_back({path, static_cast<double>(QFileInfo(path).size())});
        m_bytes += m_files.back().size;
    }

    void addFolder(const QString& path)
    {
        const QDir folder(path);
        if (!folder.isReadable()) {
            m_book.troubles += fillText(localText("The folder %@ cannot be read."), {path});
            return;
        }
        for (const QString& name : folder.entryList({"*.vcf", "*.vcard"}, QDir::Files, QDir::Name))
            add(folder.filePath(name));
    }

    void readFile(const File& file)
    {
        const FileBytes contents = readWholeFile(file.path.toStdString());
        if (contents.trouble != ReadTrouble::none) {
            m_book.troubles +=
                fillText(localText("The address book %@ cannot be read: %@"), {file.path, QString::fromStdString(contents.reason)});
            return;
        }
        VcardPeople read = readVcards(contents.bytes, [&](double part) { return m_goesOn(share(part * file.size)); });
        if (!read.hasCards)
            m_book.troubles += fillText(localText("%@ holds no vCards."), {file.path});
        tellTroubles(file.path, read);
        std::move(read.people.begin(), read.people.end(), std::back_inserter(m_book.people));
        m_book.wasStopped = read.wasStopped;
    }

    void tellTroubles(const QString& path, const VcardPeople& read)
    {
        for (const VcardTrouble& trouble : read.troubles)
            m_book.troubles += fillText(localText("%@, line %@: %@"), {path, QString::number(trouble.line), trouble.sentence});
        if (read.furtherTroubles > 0)
            m_book.troubles += fillText(localText("%@: %@ further lines like these."), {path, QString::number(read.furtherTroubles)});
    }

    /// Of all bytes, with so many of the file that is being read.
    double share(double inFile) const { return m_bytes > 0 ? std::min(1.0, (m_bytesRead + inFile) / m_bytes) : 1; }

    const GoesOn& m_goesOn;
    AddressBookPeople m_book;
    std::vector<File> m_files;
    double m_bytes = 0;
    double m_bytesRead = 0;
};

} // namespace

AddressBookPeople VcardBook::people(const GoesOn& goesOn) const
{
    return BookReader(goesOn).read(m_paths());
}
