// A record file as it came from the disk, before its collection has it.
#pragma once

#include "storage/RecordFile.h"

#include <memory>
#include <string>

struct ReadFile {
    /// Reads the new contents that an interrupted write left at another place, when there are such, else the file itself.
    static ReadFile read(RecordFile& file, const std::string& ownPath, const std::string& instead);

    /// Where it was read.
    std::string path;
    bool exists = false;
    /// None when there is no file, or when it could not be read for the reason given.
    std::unique_ptr<ParsedFile> parsed;
    std::string reason;
    /// It is in its place, and this program wrote what it holds.
    bool isMarked = false;
};
