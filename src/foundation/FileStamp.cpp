#include "foundation/FileStamp.h"

#include <algorithm>

#include <sys/stat.h>

namespace {

/// The identity, the size and the time of writing come first.
constexpr std::size_t partsOfContents = 4;

} // namespace

FileStamp fileStamp(const std::string& path)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return {static_cast<long long>(status.st_ino), status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
        status.st_ctim.tv_nsec};
}

bool isSameButForNames(const FileStamp& one, const FileStamp& other)
{
    const auto contents = [](const FileStamp& stamp) { return stamp.begin() + std::min(stamp.size(), partsOfContents); };
    return std::equal(one.begin(), contents(one), other.begin(), contents(other));
}
