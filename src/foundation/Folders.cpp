#include "foundation/Folders.h"

#include "foundation/Log.h"
#include "foundation/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

fs::path nativePath(const QString& path)
{
    return path.toStdString();
}

Error folderError(const char* what, const fs::path& path, const std::error_code& code)
{
    return {std::string(what) + " " + path.string() + ": " + code.message()};
}

Error thereAlready(const fs::path& path)
{
    return {path.string() + " exists already"};
}

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

/// Devices and pipes cannot be copied: a copy for reading leaves them out, a copy that takes the original's place is refused.
enum class CopyFor { readingElsewhere, takingThePlace };

/// Answers false, with nothing done, when something stands at the target. What was copied until something failed is taken away again,
/// and nothing else.
Result<bool> copyEntry(const fs::path& source, const fs::path& target, CopyFor purpose);

/// Flushed: what counts as copied outlasts a power cut.
Result<bool> copyFile(const fs::path& source, const fs::path& target)
{
    // The name is taken first: what has it already is never opened.
    const int taken = ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (taken < 0)
        return errno == EEXIST ? Result<bool>(false) : Result<bool>(folderError("cannot copy", source, lastError()));
    ::close(taken);
    std::error_code code;
    fs::copy_file(source, target, fs::copy_options::overwrite_existing, code);
    const Result<void> copied = code ? Result<void>(folderError("cannot copy", source, code)) : flushFile(target);
    if (copied)
        return true;
    fs::remove(target, code);
    return copied.error();
}

Result<void> copyContents(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    std::error_code code;
    for (auto entry = fs::directory_iterator(source, code); entry != fs::directory_iterator(); entry.increment(code)) {
        const fs::path to = target / entry->path().filename();
        const Result<bool> copied = copyEntry(entry->path(), to, purpose);
        if (!copied)
            return copied.error();
        if (!copied.value())
            return thereAlready(to);
    }
    if (code)
        return folderError("cannot copy the folder", source, code);
    return flushFolder(target);
}

Result<bool> copyFolder(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    std::error_code code;
    const fs::perms rights = fs::status(source, code).permissions();
    if (code)
        return folderError("cannot copy the folder", source, code);
    // Setting them afterwards is more than every file system allows. It has to be filled, though the original may be for reading only.
    if (::mkdir(target.c_str(), static_cast<mode_t>(rights | fs::perms::owner_all)) != 0)
        return errno == EEXIST ? Result<bool>(false) : Result<bool>(folderError("cannot copy the folder", source, lastError()));
    const Result<void> copied = copyContents(source, target, purpose);
    if (copied)
        return true;
    fs::remove_all(target, code);
    return copied.error();
}

Result<bool> copyLink(const fs::path& source, const fs::path& target)
{
    std::error_code code;
    fs::copy_symlink(source, target, code);
    if (code == std::errc::file_exists)
        return false;
    return code ? Result<bool>(folderError("cannot copy", source, code)) : Result<bool>(true);
}

Result<bool> copyEntry(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    std::error_code code;
    const fs::file_status status = fs::symlink_status(source, code);
    if (fs::is_regular_file(status))
        return copyFile(source, target);
    if (fs::is_directory(status))
        return copyFolder(source, target, purpose);
    if (fs::is_symlink(status))
        return copyLink(source, target);
    if (!fs::exists(status))
        return folderError("cannot copy", source, std::make_error_code(std::errc::no_such_file_or_directory));
    if (purpose == CopyFor::readingElsewhere)
        return true;
    return Error {source.string() + " is neither a file nor a folder nor a link"};
}

bool isThere(const fs::path& path)
{
    std::error_code code;
    return fs::exists(fs::symlink_status(path, code));
}

/// A folder that went with a power cut would take along what was flushed into it.
Result<void> makeFolder(const fs::path& path)
{
    std::error_code code;
    if (fs::is_directory(path, code))
        return {};
    if (path.has_relative_path()) {
        if (Result<void> made = makeFolder(path.parent_path()); !made)
            return made;
    }
    fs::create_directory(path, code);
    if (code || !fs::is_directory(path, code))
        return folderError("cannot make the folder", path, code);
    return flushFolder(path.parent_path());
}

