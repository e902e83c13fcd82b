// The committed settings in a property list of the user's.
#pragma once

#include "foundation/Result.h"
#include "storage/Settings.h"

#include <map>

class RecoveryStore;

class FileSettingsStore : public SettingsStore {
public:
    /// Reads the file when there is one. A damaged one is kept in the recovery store, and the defaults count.
    FileSettingsStore(QString path, RecoveryStore& recovery);

    const PlistValue* value(std::string_view key) const override;
    void set(std::string_view key, PlistValue value) override;
    void remove(std::string_view key) override;
    void registerDefault(std::string_view key, std::string_view text) override;

    /// Writes the file when something changed since.
    Result<void> flush();
    /// Puts what could not be written into the recovery store.
    void keepUnsaved();
    bool isDirty() const { return m_dirty; }
    /// Why the file could not be read; empty when it could or was not there.
    const QString& damage() const { return m_damage; }
    /// Runs when the first value changed since the last flush.
    std::function<void()> onDirty;

private:
    void markDirty();
    Result<void> write();

    QString m_path;
    RecoveryStore& m_recovery;
    PlistValue m_values = PlistValue::makeDict();
    std::map<std::string, PlistValue, std::less<>> m_defaults;
    QString m_damage;
    /// The file could neither be read nor copied away yet: nothing may take its place.
    bool m_mustKeepOriginal = false;
    bool m_dirty = false;
};
