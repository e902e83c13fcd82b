// Numbers as text where no locale has a say: leading numbers, codes, printf's shapes, arithmetic in cells.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace numbers {

/// The integer a text starts with, blanks before it skipped; 0 when there is none. Saturates at the ends of 32 bits.
int leadingInt(std::string_view text);
/// The decimal number a text starts with, blanks before it skipped; 0 when there is none, infinite when it is too large.
/// "1,234.56" is 1, and "2e+06", as large quantities are written, two million.
float leadingFloat(std::string_view text);
/// All ASCII digits of a code in their order, read as one integer: "INV-2024-07" is 202407, "" is 0. Saturates at 2,147,483,647.
float digitsOf(std::string_view code);

/// "%g", "%.2g" and "%.<digits>f", whatever the locale.
std::string general(double number);
std::string twoDigits(double number);
std::string fixed(double number, int digits);
/// Written out to at most six decimals, without zeros at the end: the short form would lose pennies of large figures.
std::string plain(double number);

/// A plain decimal number and nothing else: optional sign, digits, point, digits.
std::optional<double> decimal(std::string_view text);
/// What follows "=" in a number cell: + - * / and parentheses over plain decimals. Nothing when it does not work out.
std::optional<double> arithmetic(std::string_view text);

} // namespace numbers
