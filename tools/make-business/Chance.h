// Numbers that look drawn by chance and are the same on every machine and every run.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

class Chance {
public:
    explicit Chance(std::uint64_t seed) : m_state(seed) { }

    std::uint64_t next()
    {
        m_state += 0x9e3779b97f4a7c15u;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        return mixed ^ (mixed >> 31);
    }
    /// From first to last, both included.
    int between(int first, int last) { return first + static_cast<int>(next() % static_cast<std::uint64_t>(last - first + 1)); }
    bool oneIn(int count) { return between(1, count) == 1; }

    template <class List>
    const auto& from(const List& list)
    {
        return list[next() % list.size()];
    }

private:
    std::uint64_t m_state;
};
