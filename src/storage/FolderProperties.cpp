#include "storage/FolderProperties.h"

#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/RecoveryStore.h"

namespace {

QString infoPath(const QString& folder)
{
    return folder + "/info.plist";
}

} // namespace

std::optional<std::string> FolderProperties::objectForKey(const QString& folder, std::string_view key) const
{
    const FileBytes file = readWholeFile(infoPath(folder).toStdString());
    const std::pair<QString, std::string> asked(folder, key);
    if (file.trouble == ReadTrouble::unreadable)
        m_unread.insert(asked);
    else
        m_unread.erase(asked);
    const Result<PlistValue> info = plist::read(file.bytes);
    const PlistValue* value = info ? info.value().find(key) : nullptr;
    return value && value->hasText() ? std::optional(value->asText()) : std::nullopt;
}

void FolderProperties::setObjectForKey(const QString& folder, std::string_view value, std::string_view key)
{
    // A database that is not there yet gets its properties later.
    if (readWholeFile(folder.toStdString()).trouble == ReadTrouble::missing)
        return;
    const FileBytes file = readWholeFile(infoPath(folder).toStdString());
    if (file.trouble == ReadTrouble::unreadable)
        return tellNotWritten(folder, file.reason);
    Result<PlistValue> read = plist::read(file.bytes);
    const bool isDict = read && read.value().isDict();
    PlistValue info = isDict ? std::move(read).value() : PlistValue::makeDict();
    const PlistValue wanted(cleanUtf8(value));
    const bool damaged = file.trouble != ReadTrouble::missing && !isDict;
    if (const PlistValue* present = info.find(key); present && *present == wanted && !damaged)
        return;
    if (m_unread.contains({folder, std::string(key)}))
        return tellNotWritten(folder, "what is there could not be read");
    if (damaged) {
        if (const Result<QString> kept = m_recovery.keepCopy(infoPath(folder), KeptFor::unreadable); !kept)
            return tellNotWritten(folder, kept.error().message);
    }
    info.set(key, wanted);
    if (const Result<void> written = writeFileSafely(infoPath(folder).toStdString(), plist::write(info)); !written)
        tellNotWritten(folder, written.error().message);
}

void FolderProperties::tellNotWritten(const QString& folder, const std::string& reason) const
{
    logLine("couldn't write database's properties");
    logLine(reason);
    if (onTrouble)
        onTrouble(infoPath(folder) + " could not be written (" + QString::fromStdString(reason) + ").");
}
