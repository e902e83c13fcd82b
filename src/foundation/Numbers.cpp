#include "foundation/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";

std::string_view withoutLeadingBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

bool isAsciiDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Length of the plain decimal number (no exponent) that the text starts with.
std::size_t decimalLength(std::string_view text)
{
    std::size_t at = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t start = at;
    std::size_t digits = 0;
    for (; at < text.size() && (isAsciiDigit(text[at]) || text[at] == '.'); ++at) {
        if (text[at] == '.' && text.substr(start, at - start).find('.') != std::string_view::npos)
            break;
        digits += isAsciiDigit(text[at]) ? 1 : 0;
    }
    return digits > 0 ? at : 0;
}

/// Length of the exponent, "e" included, that the text behind a decimal number starts with.
std::size_t exponentLength(std::string_view text)
{
    if (!text.starts_with('e') && !text.starts_with('E'))
        return 0;
    const std::size_t start = text.size() > 1 && (text[1] == '-' || text[1] == '+') ? 2 : 1;
    std::size_t at = start;
    while (at < text.size() && isAsciiDigit(text[at]))
        ++at;
    return at > start ? at : 0;
}

/// Whether a number that no type holds is one of the large; else it is too close to zero to tell from it.
bool isLarge(std::string_view text)
{
    const std::size_t mantissa = std::min(text.find_first_of("eE"), text.size());
    const std::size_t point = std::min(text.find('.'), mantissa);
    const std::size_t first = text.find_first_of("123456789");
    const auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return places + (mantissa < text.size() ? numbers::leadingInt(text.substr(mantissa + 1)) : 0) > 0;
}

/// The text is a decimal number, with an exponent or without.
template <class Number>
Number numberFrom(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    Number number {};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc::result_out_of_range)
        return result.ec == std::errc() ? number : Number {};
    const Number size = isLarge(text) ? std::numeric_limits<Number>::infinity() : Number {};
    return text.starts_with('-') ? -size : size;
}

/// Recursive descent over a cell's arithmetic; depth-bounded.
class CellArithmetic {
public:
    explicit CellArithmetic(std::string_view text) : m_text(text) { }

    std::optional<double> result()
    {
        const std::optional<double> value = sum(0);
        skipBlanks();
        return value && m_at == m_text.size() && std::isfinite(*value) ? value : std::nullopt;
    }

private:
    static constexpr int deepest = 50;

    void skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == ' ')
            ++m_at;
    }
    char takeOneOf(std::string_view characters)
    {
        skipBlanks();
        if (m_at < m_text.size() && characters.find(m_text[m_at]) != std::string_view::npos)
            return m_text[m_at++];
        return 0;
    }
    std::optional<double> sum(int depth)
    {
        std::optional<double> left = product(depth);
        while (left) {
            const char sign = takeOneOf("+-");
            if (!sign)
                return left;
            const std::optional<double> right = product(depth);
            left = right ? std::optional(sign == '+' ? *left + *right : *left - *right) : std::nullopt;
        }
        return left;
    }
    std::optional<double> product(int depth)
    {
        std::optional<double> left = factor(depth);
        while (left) {
            const char sign = takeOneOf("*/");
            if (!sign)
                return left;
            const std::optional<double> right = factor(depth);
            left = right ? std::optional(sign == '*' ? *left * *right : *left / *right) : std::nullopt;
        }
        return left;
    }
    std::optional<double> factor(int depth)
    {
        if (depth > deepest)
            return std::nullopt;
        if (takeOneOf("-")) {
            const std::optional<double> value = factor(depth + 1);
            return value ? std::optional(-*value) : std::nullopt;
        }
        if (takeOneOf("(")) {
            const std::optional<double> value = sum(depth + 1);
            return value && takeOneOf(")") ? value : std::nullopt;
        }
        const std::size_t length = decimalLength(m_text.substr(m_at));
        if (length == 0 || m_text[m_at] == '+')
            return std::nullopt;
        const double value = numberFrom<double>(m_text.substr(m_at, length));
        m_at += length;
        return value;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

std::string printed(double number, std::chars_format format, int precision)
{
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number, format, precision);
    return {buffer, result.ptr};
}

} // namespace

namespace numbers {

int leadingInt(std::string_view text)
{
    text = withoutLeadingBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    std::int64_t value = 0;
    for (std::size_t i = 0; i < text.size() && isAsciiDigit(text[i]); ++i)
        value = std::min(value * 10 + (text[i] - '0'), most + 1);
    return static_cast<int>(negative ? -value : std::min(value, most));
}

float leadingFloat(std::string_view text)
{
    text = withoutLeadingBlanks(text);
    const std::size_t length = decimalLength(text);
    return numberFrom<float>(text.substr(0, length > 0 ? length + exponentLength(text.substr(length)) : 0));
}

float digitsOf(std::string_view code)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (const char character : code) {
        if (isAsciiDigit(character))
            value = std::min(value * 10 + (character - '0'), most);
    }
    return static_cast<float>(value);
}

std::string general(double number)
{
    return printed(number, std::chars_format::general, 6);
}

std::string twoDigits(double number)
{
    return printed(number, std::chars_format::general, 2);
}

std::string fixed(double number, int digits)
{
    return printed(number, std::chars_format::fixed, digits);
}

std::string plain(double number)
{
    std::string text = fixed(number, 6);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

std::optional<double> decimal(std::string_view text)
{
    const std::size_t length = decimalLength(text);
    if (length == 0 || length != text.size())
        return std::nullopt;
    const double number = numberFrom<double>(text);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> arithmetic(std::string_view text)
{
    return CellArithmetic(text).result();
}

} // namespace numbers
