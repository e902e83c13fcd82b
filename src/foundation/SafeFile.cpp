#include "foundation/SafeFile.h"

#include "foundation/TemporaryFiles.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::size_t bufferSize = 1 << 18;
/// So much is written before the disk is set to work on it.
constexpr std::size_t shareOfDisk = 8 << 20;
constexpr std::size_t gigabyte = std::size_t(1) << 30;
constexpr std::size_t largestFile = gigabyte;
constexpr char aclAttribute[] = "system.posix_acl_access";

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

std::string reasonFor(const std::string& path, const char* step)
{
    return path + " could not be " + step + ": " + std::strerror(errno);
}

bool writeFully(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The new file gets the old one's mode, group and access list, as far as that is allowed.
void takeOverRights(int file, const std::string& oldPath)
{
    struct stat old { };
    if (::stat(oldPath.c_str(), &old) != 0)
        return;
    if (::fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0)
        errno = 0;
    ::fchmod(file, old.st_mode & 07777);
    char acl[4096];
    const ssize_t size = ::getxattr(oldPath.c_str(), aclAttribute, acl, sizeof acl);
    if (size > 0)
        ::fsetxattr(file, aclAttribute, acl, static_cast<std::size_t>(size), 0);
}

template <class Use>
bool readInChunks(const std::string& path, Use use)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    std::string chunk(bufferSize, '\0');
    ssize_t count;
    while ((count = ::read(file, chunk.data(), chunk.size())) != 0) {
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            break;
        use(std::string_view(chunk.data(), static_cast<std::size_t>(count)));
    }
    const int reason = errno;
    ::close(file);
    errno = reason;
    return count == 0;
}

/// Reads no further once there are more bytes than that: the file may grow while it is read.
bool readInto(ByteBuffer& bytes, const std::string& path, std::size_t most)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    ssize_t count = 0;
    do {
        if (bytes.room() == 0)
            bytes.reserve(2 * bytes.capacity() + bufferSize);
        count = ::read(file, bytes.next(), bytes.room());
        if (count > 0)
            bytes.added(static_cast<std::size_t>(count));
    } while ((count > 0 && bytes.size() <= most) || (count < 0 && errno == EINTR));
    const int reason = errno;
    ::close(file);
    errno = reason;
    return count >= 0;
}

} // namespace

SafeFile::SafeFile(std::string path) : m_path(std::move(path)) { }

SafeFile::SafeFile(SafeFile&& other) noexcept
    : m_path(std::move(other.m_path))
    , m_temporary(std::move(other.m_temporary))
    , m_buffer(std::move(other.m_buffer))
    , m_trouble(std::move(other.m_trouble))
    , m_written(other.m_written)
    , m_flushing(other.m_flushing)
    , m_file(std::exchange(other.m_file, -1))
    , m_prepared(std::exchange(other.m_prepared, false))
    , m_isInPlace(other.m_isInPlace)
{
    other.m_temporary.clear();
}

SafeFile::~SafeFile()
{
    discard();
}

void SafeFile::discard()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
    if (!m_temporary.empty()) {
        ::unlink(m_temporary.c_str());
        temporaries::end(m_temporary);
    }
    m_temporary.clear();
}

void SafeFile::fail(const char* step)
{
    if (m_trouble.empty())
        m_trouble = reasonFor(m_path, step);
}

