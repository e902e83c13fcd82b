#include "foundation/ByteRelay.h"

#include <system_error>
#include <utility>

ByteRelay::ByteRelay(Take take) : m_take(std::move(take)) { }

ByteRelay::~ByteRelay()
{
    end();
}

void ByteRelay::exchange(std::string& block)
{
    if (m_added > 0 && !m_thread.joinable())
        start();
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [this] { return m_added - m_taken < m_blocks.size(); });
    guard.unlock();
    // The other thread does not touch the place of a block that is not added yet.
    blockAt(m_added).swap(block);
    guard.lock();
    ++m_added;
    m_changed.notify_all();
}

/// Where no thread can be had, the blocks so far are taken here.
void ByteRelay::start()
{
    try {
        m_thread = std::thread([this] { takeUntilEnd(); });
    } catch (const std::system_error&) {
        while (m_taken < m_added)
            takeNext();
    }
}

void ByteRelay::finish()
{
    end();
    if (const std::exception_ptr failure = std::exchange(m_failure, nullptr))
        std::rethrow_exception(failure);
}

void ByteRelay::end()
{
    {
        const std::lock_guard guard(m_mutex);
        m_ended = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
    else
        takeUntilEnd();
}

void ByteRelay::takeUntilEnd()
{
    for (;;) {
        {
            std::unique_lock guard(m_mutex);
            m_changed.wait(guard, [this] { return m_taken < m_added || m_ended; });
            if (m_taken == m_added)
                return;
        }
        takeNext();
    }
}

void ByteRelay::takeNext()
{
    // Whoever adds must not wait for ever.
    try {
        if (!m_dropping)
            m_take(blockAt(m_taken));
    } catch (...) {
        m_failure = std::current_exception();
        m_dropping = true;
    }
    const std::lock_guard guard(m_mutex);
    ++m_taken;
    m_changed.notify_all();
}
