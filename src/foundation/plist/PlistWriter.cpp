#include "foundation/plist/PlistWriter.h"

#include "foundation/Text.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

/// A line that is begun before the buffer is full seldom needs more than this beyond it.
constexpr std::size_t roomForLine = 1 << 12;
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

bool isPlainByte(char character)
{
    return character >= 0x20 && character < 0x7f && !isEscaped(character);
}

#ifdef __SSE2__

constexpr std::size_t blockSize = sizeof(__m128i);

/// Whether sixteen bytes are plain.
bool isPlainBlock(__m128i block)
{
    const auto are = [&](char byte) { return _mm_cmpeq_epi8(block, _mm_set1_epi8(byte)); };
    // What is not ASCII is negative here.
    const __m128i outside = _mm_or_si128(_mm_cmplt_epi8(block, _mm_set1_epi8(0x20)), are(0x7f));
    const __m128i escaped = _mm_or_si128(are('&'), _mm_or_si128(are('<'), are('>')));
    return _mm_movemask_epi8(_mm_or_si128(outside, escaped)) == 0;
}

bool copyPlainBlock(char* place, const char* bytes)
{
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(place), block);
    return isPlainBlock(block);
}

/// Of at least sixteen bytes. The last block ends where the text does, whatever of it was copied already.
bool copyPlainBlocks(char* place, std::string_view text)
{
    const std::size_t last = text.size() - blockSize;
    bool plain = copyPlainBlock(place + last, text.data() + last);
    for (std::size_t at = 0; at < last; at += blockSize)
        plain &= copyPlainBlock(place + at, text.data() + at);
    return plain;
}

/// Copies a text of one to two words: the first and the last of it, which may have bytes in common.
template <class Word>
bool copyPlainEnds(char* place, std::string_view text)
{
    const std::size_t end = text.size() - sizeof(Word);
    Word first;
    Word last;
    std::memcpy(&first, text.data(), sizeof first);
    std::memcpy(&last, text.data() + end, sizeof last);
    std::memcpy(place, &first, sizeof first);
    std::memcpy(place + end, &last, sizeof last);
    if constexpr (sizeof(Word) == sizeof(std::uint64_t))
        return isPlainBlock(_mm_set_epi64x(static_cast<long long>(last), static_cast<long long>(first)));
    else
        return isPlainBlock(
            _mm_set_epi32(static_cast<int>(last), static_cast<int>(first), static_cast<int>(last), static_cast<int>(first)));
}

#endif

const char* elementFor(PlistValue::Kind kind)
{
    return kind == PlistValue::Kind::integer ? "integer" : kind == PlistValue::Kind::real ? "real" : "date";
}

} // namespace

PlistWriter::PlistWriter(Sink sink) : m_sink(std::move(sink))
{
    append(documentHead);
}

void PlistWriter::makeRoom(std::size_t bytes)
{
    const std::size_t needed = m_used + bytes;
    m_buffer.resize(std::max(needed, std::min(2 * needed, fullBuffer + roomForLine)));
}

/// Copies the text and answers whether it may stand in the file as it is.
bool PlistWriter::copyPlain(char* place, std::string_view text)
{
#ifdef __SSE2__
    if (text.size() >= blockSize)
        return copyPlainBlocks(place, text);
    if (text.size() >= sizeof(std::uint64_t))
        return copyPlainEnds<std::uint64_t>(place, text);
    if (text.size() >= sizeof(std::uint32_t))
        return copyPlainEnds<std::uint32_t>(place, text);
#endif
    std::copy(text.begin(), text.end(), place);
    return std::all_of(text.begin(), text.end(), isPlainByte);
}

void PlistWriter::append(std::string_view bytes)
{
    std::copy(bytes.begin(), bytes.end(), roomFor(bytes.size()));
    m_used += bytes.size();
}

void PlistWriter::indent()
{
    std::fill_n(roomFor(m_depth), m_depth, '\t');
    m_used += m_depth;
}

void PlistWriter::handOver()
{
    m_buffer.resize(m_used);
    m_sink(m_buffer);
    m_used = 0;
}

/// Something comes next: a list or dictionary that was held back because it might be empty is not.
void PlistWriter::begin()
{
    beginLine();
    indent();
}

void PlistWriter::beginLineSlowly()
{
    if (m_pending) {
        appendTag("<", m_pending, ">\n");
        m_pending = nullptr;
        ++m_depth;
    }
    if (m_used >= fullBuffer)
        handOver();
}

void PlistWriter::appendTag(std::string_view before, std::string_view element, std::string_view after)
{
    append(before);
    append(element);
    append(after);
}

void PlistWriter::open(const char* element)
{
    begin();
    m_pending = element;
}

void PlistWriter::close(const char* element)
{
    if (m_pending) {
        appendTag("<", element, "/>\n");
        m_pending = nullptr;
        return;
    }
    --m_depth;
    indent();
    appendTag("</", element, ">\n");
}

void PlistWriter::appendEscaped(std::string_view text)
{
    if (copyPlain(roomFor(text.size()), text)) {
        m_used += text.size();
        return;
    }
    if (!isCleanUtf8(text))
        return appendEscaped(cleanUtf8(text));
    for (std::size_t at = 0; at < text.size();) {
        const auto found = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), isEscaped);
        const auto special = static_cast<std::size_t>(found - text.begin());
        append(text.substr(at, special - at));
        if (special == text.size())
            return;
        const char character = text[special];
        append(character == '&' ? "&amp;" : character == '<' ? "&lt;" : character == '>' ? "&gt;" : "&#13;");
        at = special + 1;
    }
}

void PlistWriter::key(std::string_view name)
{
    begin();
    append("<key>");
    appendEscaped(name);
    append("</key>\n");
}

void PlistWriter::text(std::string_view text)
{
    begin();
    append("<string>");
    appendEscaped(text);
    append(textEnd);
}

PlistWriter::Opening::Opening(std::string_view key, std::size_t depth)
{
    const std::string indent(depth, '\t');
    m_bytes = indent + "<key>" + std::string(key) + "</key>\n" + indent + "<string>";
    m_size = m_bytes.size();
    m_bytes.resize((m_size + step - 1) / step * step);
}

void PlistWriter::endEscaped(std::string_view text)
{
    appendEscaped(text);
    append(textEnd);
}

void PlistWriter::scalar(const char* element, std::string_view text)
{
    begin();
    appendTag("<", element, ">");
    appendEscaped(text);
    appendTag("</", element, ">\n");
}

void PlistWriter::boolean(bool value)
{
    begin();
    append(value ? "<true/>\n" : "<false/>\n");
}

void PlistWriter::data(std::string_view bytes)
{
    begin();
    append("<data>\n");
    const std::string text = encodeBase64(bytes);
    // Lines of 76 characters, less eight for every level of indent, but at least 16.
    const std::size_t indented = 8 * m_depth;
    const std::size_t width = std::max<std::size_t>(16, indented < 76 ? 76 - indented : 0) / 4 * 4;
    for (std::size_t at = 0; at < text.size(); at += width) {
        indent();
        append(std::string_view(text).substr(at, width));
        append("\n");
    }
    indent();
    append("</data>\n");
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
    append(documentEnd);
    handOver();
}

std::string plist::write(const PlistValue& value)
{
    std::string document;
    PlistWriter writer([&](std::string_view bytes) { document += bytes; });
    writer.value(value);
    writer.finish();
    return document;
}
