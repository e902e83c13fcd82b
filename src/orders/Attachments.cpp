#include "orders/Attachments.h"

#include "foundation/Folders.h"
#include "foundation/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// A copy on its way; the one of a broken-off copy is replaced by the next.
constexpr char unfinishedName[] = ".vendaro-attachment.tmp";

bool isUnfinishedName(const QString& name)
{
    return name.startsWith(".vendaro-") && name.endsWith(".tmp");
}

Error attachmentError(const QString& path, const char* reason)
{
    return {path.toStdString() + " was not attached: " + reason};
}

/// Copies into a new file that appears under its name only when it is whole.
Result<void> copyIntoFolder(const QString& source, const QString& target)
{
    const QString folder = QFileInfo(target).path();
    const QString unfinished = folder + '/' + unfinishedName;
    QFile::remove(unfinished);
    if (!QFile::copy(source, unfinished) || !flushFile(unfinished.toStdString())) {
        QFile::remove(unfinished);
        return attachmentError(source, "it could not be copied into the database folder.");
    }
    if (!folders::move(unfinished, target)) {
        QFile::remove(unfinished);
        return attachmentError(source, "the copy could not be put into its place.");
    }
    return {};
}

} // namespace

Attachments::Attachments(FolderSource databaseFolder, Keeper keeper)
    : m_databaseFolder(std::move(databaseFolder))
    , m_keeper(std::move(keeper))
{
}

QString Attachments::folder(int orderId) const
{
    const QString all = folders::resolveIgnoringCase(m_databaseFolder(), "Attachments");
    return folders::resolveIgnoringCase(all, "order" + QString::number(orderId));
}

Result<void> Attachments::file(int orderId, const QString& path) const
{
    const QFileInfo source(path);
    if (!source.exists())
        return attachmentError(path, "there is no such file.");
    if (source.isSymLink() || !source.isFile())
        return attachmentError(path, "only ordinary files can be attached, no links, folders or devices.");
    if (isUnfinishedName(source.fileName()))
        return attachmentError(path, "names like this one are kept for copies on their way.");
    const QString target = folder(orderId);
    if (!folders::make(target))
        return attachmentError(path, "the folder for this order's files could not be made.");
    const QString copy = target + '/' + source.fileName();
    if (QFileInfo::exists(copy) || QFileInfo(copy).isSymLink())
        return attachmentError(path, "a file of that name is attached already.");
    return copyIntoFolder(source.filePath(), copy);
}

int Attachments::countAttachments(int orderId) const
{
    const QStringList entries =
        QDir(folder(orderId)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    const bool desktopFile = !entries.isEmpty() && entries.first() == ".DS_Store";
    const auto unfinished = std::count_if(entries.begin(), entries.end(), isUnfinishedName);
    return static_cast<int>(entries.size() - unfinished) - (desktopFile ? 1 : 0);
}

Result<void> Attachments::deleteAttachments(int orderId) const
{
    const QString path = folder(orderId);
    return folders::mayBeThere(path) ? m_keeper(path) : Result<void>();
}

QString Attachments::statusText(int count)
{
    if (count == 0)
        return "There are no attachments";
    if (count == 1)
        return "There is 1 attachment";
    // Both pieces bring their own blank, which doubles it on both sides.
    return QString("%1 %2 %3").arg(QString("There are ")).arg(count).arg(QString(" attachments"));
}
