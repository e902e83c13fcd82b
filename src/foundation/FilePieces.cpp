#include "foundation/FilePieces.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

FilePieces::FilePieces(std::string path, std::string_view recordEnd, std::size_t largest) : m_path(std::move(path)), m_recordEnd(recordEnd)
{
    struct stat status { };
    const bool hasPieces = ::stat(m_path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > static_cast<off_t>(largest)
        && static_cast<std::size_t>(status.st_size) <= mostOfRecords();
    if (hasPieces) {
        m_file = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
        m_fileSize = static_cast<std::size_t>(status.st_size);
        m_buffer.reserve(largest);
    }
    if (isWhole() || !fill())
        takeWhole();
}

FilePieces::~FilePieces()
{
    close();
}

void FilePieces::close()
{
    if (m_file >= 0)
        ::close(std::exchange(m_file, -1));
}

bool FilePieces::next()
{
    m_passed += m_piece.size();
    if (isWhole()) {
        m_piece = {};
        return false;
    }
    const std::size_t left = m_buffer.size() - m_piece.size();
    const char* const rest = m_piece.data() + m_piece.size();
    m_buffer.clear();
    std::memmove(m_buffer.next(), rest, left);
    m_buffer.added(left);
    return fill();
}

/// A file that cannot be read on has no further piece: reading all of it tells why.
bool FilePieces::fill()
{
    m_piece = {};
    bool atEnd = false;
    while (!atEnd && m_buffer.room() > 0) {
        const ssize_t count = ::read(m_file, m_buffer.next(), m_buffer.room());
        if (count < 0 && errno != EINTR)
            return false;
        atEnd = count == 0;
        m_buffer.added(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    const std::string_view bytes = m_buffer.view();
    const std::size_t lastEnd = bytes.rfind(m_recordEnd);
    if (atEnd)
        m_piece = bytes;
    else if (lastEnd != std::string_view::npos)
        m_piece = bytes.substr(0, lastEnd + m_recordEnd.size());
    return !m_piece.empty();
}

void FilePieces::takeWhole()
{
    if (m_path.empty())
        return;
    close();
    m_buffer = {};
    m_passed = 0;
    m_whole = readRecords(m_path);
    m_piece = m_whole.bytes;
    m_fileSize = m_piece.size();
}
