#include "storage/KnownFiles.h"

#include "storage/RecordFile.h"

void KnownFiles::noteAgain(const RecordFile& file, const std::string& path)
{
    Known& known = m_files[&file];
    const FileStamp now = fileStamp(path);
    if (isSameButForNames(now, known.stamp) || (!known.instead.empty() && isSameButForNames(now, known.instead)))
        known.stamp = now;
}

bool KnownFiles::isAsNoted(const RecordFile& file, const std::string& path) const
{
    const auto known = m_files.find(&file);
    return known == m_files.end() || known->second.stamp == fileStamp(path);
}

bool KnownFiles::holdsAll(const RecordFile& file, const std::string& path) const
{
    const auto known = m_files.find(&file);
    if (known == m_files.end() || !known->second.changes || known->second.stamp.empty())
        return false;
    return known->second.changes == file.changes() && known->second.stamp == fileStamp(path);
}
