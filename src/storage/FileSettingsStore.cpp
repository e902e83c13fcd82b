#include "storage/FileSettingsStore.h"

#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/TemporaryFiles.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/RecoveryStore.h"

#include <QFileInfo>

namespace {

/// Texts, numbers, flags and dates can stand for each other.
bool isOfAnotherKind(const PlistValue& stored, const PlistValue& value)
{
    return stored.hasText() ? !value.hasText() : stored.kind() != value.kind();
}

} // namespace

FileSettingsStore::FileSettingsStore(QString path, RecoveryStore& recovery) : m_path(std::move(path)), m_recovery(recovery)
{
    temporaries::removeAbandoned(QFileInfo(m_path).path().toStdString());
    m_stamp = fileStamp(m_path.toStdString());
    const FileBytes file = readWholeFile(m_path.toStdString());
    if (file.trouble == ReadTrouble::missing)
        return;
    Result<PlistValue> values = plist::read(file.bytes);
    if (values && values.value().isDict()) {
        m_values = std::move(values).value();
        m_held = m_values;
        return;
    }
    const std::string reason = file.trouble == ReadTrouble::unreadable ? file.reason
        : values                                                       ? std::string("its root is no dictionary")
                                                                       : values.error().message;
    tellDamage(QString::fromStdString("The settings could not be read (" + reason + "). ") + keepOriginal());
}

QString FileSettingsStore::keepOriginal()
{
    if (!m_originalKept.isEmpty())
        return m_originalKept;
    const Result<QString> kept = m_recovery.keepCopy(m_path, KeptFor::unreadable);
    m_mustKeepOriginal = !kept;
    if (!kept)
        return "The original could not be copied yet: " + QString::fromStdString(kept.error().message) + ".";
    m_originalKept = "The original is kept as " + kept.value() + ".";
    return m_originalKept;
}

void FileSettingsStore::tellDamage(const QString& sentence)
{
    m_damage += sentence;
    logLine(sentence.toStdString());
}

void FileSettingsStore::keepUnusable(std::string_view key)
{
    // Not in the file: set by the program itself, so that no original is lost.
    if (!m_values.find(key) || !folders::mayBeThere(m_path) || !m_unusable.emplace(key).second)
        return;
    tellDamage(QString::fromStdString("The setting \"" + std::string(key) + "\" could not be read. ") + keepOriginal());
}

const PlistValue* FileSettingsStore::value(std::string_view key) const
{
    if (const PlistValue* stored = m_values.find(key))
        return stored;
    const auto registered = m_defaults.find(key);
    return registered == m_defaults.end() ? nullptr : &registered->second;
}

void FileSettingsStore::set(std::string_view key, PlistValue value)
{
    const PlistValue* stored = m_values.find(key);
    if (stored && *stored == value)
        return;
    if (stored && isOfAnotherKind(*stored, value))
        keepUnusable(key);
    m_values.set(key, std::move(value));
    markChanged(key);
}

void FileSettingsStore::remove(std::string_view key)
{
    if (!m_values.find(key))
        return;
    m_values.remove(key);
    markChanged(key);
}

void FileSettingsStore::registerDefault(std::string_view key, std::string_view text)
{
    m_defaults.insert_or_assign(std::string(key), PlistValue(std::string(text)));
}

void FileSettingsStore::markChanged(std::string_view key)
{
    const bool first = m_changed.empty();
    m_changed.emplace(key);
    if (first && onDirty)
        onDirty();
}

Result<void> FileSettingsStore::flush()
{
    if (m_changed.empty())
        return {};
    const Result<void> written = write();
    m_unsavedReason = written ? QString() : QString::fromStdString(written.error().message);
    if (!written)
        logLine(written.error().message);
    return written;
}

Result<void> FileSettingsStore::write()
{
    if (Result<void> made = folders::make(QFileInfo(m_path).path()); !made)
        return made;
    if (m_mustKeepOriginal && folders::mayBeThere(m_path)) {
        if (const Result<QString> kept = m_recovery.keepCopy(m_path, KeptFor::unreadable); !kept)
            return kept.error();
    }
    m_mustKeepOriginal = false;
    if (Result<void> read = readAgain(); !read)
        return read;
    PlistValue values = contents();
    if (Result<void> written = writeFileSafely(m_path.toStdString(), plist::write(values)); !written)
        return written;
    m_held = std::move(values);
    m_stamp = fileStamp(m_path.toStdString());
    m_changed.clear();
    return {};
}

Result<void> FileSettingsStore::readAgain()
{
    const FileStamp stamp = fileStamp(m_path.toStdString());
    if (stamp == m_stamp)
        return {};
    const FileBytes file = readWholeFile(m_path.toStdString());
    if (file.trouble == ReadTrouble::missing)
        return {};
    Result<PlistValue> values = plist::read(file.bytes);
    if (values && values.value().isDict()) {
        m_held = std::move(values).value();
    } else {
        const Result<QString> kept = m_recovery.keepCopy(m_path, KeptFor::foreign);
        if (!kept)
            return kept.error();
        tellDamage("The settings that somebody else wrote could not be read. They are kept as " + kept.value() + ".");
    }
    m_stamp = stamp;
    return {};
}

PlistValue FileSettingsStore::contents() const
{
    PlistValue values = m_held;
    for (const std::string& key : m_changed) {
        if (const PlistValue* value = m_values.find(key))
            values.set(key, *value);
        else
            values.remove(key);
    }
    return values;
}

QStringList FileSettingsStore::keepUnsaved()
{
    if (m_changed.empty())
        return {};
    const Result<QString> kept = m_recovery.keepBytes(m_path, plist::write(contents()), KeptFor::unsaved);
    const QString sentence = "The settings could not be written. "
        + (kept ? "What they should be is kept as " + kept.value() : QString::fromStdString(kept.error().message)) + ".";
    logLine(sentence.toStdString());
    return {sentence};
}
