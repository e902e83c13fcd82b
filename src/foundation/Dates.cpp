#include "foundation/Dates.h"

#include <algorithm>

namespace {

struct DateParts {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// Reads digits from the text, at most this many; nothing when there is none.
std::optional<int> takeDigits(std::string_view& text, std::size_t most)
{
    std::size_t count = 0;
    int value = 0;
    while (count < most && count < text.size() && text[count] >= '0' && text[count] <= '9')
        value = value * 10 + (text[count++] - '0');
    if (count == 0)
        return std::nullopt;
    text.remove_prefix(count);
    return value;
}

std::optional<int> takeYear(std::string_view& text)
{
    const std::size_t before = text.size();
    const std::optional<int> year = takeDigits(text, 4);
    const std::size_t digits = before - text.size();
    if (!year || digits == 3)
        return std::nullopt;
    if (digits == 4)
        return year;
    return *year + (*year <= 68 ? 2000 : 1900);
}

/// The compact patterns ("%Y%m%d") need fixed widths: a year there is exactly four digits.
bool takePart(std::string_view& text, char letter, DateParts& parts)
{
    int* const part = letter == 'd' ? &parts.day
        : letter == 'm'             ? &parts.month
        : letter == 'H'             ? &parts.hour
        : letter == 'M'             ? &parts.minute
        : letter == 'S'             ? &parts.second
                                    : &parts.year;
    const std::optional<int> value = part == &parts.year ? takeYear(text) : takeDigits(text, 2);
    if (value)
        *part = *value;
    return value.has_value();
}

std::string_view trimmedBlanks(std::string_view text)
{
    const auto isBlank = [](char character) { return character == ' ' || character == '\t' || character == '\n' || character == '\r'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<DateParts> readParts(std::string_view text, std::string_view pattern)
{
    text = trimmedBlanks(text);
    DateParts parts;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size()) {
            if (!takePart(text, pattern[++i], parts))
                return std::nullopt;
        } else if (text.empty() || text.front() != pattern[i]) {
            return std::nullopt;
        } else {
            text.remove_prefix(1);
        }
    }
    const bool timeReads = parts.hour < 24 && parts.minute < 60 && parts.second < 60;
    return text.empty() && timeReads ? std::optional(parts) : std::nullopt;
}

void appendPadded(std::string& text, int value, std::size_t width)
{
    const std::string digits = std::to_string(value);
    text.append(width > digits.size() ? width - digits.size() : 0, '0').append(digits);
}

void appendPart(std::string& text, const QDate& date, const QTime& time, char letter)
{
    switch (letter) {
    case 'd': return appendPadded(text, date.day(), 2);
    case 'm': return appendPadded(text, date.month(), 2);
    case 'y': return appendPadded(text, ((date.year() % 100) + 100) % 100, 2);
    case 'Y': return appendPadded(text, date.year(), 4);
    case 'H': return appendPadded(text, time.hour(), 2);
    case 'M': return appendPadded(text, time.minute(), 2);
    case 'S': return appendPadded(text, time.second(), 2);
    default: text += letter;
    }
}

std::string writeParts(const QDate& date, const QTime& time, std::string_view pattern)
{
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size())
            appendPart(text, date, time, pattern[++i]);
        else
            text += pattern[i];
    }
    return text;
}

} // namespace

namespace dates {

std::optional<QDate> readDate(std::string_view text, std::string_view pattern)
{
    const std::optional<DateParts> parts = readParts(text, pattern);
    if (!parts || !QDate::isValid(parts->year, parts->month, parts->day))
        return std::nullopt;
    return QDate(parts->year, parts->month, parts->day);
}

std::optional<QDateTime> read(std::string_view text, std::string_view pattern)
{
    const std::optional<DateParts> parts = readParts(text, pattern);
    if (!parts || !QDate::isValid(parts->year, parts->month, parts->day))
        return std::nullopt;
    return QDateTime(QDate(parts->year, parts->month, parts->day), QTime(parts->hour, parts->minute, parts->second));
}

std::string write(const QDate& date, std::string_view pattern)
{
    return writeParts(date, QTime(0, 0), pattern);
}

std::string write(const QDateTime& moment, std::string_view pattern)
{
    return writeParts(moment.date(), moment.time(), pattern);
}

QDate fallback()
{
    return QDate(2000, 1, 1);
}

std::string platformText(const QDateTime& moment)
{
    return write(moment.toUTC(), "%Y-%m-%d %H:%M:%S +0000");
}

} // namespace dates
