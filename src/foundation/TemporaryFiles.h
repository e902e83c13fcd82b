// The temporary files that are written beside those whose place they take: what they are called, and which this process is writing at the
// moment. Whoever clears leftovers away, on whatever thread, leaves those alone.
#pragma once

#include "foundation/Result.h"

#include <string>
#include <vector>

namespace temporaries {

void begin(const std::string& path);
void end(const std::string& path);
bool isInUse(const std::string& path);

/// A name beside the file that nothing else has, with the number of this process in it.
std::string nameBeside(const std::string& path);
/// Those that lie in the folder, whoever wrote them.
Result<std::vector<std::string>> in(const std::string& folder);
/// Removes those whose process does not run on this computer any more. A folder that is not there has none.
void removeAbandoned(const std::string& folder);

} // namespace temporaries
