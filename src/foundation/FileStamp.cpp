#include "foundation/FileStamp.h"

#include <sys/stat.h>

FileStamp fileStamp(const std::string& path)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return {static_cast<long long>(status.st_ino), status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
        status.st_ctim.tv_nsec};
}
