#include "foundation/SafeFile.h"

#include "foundation/TemporaryFiles.h"

#include <dirent.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr char intentName[] = ".vendaro-commit";
constexpr char intentHead[] = "vendaro commit 1";
constexpr char intentEnd[] = "end";

/// One file of an interrupted commit, by names within the folder.
struct IntendedFile {
    std::string temporary;
    std::string target;
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
};

std::string intentText(const std::deque<SafeFile>& files, const std::string& folder)
{
    std::ostringstream text;
    text << intentHead << '\n';
    for (const SafeFile& file : files) {
        text << file.written().size() << ' ' << file.written().value() << ' ' << file.temporaryPath().substr(folder.size() + 1) << '/'
             << file.path().substr(folder.size() + 1) << '\n';
    }
    text << intentEnd << '\n';
    return text.str();
}

/// The files an intent names; none when it is not whole.
std::vector<IntendedFile> readIntent(const std::string& folder)
{
    std::istringstream text(readWholeFile(folder + '/' + intentName).bytes);
    std::string line;
    if (!std::getline(text, line) || line != intentHead)
        return {};
    std::vector<IntendedFile> files;
    while (std::getline(text, line) && line != intentEnd) {
        IntendedFile file;
        std::istringstream parts(line);
        parts >> file.size >> file.hash;
        parts.get();
        if (!std::getline(parts, file.temporary, '/') || !std::getline(parts, file.target) || file.target.find('/') != std::string::npos)
            return {};
        files.push_back(std::move(file));
    }
    return line == intentEnd ? files : std::vector<IntendedFile>();
}

bool holds(const std::string& path, const IntendedFile& wanted)
{
    const FileBytes file = readWholeFile(path);
    ByteHash found;
    found.add(file.bytes);
    return file.trouble == ReadTrouble::none && found.size() == wanted.size && found.value() == wanted.hash;
}

/// Whether the new contents of every file are there, under one name or the other.
bool isWhole(const std::string& folder, const std::vector<IntendedFile>& files)
{
    for (const IntendedFile& file : files) {
        if (!holds(folder + '/' + file.temporary, file) && !holds(folder + '/' + file.target, file))
            return false;
    }
    return !files.empty();
}

Result<void> removeLeftovers(const std::string& folder)
{
    DIR* directory = ::opendir(folder.c_str());
    if (!directory)
        return Error {folder + " could not be listed"};
    std::vector<std::string> leftovers;
    while (const dirent* entry = ::readdir(directory)) {
        const std::string_view name = entry->d_name;
        if (name.starts_with(".vendaro-") && name.ends_with(".tmp"))
            leftovers.emplace_back(name);
    }
    ::closedir(directory);
    for (const std::string& name : leftovers) {
        const std::string path = folder + '/' + name;
        if (!temporaries::isInUse(path))
            ::unlink(path.c_str());
    }
    return {};
}

} // namespace

SafeFile& FileGroup::add(const std::string& fileName)
{
    return m_files.emplace_back(m_folder + '/' + fileName);
}

Result<void> FileGroup::commit()
{
    for (SafeFile& file : m_files) {
        if (Result<void> prepared = file.prepare(); !prepared)
            return prepared;
    }
    const std::string intent = m_folder + '/' + intentName;
    // An intent of an earlier commit that failed may name the same file: it must not outlive what is written now.
    if (m_files.size() == 1 && ::access(intent.c_str(), F_OK) != 0)
        return m_files.front().commit();
    if (Result<void> written = writeFileSafely(intent, intentText(m_files, m_folder)); !written)
        return written;
    for (SafeFile& file : m_files) {
        if (Result<void> renamed = file.rename(); !renamed) {
            if (&file == &m_files.front()) {
                ::unlink(intent.c_str());
                return renamed;
            }
            // Some files have their new contents already: what is left stays, and the intent makes the group whole when read.
            for (SafeFile& left : m_files) {
                temporaries::end(left.temporaryPath());
                left.keepTemporary();
            }
            return renamed;
        }
    }
    Result<void> flushed = flushFolder(m_folder);
    ::unlink(intent.c_str());
    return flushed;
}

std::map<std::string, std::string> FileGroup::interrupted(const std::string& folder)
{
    const std::vector<IntendedFile> files = readIntent(folder);
    std::map<std::string, std::string> instead;
    if (!isWhole(folder, files))
        return instead;
    for (const IntendedFile& file : files) {
        const std::string temporary = folder + '/' + file.temporary;
        instead[file.target] = holds(temporary, file) ? temporary : folder + '/' + file.target;
    }
    return instead;
}

Result<void> FileGroup::repair(const std::string& folder)
{
    const std::vector<IntendedFile> files = readIntent(folder);
    if (isWhole(folder, files)) {
        for (const IntendedFile& file : files) {
            const std::string temporary = folder + '/' + file.temporary;
            if (holds(temporary, file) && ::rename(temporary.c_str(), (folder + '/' + file.target).c_str()) != 0)
                return Error {folder + '/' + file.target + " could not be put into its place"};
        }
        if (Result<void> flushed = flushFolder(folder); !flushed)
            return flushed;
    }
    ::unlink((folder + '/' + intentName).c_str());
    return removeLeftovers(folder);
}
