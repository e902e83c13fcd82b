#include "foundation/plist/PlistTokens.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace {

/// An element's name as messages show it.
std::string named(std::string_view element)
{
    constexpr std::size_t longest = 40;
    std::string shown("<");
    shown.append(element.substr(0, longest)).push_back('>');
    return shown;
}

constexpr std::string_view xmlBlanks = " \t\r\n";
bool isXmlBlank(char character)
{
    return xmlBlanks.find(character) != std::string_view::npos;
}

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

struct ElementName {
    std::string_view name;
    PlistTokens::Token token;
};
constexpr std::array scalarElements {
    ElementName {"key", PlistTokens::Token::key},
    ElementName {"string", PlistTokens::Token::text},
    ElementName {"integer", PlistTokens::Token::integer},
    ElementName {"real", PlistTokens::Token::real},
    ElementName {"date", PlistTokens::Token::date},
    ElementName {"data", PlistTokens::Token::data},
    ElementName {"true", PlistTokens::Token::yes},
    ElementName {"false", PlistTokens::Token::no},
};

struct Entity {
    std::string_view name;
    char character;
};
constexpr std::array predefinedEntities {
    Entity {"amp", '&'}, Entity {"lt", '<'}, Entity {"gt", '>'}, Entity {"quot", '"'}, Entity {"apos", '\''}};

void appendUtf8(std::string& text, std::uint32_t character)
{
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr std::array<unsigned, 4> lead {0, 0xc0, 0xe0, 0xf0};
    text += static_cast<char>(lead[static_cast<std::size_t>(more)] | (character >> (6 * more)));
    for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
        text += static_cast<char>(0x80 | ((character >> shift) & 0x3f));
}

bool isXmlCharacter(std::uint32_t character)
{
    if (character < 0x20)
        return character == 9 || character == 10 || character == 13;
    return character <= 0x10ffff && (character < 0xd800 || character > 0xdfff) && character != 0xfffe && character != 0xffff;
}

} // namespace

PlistTokens::PlistTokens(std::string_view bytes) : m_bytes(bytes)
{
    if (m_bytes.starts_with(byteOrderMark))
        m_at = byteOrderMark.size();
}

int PlistTokens::line() const
{
    return 1 + static_cast<int>(std::count(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(m_at), '\n'));
}

PlistTokens::Token PlistTokens::fail(std::string_view what)
{
    if (m_error.empty())
        m_error = "line " + std::to_string(line()) + ": " + std::string(what);
    return Token::error;
}

bool PlistTokens::skipPast(std::string_view ending)
{
    const std::size_t found = m_bytes.find(ending, m_at);
    if (found == std::string_view::npos)
        return false;
    m_at = found + ending.size();
    return true;
}

bool PlistTokens::skipDocumentType()
{
    // An internal subset could declare entities; none is known here, so a reference to one is an error later.
    for (int depth = 0; m_at < m_bytes.size(); ++m_at) {
        const char character = m_bytes[m_at];
        if (character == '[')
            ++depth;
        else if (character == ']')
            --depth;
        else if (character == '>' && depth <= 0) {
            ++m_at;
            return true;
        }
    }
    return false;
}

PlistTokens::Skip PlistTokens::skipMarkup()
{
    const std::string_view rest = m_bytes.substr(m_at);
    if (rest.starts_with("<!--"))
        return skipPast("-->") ? Skip::again : Skip::failed;
    if (rest.starts_with("<?"))
        return skipPast("?>") ? Skip::again : Skip::failed;
    if (rest.starts_with("<!DOCTYPE"))
        return skipDocumentType() ? Skip::again : Skip::failed;
    return Skip::done;
}

PlistTokens::Token PlistTokens::next()
{
    if (!m_error.empty())
        return Token::error;
    if (m_owesArrayClose || m_owesDictClose) {
        const Token owed = m_owesArrayClose ? Token::arrayClose : Token::dictClose;
        m_owesArrayClose = m_owesDictClose = false;
        return owed;
    }
    for (;;) {
        while (m_at < m_bytes.size() && isXmlBlank(m_bytes[m_at]))
            ++m_at;
        if (m_at == m_bytes.size())
            return m_root == Root::open ? fail("the file ends too early") : Token::end;
        if (m_bytes[m_at] != '<')
            return fail("text stands where none may be");
        const Skip skip = skipMarkup();
        if (skip == Skip::failed)
            return fail("the file ends inside a comment or declaration");
        if (skip == Skip::again)
            continue;
        const std::size_t close = m_bytes.find('>', m_at);
        if (close == std::string_view::npos)
            return fail("the file ends inside a tag");
        const std::string_view tag = m_bytes.substr(m_at + 1, close - m_at - 1);
        m_at = close + 1;
        const std::string_view name = tag.substr(0, tag.find_first_of(xmlBlanks));
        if (m_root == Root::none && name == "plist")
            m_root = Root::open;
        else if (m_root == Root::open && name == "/plist")
            m_root = Root::closed;
        else if (m_root == Root::closed)
            return fail("something follows the end of the list");
        else
            return tag.starts_with('/') ? closingTag(tag) : openingTag(tag);
    }
}

