#include "contacts/VcardProperty.h"

#include "foundation/Text.h"
#include "foundation/Trimmed.h"

#include <QByteArray>
#include <QStringDecoder>

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr char usualCharset[] = "windows-1252";

std::string capitals(std::string_view text)
{
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    }
    return result;
}

/// The position of the first such character outside of quotation marks.
std::size_t findUnquoted(std::string_view text, char wanted)
{
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"')
            quoted = !quoted;
        else if (text[at] == wanted && !quoted)
            return at;
    }
    return std::string_view::npos;
}

std::vector<std::string_view> splitUnquoted(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end; (end = findUnquoted(text, separator)) != std::string_view::npos; text.remove_prefix(end + 1))
        parts.push_back(text.substr(0, end));
    parts.push_back(text);
    return parts;
}

/// At semicolons that no backslash stands before; what comes after the last part that counts is left out.
std::vector<std::string_view> splitValue(std::string_view value)
{
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] == '\\') {
            ++at;
        } else if (value[at] == ';') {
            parts.push_back(value.substr(begin, at - begin));
            begin = at + 1;
            if (parts.size() == mostVcardValues)
                return parts;
        }
    }
    parts.push_back(value.substr(std::min(begin, value.size())));
    return parts;
}

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char letter = static_cast<char>(digit | 0x20);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// "=4A" is one byte; anything else after "=" stays as it is.
std::string fromQuotedPrintable(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isCode = text[at] == '=' && at + 2 < text.size() && hexDigit(text[at + 1]) >= 0 && hexDigit(text[at + 2]) >= 0;
        bytes += isCode ? static_cast<char>(hexDigit(text[at + 1]) * 16 + hexDigit(text[at + 2])) : text[at];
        at += isCode ? 2 : 0;
    }
    return bytes;
}

std::string toUtf8(std::string_view bytes, const std::string& charset)
{
    if (charset.empty() && isUtf8(bytes))
        return cleanUtf8(bytes);
    const auto size = static_cast<int32_t>(bytes.size());
    icu::UnicodeString text(bytes.data(), size, charset.empty() ? usualCharset : charset.c_str());
    if (text.isEmpty() && !bytes.empty()) {
        // Nobody knows a character set of that name.
        if (isUtf8(bytes))
            return cleanUtf8(bytes);
        text = icu::UnicodeString(bytes.data(), size, usualCharset);
    }
    std::string utf8;
    text.toUTF8String(utf8);
    return cleanUtf8(utf8);
}

std::string unescaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\' || at + 1 == text.size()) {
            result += text[at];
            continue;
        }
        const char escaped = text[++at];
        if (escaped == 'n' || escaped == 'N')
            result += '\n';
        else if (std::string_view("\\,;:").find(escaped) != std::string_view::npos)
            result += escaped;
        else
            result.append({'\\', escaped});
    }
    return result;
}

enum class Encoding { plain, quotedPrintable, base64 };

struct Header {
    Encoding encoding = Encoding::plain;
    std::string charset;
};

Encoding encodingNamed(std::string_view name)
{
    if (name == "QUOTED-PRINTABLE")
        return Encoding::quotedPrintable;
    return name == "BASE64" || name == "B" ? Encoding::base64 : Encoding::plain;
}

/// "TYPE=a,b", "CHARSET=x", or the bare words of older cards.
void readParameter(std::string_view parameter, VcardProperty& property, Header& header)
{
    const std::size_t equals = parameter.find('=');
    const std::string key = equals == std::string_view::npos ? std::string() : capitals(trimmed(parameter.substr(0, equals)));
    std::string value = equals == std::string_view::npos ? std::string(parameter) : std::string(parameter.substr(equals + 1));
    std::erase(value, '"');
    value = trimmed(value);
    if (key == "CHARSET") {
        header.charset = value;
        return;
    }
    value = capitals(value);
    const Encoding encoding = encodingNamed(value);
    if (key == "ENCODING" || (key.empty() && encoding != Encoding::plain && value != "B")) {
        header.encoding = encoding;
    } else if (key == "TYPE" || key.empty()) {
        for (const std::string_view type : splitUnquoted(value, ','))
            property.types.emplace_back(trimmed(type));
    }
}

bool isName(std::string_view name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') || letter == '-' || letter == '_';
    });
}

/// Name, group and parameters; false when there are none.
bool readHeader(std::string_view head, VcardProperty& property, Header& header)
{
    const std::vector<std::string_view> parts = splitUnquoted(head, ';');
    std::string_view name = trimmed(parts.front());
    if (const std::size_t dot = name.rfind('.'); dot != std::string_view::npos) {
        property.group = capitals(name.substr(0, dot));
        name.remove_prefix(dot + 1);
    }
    property.name = capitals(name);
    std::for_each(parts.begin() + 1, parts.end(), [&](std::string_view part) { readParameter(part, property, header); });
    return isName(property.name);
}

