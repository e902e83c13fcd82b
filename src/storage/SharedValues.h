// The plain values of a record, shared until one of those that hold them changes them.
//
// A snapshot of a collection holds the values its records have at that moment, without copying any: whoever changes a record while the
// snapshot is being written changes a copy. Holders of the same values may live on different threads; one holder belongs to one thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

template <class Values>
class SharedValues {
public:
    /// The values of a record of which nothing is known.
    SharedValues() = default;
    SharedValues(const SharedValues& other) noexcept : m_shared(other.m_shared)
    {
        if (m_shared)
            m_shared->holders.fetch_add(1, std::memory_order_relaxed);
    }
    SharedValues(SharedValues&& other) noexcept : m_shared(std::exchange(other.m_shared, nullptr)) { }
    SharedValues& operator=(SharedValues other) noexcept
    {
        std::swap(m_shared, other.m_shared);
        return *this;
    }
    ~SharedValues()
    {
        if (m_shared && m_shared->holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete m_shared;
    }

    const Values& operator*() const { return m_shared ? m_shared->values : unset(); }
    const Values* operator->() const { return &**this; }

    /// For changing them; nobody else sees it. Good until this holder is copied.
    Values& change()
    {
        // Whoever gave the values up last has finished reading them by the time it is seen here.
        if (!m_shared || m_shared->holders.load(std::memory_order_acquire) != 1)
            *this = SharedValues(new Shared(**this));
        return m_shared->values;
    }

    /// The processor already fetches what copying this needs.
    void fetch() const { __builtin_prefetch(m_shared, 1); }
    /// The same for reading the values.
    void fetchAll() const
    {
        constexpr std::size_t cacheLine = 64;
        for (std::size_t at = 0; at < sizeof(Shared); at += cacheLine)
            __builtin_prefetch(reinterpret_cast<const char*>(m_shared) + at);
    }

private:
    struct Shared {
        explicit Shared(const Values& copied) : values(copied) { }
        std::atomic<int> holders {1};
        Values values;
    };
    explicit SharedValues(Shared* shared) : m_shared(shared) { }

    static const Values& unset()
    {
        static const Values values {};
        return values;
    }

    Shared* m_shared = nullptr;
};
