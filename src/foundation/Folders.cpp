#include "foundation/Folders.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

fs::path nativePath(const QString& path)
{
    return path.toStdString();
}

Error folderError(const char* what, const QString& path, const std::error_code& code)
{
    return {std::string(what) + " " + path.toStdString() + ": " + code.message()};
}

void copyEntry(const fs::path& source, const fs::path& target, std::error_code& code)
{
    const fs::file_status status = fs::symlink_status(source, code);
    if (fs::is_symlink(status))
        return fs::copy_symlink(source, target, code);
    if (fs::is_regular_file(status)) {
        fs::copy_file(source, target, code);
        return;
    }
    if (!fs::is_directory(status))
        return;
    fs::create_directory(target, source, code);
    for (auto entry = code ? fs::directory_iterator() : fs::directory_iterator(source, code); entry != fs::directory_iterator();
         entry.increment(code)) {
        copyEntry(entry->path(), target / entry->path().filename(), code);
        if (code)
            return;
    }
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
    std::error_code code;
    fs::create_directories(nativePath(path), code);
    if (code || !fs::is_directory(nativePath(path)))
        return folderError("cannot make the folder", path, code);
    return {};
}

Result<void> copyTree(const QString& source, const QString& target)
{
    std::error_code code;
    if (fs::exists(fs::symlink_status(nativePath(target), code)))
        return Error {target.toStdString() + " exists already"};
    copyEntry(nativePath(source), nativePath(target), code);
    return code ? Result<void>(folderError("cannot copy the folder", source, code)) : Result<void>();
}

Result<void> move(const QString& source, const QString& target)
{
    std::error_code code;
    fs::rename(nativePath(source), nativePath(target), code);
    if (!code)
        return {};
    if (code != std::errc::cross_device_link)
        return folderError("cannot move", source, code);
    if (const Result<void> copied = copyTree(source, target); !copied)
        return copied;
    fs::remove_all(nativePath(source), code);
    return code ? Result<void>(folderError("cannot remove", source, code)) : Result<void>();
}

} // namespace folders
