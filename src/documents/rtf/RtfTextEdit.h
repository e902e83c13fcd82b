// Replaces words in a rich-text file and leaves every other byte of it alone.
#pragma once

#include <string>
#include <string_view>

/// The file with every occurrence of find in its visible text replaced. An occurrence may run through anything that shows nothing
/// (changes of format, bookmarks), never through the end of a paragraph, a line or a cell; what replaces it takes the format of its first
/// letter. Both texts are ASCII; the file may spell their letters by number.
std::string replaceInRtf(std::string_view rtf, std::string_view find, std::string_view with);
