// The lock file of a database folder: who has it open, and since when.
//
// The file says no more than that. Which process holds it stands beside its contents, as an attribute of the file, where the file system
// keeps such; without it nobody can tell whether the holder still runs.
#pragma once

#include "foundation/ProcessMark.h"
#include "foundation/Result.h"
#include "foundation/plist/PlistValue.h"

#include <QString>

#include <optional>
#include <string>
#include <string_view>

class Clock;
class User;

/// What "lock.xml" says.
struct LockInfo {
    /// Of a file with these bytes; what does not read says nothing. Who holds it stands beside the bytes.
    static LockInfo in(std::string_view bytes);

    std::string datetime;
    /// Nothing when the lock gives no reason.
    std::optional<std::string> reason;
    std::string user;
    /// Whether the program that wrote it still runs.
    processMark::Life holder = processMark::Life::unknown;
    /// Everything in the file, for the copy that a forced unlock keeps.
    PlistValue contents = PlistValue::makeDict();
    /// The file, whether it reads or not.
    std::string bytes;
};

class DatabaseLock {
public:
    static constexpr char openReason[] = "database open";
    static constexpr char offlineReason[] = "offline browsing";

    DatabaseLock(const Clock& clock, const User& user) : m_clock(clock), m_user(user) { }

    /// The folder the lock belongs to from now on; a lock held in another is forgotten, not removed.
    void setFolder(const QString& folder);
    QString path() const { return pathIn(m_folder); }

    bool exists() const { return standsIn(m_folder); }
    /// Whether there is a lock in the folder, whoever's it is.
    static bool standsIn(const QString& folder);
    /// What the lock says; an unreadable lock is still one, without a reason.
    LockInfo read() const;
    /// Writes our lock. Answers false when somebody else's appeared first.
    Result<bool> acquire();
    /// Takes our lock away; a foreign one stays. Answers whether a lock of ours was removed.
    bool release();
    /// A forced unlock: the lock's contents are kept in an "unlock" file and the lock goes. Answers false, and does nothing, when the
    /// lock that is there is not the one that was asked about.
    Result<bool> forceOpen(const LockInfo& asked);
    /// Whether the lock that is there is the one we wrote.
    bool isOurs() const;

    /// The bytes of a lock written now.
    std::string contents(const char* reason) const;
    /// The bytes of the copy that is kept of a lock forced open now.
    std::string unlockText(const LockInfo& lock) const;

private:
    static QString pathIn(const QString& folder) { return folder + "/lock.xml"; }

    const Clock& m_clock;
    const User& m_user;
    QString m_folder;
    /// What we wrote; empty while the lock is not ours.
    std::string m_written;
};
