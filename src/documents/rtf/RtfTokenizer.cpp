#include "documents/rtf/RtfTokenizer.h"

#include <algorithm>

namespace {

constexpr std::size_t longestWord = 64;
constexpr int largestParameter = 1'000'000'000;

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

int hexValue(char character)
{
    if (isDigit(character))
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    return character >= 'A' && character <= 'F' ? character - 'A' + 10 : -1;
}

} // namespace

RtfToken RtfTokenizer::next()
{
    // Line ends between tokens only make the file readable.
    while (m_at < m_bytes.size() && (m_bytes[m_at] == '\r' || m_bytes[m_at] == '\n' || m_bytes[m_at] == '\0'))
        ++m_at;
    m_begin = m_at;
    if (m_at >= m_bytes.size())
        return {};
    switch (m_bytes[m_at]) {
    case '{': ++m_at; return {RtfToken::Kind::groupOpen, {}};
    case '}': ++m_at; return {RtfToken::Kind::groupClose, {}};
    case '\\': ++m_at; return control();
    default: return plain();
    }
}

void RtfTokenizer::skip(std::size_t bytes)
{
    m_at += std::min(bytes, m_bytes.size() - m_at);
}

RtfToken RtfTokenizer::plain()
{
    const std::size_t end = std::min(m_bytes.find_first_of(std::string_view("{}\\\r\n\0", 6), m_at), m_bytes.size());
    RtfToken token {RtfToken::Kind::text, m_bytes.substr(m_at, end - m_at)};
    m_at = end;
    return token;
}

RtfToken RtfTokenizer::control()
{
    if (m_at >= m_bytes.size())
        return {};
    if (isLetter(m_bytes[m_at]))
        return word();
    if (m_bytes[m_at] == '\'' && m_at + 2 < m_bytes.size()) {
        const int high = hexValue(m_bytes[m_at + 1]);
        const int low = hexValue(m_bytes[m_at + 2]);
        m_at += 3;
        RtfToken token {RtfToken::Kind::hex, {}};
        token.byte = static_cast<unsigned char>(high < 0 || low < 0 ? '?' : high * 16 + low);
        return token;
    }
    RtfToken token {RtfToken::Kind::symbol, m_bytes.substr(m_at, 1)};
    // A paragraph's end may be written as a backslash before CR LF.
    m_at += m_bytes.substr(m_at).starts_with("\r\n") ? 2 : 1;
    return token;
}

RtfToken RtfTokenizer::word()
{
    const std::size_t start = m_at;
    while (m_at < m_bytes.size() && isLetter(m_bytes[m_at]) && m_at - start < longestWord)
        ++m_at;
    RtfToken token {RtfToken::Kind::word, m_bytes.substr(start, m_at - start)};
    const bool negative = m_at + 1 < m_bytes.size() && m_bytes[m_at] == '-' && isDigit(m_bytes[m_at + 1]);
    m_at += negative ? 1 : 0;
    while (m_at < m_bytes.size() && isDigit(m_bytes[m_at])) {
        token.hasParameter = true;
        token.parameter = std::min(token.parameter, largestParameter / 10) * 10 + (m_bytes[m_at++] - '0');
    }
    if (negative)
        token.parameter = -token.parameter;
    if (m_at < m_bytes.size() && m_bytes[m_at] == ' ')
        ++m_at;
    return token;
}
