#include "storage/RecoveryStore.h"

#include "desktop/Desktop.h"
#include "foundation/Dates.h"
#include "foundation/Folders.h"
#include "foundation/SafeFile.h"

#include <QFile>
#include <QFileInfo>

Result<QString> RecoveryStore::placeFor(const QString& name)
{
    if (Result<void> made = folders::make(m_folder); !made)
        return made.error();
    QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString stamp = QString::fromStdString(dates::write(m_clock.now(), dates::stamp));
    for (int n = 0;; ++n) {
        const QString place = m_folder + '/' + stamp + (n > 0 ? "-" + QString::number(n) : QString()) + ' ' + name;
        if (!QFileInfo::exists(place))
            return place;
    }
}

Result<QString> RecoveryStore::keepCopy(const QString& path)
{
    const Result<QString> place = placeFor(QFileInfo(path).fileName());
    if (!place)
        return place;
    const FileBytes file = readWholeFile(path.toStdString());
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    if (Result<void> written = writeFileSafely(place.value().toStdString(), file.bytes); !written)
        return written.error();
    return place;
}

Result<void> RecoveryStore::moveIn(const QString& path)
{
    const Result<QString> place = placeFor(QFileInfo(path).fileName());
    return place ? folders::move(path, place.value()) : Result<void>(place.error());
}

Result<QString> RecoveryStore::keepBytes(const QString& name, std::string_view bytes)
{
    const Result<QString> place = placeFor(name);
    if (!place)
        return place;
    if (Result<void> written = writeFileSafely(place.value().toStdString(), bytes); !written)
        return written.error();
    return place;
}
