#include "foundation/WrittenMark.h"

#include <array>
#include <cerrno>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

constexpr char attribute[] = "user.vendaro.written";
/// Of what is written; another one when files come out otherwise than before.
constexpr int layout = 1;

/// Empty when there is no such file.
std::string markFor(const std::string& path)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(layout) + ' ' + std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_sec) + '.'
        + std::to_string(status.st_mtim.tv_nsec);
}

} // namespace

void writtenMark::put(const std::string& path)
{
    const std::string mark = markFor(path);
    // Without one the file is compared the next time.
    if (!mark.empty() && ::setxattr(path.c_str(), attribute, mark.data(), mark.size(), 0) != 0)
        errno = 0;
}

bool writtenMark::stands(const std::string& path)
{
    std::array<char, 128> found;
    const ssize_t size = ::getxattr(path.c_str(), attribute, found.data(), found.size());
    return size > 0 && markFor(path) == std::string(found.data(), static_cast<std::size_t>(size));
}
