// A library to be loaded before all others (LD_PRELOAD). It counts the program's file calls below one folder and, at the N-th, lets the
// program die, cuts a write short or lets the call fail.
//
// It is told what to do by the environment, read when the program starts and again by vendaroFaultsBegin():
//   VENDARO_FAULT_FOLDER  only calls on this folder and what lies in it count (absolute, no slash at the end)
//   VENDARO_FAULT_AT      the number of the call that meets the fault, from 1; 0 only counts
//   VENDARO_FAULT_KIND    kill-before, kill-after: the process is killed before or after the call; calls that change something count
//                         power-before, power-after: the same, and what was written but not flushed is cut off its file
//                         short: the write takes half of its bytes; short-kill: the same, and then the process is killed; writes count
//                         ENOSPC, EDQUOT, EROFS: the call fails; calls that change something count
//                         EIO, EINTR: the call fails; every call counts, looking at a file's status too
//   VENDARO_FAULT_LAST    once, or forever: from that call on
//   VENDARO_FAULT_COUNT   a file that receives four numbers of eight bytes, from 0 on with each beginning: calls seen, those that change
//                         something, writes, faults given
//
// A file counts by its path when it is opened and by its descriptor from then on. close() that fails has closed the file all the same.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum class Use { reading, changing, writing };
enum class Kind { none, killBefore, killAfter, powerBefore, powerAfter, cutShort, shortKill, failChanging, failAny };
enum class Outcome { pass, fail, killAfter, cutShort };

struct Counts {
    std::atomic<std::uint64_t> all;
    std::atomic<std::uint64_t> changing;
    std::atomic<std::uint64_t> writing;
    std::atomic<std::uint64_t> given;
};

constexpr int highestFile = 4096;
Counts noCounts;
Counts* counts = &noCounts;
char folder[4096];
std::size_t folderLength = 0;
Kind kind = Kind::none;
int failure = 0;
bool isForever = false;
std::uint64_t faultAt = 0;
std::atomic<bool> watched[highestFile];