std::string decoded(std::string_view value, const Header& header)
{
    if (header.encoding == Encoding::quotedPrintable)
        return toUtf8(fromQuotedPrintable(value), header.charset);
    return toUtf8(value, header.charset);
}

void readValues(std::string_view value, const Header& header, VcardProperty& property)
{
    if (header.encoding == Encoding::base64)
        return;
    // A letter of another character set may hold the byte of a backslash; one of an encoded value may be a semicolon.
    const bool isCoded = header.encoding == Encoding::quotedPrintable;
    const std::string converted = isCoded ? std::string(value) : decoded(value, header);
    for (const std::string_view part : splitValue(converted))
        property.values.emplace_back(trimmed(unescaped(isCoded ? decoded(part, header) : std::string(part))));
    property.text = trimmed(unescaped(isCoded ? decoded(value, header) : converted));
}

bool isQuotedPrintable(std::string_view logical)
{
    const std::size_t colon = findUnquoted(logical, ':');
    if (colon == std::string_view::npos)
        return false;
    VcardProperty property;
    Header header;
    readHeader(logical.substr(0, colon), property, header);
    return header.encoding == Encoding::quotedPrintable;
}

/// Files of two bytes a character become UTF-8; others stay as they are.
std::string convertedFile(std::string_view bytes)
{
    const bool little = bytes.starts_with("\xff\xfe");
    if (!little && !bytes.starts_with("\xfe\xff"))
        return {};
    QStringDecoder decoder(little ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
    const QString text = decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())).sliced(2));
    return text.toStdString();
}

} // namespace

bool VcardProperty::hasType(std::string_view type) const
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

VcardLines::VcardLines(std::string_view bytes) : m_converted(convertedFile(bytes)), m_bytes(m_converted.empty() ? bytes : m_converted)
{
    if (m_bytes.starts_with("\xef\xbb\xbf"))
        m_bytes.remove_prefix(3);
    m_lineFeed = m_bytes.find('\n');
    m_carriageReturn = m_bytes.find('\r');
}

std::string_view VcardLines::peekLine()
{
    if (m_lineFeed < m_at)
        m_lineFeed = m_bytes.find('\n', m_at);
    if (m_carriageReturn < m_at)
        m_carriageReturn = m_bytes.find('\r', m_at);
    return m_bytes.substr(m_at, std::min(m_lineFeed, m_carriageReturn) - m_at);
}

std::string_view VcardLines::takeLine()
{
    const std::string_view line = peekLine();
    m_at += line.size();
    // Some programs end lines with CR CR LF.
    for (const std::string_view lineEnd : {"\r\r\n", "\r\n", "\n", "\r"}) {
        if (m_bytes.substr(m_at).starts_with(lineEnd)) {
            m_at += lineEnd.size();
            break;
        }
    }
    ++m_line;
    return line;
}

void VcardLines::unfold(std::string& logical, bool& tooLong)
{
    logical = takeLine().substr(0, longestVcardProperty + 1);
    std::optional<bool> isCoded;
    while (!atEnd()) {
        const std::string_view following = peekLine();
        const bool mayBeBroken = logical.ends_with('=');
        if (mayBeBroken && !isCoded)
            isCoded = isQuotedPrintable(logical);
        const bool isSoftBreak = mayBeBroken && *isCoded && capitals(trimmed(following.substr(0, 64))) != "END:VCARD";
        const bool isFolded = following.starts_with(' ') || following.starts_with('\t');
        if (!isSoftBreak && !isFolded)
            break;
        if (isSoftBreak)
            logical.pop_back();
        logical += following.substr(isSoftBreak ? 0 : 1, longestVcardProperty + 1 - std::min(logical.size(), longestVcardProperty + 1));
        takeLine();
    }
    tooLong = logical.size() > longestVcardProperty;
}

bool VcardLines::next(VcardProperty& property)
{
    while (!atEnd()) {
        if (peekLine().empty()) {
            takeLine();
            continue;
        }
        property = {};
        property.line = m_line;
        std::string logical;
        unfold(logical, property.isTooLong);
        if (trimmed(logical).empty())
            continue;
        const std::size_t colon = findUnquoted(logical, ':');
        Header header;
        if (colon == std::string::npos || !readHeader(std::string_view(logical).substr(0, colon), property, header)) {
            // Encoded data that is not indented looks like anything.
            if (m_inData)
                continue;
            property.isBroken = true;
            return true;
        }
        m_inData = header.encoding == Encoding::base64;
        if (!property.isTooLong)
            readValues(std::string_view(logical).substr(colon + 1), header, property);
        return true;
    }
    return false;
}
