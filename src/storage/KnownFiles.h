// What is known of the record files of the open folder: how they were when they were read or written last, and what they hold.
#pragma once

#include "foundation/FileStamp.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

class RecordFile;

class KnownFiles {
public:
    /// The file as it is on disk now; it holds what its collection held after so many changes, or that is not known.
    void note(const RecordFile& file, const std::string& path, std::optional<std::uint64_t> changes = {})
    {
        m_files[&file] = {fileStamp(path), {}, changes};
    }
    /// The file as it was noted holds what its collection held after so many changes.
    void noteContents(const RecordFile& file, std::optional<std::uint64_t> changes) { m_files[&file].changes = changes; }
    /// The file is read from elsewhere, where an interrupted write left it.
    void noteInstead(const RecordFile& file, const std::string& path) { m_files[&file].instead = fileStamp(path); }
    /// The file got another name or was put into its place. It is as it was noted if it is the same file all the same.
    void noteAgain(const RecordFile& file, const std::string& path);

    /// Whether nobody else wrote the file since; also when nothing was ever noted.
    bool isAsNoted(const RecordFile& file, const std::string& path) const;
    /// Whether the file holds what its collection is to hold now.
    bool holdsAll(const RecordFile& file, const std::string& path) const;

private:
    struct Known {
        FileStamp stamp;
        /// What it was read from instead; empty when it was read itself.
        FileStamp instead;
        std::optional<std::uint64_t> changes;
    };
    std::map<const RecordFile*, Known> m_files;
};
