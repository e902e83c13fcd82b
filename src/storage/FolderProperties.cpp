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
    const Result<PlistValue> info = plist::read(readWholeFile(infoPath(folder).toStdString()).bytes);
    const PlistValue* value = info ? info.value().find(key) : nullptr;
    return value && value->hasText() ? std::optional(value->asText()) : std::nullopt;
}

void FolderProperties::setObjectForKey(const QString& folder, std::string_view value, std::string_view key)
{
    const FileBytes file = readWholeFile(infoPath(folder).toStdString());
    Result<PlistValue> read = plist::read(file.bytes);
    const bool isDict = read && read.value().isDict();
    PlistValue info = isDict ? std::move(read).value() : PlistValue::makeDict();
    const bool damaged = file.trouble != ReadTrouble::missing && !isDict;
    if (damaged && !m_recovery.keepCopy(infoPath(folder))) {
        logLine("couldn't write database's properties");
        return;
    }
    const PlistValue wanted(cleanUtf8(value));
    if (const PlistValue* present = info.find(key); present && *present == wanted && !damaged)
        return;
    info.set(key, wanted);
    if (const Result<void> written = writeFileSafely(infoPath(folder).toStdString(), plist::write(info)); !written) {
        logLine("couldn't write database's properties");
        logLine(written.error().message);
    }
}
