// Memory for what is read or copied in one go: it comes from the system and goes back there at once, instead of staying with the program
// for whatever may come.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

namespace largeMemory {

/// From here on memory is taken from the system; what is smaller is ordinary memory.
inline constexpr std::size_t smallest = 1024 * 1024;

/// Throws when there is none.
void* take(std::size_t size);
/// What was taken, with the size it was asked for.
void giveBack(void* memory, std::size_t size);

/// For vectors of many records.
template <class T>
struct Allocator {
    using value_type = T;

    Allocator() = default;
    template <class Other>
    Allocator(const Allocator<Other>&)
    {
    }
    T* allocate(std::size_t count) { return static_cast<T*>(take(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t count) { giveBack(memory, count * sizeof(T)); }
    friend bool operator==(const Allocator&, const Allocator&) { return true; }
};

} // namespace largeMemory

/// Bytes that are read into place: unlike a string's they are not cleared first.
class ByteBuffer {
public:
    ByteBuffer() = default;
    ByteBuffer(ByteBuffer&& other) noexcept { swap(other); }
    ByteBuffer& operator=(ByteBuffer&& other) noexcept
    {
        swap(other);
        return *this;
    }
    ~ByteBuffer() { largeMemory::giveBack(m_bytes, m_capacity); }

    std::string_view view() const { return {m_bytes, m_size}; }
    operator std::string_view() const { return view(); }
    friend bool operator==(const ByteBuffer& left, std::string_view right) { return left.view() == right; }

    std::size_t size() const { return m_size; }
    std::size_t capacity() const { return m_capacity; }
    /// Room for so many bytes in all; those that are there stay.
    void reserve(std::size_t capacity);
    /// Where the next bytes go, as many as there is room for; taken by added().
    char* next() { return m_bytes + m_size; }
    std::size_t room() const { return m_capacity - m_size; }
    void added(std::size_t bytes) { m_size += bytes; }
    /// The room stays.
    void clear() { m_size = 0; }

private:
    void swap(ByteBuffer& other)
    {
        std::swap(m_bytes, other.m_bytes);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};