/// The next definition of the call, the C library's own.
template <class Function>
Function* original(Function*& found, const char* name)
{
    if (!found)
        found = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
    return found;
}
#define ORIGINAL(name)                                                                                                                     \
    ([]() -> decltype(&::name) {                                                                                                           \
        static decltype(&::name) found;                                                                                                    \
        return original(found, #name);                                                                                                     \
    }())

// What a power cut takes: bytes that were written and not flushed. A descriptor of our own stands for each file.

struct Unflushed {
    int file = -1;
    dev_t device = 0;
    ino_t inode = 0;
    off_t flushedSize = 0;
    bool dirty = false;
};
constexpr int highestUnflushed = 256;
Unflushed unflushed[highestUnflushed];
std::atomic<int> unflushedCount {0};

Unflushed* unflushedOf(int file)
{
    struct stat status { };
    if (ORIGINAL(fstat)(file, &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    const int count = unflushedCount;
    for (int i = 0; i < count; ++i) {
        if (unflushed[i].device == status.st_dev && unflushed[i].inode == status.st_ino)
            return &unflushed[i];
    }
    if (count == highestUnflushed)
        return nullptr;
    Unflushed& added = unflushed[count];
    added = {fcntl(file, F_DUPFD_CLOEXEC, highestFile / 4), status.st_dev, status.st_ino, status.st_size, false};
    unflushedCount = count + 1;
    return &added;
}

bool cutsPower()
{
    return kind == Kind::powerBefore || kind == Kind::powerAfter;
}

/// Before the file is written.
void noteWriting(int file)
{
    if (!cutsPower())
        return;
    if (Unflushed* entry = unflushedOf(file))
        entry->dirty = true;
}

/// After the file was flushed.
void noteFlushed(int file)
{
    if (!cutsPower())
        return;
    struct stat status { };
    Unflushed* entry = unflushedOf(file);
    if (!entry || ORIGINAL(fstat)(file, &status) != 0)
        return;
    entry->dirty = false;
    entry->flushedSize = status.st_size;
}

[[noreturn]] void die()
{
    for (int i = 0; cutsPower() && i < unflushedCount; ++i) {
        if (unflushed[i].dirty && ORIGINAL(ftruncate64)(unflushed[i].file, unflushed[i].flushedSize) != 0)
            continue;
    }
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

bool countsFor(Use use)
{
    switch (kind) {
    case Kind::none: return false;
    case Kind::cutShort:
    case Kind::shortKill: return use == Use::writing;
    case Kind::failAny: return true;
    default: return use != Use::reading;
    }
}

Outcome next(Use use)
{
    const std::uint64_t all = ++counts->all;
    const std::uint64_t changing = use == Use::reading ? counts->changing.load() : ++counts->changing;
    const std::uint64_t writing = use == Use::writing ? ++counts->writing : counts->writing.load();
    if (faultAt == 0 || !countsFor(use))
        return Outcome::pass;
    const bool onlyWrites = kind == Kind::cutShort || kind == Kind::shortKill;
    const std::uint64_t number = kind == Kind::failAny ? all : onlyWrites ? writing : changing;
    if (number < faultAt || (number > faultAt && !isForever))
        return Outcome::pass;
    ++counts->given;
    switch (kind) {
    case Kind::killBefore:
    case Kind::powerBefore: die();
    case Kind::killAfter:
    case Kind::powerAfter: return Outcome::killAfter;
    case Kind::cutShort:
    case Kind::shortKill: return Outcome::cutShort;
    default: return Outcome::fail;
    }
}

template <class Call>
auto around(bool counting, Use use, Call call, decltype(call()) failed) -> decltype(call())
{
    if (!counting)
        return call();
    const Outcome outcome = next(use);
    if (outcome == Outcome::fail) {
        errno = failure;
        return failed;
    }
    const auto result = call();
    if (outcome == Outcome::killAfter)
        die();
    return result;
}

/// A write of so many bytes, which may be cut to its first half.
template <class Call>
ssize_t aroundWrite(int file, std::size_t size, Call call)
{
    if (file < 0 || file >= highestFile || !watched[file])
        return call(size);
    const Outcome outcome = next(Use::writing);
    if (outcome == Outcome::fail) {
        errno = failure;
        return -1;
    }
    noteWriting(file);
    const ssize_t written = call(outcome == Outcome::cutShort && size > 1 ? size / 2 : size);
    if (outcome == Outcome::killAfter || (outcome == Outcome::cutShort && kind == Kind::shortKill))
        die();
    return written;
}

bool isWatched(const char* path)
{
    return folderLength > 0 && path && std::strncmp(path, folder, folderLength) == 0
        && (path[folderLength] == '\0' || path[folderLength] == '/');
}

bool isWatched(int file)
{
    return file >= 0 && file < highestFile && watched[file];
}

bool isWatched(int directory, const char* path)
{
    return path && path[0] == '/' ? isWatched(path) : isWatched(directory);
}

int remember(int file, bool isBelow)
{
    if (file >= 0 && file < highestFile)
        watched[file] = isBelow;
    return file;
}

Use useOf(int flags)
{
    return flags & (O_CREAT | O_TRUNC) || (flags & O_TMPFILE) == O_TMPFILE ? Use::changing : Use::reading;
}

bool takesMode(int flags)
{
    return flags & O_CREAT || (flags & O_TMPFILE) == O_TMPFILE;
}

template <class Call>
int opening(bool isBelow, int flags, Call call)
{
    return remember(around(isBelow, useOf(flags), call, -1), isBelow);
}

struct Failure {
    const char* name;
    Kind kind;
    int error;
};
constexpr Failure failures[] = {{"kill-before", Kind::killBefore, 0}, {"kill-after", Kind::killAfter, 0},
    {"power-before", Kind::powerBefore, 0}, {"power-after", Kind::powerAfter, 0}, {"short", Kind::cutShort, 0},
    {"short-kill", Kind::shortKill, 0}, {"ENOSPC", Kind::failChanging, ENOSPC}, {"EDQUOT", Kind::failChanging, EDQUOT},
    {"EROFS", Kind::failChanging, EROFS}, {"EIO", Kind::failAny, EIO}, {"EINTR", Kind::failAny, EINTR}};

std::string setting(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

void openCounts(const std::string& path)
{
    const int file = ORIGINAL(open)(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0 || ORIGINAL(ftruncate64)(file, sizeof(Counts)) != 0)
        return;
    void* memory = mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ORIGINAL(close)(file);
    if (memory != MAP_FAILED)
        counts = static_cast<Counts*>(memory);
}

} // namespace

extern "C" void vendaroFaultsBegin()
{
    folderLength = 0;
    kind = Kind::none;
    unflushedCount = 0;
    const std::string place = setting("VENDARO_FAULT_FOLDER");
    if (place.empty() || place.size() >= sizeof folder)
        return;
    std::memcpy(folder, place.c_str(), place.size() + 1);
    openCounts(setting("VENDARO_FAULT_COUNT"));
    for (std::atomic<std::uint64_t>* count : {&counts->all, &counts->changing, &counts->writing, &counts->given})
        *count = 0;
    faultAt = std::strtoull(setting("VENDARO_FAULT_AT").c_str(), nullptr, 10);
    isForever = setting("VENDARO_FAULT_LAST") == "forever";
    const std::string wanted = setting("VENDARO_FAULT_KIND");
    for (const Failure& candidate : failures) {
        if (wanted == candidate.name) {
            kind = candidate.kind;
            failure = candidate.error;
        }
    }
    folderLength = place.size();
}

namespace {
[[gnu::constructor]] void beginWithProgram()
{
    vendaroFaultsBegin();
}
} // namespace

extern "C" {

// Opening

#define MODE_OF(flags)                                                                                                                     \
    mode_t mode = 0;                                                                                                                       \
    if (takesMode(flags)) {                                                                                                                \
        va_list arguments;                                                                                                                 \
        va_start(arguments, flags);                                                                                                        \
        mode = va_arg(arguments, mode_t);                                                                                                  \
        va_end(arguments);                                                                                                                 \
    }

int open(const char* path, int flags, ...)
{
    MODE_OF(flags)
    return opening(isWatched(path), flags, [&] { return ORIGINAL(open)(path, flags, mode); });
}
int open64(const char* path, int flags, ...)
{
    MODE_OF(flags)
    return opening(isWatched(path), flags, [&] { return ORIGINAL(open64)(path, flags, mode); });
}
int openat(int directory, const char* path, int flags, ...)
{
    MODE_OF(flags)
    return opening(isWatched(directory, path), flags, [&] { return ORIGINAL(openat)(directory, path, flags, mode); });
}
int openat64(int directory, const char* path, int flags, ...)
{
    MODE_OF(flags)
    return opening(isWatched(directory, path), flags, [&] { return ORIGINAL(openat64)(directory, path, flags, mode); });
}
// What a program built with checks calls instead when it gives no mode.
int __open_2(const char* path, int flags)
{
    return opening(isWatched(path), flags, [&] { return ORIGINAL(open)(path, flags); });
}
int __open64_2(const char* path, int flags)
{
    return opening(isWatched(path), flags, [&] { return ORIGINAL(open64)(path, flags); });
}
int __openat_2(int directory, const char* path, int flags)
{
    return opening(isWatched(directory, path), flags, [&] { return ORIGINAL(openat)(directory, path, flags); });
}
int __openat64_2(int directory, const char* path, int flags)
{
    return opening(isWatched(directory, path), flags, [&] { return ORIGINAL(openat64)(directory, path, flags); });
}
int creat(const char* path, mode_t mode)
{
    return opening(isWatched(path), O_CREAT, [&] { return ORIGINAL(creat)(path, mode); });
}
int creat64(const char* path, mode_t mode)
{
    return opening(isWatched(path), O_CREAT, [&] { return ORIGINAL(creat64)(path, mode); });
}
DIR* opendir(const char* path)
{
    DIR* opened = around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(opendir)(path); }, static_cast<DIR*>(nullptr));
    if (opened)
        remember(dirfd(opened), isWatched(path));
    return opened;
}
int close(int file)
{
    const bool counting = isWatched(file);
    remember(file, false);
    if (!counting)
        return ORIGINAL(close)(file);
    const Outcome outcome = next(Use::reading);
    const int result = ORIGINAL(close)(file);
    if (outcome != Outcome::fail)
        return result;
    errno = failure;
    return -1;
}
int closedir(DIR* directory)
{
    if (directory)
        remember(dirfd(directory), false);
    return ORIGINAL(closedir)(directory);
}

// Reading and writing

ssize_t read(int file, void* bytes, size_t size)
{
    return around(
        isWatched(file), Use::reading, [&] { return ORIGINAL(read)(file, bytes, size); }, ssize_t(-1));
}
ssize_t __read_chk(int file, void* bytes, size_t size, size_t)
{
    return around(
        isWatched(file), Use::reading, [&] { return ORIGINAL(read)(file, bytes, size); }, ssize_t(-1));
}
ssize_t pread64(int file, void* bytes, size_t size, off64_t at)
{
    return around(
        isWatched(file), Use::reading, [&] { return ORIGINAL(pread64)(file, bytes, size, at); }, ssize_t(-1));
}
ssize_t write(int file, const void* bytes, size_t size)
{
    return aroundWrite(file, size, [&](size_t part) { return ORIGINAL(write)(file, bytes, part); });
}
ssize_t pwrite(int file, const void* bytes, size_t size, off_t at)
{
    return aroundWrite(file, size, [&](size_t part) { return ORIGINAL(pwrite)(file, bytes, part, at); });
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at)
{
    return aroundWrite(file, size, [&](size_t part) { return ORIGINAL(pwrite64)(file, bytes, part, at); });
}
ssize_t writev(int file, const iovec* pieces, int count)
{
    // Its first piece alone is a short write, too.
    return aroundWrite(
        file, static_cast<size_t>(count), [&](size_t part) { return ORIGINAL(writev)(file, pieces, static_cast<int>(part)); });
}
ssize_t sendfile(int target, int source, off_t* at, size_t size)
{
    return aroundWrite(target, size, [&](size_t part) { return ORIGINAL(sendfile)(target, source, at, part); });
}
ssize_t sendfile64(int target, int source, off64_t* at, size_t size)
{
    return aroundWrite(target, size, [&](size_t part) { return ORIGINAL(sendfile64)(target, source, at, part); });
}
ssize_t copy_file_range(int source, off64_t* from, int target, off64_t* to, size_t size, unsigned flags)
{
    return aroundWrite(target, size, [&](size_t part) { return ORIGINAL(copy_file_range)(source, from, target, to, part, flags); });
}
int ftruncate(int file, off_t size) noexcept
{
    return around(
        isWatched(file), Use::changing, [&] { return ORIGINAL(ftruncate)(file, size); }, -1);
}
int ftruncate64(int file, off64_t size) noexcept
{
    return around(
        isWatched(file), Use::changing, [&] { return ORIGINAL(ftruncate64)(file, size); }, -1);
}
int truncate64(const char* path, off64_t size) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(truncate64)(path, size); }, -1);
}
int fsync(int file)
{
    const int result = around(
        isWatched(file), Use::changing, [&] { return ORIGINAL(fsync)(file); }, -1);
    if (result == 0 && isWatched(file))
        noteFlushed(file);
    return result;
}
int fdatasync(int file)
{
    const int result = around(
        isWatched(file), Use::changing, [&] { return ORIGINAL(fdatasync)(file); }, -1);
    if (result == 0 && isWatched(file))
        noteFlushed(file);
    return result;
}
int fchmod(int file, mode_t mode) noexcept
{
    return around(
        isWatched(file), Use::changing, [&] { return ORIGINAL(fchmod)(file, mode); }, -1);
}

