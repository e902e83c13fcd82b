// The texts that travel with a database: its "info.plist".
#pragma once

#include <QString>

#include <functional>
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

    std::optional<std::string> objectForKey(const QString& folder, std::string_view key) const override;
    /// Keeps the original of a file that is damaged before it takes its place. What could not be read is not written over: neither the
    /// file while it is unreadable, nor a key whose own value was never seen. A failure is logged and told.
    void setObjectForKey(const QString& folder, std::string_view value, std::string_view key) override;

    /// Told, one sentence each, when something could not be written.
    std::function<void(const QString& sentence)> onTrouble;

private:
    void tellNotWritten(const QString& folder, const std::string& reason) const;

    RecoveryStore& m_recovery;
    /// Folders and keys whose last reading failed for a reason that may pass.
    mutable std::set<std::pair<QString, std::string>> m_unread;
};
