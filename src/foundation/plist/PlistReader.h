// Reads a whole property list, in its XML form of any valid layout or in its binary form.
#pragma once

#include "foundation/Result.h"
#include "foundation/plist/PlistTokens.h"
#include "foundation/plist/PlistValue.h"

#include <string_view>

namespace plist {

/// Lists and dictionaries may lie this deep in each other.
inline constexpr int deepestNesting = 64;

/// The value, or what is wrong and at which line. Truncated, empty and not-UTF-8 bytes are errors. Duplicate keys: the last wins.
Result<PlistValue> read(std::string_view bytes);

bool isBinary(std::string_view bytes);
Result<PlistValue> readBinary(std::string_view bytes);

/// The value that starts with this token; what follows it is left to the caller.
Result<PlistValue> readValue(PlistTokens& tokens, PlistTokens::Token first);

} // namespace plist
