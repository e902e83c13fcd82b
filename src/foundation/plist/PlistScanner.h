// The short way through a property list in the writer's own layout: what is expected is compared as it stands, and a text between its
// tags is found in one pass.
//
// Every step either takes exactly what it was asked for or leaves the place where it was; then the token scanner goes on from there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

class PlistScanner {
public:
    PlistScanner(std::string_view bytes, std::size_t position) : m_bytes(bytes), m_at(position) { }

    std::size_t position() const { return m_at; }
    std::size_t size() const { return m_bytes.size(); }

    /// Whether these bytes stand here; then they are passed.
    bool take(std::string_view expected)
    {
        if (m_bytes.size() - m_at < expected.size() || std::memcmp(m_bytes.data() + m_at, expected.data(), expected.size()) != 0)
            return false;
        m_at += expected.size();
        return true;
    }

    /// The text up to the closing tag of its string, which is passed; nothing when something in it has to be resolved or cleaned.
    std::optional<std::string_view> takePlainText()
    {
        const std::size_t end = plainEnd();
        const std::string_view text = m_bytes.substr(m_at, end - m_at);
        const std::size_t start = std::exchange(m_at, end);
        if (take("</string>"))
            return text;
        m_at = start;
        return std::nullopt;
    }

    /// The eight bytes that stand so far on, for telling apart what comes without comparing it all.
    std::uint64_t wordAt(std::size_t offset) const
    {
        std::uint64_t word = 0;
        if (m_bytes.size() - m_at >= offset + sizeof word)
            std::memcpy(&word, m_bytes.data() + m_at + offset, sizeof word);
        return word;
    }

private:
    /// Bytes that end a plain text: a tag, a reference, what no text may hold, and the start of U+F000 and up, where U+FFFE lies.
    static bool endsPlainText(unsigned char byte)
    {
        return byte == '<' || byte == '&' || byte == 0xef || (byte < 0x20 && byte != '\t' && byte != '\n');
    }

    std::size_t plainEnd() const
    {
        std::size_t at = m_at;
#ifdef __SSE2__
        for (; at + 16 <= m_bytes.size(); at += 16) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(m_bytes.data() + at));
            const auto are = [&](char byte) { return _mm_cmpeq_epi8(block, _mm_set1_epi8(byte)); };
            const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x1f)), block);
            const __m128i refused = _mm_andnot_si128(_mm_or_si128(are('\t'), are('\n')), control);
            const __m128i ends = _mm_or_si128(_mm_or_si128(are('<'), are('&')), _mm_or_si128(are('\xef'), refused));
            if (const int found = _mm_movemask_epi8(ends))
                return at + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(found)));
        }
#endif
        while (at < m_bytes.size() && !endsPlainText(static_cast<unsigned char>(m_bytes[at])))
            ++at;
        return at;
    }

    std::string_view m_bytes;
    std::size_t m_at;
};
