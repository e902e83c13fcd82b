// Dates as text: read and written by strftime-like patterns of %d %m %y %Y %H %M %S and literal characters.
//
// Two-digit years 00 to 68 are 2000 to 2068, 69 to 99 are 1969 to 1999; four digits are taken wherever two are. One-digit days
// and months read too. Blanks around are skipped, anything else left over makes the text unreadable, and so does 31/02.
#pragma once

#include <QDate>
#include <QDateTime>

#include <optional>
#include <string>
#include <string_view>

namespace dates {

inline constexpr char dayFirst[] = "%d/%m/%y";
inline constexpr char monthFirst[] = "%m/%d/%y";
inline constexpr char dayFirstLong[] = "%d/%m/%Y";
inline constexpr char monthFirstLong[] = "%m/%d/%Y";
/// For file names: 20240301-101530.
inline constexpr char stamp[] = "%Y%m%d-%H%M%S";

std::optional<QDate> readDate(std::string_view text, std::string_view pattern);
/// Local time; what the pattern does not name is the start of the day.
std::optional<QDateTime> read(std::string_view text, std::string_view pattern);
std::string write(const QDate& date, std::string_view pattern);
std::string write(const QDateTime& moment, std::string_view pattern);
/// What an unreadable date becomes: the date of "1/1/00".
QDate fallback();
/// The platform's default textual form, in universal time: "2024-03-01 10:15:30 +0000".
std::string platformText(const QDateTime& moment);

} // namespace dates
