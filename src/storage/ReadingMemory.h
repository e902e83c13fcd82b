// Memory that the files of a database are read into, each into what one before it does not need any more: getting it from the system anew
// costs about as much as reading. Several threads may use it.
#pragma once

#include "foundation/SafeFile.h"
#include "storage/RecordFile.h"

#include <QFileInfo>

#include <algorithm>
#include <mutex>
#include <vector>

class ReadingMemory {
public:
    /// Has room for any of the files, as far as the computer has.
    ReadingMemory(const std::vector<RecordFile*>& files, const QString& folder)
    {
        for (const RecordFile* file : files) {
            const auto size = static_cast<std::size_t>(QFileInfo(folder + '/' + file->fileName()).size());
            m_largestFile = std::max(m_largestFile, std::min(size, memorySize()));
        }
    }

    ByteBuffer take()
    {
        const std::lock_guard guard(m_mutex);
        if (!m_free.empty()) {
            ByteBuffer buffer = std::move(m_free.back());
            m_free.pop_back();
            return buffer;
        }
        ByteBuffer buffer;
        buffer.reserve(m_largestFile + 1);
        return buffer;
    }
    void giveBack(ByteBuffer buffer)
    {
        const std::lock_guard guard(m_mutex);
        m_free.push_back(std::move(buffer));
    }

private:
    std::size_t m_largestFile = 0;
    std::mutex m_mutex;
    std::vector<ByteBuffer> m_free;
};
