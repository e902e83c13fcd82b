// A database's copy for reading elsewhere.
#include "storage/DatabaseFolder.h"

#include "foundation/Folders.h"
#include "foundation/SafeFile.h"

#include <QFileInfo>

Result<void> DatabaseFolder::copyTo(const QString& target)
{
    drain();
    const QString from = QFileInfo(m_location).canonicalFilePath();
    const QString into = QFileInfo(QFileInfo(target).absolutePath()).canonicalFilePath();
    if (from.isEmpty())
        return Error {m_location.toStdString() + " is not there"};
    if ((into + '/').startsWith(from + '/'))
        return Error {"a database cannot be copied into itself"};
    if (QFileInfo::exists(target))
        return Error {target.toStdString() + " exists already"};
    // A name that nothing has: what stands there already is somebody else's.
    QString unfinished = target + ".unfinished";
    for (int i = 1; QFileInfo::exists(unfinished) || QFileInfo(unfinished).isSymLink(); ++i)
        unfinished = target + ".unfinished-" + QString::number(i);
    if (Result<void> copied = folders::copyTree(from, unfinished); !copied)
        return copied;
    Result<void> copied = writeFileSafely((unfinished + "/lock.xml").toStdString(), m_lock.contents(DatabaseLock::offlineReason));
    if (copied)
        copied = folders::move(unfinished, target);
    if (!copied)
        folders::remove(unfinished);
    return copied;
}
