#include "foundation/plist/PlistReader.h"

#include "foundation/Text.h"
#include "foundation/Trimmed.h"

#include <array>
#include <charconv>
#include <chrono>
#include <optional>

namespace {

using Token = PlistTokens::Token;

/// Decodes base64, skipping blanks; nothing when a character does not belong.
std::optional<std::string> decodeBase64(std::string_view text)
{
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char character : text) {
        int value = -1;
        if (character >= 'A' && character <= 'Z')
            value = character - 'A';
        else if (character >= 'a' && character <= 'z')
            value = character - 'a' + 26;
        else if (character >= '0' && character <= '9')
            value = character - '0' + 52;
        else if (character == '+' || character == '/')
            value = character == '+' ? 62 : 63;
        else if (character == '=' || character == ' ' || character == '\t' || character == '\n' || character == '\r')
            continue;
        if (value < 0)
            return std::nullopt;
        bits = (bits << 6) | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xff);
        }
    }
    return bytes;
}

bool opensContainer(Token token)
{
    return token == Token::dictOpen || token == Token::arrayOpen;
}

bool isInteger(std::string_view text)
{
    std::int64_t number = 0;
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex)
        text.remove_prefix(2);
    else if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number, isHex ? 16 : 10);
    // A number that is too large is still one.
    return !text.empty() && read.ec != std::errc::invalid_argument && read.ptr == text.data() + text.size() && text.front() != '-';
}

bool isReal(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && read.ec != std::errc::invalid_argument && read.ptr == text.data() + text.size();
}

/// "2020-05-05T10:39:44Z", and a day and time that there are.
bool isDate(std::string_view text)
{
    constexpr std::string_view shape = "0000-00-00T00:00:00Z";
    if (text.size() != shape.size())
        return false;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (shape[i] == '0' ? !isDigit : text[i] != shape[i])
            return false;
    }
    const auto number = [text](std::size_t from, std::size_t length) {
        int value = 0;
        std::from_chars(text.data() + from, text.data() + from + length, value);
        return value;
    };
    const std::chrono::year_month_day day {std::chrono::year(number(0, 4)), std::chrono::month(static_cast<unsigned>(number(5, 2))),
        std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    return day.ok() && number(0, 4) > 0 && number(11, 2) < 24 && number(14, 2) < 60 && number(17, 2) < 60;
}

/// What does not read as its element says is taken as text: written back as it is, it would make the file unreadable for others.
PlistValue scalarOrText(PlistValue::Kind kind, std::string_view text)
{
    const std::string_view bare = trimmed(text);
    const bool reads = kind == PlistValue::Kind::integer ? isInteger(bare) : kind == PlistValue::Kind::real ? isReal(bare) : isDate(bare);
    return reads ? PlistValue::makeScalar(kind, std::string(text)) : PlistValue(std::string(text));
}

std::optional<PlistValue> scalarValue(PlistTokens& tokens, Token token)
{
    switch (token) {
    case Token::text: return PlistValue(std::string(tokens.text()));
    case Token::integer: return scalarOrText(PlistValue::Kind::integer, tokens.text());
    case Token::real: return scalarOrText(PlistValue::Kind::real, tokens.text());
    case Token::date: return scalarOrText(PlistValue::Kind::date, tokens.text());
    case Token::yes: return PlistValue::makeBoolean(true);
    case Token::no: return PlistValue::makeBoolean(false);
    case Token::data: break;
    default: return std::nullopt;
    }
    std::optional<std::string> bytes = decodeBase64(tokens.text());
    return bytes ? std::optional(PlistValue::makeData(std::move(*bytes))) : std::nullopt;
}

/// A list or dictionary that is still open.
struct OpenContainer {
    PlistValue value;
    std::string key;
    bool hasKey = false;
};

Error tokenError(PlistTokens& tokens, std::string_view what)
{
    tokens.fail(what);
    return {tokens.error()};
}

/// Puts a finished value into the container it stands in.
bool place(OpenContainer& container, PlistValue value)
{
    if (container.value.isArray()) {
        container.value.append(std::move(value));
        return true;
    }
    if (!container.hasKey)
        return false;
    container.value.set(container.key, std::move(value));
    container.hasKey = false;
    return true;
}

Result<PlistValue> readContainer(PlistTokens& tokens, Token first)
{
    std::vector<OpenContainer> open;
    for (Token token = first;; token = tokens.next()) {
        if (opensContainer(token)) {
            if (static_cast<int>(open.size()) == plist::deepestNesting)
                return tokenError(tokens, "lists and dictionaries are nested too deep");
            open.push_back({token == Token::dictOpen ? PlistValue::makeDict() : PlistValue::makeArray(), {}, false});
            continue;
        }
        OpenContainer& innermost = open.back();
        if (token == Token::key) {
            if (!innermost.value.isDict() || innermost.hasKey)
                return tokenError(tokens, "a key stands where a value belongs");
            // Cleaned here, not when it is written: two keys must not become one only then.
            innermost.key = cleanUtf8(tokens.text());
            innermost.hasKey = true;
            continue;
        }
        std::optional<PlistValue> finished;
        if (token == Token::dictClose || token == Token::arrayClose) {
            const bool matches = innermost.value.isDict() == (token == Token::dictClose);
            if (!matches || innermost.hasKey)
                return tokenError(tokens, "a list or dictionary is closed where it cannot be");
            finished = std::move(innermost.value);
            open.pop_back();
            if (open.empty())
                return std::move(*finished);
        } else {
            finished = scalarValue(tokens, token);
        }
        if (!finished)
            return tokenError(tokens, token == Token::end ? "the file ends too early" : "a value does not read");
        if (!place(open.back(), std::move(*finished)))
            return tokenError(tokens, "a value has no key");
    }
}

} // namespace

namespace plist {

Result<PlistValue> readValue(PlistTokens& tokens, PlistTokens::Token first)
{
    if (opensContainer(first))
        return readContainer(tokens, first);
    std::optional<PlistValue> value = scalarValue(tokens, first);
    if (!value)
        return tokenError(tokens, first == Token::end ? "the file is empty" : "a value does not read");
    return std::move(*value);
}

Result<PlistValue> read(std::string_view bytes)
{
    if (isBinary(bytes))
        return readBinary(bytes);
    if (!isUtf8(bytes))
        return Error {"the file is not UTF-8"};
    PlistTokens tokens(bytes);
    Result<PlistValue> value = readValue(tokens, tokens.next());
    if (value && tokens.next() != Token::end)
        return tokenError(tokens, "something follows the end of the list");
    return value;
}

} // namespace plist
