#include "ui/Ending.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QThread>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

/// A signal may do no more than write a byte; the event loop reads it at the other end.
int signalPipe[2] {-1, -1};

void passOn(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(signalPipe[0], &byte, 1);
}

Ending* listening = nullptr;
QtMessageHandler handlerBefore = nullptr;

/// Qt tells of it by these words, then ends the program; nothing else is called before.
bool tellsOfLostScreen(const QString& message)
{
    return message.startsWith(QLatin1String("The X11 connection broke")) || message.startsWith(QLatin1String("The Wayland connection"));
}

void hearMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (handlerBefore)
        handlerBefore(type, context, message);
    if (!listening || !tellsOfLostScreen(message) || QThread::currentThread() != qApp->thread())
        return;
    // Once: writing may find the screen lost again.
    if (const std::function<void()> lost = std::exchange(listening->onScreenLost, nullptr))
        lost();
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

void Ending::ignoreClosedPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

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
    listening = this;
    handlerBefore = qInstallMessageHandler(hearMessage);
}

Ending::~Ending()
{
    qInstallMessageHandler(handlerBefore);
    listening = nullptr;
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        std::signal(signal, SIG_IGN);
    close(signalPipe[0]);
    close(signalPipe[1]);
}
