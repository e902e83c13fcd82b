#include "foundation/TemporaryFiles.h"

#include <mutex>
#include <set>

namespace {

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