void SafeFile::open()
{
    if (m_file >= 0 || !m_trouble.empty())
        return;
    m_temporary = temporaries::nameBeside(m_path);
    temporaries::begin(m_temporary);
    m_file = ::open(m_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (m_file < 0) {
        temporaries::end(m_temporary);
        m_temporary.clear();
        fail("created");
        return;
    }
    takeOverRights(m_file, m_path);
    m_buffer.reserve(bufferSize);
}

void SafeFile::append(std::string_view bytes)
{
    open();
    if (!m_trouble.empty())
        return;
    if (m_buffer.size() + bytes.size() > bufferSize)
        flushBuffer();
    if (bytes.size() >= bufferSize)
        write(bytes);
    else
        m_buffer += bytes;
}

void SafeFile::flushBuffer()
{
    write(m_buffer);
    m_buffer.clear();
}

void SafeFile::write(std::string_view bytes)
{
    if (!m_trouble.empty())
        return;
    if (!writeFully(m_file, bytes))
        fail("written");
    m_written.add(bytes);
    startFlushing();
}

/// The disk works on what is written already while the rest is still being made. Whether it is there tells the flush at the end.
void SafeFile::startFlushing()
{
    if (m_written.size() - m_flushing < shareOfDisk)
        return;
    ::sync_file_range(m_file, static_cast<off_t>(m_flushing), static_cast<off_t>(m_written.size() - m_flushing), SYNC_FILE_RANGE_WRITE);
    m_flushing = m_written.size();
}

Result<void> SafeFile::readBack()
{
    ByteHash found;
    if (!readInChunks(m_temporary, [&](std::string_view bytes) { found.add(bytes); }))
        return Error {reasonFor(m_path, "read back")};
    if (found == m_written)
        return {};
    return Error {m_path + " could not be written: what was read back differs from what was written"};
}

Result<void> SafeFile::prepare()
{
    open();
    flushBuffer();
    if (m_trouble.empty() && ::fsync(m_file) != 0)
        fail("flushed to the disk");
    if (m_file >= 0 && ::close(std::exchange(m_file, -1)) != 0)
        fail("closed");
    Result<void> result = m_trouble.empty() ? readBack() : Result<void>(Error {m_trouble});
    m_prepared = result.ok();
    if (!result)
        discard();
    return result;
}

Result<void> SafeFile::rename()
{
    if (::rename(m_temporary.c_str(), m_path.c_str()) != 0)
        return Error {reasonFor(m_path, "put into its place")};
    m_isInPlace = true;
    temporaries::end(m_temporary);
    m_temporary.clear();
    return {};
}

Result<void> SafeFile::commit()
{
    if (!m_prepared) {
        if (Result<void> prepared = prepare(); !prepared)
            return prepared;
    }
    if (Result<void> renamed = rename(); !renamed)
        return renamed;
    return flushFolder(folderOf(m_path));
}

Result<void> writeFileSafely(const std::string& path, std::string_view bytes)
{
    SafeFile file(path);
    file.append(bytes);
    return file.commit();
}

Result<void> flushFile(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return Error {reasonFor(path, "opened")};
    Result<void> result = ::fsync(file) == 0 ? Result<void>() : Result<void>(Error {reasonFor(path, "flushed to the disk")});
    ::close(file);
    return result;
}

Result<void> flushFolder(const std::string& folder)
{
    const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return Error {reasonFor(folder, "opened")};
    const bool flushed = ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
    Result<void> result = flushed ? Result<void>() : Result<void>(Error {reasonFor(folder, "flushed to the disk")});
    ::close(file);
    return result;
}

namespace {

FileBytes tooLarge(const std::string& path, std::size_t most)
{
    return {{}, ReadTrouble::unreadable, path + " is larger than " + std::to_string(most / gigabyte) + " GB"};
}

FileBytes readUpTo(const std::string& path, std::size_t most)
{
    FileBytes file;
    struct stat status { };
    if (::stat(path.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode))
            return {{}, ReadTrouble::unreadable, path + " is not an ordinary file"};
        if (static_cast<std::size_t>(status.st_size) > most)
            return tooLarge(path, most);
        // One more, so that the end is met without asking for more room.
        file.bytes.reserve(static_cast<std::size_t>(status.st_size) + 1);
    }
    if (readInto(file.bytes, path, most))
        return file.bytes.size() <= most ? std::move(file) : tooLarge(path, most);
    const ReadTrouble trouble = errno == ENOENT || errno == ENOTDIR ? ReadTrouble::missing : ReadTrouble::unreadable;
    return {{}, trouble, reasonFor(path, "read")};
}

} // namespace

FileBytes readWholeFile(const std::string& path)
{
    return readUpTo(path, largestFile);
}

FileBytes readRecords(const std::string& path)
{
    return readUpTo(path, mostOfRecords());
}

std::size_t mostOfRecords()
{
    const auto memory = static_cast<std::size_t>(::sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return std::max(memory, largestFile);
}

Result<bool> createExclusively(const std::string& path, std::string_view bytes, void (*finish)(const std::string& path))
{
    SafeFile file(path);
    file.append(bytes);
    if (Result<void> prepared = file.prepare(); !prepared)
        return prepared.error();
    if (finish)
        finish(file.temporaryPath());
    if (::link(file.temporaryPath().c_str(), path.c_str()) == 0) {
        const Result<void> flushed = flushFolder(folderOf(path));
        if (flushed)
            return true;
        // Who is told that it failed never takes the file away again.
        ::unlink(path.c_str());
        return flushed.error();
    }
    if (errno == EEXIST)
        return false;
    // No hard links here: the next best is a file of our own making that appears empty and is filled at once.
    const int created = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (created < 0)
        return errno == EEXIST ? Result<bool>(false) : Result<bool>(Error {reasonFor(path, "created")});
    const bool written = writeFully(created, bytes) && ::fsync(created) == 0;
    const std::string reason = written ? std::string() : reasonFor(path, "written");
    ::close(created);
    const Result<void> settled = written ? flushFolder(folderOf(path)) : Result<void>(Error {reason});
    if (!settled) {
        ::unlink(path.c_str());
        return settled.error();
    }
    if (finish)
        finish(path);
    return true;
}
