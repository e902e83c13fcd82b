// The texts that travel with a database: its "info.plist".
#pragma once

#include "foundation/Result.h"
#include "foundation/plist/PlistValue.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

class RecoveryStore;

/// The properties that travel with a database.
class DatabaseProperties {
public:
    virtual ~DatabaseProperties() = default;
    /// The text under the key in the folder's "info.plist", or nothing.
    virtual std::optional<std::string> objectForKey(const QString& folder, std::string_view key) const = 0;
    virtual void setObjectForKey(const QString& folder, std::string_view value, std::string_view key) = 0;
};

class FolderProperties : public DatabaseProperties {
public:
    explicit FolderProperties(RecoveryStore& recovery) : m_recovery(recovery) { }

    /// Keeps and tells a file that is damaged.
    std::optional<std::string> objectForKey(const QString& folder, std::string_view key) const override;
    /// Keeps the original of a file that is damaged before it takes its place. What could not be read is not written over: neither the
    /// file while it is unreadable, nor a key whose own value was never seen. A failure is logged and told.
    void setObjectForKey(const QString& folder, std::string_view value, std::string_view key) override;

    /// Tries again what could not be written, into the folders that may be written into.
    void retry(const std::function<bool(const QString& folder)>& mayWrite);
    /// Empty when all is written, else why something is not.
    QString unsavedReason() const;
    /// Puts what could not be written into the recovery store; one sentence for each file.
    QStringList keepUnsaved();

    /// Told, one sentence each, whenever something could not be read or written: of one damage as often as it is met.
    std::function<void(const QString& sentence)> onTrouble;

private:
    bool maySet(const QString& folder, const std::string& key);
    Result<void> keepDamaged(const QString& folder) const;
    void tell(const QString& sentence) const;
    Result<void> write(const QString& folder, const PlistValue& value, std::string_view key);
    void tellNotWritten(const QString& folder, const std::string& reason) const;

    RecoveryStore& m_recovery;
    /// Folders and keys whose last reading failed for a reason that may pass.
    mutable std::set<std::pair<QString, std::string>> m_unread;
    struct Unsaved {
        PlistValue values = PlistValue::makeDict();
        std::string reason;
    };
    /// By folder, what was set and is not in the file.
    std::map<QString, Unsaved> m_unsaved;
};