PlistTokens::Token PlistTokens::closingTag(std::string_view tag)
{
    tag = tag.substr(0, tag.find_last_not_of(xmlBlanks) + 1);
    if (tag == "/dict")
        return Token::dictClose;
    if (tag == "/array")
        return Token::arrayClose;
    return fail(named(tag).append(" does not belong here"));
}

PlistTokens::Token PlistTokens::openingTag(std::string_view tag)
{
    const bool selfClosing = tag.ends_with('/');
    if (selfClosing)
        tag.remove_suffix(1);
    const std::string_view name = tag.substr(0, tag.find_first_of(xmlBlanks));
    if (name == "dict") {
        m_owesDictClose = selfClosing;
        return Token::dictOpen;
    }
    if (name == "array") {
        m_owesArrayClose = selfClosing;
        return Token::arrayOpen;
    }
    const auto element =
        std::find_if(scalarElements.begin(), scalarElements.end(), [&](const ElementName& entry) { return entry.name == name; });
    if (element == scalarElements.end())
        return fail(named(name).append(" is no element of a property list"));
    m_text = {};
    return selfClosing || content(name) ? element->token : Token::error;
}

/// Everything up to the element's closing tag, which has to follow: scalars hold text only.
bool PlistTokens::content(std::string_view name)
{
    const std::size_t start = m_at;
    std::size_t mark = m_bytes.find('<', m_at);
    if (mark == std::string_view::npos) {
        fail("the file ends inside " + named(name));
        return false;
    }
    std::string_view piece = m_bytes.substr(start, mark - start);
    const bool isPlain = piece.find_first_of("&\r") == std::string_view::npos;
    m_resolved.clear();
    if (isPlain)
        m_text = piece;
    else if (!appendContent(piece))
        return false;
    m_at = mark;
    while (m_bytes.compare(m_at, 2, "</") != 0) {
        if (isPlain && m_resolved.empty())
            m_resolved = m_text;
        const bool isData = m_bytes.compare(m_at, 9, "<![CDATA[") == 0;
        const std::size_t from = m_at + (isData ? 9 : 0);
        if (!isData && m_bytes.compare(m_at, 4, "<!--") != 0) {
            fail("an element stands inside " + named(name));
            return false;
        }
        if (!skipPast(isData ? "]]>" : "-->")) {
            fail("the file ends inside " + named(name));
            return false;
        }
        if (isData)
            appendQuoted(m_bytes.substr(from, m_at - 3 - from));
        mark = m_bytes.find('<', m_at);
        if (mark == std::string_view::npos || !appendContent(m_bytes.substr(m_at, mark - m_at))) {
            fail("the file ends inside " + named(name));
            return false;
        }
        m_at = mark;
        m_text = m_resolved;
    }
    if (!isPlain || !m_resolved.empty())
        m_text = m_resolved;
    const std::size_t close = m_bytes.find('>', m_at);
    const std::size_t nameEnd = m_at + 2 + name.size();
    const bool closes = close != std::string_view::npos && m_bytes.compare(m_at + 2, name.size(), name) == 0
        && m_bytes.find_first_not_of(xmlBlanks, nameEnd) == close;
    if (!closes) {
        fail(named(name).append(" is not closed"));
        return false;
    }
    m_at = close + 1;
    return true;
}

/// Text in which only line ends mean anything.
void PlistTokens::appendQuoted(std::string_view piece)
{
    for (std::size_t at = 0; at < piece.size(); ++at) {
        if (piece[at] != '\r')
            m_resolved += piece[at];
        else if (at + 1 == piece.size() || piece[at + 1] != '\n')
            m_resolved += '\n';
    }
}

bool PlistTokens::appendContent(std::string_view piece)
{
    for (std::size_t at = 0; at < piece.size();) {
        const std::size_t special = std::min(piece.find_first_of("&\r", at), piece.size());
        m_resolved += piece.substr(at, special - at);
        at = special;
        if (at == piece.size())
            break;
        if (piece[at] == '\r') {
            m_resolved += '\n';
            at += piece.substr(at).starts_with("\r\n") ? 2 : 1;
        } else if (!appendReference(piece, at)) {
            return false;
        }
    }
    return true;
}

bool PlistTokens::appendReference(std::string_view piece, std::size_t& at)
{
    const std::size_t end = piece.find(';', at);
    const std::string_view name = end == std::string_view::npos ? std::string_view() : piece.substr(at + 1, end - at - 1);
    at = end + 1;
    if (name.starts_with('#')) {
        const bool isHex = name.size() > 1 && name[1] == 'x';
        const std::string_view digits = name.substr(isHex ? 2 : 1);
        std::uint32_t character = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), character, isHex ? 16 : 10);
        if (read.ec == std::errc() && read.ptr == digits.data() + digits.size() && isXmlCharacter(character)) {
            appendUtf8(m_resolved, character);
            return true;
        }
    }
    const auto entity =
        std::find_if(predefinedEntities.begin(), predefinedEntities.end(), [&](const Entity& entry) { return entry.name == name; });
    if (entity == predefinedEntities.end()) {
        fail("\"&\" starts no entity that is known");
        return false;
    }
    m_resolved += entity->character;
    return true;
}
