// A quick hash over bytes that come in pieces of any size; tells whether what was read back is what was written.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

class ByteHash {
public:
    void add(std::string_view bytes)
    {
        m_size += bytes.size();
        while (m_pending > 0 && !bytes.empty()) {
            addByte(bytes.front());
            bytes.remove_prefix(1);
        }
        for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
            std::uint64_t word;
            std::memcpy(&word, bytes.data(), 8);
            mix(word);
        }
        for (const char byte : bytes)
            addByte(byte);
    }
    std::uint64_t value() const { return (m_state ^ m_word ^ m_size) * prime; }
    std::uint64_t size() const { return m_size; }

    friend bool operator==(const ByteHash& a, const ByteHash& b) { return a.m_size == b.m_size && a.value() == b.value(); }

private:
    static constexpr std::uint64_t prime = 1099511628211u;

    void mix(std::uint64_t word)
    {
        m_state = (m_state ^ word) * prime;
        m_state ^= m_state >> 29;
    }
    void addByte(char byte)
    {
        m_word |= static_cast<std::uint64_t>(static_cast<unsigned char>(byte)) << (8 * m_pending);
        if (++m_pending < 8)
            return;
        mix(m_word);
        m_word = 0;
        m_pending = 0;
    }

    std::uint64_t m_state = 14695981039346656037u;
    std::uint64_t m_word = 0;
    std::uint64_t m_size = 0;
    unsigned m_pending = 0;
};
