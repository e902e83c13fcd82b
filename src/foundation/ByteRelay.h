// Hands bytes on to another thread in their order, a few blocks ahead at most: what makes them and what takes them work side by side.
//
// The thread starts with the second block, so that what is small is taken where it was made.
#pragma once

#include <array>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

class ByteRelay {
public:
    using Take = std::function<void(std::string_view)>;
    /// take is called by one thread at a time.
    explicit ByteRelay(Take take);
    ~ByteRelay();
    ByteRelay(const ByteRelay&) = delete;
    ByteRelay& operator=(const ByteRelay&) = delete;

    /// One block; what stands in its place afterwards is memory of an earlier one. Waits while the other thread is too far behind.
    void exchange(std::string& block);
    /// The same with a copy of the block.
    void add(std::string_view block)
    {
        std::string copy(block);
        exchange(copy);
    }
    /// Everything that was added has been taken when this returns; nothing may be added afterwards. What take threw is thrown here, once;
    /// the blocks after that were dropped.
    void finish();

private:
    static constexpr std::size_t blocksAhead = 4;

    void start();
    void end();
    void takeUntilEnd();
    void takeNext();
    std::string& blockAt(std::size_t number) { return m_blocks[number % m_blocks.size()]; }

    Take m_take;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::array<std::string, blocksAhead> m_blocks;
    /// How many blocks there were so far.
    std::size_t m_added = 0;
    std::size_t m_taken = 0;
    bool m_ended = false;
    /// What was thrown while a block was taken; the others are dropped then.
    std::exception_ptr m_failure;
    bool m_dropping = false;
    std::thread m_thread;
};
