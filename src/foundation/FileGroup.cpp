#include "foundation/SafeFile.h"

#include "foundation/TemporaryFiles.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
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
    /// The new contents still have the temporary name.
    bool waits = false;
};

std::vector<IntendedFile> intended(const std::deque<SafeFile>& files, const std::string& folder)
{
    std::vector<IntendedFile> intended;
    for (const SafeFile& file : files) {
        intended.push_back({file.temporaryPath().substr(folder.size() + 1), file.path().substr(folder.size() + 1), file.written().size(),
            file.written().value(), true});
    }
    return intended;
}

/// Makes these files the ones a reader takes; with none, every file stands for itself again.
Result<void> writeIntent(const std::string& folder, const std::vector<IntendedFile>& files)
{
    const std::string path = folder + '/' + intentName;
    if (files.empty()) {
        ::unlink(path.c_str());
        return {};
    }
    std::ostringstream text;
    text << intentHead << '\n';
    for (const IntendedFile& file : files)
        text << file.size << ' ' << file.hash << ' ' << file.temporary << '/' << file.target << '\n';
    text << intentEnd << '\n';
    return writeFileSafely(path, text.str());
}

/// The files an intent names; none when there is none or it is not whole.
Result<std::vector<IntendedFile>> readIntent(const std::string& folder)
{
    const FileBytes intent = readWholeFile(folder + '/' + intentName);
    if (intent.trouble == ReadTrouble::unreadable)
        return Error {intent.reason};
    std::istringstream text {std::string(intent.bytes)};
    std::string line;
    std::vector<IntendedFile> files;
    if (!std::getline(text, line) || line != intentHead)
        return files;
    while (std::getline(text, line) && line != intentEnd) {
        IntendedFile file;
        std::istringstream parts(line);
        parts >> file.size >> file.hash;
        parts.get();
        if (!std::getline(parts, file.temporary, '/') || !std::getline(parts, file.target) || file.target.find('/') != std::string::npos)
            return std::vector<IntendedFile>();
        files.push_back(std::move(file));
    }
    return line == intentEnd ? files : std::vector<IntendedFile>();
}

/// Whether the intent is about that file's new contents, as far as anybody knows.
bool names(const Result<std::vector<IntendedFile>>& intent, const IntendedFile& wanted)
{
    if (!intent)
        return true;
    return std::any_of(
        intent.value().begin(), intent.value().end(), [&](const IntendedFile& file) { return file.temporary == wanted.temporary; });
}

/// An error when the file is there and cannot be read.
Result<bool> holds(const std::string& path, const IntendedFile& wanted)
{
    const FileBytes file = readRecords(path);
    if (file.trouble == ReadTrouble::unreadable)
        return Error {file.reason};
    ByteHash found;
    found.add(file.bytes);
    return file.trouble == ReadTrouble::none && found.size() == wanted.size && found.value() == wanted.hash;
}

/// Looks under which name the new contents are; answers whether they are there at all.
Result<bool> findContents(const std::string& folder, IntendedFile& file)
{
    const Result<bool> temporary = holds(folder + '/' + file.temporary, file);
    file.waits = temporary && temporary.value();
    if (file.waits)
        return true;
    const Result<bool> target = holds(folder + '/' + file.target, file);
    return temporary || (target && target.value()) ? target : temporary;
}

/// The interrupted commit a reader of the folder reads through; none when it is void.
Result<std::vector<IntendedFile>> readWholeIntent(const std::string& folder)
{
    Result<std::vector<IntendedFile>> files = readIntent(folder);
    if (!files)
        return files;
    for (IntendedFile& file : files.value()) {
        const Result<bool> found = findContents(folder, file);
        if (!found)
            return found.error();
        if (!found.value())
            return std::vector<IntendedFile>();
    }
    return files;
}

bool mayHaveIntent(const std::string& folder)
{
    return ::access((folder + '/' + intentName).c_str(), F_OK) == 0 || errno != ENOENT;
}

Result<void> removeTemporaries(const std::string& folder)
{
    const Result<std::vector<std::string>> found = temporaries::in(folder);
    if (!found)
        return found.error();
    for (const std::string& path : found.value()) {
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
    // An intent of an earlier commit that failed may name the same file: it must not outlive what is written now.
    if (m_files.size() == 1 && !mayHaveIntent(m_folder))
        return m_files.front().commit();
    return commitTogether();
}

Result<void> FileGroup::commitTogether()
{
    const std::vector<IntendedFile> own = intended(m_files, m_folder);
    const auto isOwn = [&](const IntendedFile& file) {
        return std::any_of(own.begin(), own.end(), [&](const IntendedFile& other) { return other.target == file.target; });
    };
    // What an earlier commit could not put into its place goes on being read through, unless it is replaced now.
    const Result<std::vector<IntendedFile>> found = readWholeIntent(m_folder);
    if (!found)
        return found.error();
    const std::vector<IntendedFile>& before = found.value();
    std::vector<IntendedFile> waiting;
    std::copy_if(
        before.begin(), before.end(), std::back_inserter(waiting), [&](const IntendedFile& file) { return !isOwn(file) && file.waits; });
    std::vector<IntendedFile> all = own;
    all.insert(all.end(), waiting.begin(), waiting.end());
    const Result<void> announced = writeIntent(m_folder, all);
    const Result<void> renamed = announced ? renameAll() : announced;
    if (!renamed && m_files.front().stillWaits()) {
        // The new intent may stand there all the same. Where the earlier one cannot take its place, what it names must not go.
        if (!writeIntent(m_folder, before) && names(readIntent(m_folder), own.front()))
            keepTemporaries();
        return renamed;
    }
    for (const IntendedFile& file : before) {
        if (isOwn(file))
            ::unlink((m_folder + '/' + file.temporary).c_str());
    }
    if (!renamed) {
        // Some files have their new contents already: what is left stays, and the intent makes the group whole when read.
        keepTemporaries();
        return renamed;
    }
    if (Result<void> flushed = flushFolder(m_folder); !flushed)
        return flushed;
    return writeIntent(m_folder, waiting);
}

Result<void> FileGroup::renameAll()
{
    for (SafeFile& file : m_files) {
        if (Result<void> renamed = file.rename(); !renamed)
            return renamed;
    }
    return {};
}

void FileGroup::keepTemporaries()
{
    for (SafeFile& left : m_files) {
        temporaries::end(left.temporaryPath());
        left.keepTemporary();
    }
}

Result<std::map<std::string, std::string>> FileGroup::interrupted(const std::string& folder)
{
    const Result<std::vector<IntendedFile>> files = readWholeIntent(folder);
    if (!files)
        return files.error();
    std::map<std::string, std::string> instead;
    for (const IntendedFile& file : files.value())
        instead[file.target] = folder + '/' + (file.waits ? file.temporary : file.target);
    return instead;
}

Result<void> FileGroup::repair(const std::string& folder)
{
    const Result<std::vector<IntendedFile>> files = readWholeIntent(folder);
    if (!files)
        return files.error();
    for (const IntendedFile& file : files.value()) {
        if (file.waits && ::rename((folder + '/' + file.temporary).c_str(), (folder + '/' + file.target).c_str()) != 0)
            return Error {folder + '/' + file.target + " could not be put into its place"};
    }
    if (!files.value().empty()) {
        if (Result<void> flushed = flushFolder(folder); !flushed)
            return flushed;
    }
    ::unlink((folder + '/' + intentName).c_str());
    return removeTemporaries(folder);
}
