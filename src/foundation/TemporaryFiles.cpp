#include "foundation/TemporaryFiles.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <dirent.h>
#include <mutex>
#include <set>
#include <string_view>
#include <unistd.h>

namespace {

constexpr std::string_view temporaryPrefix = ".vendaro-";
constexpr std::string_view temporaryEnding = ".tmp";

struct InUse {
    std::mutex mutex;
    /// Without their folders, which may be spelled in several ways; the names are unique in a process.
    std::set<std::string> names;
};

InUse& inUse()
{
    static InUse files;
    return files;
}

std::string bareName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// The process in ".vendaro-NAME.PROCESS.NUMBER.tmp"; 0 when the name says none.
pid_t processIn(std::string_view name)
{
    name.remove_suffix(temporaryEnding.size());
    name = name.substr(0, name.rfind('.'));
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? 0 : static_cast<pid_t>(std::atol(std::string(name.substr(dot + 1)).c_str()));
}

bool isAbandoned(const std::string& path)
{
    const pid_t process = processIn(bareName(path));
    if (process == ::getpid())
        return !temporaries::isInUse(path);
    return process > 0 && ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

void temporaries::begin(const std::string& path)
{
    const std::lock_guard guard(inUse().mutex);
    inUse().names.insert(bareName(path));
}

void temporaries::end(const std::string& path)
{
    const std::lock_guard guard(inUse().mutex);
    inUse().names.erase(bareName(path));
}

bool temporaries::isInUse(const std::string& path)
{
    const std::lock_guard guard(inUse().mutex);
    return inUse().names.contains(bareName(path));
}

std::string temporaries::nameBeside(const std::string& path)
{
    static std::atomic<unsigned> counter {0};
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "./" : path.substr(0, slash + 1);
    return folder + std::string(temporaryPrefix) + bareName(path) + '.' + std::to_string(::getpid()) + '.' + std::to_string(counter++)
        + std::string(temporaryEnding);
}

Result<std::vector<std::string>> temporaries::in(const std::string& folder)
{
    DIR* directory = ::opendir(folder.c_str());
    if (!directory)
        return Error {folder + " could not be listed"};
    std::vector<std::string> found;
    while (const dirent* entry = ::readdir(directory)) {
        const std::string_view name = entry->d_name;
        if (name.starts_with(temporaryPrefix) && name.ends_with(temporaryEnding))
            found.push_back(folder + '/' + std::string(name));
    }
    ::closedir(directory);
    return found;
}

void temporaries::removeAbandoned(const std::string& folder)
{
    const Result<std::vector<std::string>> found = in(folder);
    if (!found)
        return;
    for (const std::string& path : found.value()) {
        if (isAbandoned(path))
            ::unlink(path.c_str());
    }
}
