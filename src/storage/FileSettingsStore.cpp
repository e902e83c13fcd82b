#include "storage/FileSettingsStore.h"

#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/RecoveryStore.h"

#include <QFileInfo>

FileSettingsStore::FileSettingsStore(QString path, RecoveryStore& recovery) : m_path(std::move(path)), m_recovery(recovery)
{
    const FileBytes file = readWholeFile(m_path.toStdString());
    if (file.trouble == ReadTrouble::missing)
        return;
    Result<PlistValue> values = plist::read(file.bytes);
    if (values && values.value().isDict()) {
        m_values = std::move(values).value();
        return;
    }
    const std::string reason = file.trouble == ReadTrouble::unreadable ? file.reason
        : values                                                       ? std::string("its root is no dictionary")
                                                                       : values.error().message;
    const Result<QString> kept = m_recovery.keepCopy(m_path);
    m_mustKeepOriginal = !kept;
    m_damage = QString::fromStdString("The settings could not be read (" + reason + "). ")
        + (kept ? "The original is kept as " + kept.value() + "." : QString::fromStdString(kept.error().message));
    logLine(m_damage.toStdString());
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
    m_values.set(key, std::move(value));
    markDirty();
}

void FileSettingsStore::remove(std::string_view key)
{
    if (!m_values.find(key))
        return;
    m_values.remove(key);
    markDirty();
}

void FileSettingsStore::registerDefault(std::string_view key, std::string_view text)
{
    m_defaults.insert_or_assign(std::string(key), PlistValue(std::string(text)));
}

void FileSettingsStore::markDirty()
{
    const bool first = !m_dirty;
    m_dirty = true;
    if (first && onDirty)
        onDirty();
}

Result<void> FileSettingsStore::flush()
{
    if (!m_dirty)
        return {};
    const Result<void> written = write();
    if (written)
        m_dirty = false;
    else
        logLine(written.error().message);
    return written;
}

Result<void> FileSettingsStore::write()
{
    if (Result<void> made = folders::make(QFileInfo(m_path).path()); !made)
        return made;
    if (m_mustKeepOriginal && QFileInfo::exists(m_path)) {
        if (const Result<QString> kept = m_recovery.keepCopy(m_path); !kept)
            return kept.error();
    }
    m_mustKeepOriginal = false;
    return writeFileSafely(m_path.toStdString(), plist::write(m_values));
}

void FileSettingsStore::keepUnsaved()
{
    if (!m_dirty)
        return;
    const Result<QString> kept = m_recovery.keepBytes(QFileInfo(m_path).fileName(), plist::write(m_values));
    logLine(kept ? "the settings could not be written and are kept as " + kept.value().toStdString() : kept.error().message);
}
