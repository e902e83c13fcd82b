// What changes when somebody writes a file, so that a later look tells whether somebody did.
#pragma once

#include <string>
#include <vector>

/// The file's identity, size and times; empty when there is none.
using FileStamp = std::vector<long long>;

FileStamp fileStamp(const std::string& path);
