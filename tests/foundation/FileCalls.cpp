#include "foundation/FileCalls.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

FileCalls* watching = nullptr;

} // namespace

FileCalls::FileCalls()
{
    watching = this;
}

FileCalls::~FileCalls()
{
    watching = nullptr;
}

extern "C" int fsync(int file)
{
    if (watching) {
        const QString path = QFile::symLinkTarget("/proc/self/fd/" + QString::number(file));
        const bool hasFailed = watching->failsFromThenOn && watching->hasFailed;
        if (path == watching->failing || hasFailed) {
            watching->hasFailed = true;
            errno = EIO;
            return -1;
        }
        watching->flushed += path;
    }
    return static_cast<int>(syscall(SYS_fsync, file));
}

extern "C" int link(const char* from, const char* to) noexcept
{
    if (watching && !watching->hasHardLinks) {
        errno = EPERM;
        return -1;
    }
    return static_cast<int>(syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int unlinkat(int folder, const char* name, int flags) noexcept
{
    if (watching && watching->staying == QFile::decodeName(name)) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_unlinkat, folder, name, flags));
}

extern "C" int fchmodat(int folder, const char* name, mode_t mode, int) noexcept
{
    if (watching && !watching->hasRights) {
        errno = EPERM;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fchmodat, folder, name, mode));
}
