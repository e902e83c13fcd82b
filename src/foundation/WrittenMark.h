// A note at a file, beside its contents, that this program wrote what the file holds: it need not be compared with what would be written.
//
// It stands in the file's extended attributes and names the contents by their size and time, so that it says nothing any more once somebody
// else wrote there. Where a file system keeps no attributes there is never a mark.
#pragma once

#include <string>

namespace writtenMark {

/// The file holds what this program writes. Its time of change moves, its contents and their time do not.
void put(const std::string& path);
/// Whether nothing was written into the file since.
bool stands(const std::string& path);

} // namespace writtenMark
