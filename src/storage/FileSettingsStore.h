// The committed settings in a property list of the user's.
//
// Another program of the same user may write the file meanwhile: what it set stays, except for the keys that are set here as well.
#pragma once

#include "foundation/FileStamp.h"
#include "foundation/Result.h"
#include "storage/Settings.h"

#include <map>
#include <set>
#include <utility>

class RecoveryStore;

class FileSettingsStore : public SettingsStore {
public:
    /// Reads the file when there is one. A damaged one is kept in the recovery store, and the defaults count.
    FileSettingsStore(QString path, RecoveryStore& recovery);

    const PlistValue* value(std::string_view key) const override;
    void set(std::string_view key, PlistValue value) override;
    void remove(std::string_view key) override;
    void registerDefault(std::string_view key, std::string_view text) override;
    void keepUnusable(std::string_view key) override;

    /// Writes the file when something changed since.
    Result<void> flush();
    /// Why the last flush failed; empty when it did not.
    const QString& unsavedReason() const { return m_unsavedReason; }
    /// Puts what could not be written into the recovery store; one sentence that says where, or none when all is written.
    QStringList keepUnsaved();
    /// What could not be read or used, and where the original lies; one sentence each. They are handed over once.
    QStringList takeDamage() { return std::exchange(m_damage, {}); }
    /// Runs when the first value changed since the last flush.
    std::function<void()> onDirty;

private:
    void markChanged(std::string_view key);
    Result<void> write();
    /// Takes over what somebody else wrote into the file since we read or wrote it.
    Result<void> readAgain();
    /// What the file is to hold: what it held last, and what changed here since.
    PlistValue contents() const;
    /// Copies the file into the recovery store; what cannot be copied yet is copied before it is overwritten. Answers where it is.
    QString keepOriginal();
    void tellDamage(const QString& sentence);

    QString m_path;
    RecoveryStore& m_recovery;
    PlistValue m_values = PlistValue::makeDict();
    /// What the file held when it was read or written last, and what it looked like from outside then.
    PlistValue m_held = PlistValue::makeDict();
    FileStamp m_stamp;
    /// Set or removed since.
    std::set<std::string, std::less<>> m_changed;
    QString m_unsavedReason;
    std::map<std::string, PlistValue, std::less<>> m_defaults;
    QStringList m_damage;
    /// Keys whose values could not be used.
    std::set<std::string, std::less<>> m_unusable;
    /// Says where the file lies as it was, once it was copied.
    QString m_originalKept;
    /// The file could neither be read nor copied away yet: nothing may take its place.
    bool m_mustKeepOriginal = false;
};