/// After a rename. What cannot be flushed goes back.
Result<bool> settleMoved(const fs::path& source, const fs::path& target)
{
    const Result<void> flushed = flushFolder(target.parent_path());
    if (flushed)
        return true;
    std::error_code code;
    fs::rename(target, source, code);
    return flushed.error();
}

/// Where the file system cannot keep a name from being replaced by itself.
Result<bool> moveAfterLooking(const fs::path& source, const fs::path& target)
{
    if (isThere(target))
        return false;
    std::error_code code;
    fs::rename(source, target, code);
    return code ? Result<bool>(folderError("cannot move", source, code)) : settleMoved(source, target);
}

/// Nothing when they are on two file systems.
std::optional<Result<bool>> renameIfFree(const fs::path& source, const fs::path& target)
{
    if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return settleMoved(source, target);
    switch (errno) {
    case EEXIST: return false;
    case EXDEV: return std::nullopt;
    case EINVAL:
    case ENOSYS: return moveAfterLooking(source, target);
    default: return folderError("cannot move", source, lastError());
    }
}

fs::path hiddenBeside(const fs::path& path, const char* ending)
{
    return path.parent_path() / ('.' + path.filename().string() + ending);
}

/// What lies in folders that nobody may write into cannot be removed.
void letWriteInto(const fs::path& path)
{
    std::error_code code;
    if (!fs::is_directory(fs::symlink_status(path, code)))
        return;
    fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, code);
    for (auto entry = fs::directory_iterator(path, code); entry != fs::directory_iterator(); entry.increment(code))
        letWriteInto(entry->path());
}

std::error_code removeAll(const fs::path& path)
{
    letWriteInto(path);
    std::error_code code;
    fs::remove_all(path, code);
    return code;
}

Result<void> removeCopied(const fs::path& path)
{
    const std::error_code code = removeAll(path);
    return code ? Result<void>(folderError("everything was copied, but the original cannot be removed:", path, code)) : Result<void>();
}

/// The copy has its name when it is complete.
Result<bool> copyUnderItsName(const fs::path& source, const fs::path& target)
{
    if (isThere(target))
        return false;
    const fs::path unfinished = hiddenBeside(target, ".unfinished");
    std::error_code code;
    fs::remove_all(unfinished, code);
    const Result<bool> copied = copyEntry(source, unfinished, CopyFor::takingThePlace);
    if (!copied)
        return copied;
    if (!copied.value())
        return thereAlready(unfinished);
    Result<bool> named = renameIfFree(unfinished, target).value_or(false);
    if (!named || !named.value())
        fs::remove_all(unfinished, code);
    return named;
}

/// The source goes only when the copy would outlast a power cut. It leaves its place at one moment, so that it never stands there in part.
Result<bool> moveAcross(const fs::path& source, const fs::path& target)
{
    Result<bool> copied = copyUnderItsName(source, target);
    if (!copied || !copied.value())
        return copied;
    const fs::path leaving = hiddenBeside(source, ".moved");
    std::error_code code;
    fs::remove_all(leaving, code);
    const std::optional<Result<bool>> left = renameIfFree(source, leaving);
    if (left && (!*left || !left->value())) {
        if (isThere(source))
            fs::remove_all(target, code);
        return *left ? Result<bool>(thereAlready(leaving)) : *left;
    }
    // Some file systems rename no folder that came with them: that one is removed where it stands.
    const Result<void> removed = removeCopied(left ? leaving : source);
    if (!removed && !left)
        return removed.error();
    if (!removed)
        logLine(removed.error().message);
    return true;
}

/// What comes of something that must not have been there.
Result<void> unlessTaken(const Result<bool>& done, const QString& target)
{
    if (!done)
        return done.error();
    return done.value() ? Result<void>() : Result<void>(thereAlready(nativePath(target)));
}

