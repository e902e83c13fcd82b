// The one reader and writer of money text: decimal style, exactly two fraction digits, grouped, in the user's locale.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class MoneyFormatter {
public:
    /// locale: "en_GB", "de_DE", … as ICU names them.
    explicit MoneyFormatter(const std::string& locale);
    ~MoneyFormatter();

    static constexpr double smallest = -10'000'000;
    static constexpr double largest = 10'000'000;

    /// The number, or nothing: the whole text has to be one decimal number within the limits. Blanks around are fine, and so is a
    /// blank after a group mark; exponents, "nan", "inf" and a rest behind the number are not.
    std::optional<double> read(std::string_view text) const;
    /// The number in single precision; what does not read counts as 0.
    float value(std::string_view text) const;
    /// Ties go to the even digit; minus zero is "0.00"; beyond the limits everything is written in full.
    std::string write(double amount) const;
    /// A typed number in money form, its decimal value kept; nothing when it does not read.
    std::optional<std::string> normalised(std::string_view text) const;

private:
    std::optional<double> readPlain(std::string_view text) const;

    struct Symbols;
    std::unique_ptr<Symbols> m_symbols;
};

namespace money {
/// The wanted locale when there is one, else the environment's unless that is C or POSIX, else en_GB.
std::string localeFor(std::string_view wanted);
} // namespace money
