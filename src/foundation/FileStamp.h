// What changes when somebody writes a file, so that a later look tells whether somebody did.
#pragma once

#include <string>
#include <vector>

/// The file's identity, size and times; empty when there is none.
using FileStamp = std::vector<long long>;

FileStamp fileStamp(const std::string& path);
/// Whether it is the file that it was and nobody wrote into it; it may have another name, one more, or other attributes.
bool isSameButForNames(const FileStamp& one, const FileStamp& other);
