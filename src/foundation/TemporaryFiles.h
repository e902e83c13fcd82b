// The temporary files this process is writing at the moment: whoever clears leftovers away, on whatever thread, leaves them alone.
#pragma once

#include <string>

namespace temporaries {

void begin(const std::string& path);
void end(const std::string& path);
bool isInUse(const std::string& path);

} // namespace temporaries
