#include "foundation/LargeMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace {

std::size_t wholePages(std::size_t size)
{
    constexpr std::size_t page = 4096;
    return (size + page - 1) / page * page;
}

/// Large pages are not asked for: to make one, the system may move others out of the way for as long as half a second.
void* takePages(std::size_t size)
{
    void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    return memory;
}

} // namespace

void* largeMemory::take(std::size_t size)
{
    if (size >= smallest)
        return takePages(wholePages(size));
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void largeMemory::giveBack(void* memory, std::size_t size)
{
    if (memory && size >= smallest)
        ::munmap(memory, wholePages(size));
    else
        std::free(memory);
}

void ByteBuffer::reserve(std::size_t capacity)
{
    if (capacity <= m_capacity)
        return;
    ByteBuffer larger;
    larger.m_bytes = static_cast<char*>(largeMemory::take(capacity));
    larger.m_capacity = capacity;
    larger.m_size = m_size;
    if (m_size > 0)
        std::memcpy(larger.m_bytes, m_bytes, m_size);
    swap(larger);
}
