#include "ui/Ending.h"

#include <QApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// A signal may do no more than write a byte; the event loop reads it at the other end.
int signalPipe[2] {-1, -1};

void passOn(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(signalPipe[0], &byte, 1);
}

void handle(int signal)
{
    struct sigaction action { };
    action.sa_handler = passOn;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

} // namespace

Ending::Ending()
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, signalPipe) != 0)
        qFatal("no way to hear of the end of the session");
    m_notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [] {
        char bytes[16];
        [[maybe_unused]] const ssize_t got = read(signalPipe[1], bytes, sizeof bytes);
        // No window is asked: a signal is no question.
        QApplication::exit();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        handle(signal);
    connect(
        qApp, &QGuiApplication::commitDataRequest, this, [] { QApplication::exit(); }, Qt::DirectConnection);
}

Ending::~Ending()
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        std::signal(signal, SIG_IGN);
    close(signalPipe[0]);
    close(signalPipe[1]);
}
