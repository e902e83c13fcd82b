#include "storage/FileComparison.h"

#include "foundation/plist/PlistWriter.h"
#include "storage/RecordFile.h"

#include <cerrno>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Goes along a file while the bytes that it should hold come.
class FileBeside {
public:
    explicit FileBeside(const std::string& path) : m_file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)), m_isSame(m_file >= 0) { }
    ~FileBeside()
    {
        if (m_file >= 0)
            ::close(m_file);
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    void compare(std::string_view wanted)
    {
        if (m_isSame)
            m_isSame = next(wanted.size()) == wanted;
    }
    /// After the last bytes.
    bool isSame() { return m_isSame && next(1).empty() && !m_failed; }

private:
    /// So many bytes of the file, fewer at its end.
    std::string_view next(std::size_t count)
    {
        m_bytes.resize(count);
        std::size_t filled = 0;
        while (filled < count) {
            const ssize_t got = ::read(m_file, m_bytes.data() + filled, count - filled);
            if (got < 0 && errno == EINTR)
                continue;
            m_failed |= got < 0;
            if (got <= 0)
                break;
            filled += static_cast<std::size_t>(got);
        }
        return std::string_view(m_bytes).substr(0, filled);
    }

    int m_file;
    bool m_isSame;
    bool m_failed = false;
    std::string m_bytes;
};

} // namespace

bool holdsAlready(const std::string& path, const FileSnapshot& snapshot)
{
    FileBeside file(path);
    {
        PlistWriter writer([&](std::string& bytes) { file.compare(bytes); });
        snapshot.write(writer);
    }
    return file.isSame();
}