// Names

int rename(const char* from, const char* to) noexcept
{
    return around(
        isWatched(from) || isWatched(to), Use::changing, [&] { return ORIGINAL(rename)(from, to); }, -1);
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return around(
        isWatched(fromFolder, from) || isWatched(toFolder, to), Use::changing,
        [&] { return ORIGINAL(renameat)(fromFolder, from, toFolder, to); }, -1);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept
{
    return around(
        isWatched(fromFolder, from) || isWatched(toFolder, to), Use::changing,
        [&] { return ORIGINAL(renameat2)(fromFolder, from, toFolder, to, flags); }, -1);
}
int link(const char* from, const char* to) noexcept
{
    return around(
        isWatched(from) || isWatched(to), Use::changing, [&] { return ORIGINAL(link)(from, to); }, -1);
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return around(
        isWatched(toFolder, to), Use::changing, [&] { return ORIGINAL(linkat)(fromFolder, from, toFolder, to, flags); }, -1);
}
int symlink(const char* text, const char* path) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(symlink)(text, path); }, -1);
}
int unlink(const char* path) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(unlink)(path); }, -1);
}
int unlinkat(int directory, const char* path, int flags) noexcept
{
    return around(
        isWatched(directory, path), Use::changing, [&] { return ORIGINAL(unlinkat)(directory, path, flags); }, -1);
}
int remove(const char* path) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(remove)(path); }, -1);
}
int rmdir(const char* path) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(rmdir)(path); }, -1);
}
int mkdir(const char* path, mode_t mode) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(mkdir)(path, mode); }, -1);
}
int mkdirat(int directory, const char* path, mode_t mode) noexcept
{
    return around(
        isWatched(directory, path), Use::changing, [&] { return ORIGINAL(mkdirat)(directory, path, mode); }, -1);
}
int chmod(const char* path, mode_t mode) noexcept
{
    return around(
        isWatched(path), Use::changing, [&] { return ORIGINAL(chmod)(path, mode); }, -1);
}

