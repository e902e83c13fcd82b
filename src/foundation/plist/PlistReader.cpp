#include "foundation/plist/PlistReader.h"

#include "foundation/Text.h"

#include <array>
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

std::optional<PlistValue> scalarValue(PlistTokens& tokens, Token token)
{
    switch (token) {
    case Token::text: return PlistValue(std::string(tokens.text()));
    case Token::integer: return PlistValue::makeScalar(PlistValue::Kind::integer, std::string(tokens.text()));
    case Token::real: return PlistValue::makeScalar(PlistValue::Kind::real, std::string(tokens.text()));
    case Token::date: return PlistValue::makeScalar(PlistValue::Kind::date, std::string(tokens.text()));
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
