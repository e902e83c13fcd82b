// Whether anything has to be written at all.
#pragma once

#include <string>

class FileSnapshot;

/// Whether the file holds exactly what the snapshot would write, byte for byte. False as well when that cannot be found out.
bool holdsAlready(const std::string& path, const FileSnapshot& snapshot);
