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
    if (file.trouble == ReadTrouble::none && (!info || !info.value().isDict())) {
        if (const Result<void> kept = keepDamaged(folder); !kept)
            logLine(kept.error().message);
    }
    const PlistValue* value = info ? info.value().find(key) : nullptr;
    return value && value->hasText() ? std::optional(value->asText()) : std::nullopt;
}

void FolderProperties::setObjectForKey(const QString& folder, std::string_view value, std::string_view key)
{
    // A database that is not there yet gets its properties later.
    if (readWholeFile(folder.toStdString()).trouble == ReadTrouble::missing)
        return;
    const PlistValue wanted(cleanUtf8(value));
    Unsaved& unsaved = m_unsaved[folder];
    if (const Result<void> written = write(folder, wanted, key); written)
        unsaved.values.remove(key);
    else {
        unsaved.values.set(key, wanted);
        unsaved.reason = written.error().message;
        tellNotWritten(folder, unsaved.reason);
    }
}

void FolderProperties::retry(const std::function<bool(const QString& folder)>& mayWrite)
{
    for (auto& [folder, unsaved] : m_unsaved) {
        if (unsaved.values.dict().empty() || !mayWrite(folder))
            continue;
        const PlistValue::Dict tried = unsaved.values.dict();
        for (const auto& [key, value] : tried) {
            if (maySet(folder, key) && write(folder, value, key))
                unsaved.values.remove(key);
        }
    }
}

/// Whether it is known that the key has no value in the folder that nobody here has seen.
bool FolderProperties::maySet(const QString& folder, const std::string& key)
{
    if (!m_unread.contains({folder, key}))
        return true;
    const bool isThere = objectForKey(folder, key).has_value();
    if (isThere)
        m_unread.emplace(folder, key);
    return !isThere;
}

QString FolderProperties::unsavedReason() const
{
    for (const auto& [folder, unsaved] : m_unsaved) {
        if (!unsaved.values.dict().empty())
            return QString::fromStdString(unsaved.reason);
    }
    return {};
}

Result<void> FolderProperties::write(const QString& folder, const PlistValue& value, std::string_view key)
{
    const FileBytes file = readWholeFile(infoPath(folder).toStdString());
    if (file.trouble == ReadTrouble::unreadable)
        return Error {file.reason};
    Result<PlistValue> read = plist::read(file.bytes);
    const bool isDict = read && read.value().isDict();
    PlistValue info = isDict ? std::move(read).value() : PlistValue::makeDict();
    const bool damaged = file.trouble != ReadTrouble::missing && !isDict;
    const PlistValue* present = info.find(key);
    if (present && *present == value && !damaged)
        return {};
    if (m_unread.contains({folder, std::string(key)}))
        return Error {"what is there could not be read"};
    if (damaged || (present && !present->hasText())) {
        if (Result<void> kept = keepDamaged(folder); !kept)
            return kept;
    }
    info.set(key, value);
    return writeFileSafely(infoPath(folder).toStdString(), plist::write(info));
}

QStringList FolderProperties::keepUnsaved()
{
    QStringList sentences;
    for (const auto& [folder, unsaved] : std::exchange(m_unsaved, {})) {
        if (unsaved.values.dict().empty())
            continue;
        const Result<QString> kept = m_recovery.keepBytes(infoPath(folder), plist::write(unsaved.values), KeptFor::unsaved);
        sentences += infoPath(folder) + " could not be written. "
            + (kept ? "What it should hold is kept as " + kept.value() : QString::fromStdString(kept.error().message)) + '.';
        logLine(sentences.last().toStdString());
    }
    return sentences;
}

Result<void> FolderProperties::keepDamaged(const QString& folder) const
{
    const Result<QString> kept = m_recovery.keepCopy(infoPath(folder), KeptFor::unreadable);
    if (!kept)
        return kept.error();
    tell(infoPath(folder) + " could not be read. Its original is kept as " + kept.value() + ".");
    return {};
}

void FolderProperties::tell(const QString& sentence) const
{
    logLine(sentence.toStdString());
    if (onTrouble)
        onTrouble(sentence);
}

void FolderProperties::tellNotWritten(const QString& folder, const std::string& reason) const
{
    logLine("couldn't write database's properties");
    logLine(reason);
    if (onTrouble)
        onTrouble(infoPath(folder) + " could not be written (" + QString::fromStdString(reason) + ").");
}
