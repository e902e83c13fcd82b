#include "foundation/Money.h"

#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <charconv>
#include <cmath>
#include <cstdlib>

struct MoneyFormatter::Symbols {
    std::unique_ptr<icu::DecimalFormat> format;
    std::string decimal;
    std::string group;
    /// Plain digits, "-" for minus and groups of three: what the quick way of writing knows.
    bool isPlain = false;
};

namespace {

constexpr std::string_view moneyBlanks[] = {" ", "\t", "\n", "\r", "\xc2\xa0", "\xe2\x80\xaf"};
constexpr std::string_view minusSigns[] = {"-", "\xe2\x88\x92"};

bool takePrefix(std::string_view& text, std::string_view prefix)
{
    if (prefix.empty() || !text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool takeBlank(std::string_view& text)
{
    for (const std::string_view blank : moneyBlanks) {
        if (takePrefix(text, blank))
            return true;
    }
    return false;
}

void trimMoneyBlanks(std::string_view& text)
{
    while (takeBlank(text)) { }
    for (bool again = true; again;) {
        again = false;
        for (const std::string_view blank : moneyBlanks) {
            if (text.ends_with(blank)) {
                text.remove_suffix(blank.size());
                again = true;
            }
        }
    }
}

bool takeMinus(std::string_view& text)
{
    for (const std::string_view sign : minusSigns) {
        if (takePrefix(text, sign))
            return true;
    }
    return false;
}

bool takeDigit(std::string_view& text, std::string& digits)
{
    if (text.empty() || text.front() < '0' || text.front() > '9')
        return false;
    digits += text.front();
    text.remove_prefix(1);
    return true;
}

/// A group mark, with a blank behind it allowed. Locales that group by a no-break space also take a plain blank.
bool takeGroupMark(std::string_view& text, std::string_view group)
{
    const bool groupsByBlank = group == "\xc2\xa0" || group == "\xe2\x80\xaf" || group == " ";
    if (groupsByBlank ? !takeBlank(text) : !takePrefix(text, group))
        return false;
    takeBlank(text);
    return true;
}

/// Adds one to the last digit of a decimal number, carrying over.
void increment(std::string& digits)
{
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] == '.')
            continue;
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

/// Two fraction digits, ties to even, of the shortest decimal number that stands for the value: the way ICU rounds.
std::string roundedToCents(double amount)
{
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, amount, std::chars_format::fixed);
    std::string digits(buffer, end.ptr);
    if (digits.find('.') == std::string::npos)
        digits += '.';
    const std::size_t keep = digits.find('.') + 3;
    const std::string rest = digits.size() > keep ? digits.substr(keep) : std::string();
    digits.resize(keep, '0');
    const bool tie = !rest.empty() && rest[0] == '5' && rest.find_first_not_of('0', 1) == std::string::npos;
    const bool lastIsOdd = (digits.back() - '0') % 2 == 1;
    if (tie ? lastIsOdd : !rest.empty() && rest[0] >= '5')
        increment(digits);
    return digits;
}

bool isDirectionMark(UChar32 character)
{
    return character == 0x200e || character == 0x200f || character == 0x61c;
}

/// The text with digits of every script as ASCII ones, and without the marks some locales put around a minus.
std::string withPlainDigits(std::string_view text)
{
    std::string plain;
    const auto length = static_cast<int32_t>(text.size());
    for (int32_t at = 0; at < length;) {
        const int32_t start = at;
        UChar32 character = 0;
        U8_NEXT(text.data(), at, length, character);
        if (isDirectionMark(character))
            continue;
        const int32_t digit = character < 0x80 ? -1 : u_charDigitValue(character);
        if (digit >= 0)
            plain += static_cast<char>('0' + digit);
        else
            plain.append(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(at - start)));
    }
    return plain;
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

} // namespace

