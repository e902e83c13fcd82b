// The texts that travel with a database: its "info.plist".
#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>

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
    /// Keeps the original of a file that does not read before it takes its place. A failure is only logged.
    void setObjectForKey(const QString& folder, std::string_view value, std::string_view key) override;

private:
    RecoveryStore& m_recovery;
};
