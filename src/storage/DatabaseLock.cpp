#include "storage/DatabaseLock.h"

#include "desktop/Desktop.h"
#include "foundation/Dates.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"

#include <QFile>
#include <QFileInfo>

#include <array>

#include <sys/xattr.h>

namespace {

constexpr char holderAttribute[] = "user.vendaro.holder";

/// Where the file system keeps no attributes, nobody will know the holder, and nothing else hangs on it.
void markAsOurs(const std::string& lock)
{
    const std::string mark = processMark::own();
    if (!mark.empty())
        ::setxattr(lock.c_str(), holderAttribute, mark.data(), mark.size(), 0);
}

std::string holderOf(const std::string& lock)
{
    std::array<char, 1024> mark {};
    const ssize_t size = ::getxattr(lock.c_str(), holderAttribute, mark.data(), mark.size());
    return size <= 0 ? std::string() : std::string(mark.data(), static_cast<std::size_t>(size));
}

processMark::Life lifeOfHolder(const std::string& lock)
{
    const std::string holder = holderOf(lock);
    return holder.empty() ? processMark::Life::unknown : processMark::lifeOf(holder);
}

std::string lockText(const PlistValue& contents, const char* key)
{
    const PlistValue* value = contents.find(key);
    return value ? value->asText() : std::string();
}

/// Keeps what a lock said; answers where. What was kept in the same second, by whomever, stays.
Result<std::string> keepUnlock(const std::string& place, const std::string& bytes)
{
    constexpr int mostAlike = 1000;
    for (int n = 0; n < mostAlike; ++n) {
        std::string path = place;
        if (n > 0)
            path.append("-").append(std::to_string(n));
        path.append(".xml");
        const Result<bool> created = createExclusively(path, bytes);
        if (!created)
            return created.error();
        if (created.value())
            return path;
    }
    return Error {place + ".xml exists already, and so does every name like it"};
}

/// A lock that says nothing that can be read is kept byte for byte.
Result<void> keepDamaged(const std::string& lock, const std::string& copy)
{
    const FileBytes file = readWholeFile(lock);
    const Result<PlistValue> contents = plist::read(file.bytes);
    if (file.trouble != ReadTrouble::none || (contents && contents.value().isDict()))
        return {};
    return writeFileSafely(copy, file.bytes);
}

} // namespace

void DatabaseLock::setFolder(const QString& folder)
{
    m_folder = folder;
    m_written.clear();
}

bool DatabaseLock::standsIn(const QString& folder)
{
    const QFileInfo lock(pathIn(folder));
    return lock.exists() || lock.isSymLink();
}

LockInfo LockInfo::in(std::string_view bytes)
{
    LockInfo lock;
    lock.bytes = bytes;
    Result<PlistValue> contents = plist::read(bytes);
    if (!contents || !contents.value().isDict())
        return lock;
    lock.contents = std::move(contents).value();
    lock.datetime = lockText(lock.contents, "datetime");
    lock.user = lockText(lock.contents, "user");
    if (lock.contents.find("reason"))
        lock.reason = lockText(lock.contents, "reason");
    return lock;
}

LockInfo DatabaseLock::read() const
{
    LockInfo lock = LockInfo::in(readWholeFile(path().toStdString()).bytes);
    lock.holder = lifeOfHolder(path().toStdString());
    return lock;
}

std::string DatabaseLock::contents(const char* reason) const
{
    PlistValue lock = PlistValue::makeDict();
    lock.set("datetime", PlistValue(dates::platformText(m_clock.now())));
    lock.set("reason", PlistValue(std::string(reason)));
    lock.set("user", PlistValue(cleanUtf8(m_user.loginName())));
    return plist::write(lock);
}

Result<bool> DatabaseLock::acquire()
{
    const std::string bytes = contents(openReason);
    const std::string lock = path().toStdString();
    Result<bool> created = createExclusively(lock, bytes, markAsOurs);
    // A lock that could neither be flushed nor taken away again is ours all the same.
    const bool isLeft = !created && readWholeFile(lock).bytes == bytes && !holderOf(lock).empty() && holderOf(lock) == processMark::own();
    if (isLeft || (created && created.value()))
        m_written = bytes;
    return isLeft ? Result<bool>(true) : created;
}

bool DatabaseLock::isOurs() const
{
    return !m_written.empty() && readWholeFile(path().toStdString()).bytes == m_written;
}

bool DatabaseLock::release()
{
    const bool ours = isOurs();
    m_written.clear();
    return ours && QFile::remove(path());
}

std::string DatabaseLock::unlockText(const LockInfo& lock) const
{
    PlistValue kept = lock.contents;
    kept.set("unlockDatetime", PlistValue(dates::platformText(m_clock.now())));
    kept.set("unlockReason", PlistValue(std::string("user request after dialog")));
    kept.set("unlockUser", PlistValue(cleanUtf8(m_user.loginName())));
    return plist::write(kept);
}

Result<bool> DatabaseLock::forceOpen(const LockInfo& asked)
{
    const LockInfo lock = read();
    if (!exists() || lock.bytes != asked.bytes)
        return false;
    const std::string stamp = dates::write(m_clock.now(), dates::stamp);
    const Result<std::string> keptPath = keepUnlock(m_folder.toStdString() + "/unlock" + stamp, unlockText(lock));
    if (!keptPath)
        return keptPath.error();
    if (Result<void> asItWas = keepDamaged(path().toStdString(), keptPath.value() + ".damaged"); !asItWas)
        return asItWas.error();
    if (!QFile::remove(path()))
        return Error {path().toStdString() + " could not be removed"};
    return true;
}
