// A disk that takes only so much of each file, from its making to its end.
#pragma once

#include <csignal>
#include <stdexcept>

#include <sys/resource.h>

class NoRoom {
public:
    explicit NoRoom(rlim_t bytes = 0) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit little {bytes, m_before.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &little) != 0)
            throw std::runtime_error("files cannot be kept small here");
    }
    ~NoRoom()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before {};
};
