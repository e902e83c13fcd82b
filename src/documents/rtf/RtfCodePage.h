// The code pages that bytes of rich text are written in.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace rtf {

inline constexpr int macRoman = 10000;
inline constexpr int westernEurope = 1252;

/// The code page of a font with that character set; 0 when it says none.
int codePageOfCharset(int charset);

/// Whether a letter may be two bytes, of which the second may look like ASCII.
bool isDoubleByte(int codePage);

/// The text; bytes of a code page that nobody knows are read as those of Western Europe.
QString decoded(std::string_view bytes, int codePage);

} // namespace rtf
