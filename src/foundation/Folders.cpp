#include "foundation/Folders.h"

#include "foundation/SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

fs::path nativePath(const QString& path)
{
    return path.toStdString();
}

Result<void> folderError(const char* what, const fs::path& path, const std::error_code& code)
{
    return Error {std::string(what) + " " + path.string() + ": " + code.message()};
}

/// Devices and pipes cannot be copied: a copy for reading leaves them out, a copy that takes the original's place is refused.
enum class CopyFor { readingElsewhere, takingThePlace };

Result<void> copyEntry(const fs::path& source, const fs::path& target, CopyFor purpose);

/// Flushed: what counts as copied outlasts a power cut.
Result<void> copyFile(const fs::path& source, const fs::path& target)
{
    std::error_code code;
    fs::copy_file(source, target, code);
    if (code)
        return folderError("cannot copy", source, code);
    return flushFile(target);
}

Result<void> copyFolder(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    std::error_code code;
    fs::create_directory(target, source, code);
    for (auto entry = code ? fs::directory_iterator() : fs::directory_iterator(source, code); entry != fs::directory_iterator();
         entry.increment(code)) {
        if (Result<void> copied = copyEntry(entry->path(), target / entry->path().filename(), purpose); !copied)
            return copied;
    }
    if (code)
        return folderError("cannot copy the folder", source, code);
    return flushFolder(target);
}

Result<void> copyEntry(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    std::error_code code;
    const fs::file_status status = fs::symlink_status(source, code);
    if (fs::is_regular_file(status))
        return copyFile(source, target);
    if (fs::is_directory(status))
        return copyFolder(source, target, purpose);
    if (fs::is_symlink(status)) {
        fs::copy_symlink(source, target, code);
        return code ? folderError("cannot copy", source, code) : Result<void>();
    }
    if (!fs::exists(status))
        return folderError("cannot copy", source, std::make_error_code(std::errc::no_such_file_or_directory));
    return purpose == CopyFor::readingElsewhere ? Result<void>()
                                                : Result<void>(Error {source.string() + " is neither a file nor a folder nor a link"});
}

bool isThere(const fs::path& path)
{
    std::error_code code;
    return fs::exists(fs::symlink_status(path, code));
}

Result<void> copyWhole(const fs::path& source, const fs::path& target, CopyFor purpose)
{
    if (isThere(target))
        return Error {target.string() + " exists already"};
    Result<void> copied = copyEntry(source, target, purpose);
    std::error_code ignored;
    if (!copied)
        fs::remove_all(target, ignored);
    return copied;
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
Result<void> settleMoved(const fs::path& source, const fs::path& target)
{
    Result<void> flushed = flushFolder(target.parent_path());
    std::error_code code;
    if (!flushed)
        fs::rename(target, source, code);
    return flushed;
}

/// The source goes only when the copy would outlast a power cut.
Result<void> moveAcross(const fs::path& source, const fs::path& target)
{
    if (Result<void> copied = copyWhole(source, target, CopyFor::takingThePlace); !copied)
        return copied;
    std::error_code code;
    if (Result<void> flushed = flushFolder(target.parent_path()); !flushed) {
        fs::remove_all(target, code);
        return flushed;
    }
    fs::remove_all(source, code);
    return code ? folderError("everything was copied, but the original cannot be removed:", source, code) : Result<void>();
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
    const QStringList entries = QDir(parent).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return parent + '/' + entry;
    }
    return asGiven;
}

Result<void> make(const QString& path)
{
    return makeFolder(nativePath(QDir(path).absolutePath()));
}

Result<void> copyTree(const QString& source, const QString& target)
{
    return copyWhole(nativePath(source), nativePath(target), CopyFor::readingElsewhere);
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
    return copyFile(nativePath(source), nativePath(target));
}

Result<void> move(const QString& source, const QString& target)
{
    if (isThere(nativePath(target)))
        return Error {target.toStdString() + " exists already"};
    std::error_code code;
    fs::rename(nativePath(source), nativePath(target), code);
    if (!code)
        return settleMoved(nativePath(source), nativePath(target));
    return code == std::errc::cross_device_link ? moveAcross(nativePath(source), nativePath(target))
                                                : Result<void>(folderError("cannot move", nativePath(source), code));
}

} // namespace folders