// Looking

int stat(const char* path, struct stat* status) noexcept
{
    return around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(stat)(path, status); }, -1);
}
int stat64(const char* path, struct stat64* status) noexcept
{
    return around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(stat64)(path, status); }, -1);
}
int lstat(const char* path, struct stat* status) noexcept
{
    return around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(lstat)(path, status); }, -1);
}
int lstat64(const char* path, struct stat64* status) noexcept
{
    return around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(lstat64)(path, status); }, -1);
}
int fstatat(int directory, const char* path, struct stat* status, int flags) noexcept
{
    return around(
        isWatched(directory, path), Use::reading, [&] { return ORIGINAL(fstatat)(directory, path, status, flags); }, -1);
}
int fstatat64(int directory, const char* path, struct stat64* status, int flags) noexcept
{
    return around(
        isWatched(directory, path), Use::reading, [&] { return ORIGINAL(fstatat64)(directory, path, status, flags); }, -1);
}
int statx(int directory, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    return around(
        isWatched(directory, path), Use::reading, [&] { return ORIGINAL(statx)(directory, path, flags, mask, status); }, -1);
}
int access(const char* path, int mode) noexcept
{
    return around(
        isWatched(path), Use::reading, [&] { return ORIGINAL(access)(path, mode); }, -1);
}
int faccessat(int directory, const char* path, int mode, int flags) noexcept
{
    return around(
        isWatched(directory, path), Use::reading, [&] { return ORIGINAL(faccessat)(directory, path, mode, flags); }, -1);
}

} // extern "C"
