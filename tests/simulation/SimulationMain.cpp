// Runs the application for the simulation's driver. Each line of the input is a JSON object and is answered with one. An object with a
// "home" starts a program on it, in a copy of this process, which takes the lines from then on until it ends: it quits, it is killed by a
// fault, or it is asked for "die". The end is a line of its own: {"ended": "quit"} or {"ended": "killed 9"}.
#include "simulation/ShopServer.h"

#include "foundation/Log.h"

#include <QGuiApplication>
#include <QJsonDocument>

#include <csignal>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned patience = 20;

/// The next line of the input; nothing at its end.
std::optional<QJsonObject> nextAsked()
{
    // Nothing is asked before the answer is there, so no more than one line ever waits.
    std::string line;
    char bytes[65536];
    while (line.empty() || line.back() != '\n') {
        const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (count <= 0)
            return std::nullopt;
        line.append(bytes, static_cast<std::size_t>(count));
    }
    return QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
}

void answer(const QJsonObject& object)
{
    std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

[[noreturn]] void serve(const QJsonObject& start)
{
    const QByteArray home = start["home"].toString().toUtf8();
    // Where the desktop's trash lies.
    qputenv("HOME", home);
    qunsetenv("XDG_DATA_HOME");
    setLogSink([](std::string_view) {});
    {
        ShopServer server(start);
        answer({});
        while (!server.hasQuit()) {
            const std::optional<QJsonObject> asked = nextAsked();
            if (!asked)
                _exit(1);
            if ((*asked)["do"] == "die")
                kill(getpid(), SIGKILL);
            alarm(patience);
            answer(server.handle(*asked));
            alarm(0);
        }
    }
    _exit(0);
}

QString endOf(int status)
{
    if (WIFSIGNALED(status))
        return "killed " + QString::number(WTERMSIG(status));
    return WEXITSTATUS(status) == 0 ? "quit" : "failed " + QString::number(WEXITSTATUS(status));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    while (const std::optional<QJsonObject> asked = nextAsked()) {
        const pid_t child = fork();
        if (child == 0)
            serve(*asked);
        int status = 0;
        if (child < 0 || waitpid(child, &status, 0) != child)
            return 2;
        answer({{"ended", endOf(status)}});
    }
    return 0;
}
