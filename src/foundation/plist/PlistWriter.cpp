#include "foundation/plist/PlistWriter.h"

#include "foundation/Text.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t writerBuffer = 1 << 20;
constexpr std::string_view documentHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view documentEnd = "</plist>\n";

std::string encodeBase64(std::string_view bytes)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        unsigned group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = (group << 8) | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i <= bytes.size() ? digits[(group >> (18 - 6 * i)) & 0x3f] : '=';
    }
    return text;
}

bool isEscaped(char character)
{
    return character == '&' || character == '<' || character == '>' || character == '\r';
}

/// Marks what stands in the file as it is: visible ASCII that needs no escaping.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain {};
    for (std::size_t byte = 0x20; byte < 0x7f; ++byte)
        plain[byte] = byte != '&' && byte != '<' && byte != '>';
    return plain;
}();

bool isPlain(std::string_view text)
{
    bool plain = true;
    for (const char byte : text)
        plain &= plainBytes[static_cast<unsigned char>(byte)];
    return plain;
}

const char* elementFor(PlistValue::Kind kind)
{
    return kind == PlistValue::Kind::integer ? "integer" : kind == PlistValue::Kind::real ? "real" : "date";
}

} // namespace

PlistWriter::PlistWriter(Sink sink) : m_sink(std::move(sink))
{
    m_buffer.reserve(writerBuffer + writerBuffer / 8);
    m_buffer = documentHead;
}

void PlistWriter::indent()
{
    m_buffer.append(m_depth, '\t');
}

void PlistWriter::flushWhenFull()
{
    if (m_buffer.size() < writerBuffer)
        return;
    m_sink(m_buffer);
    m_buffer.clear();
}

/// Something comes next: a list or dictionary that was held back because it might be empty is not.
void PlistWriter::begin()
{
    beginLine();
    indent();
}

void PlistWriter::beginLine()
{
    if (m_pending) {
        m_buffer.append("<").append(m_pending).append(">\n");
        m_pending = nullptr;
        ++m_depth;
    }
    flushWhenFull();
}

void PlistWriter::open(const char* element)
{
    begin();
    m_pending = element;
}

void PlistWriter::close(const char* element)
{
    if (m_pending) {
        m_buffer.append("<").append(element).append("/>\n");
        m_pending = nullptr;
        return;
    }
    --m_depth;
    indent();
    m_buffer.append("</").append(element).append(">\n");
}

void PlistWriter::appendEscaped(std::string_view text)
{
    if (isPlain(text)) {
        m_buffer += text;
        return;
    }
    if (!isCleanUtf8(text))
        return appendEscaped(cleanUtf8(text));
    for (std::size_t at = 0; at < text.size();) {
        const auto found = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), isEscaped);
        const auto special = static_cast<std::size_t>(found - text.begin());
        m_buffer += text.substr(at, special - at);
        if (special == text.size())
            return;
        const char character = text[special];
        m_buffer += character == '&' ? "&amp;" : character == '<' ? "&lt;" : character == '>' ? "&gt;" : "&#13;";
        at = special + 1;
    }
}

void PlistWriter::key(std::string_view name)
{
    begin();
    m_buffer += "<key>";
    appendEscaped(name);
    m_buffer += "</key>\n";
}

void PlistWriter::text(std::string_view text)
{
    begin();
    m_buffer += "<string>";
    appendEscaped(text);
    m_buffer += "</string>\n";
}

std::string PlistWriter::opening(std::string_view key, std::size_t depth)
{
    const std::string indent(depth, '\t');
    return indent + "<key>" + std::string(key) + "</key>\n" + indent + "<string>";
}

void PlistWriter::textAfter(std::string_view opening, std::string_view text)
{
    beginLine();
    m_buffer += opening;
    appendEscaped(text);
    m_buffer += "</string>\n";
}

void PlistWriter::scalar(const char* element, std::string_view text)
{
    begin();
    m_buffer.append("<").append(element).append(">");
    appendEscaped(text);
    m_buffer.append("</").append(element).append(">\n");
}

void PlistWriter::boolean(bool value)
{
    begin();
    m_buffer += value ? "<true/>\n" : "<false/>\n";
}

void PlistWriter::data(std::string_view bytes)
{
    begin();
    m_buffer += "<data>\n";
    const std::string text = encodeBase64(bytes);
    // Lines of 76 characters, less eight for every level of indent, but at least 16.
    const std::size_t indented = 8 * m_depth;
    const std::size_t width = std::max<std::size_t>(16, indented < 76 ? 76 - indented : 0) / 4 * 4;
    for (std::size_t at = 0; at < text.size(); at += width) {
        indent();
        m_buffer.append(text, at, width).append("\n");
    }
    indent();
    m_buffer += "</data>\n";
}

void PlistWriter::value(const PlistValue& value)
{
    switch (value.kind()) {
    case PlistValue::Kind::text: return text(value.raw());
    case PlistValue::Kind::boolean: return boolean(value.isTrue());
    case PlistValue::Kind::data: return data(value.raw());
    case PlistValue::Kind::array:
        openArray();
        for (const PlistValue& entry : value.array())
            this->value(entry);
        return closeArray();
    case PlistValue::Kind::dict: {
        std::vector<const PlistValue::Dict::value_type*> entries;
        for (const auto& entry : value.dict())
            entries.push_back(&entry);
        std::sort(entries.begin(), entries.end(), [](const auto* a, const auto* b) { return a->first < b->first; });
        openDict();
        for (const auto* entry : entries) {
            key(entry->first);
            this->value(entry->second);
        }
        return closeDict();
    }
    default: return scalar(elementFor(value.kind()), value.raw());
    }
}

void PlistWriter::finish()
{
    m_buffer += documentEnd;
    m_sink(m_buffer);
    m_buffer.clear();
}

std::string plist::write(const PlistValue& value)
{
    std::string document;
    PlistWriter writer([&](std::string_view bytes) { document += bytes; });
    writer.value(value);
    writer.finish();
    return document;
}
