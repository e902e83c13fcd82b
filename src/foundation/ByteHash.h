// A quick hash over bytes that come in pieces of any size; tells whether what was read back is what was written.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

class ByteHash {
public:
    void add(std::string_view bytes)
    {
        m_size += bytes.size();
        if (m_pending > 0 && !addPending(bytes))
            return;
        for (; bytes.size() >= m_block.size(); bytes.remove_prefix(m_block.size()))
            mixBlock(bytes.data());
        addPending(bytes);
    }
    std::uint64_t value() const
    {
        std::uint64_t hash = m_size;
        for (const std::uint64_t lane : m_lanes)
            hash = mixed(hash, lane);
        for (std::size_t at = 0; at < m_pending; at += sizeof hash)
            hash = mixed(hash, wordAt(m_block.data() + at, std::min(sizeof hash, m_pending - at)));
        return hash;
    }
    std::uint64_t size() const { return m_size; }

    friend bool operator==(const ByteHash& a, const ByteHash& b) { return a.m_size == b.m_size && a.value() == b.value(); }

private:
    static constexpr std::uint64_t prime = 1099511628211u;

    static std::uint64_t mixed(std::uint64_t hash, std::uint64_t word)
    {
        hash = (hash ^ word) * prime;
        return hash ^ (hash >> 29);
    }
    static std::uint64_t wordAt(const char* bytes, std::size_t count = sizeof(std::uint64_t))
    {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, count);
        return word;
    }
    /// Every word of a block goes into a hash of its own, since none of them has to wait for another then.
    void mixBlock(const char* block)
    {
        for (std::size_t i = 0; i < m_lanes.size(); ++i)
            m_lanes[i] = mixed(m_lanes[i], wordAt(block + i * sizeof(std::uint64_t)));
    }
    /// Takes bytes until the block is full; answers whether it is.
    bool addPending(std::string_view& bytes)
    {
        const std::size_t count = std::min(bytes.size(), m_block.size() - m_pending);
        std::copy_n(bytes.data(), count, m_block.data() + m_pending);
        bytes.remove_prefix(count);
        m_pending += count;
        if (m_pending < m_block.size())
            return false;
        mixBlock(m_block.data());
        m_pending = 0;
        return true;
    }

    std::array<std::uint64_t, 4> m_lanes {14695981039346656037u, 1, 2, 3};
    /// What came since the last whole block.
    std::array<char, sizeof m_lanes> m_block {};
    std::size_t m_pending = 0;
    std::uint64_t m_size = 0;
};
