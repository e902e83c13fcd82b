// The colours that the user gave to order statuses.
#pragma once

#include "foundation/plist/PlistValue.h"
#include "storage/qvDataSource.h"

#include <optional>
#include <string_view>

/// The colour of the first entry of the VendaroFlagColours list for that status; none when there is no such entry.
std::optional<RgbColour> statusColour(const PlistValue& flagColours, std::string_view status);