/// On a disk that takes no file the toolkit would try for ever to describe what goes into the trash.
Result<void> takesFiles(const QString& folder)
{
    if (Result<void> made = folders::make(folder); !made)
        return made;
    constexpr int asMuchAsADescription = 1024;
    QTemporaryFile tried(folder + "/.XXXXXX");
    if (!tried.open() || tried.write(QByteArray(asMuchAsADescription, ' ')) != asMuchAsADescription || !tried.flush())
        return Error {"nothing can be put into " + folder.toStdString() + ": " + tried.errorString().toStdString()};
    return {};
}

} // namespace

namespace folders {

QString expandHome(const QString& path, const QString& home)
{
    if (path == "~" || path.startsWith("~/"))
        return home + path.mid(1);
    return path;
}

bool isSingleComponent(const QString& name)
{
    return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') && !name.contains(QChar(u'\0'));
}

QString resolveIgnoringCase(const QString& parent, const QString& name)
{
    const QString asGiven = parent + '/' + name;
    if (QFileInfo::exists(asGiven))
        return asGiven;
    // The usual answer is that there is none: only names are read, nothing is asked about each, and nothing sorted.
    QString found;
    std::error_code code;
    for (auto entry = fs::directory_iterator(nativePath(parent), code); entry != fs::directory_iterator(); entry.increment(code)) {
        const QString other = QString::fromStdString(entry->path().filename().string());
        if (other.compare(name, Qt::CaseInsensitive) == 0 && (found.isEmpty() || other < found))
            found = other;
    }
    return found.isEmpty() ? asGiven : parent + '/' + found;
}

Result<void> make(const QString& path)
{
    return makeFolder(nativePath(QDir(path).absolutePath()));
}

Result<void> makePrivate(const QString& path)
{
    Result<void> made = make(path);
    if (made)
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return made;
}

bool mayBeThere(const QString& path)
{
    struct stat status { };
    return ::stat(nativePath(path).c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

bool mayBeFile(const QString& path)
{
    struct stat status { };
    return ::stat(nativePath(path).c_str(), &status) == 0 ? S_ISREG(status.st_mode) : mayBeThere(path);
}

bool haveSameBytes(const QString& path, const QString& other)
{
    constexpr qint64 pieceSize = 1 << 18;
    QFile one(path);
    QFile two(other);
    if (!one.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !two.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    bool same = one.size() == two.size();
    while (same && !one.atEnd()) {
        const QByteArray piece = one.read(pieceSize);
        same = !piece.isEmpty() && piece == two.read(pieceSize);
    }
    return same;
}

Result<void> copyTree(const QString& source, const QString& target)
{
    std::error_code code;
    const fs::path real = fs::canonical(nativePath(source), code);
    if (code)
        return folderError("cannot copy", nativePath(source), code);
    return unlessTaken(copyEntry(real, nativePath(target), CopyFor::readingElsewhere), target);
}

Result<void> linkOrCopy(const QString& source, const QString& target)
{
    std::error_code code;
    // A second name of a symbolic link would lead elsewhere.
    if (!fs::is_symlink(nativePath(source), code)) {
        fs::create_hard_link(nativePath(source), nativePath(target), code);
        if (!code)
            return {};
    }
    return unlessTaken(copyFile(nativePath(source), nativePath(target)), target);
}

Result<bool> moveIfFree(const QString& source, const QString& target)
{
    const fs::path from = nativePath(source);
    const fs::path to = nativePath(target);
    const std::optional<Result<bool>> renamed = renameIfFree(from, to);
    return renamed ? *renamed : moveAcross(from, to);
}

Result<void> move(const QString& source, const QString& target)
{
    return unlessTaken(moveIfFree(source, target), target);
}

void remove(const QString& path)
{
    removeAll(nativePath(path));
}

Result<void> moveToTrash(const QString& path)
{
    // Where there is no trash and none can be made, the toolkit would take the folder the program was started from for one.
    const QString trash = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Trash";
    if (!QFileInfo(trash).isDir()) {
        if (Result<void> made = makePrivate(trash); !made)
            return made;
    }
    if (Result<void> takes = takesFiles(trash + "/info"); !takes)
        return takes;
    QFile file(path);
    if (!file.moveToTrash())
        return Error {"cannot move " + path.toStdString() + " into the trash: " + file.errorString().toStdString()};
    return {};
}

} // namespace folders
