// A believable small firm over two years: everything a database folder and its settings hold.
#pragma once

#include "foundation/Result.h"

#include <string>

/// Writes the record files and "info.plist" into folder, and the user's settings to settingsPath. Scale 1 is about 400 orders; every
/// kind of record grows with the scale. The same scale always gives the same bytes.
Result<void> writeBusiness(const std::string& folder, const std::string& settingsPath, int scale);