MoneyFormatter::MoneyFormatter(const std::string& locale) : m_symbols(std::make_unique<Symbols>())
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(icu::Locale(locale.c_str()), UNUM_DECIMAL, status));
    m_symbols->format.reset(dynamic_cast<icu::DecimalFormat*>(format.release()));
    icu::DecimalFormat& decimal = *m_symbols->format;
    decimal.setMinimumFractionDigits(2);
    decimal.setMaximumFractionDigits(2);
    decimal.setGroupingUsed(true);
    decimal.setRoundingMode(icu::DecimalFormat::kRoundHalfEven);
    const icu::DecimalFormatSymbols* symbols = decimal.getDecimalFormatSymbols();
    m_symbols->decimal = utf8(symbols->getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
    m_symbols->group = utf8(symbols->getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
    const bool plainDigits = utf8(symbols->getSymbol(icu::DecimalFormatSymbols::kZeroDigitSymbol)) == "0";
    const bool plainMinus = utf8(symbols->getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol)) == "-";
    const bool byThree = decimal.getGroupingSize() == 3 && decimal.getSecondaryGroupingSize() <= 0;
    m_symbols->isPlain = plainDigits && plainMinus && byThree && decimal.getMinimumGroupingDigits() <= 1;
}

MoneyFormatter::~MoneyFormatter() = default;

std::optional<double> MoneyFormatter::read(std::string_view text) const
{
    if (m_symbols->isPlain)
        return readPlain(text);
    return readPlain(withPlainDigits(text));
}

std::optional<double> MoneyFormatter::readPlain(std::string_view text) const
{
    trimMoneyBlanks(text);
    const bool negative = takeMinus(text);
    std::string digits;
    bool any = false;
    while (!text.empty()) {
        if (takeDigit(text, digits)) {
            any = true;
            continue;
        }
        if (!any || !takeGroupMark(text, m_symbols->group))
            break;
        if (text.empty() || text.front() < '0' || text.front() > '9')
            return std::nullopt;
    }
    if (takePrefix(text, m_symbols->decimal)) {
        digits += '.';
        while (takeDigit(text, digits))
            any = true;
    }
    if (!any || !text.empty())
        return std::nullopt;
    // strtod follows the process's locale; this reader must not.
    double number = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool hasWhole = digits.substr(0, digits.find('.')).find_first_not_of('0') != std::string::npos;
    if (end.ec == std::errc::result_out_of_range && hasWhole)
        return std::nullopt;
    number = negative ? -number : number;
    return number >= smallest && number <= largest ? std::optional(number) : std::nullopt;
}

float MoneyFormatter::value(std::string_view text) const
{
    return text.empty() ? 0.0f : static_cast<float>(read(text).value_or(0));
}

std::string MoneyFormatter::write(double amount) const
{
    if (!std::isfinite(amount))
        amount = 0;
    std::string text;
    if (m_symbols->isPlain) {
        const std::string plain = roundedToCents(std::fabs(amount));
        const std::size_t whole = plain.size() - 3;
        const bool isZero = plain.find_first_not_of("0.") == std::string_view::npos;
        if (amount < 0 && !isZero)
            text += '-';
        for (std::size_t i = 0; i < whole; ++i) {
            if (i > 0 && (whole - i) % 3 == 0)
                text += m_symbols->group;
            text += plain[i];
        }
        return text.append(m_symbols->decimal).append(plain, whole + 1);
    }
    if (std::fabs(amount) <= 0.005)
        amount = 0;
    icu::UnicodeString formatted;
    m_symbols->format->format(amount, formatted);
    return utf8(formatted);
}

std::optional<std::string> MoneyFormatter::normalised(std::string_view text) const
{
    const std::optional<double> number = read(text);
    return number ? std::optional(write(*number)) : std::nullopt;
}

std::string money::localeFor(std::string_view wanted)
{
    if (!wanted.empty())
        return std::string(wanted);
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LC_MONETARY", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value)
            continue;
        const std::string name = std::string(value).substr(0, std::string_view(value).find_first_of(".@"));
        return name == "C" || name == "POSIX" ? "en_GB" : name;
    }
    return "en_GB";
}
