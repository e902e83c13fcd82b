// Runs the shop's commands for the driver of the fault tests. Each line of the input asks for one, its parts kept apart by tabs:
//   command  home  journal  marks  count file  call  kind  once|forever
// It is done in a copy of this process, which is ready to start, and answered with a line: "ended N", "killed N". The command
// "list" writes the commands' names into the journal.
#include "Shop.h"

#include "foundation/Log.h"

#include <QGuiApplication>

#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr unsigned patience = 15;

std::vector<std::string> parts(const std::string& line)
{
    std::vector<std::string> parts;
    std::istringstream text(line);
    for (std::string part; std::getline(text, part, '\t');)
        parts.push_back(part);
    return parts;
}

/// The names of all commands, into the journal.
void listCommands(const std::string& path)
{
    {
        Journal journal(QString::fromStdString(path));
        for (const QString& name : shopCommands())
            journal.say("command", name);
    }
    std::cout << "ended 0" << std::endl;
}

[[noreturn]] void runCommand(const std::vector<std::string>& parts)
{
    alarm(patience);
    const ShopCommand command = shopCommand(QString::fromStdString(parts[0]));
    if (!command)
        _exit(2);
    {
        Shop shop(QString::fromStdString(parts[1]), {QString::fromStdString(parts[2]), QString::fromStdString(parts[3]), "ada"});
        setLogSink(
            [&shop](std::string_view line) { shop.journal().say("log", QString::fromUtf8(line.data(), static_cast<int>(line.size()))); });
        beginFaults({parts[1], parts[4], parts[5], parts[6], parts[7]});
        command(shop);
    }
    _exit(0);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    for (std::string line; std::getline(std::cin, line);) {
        const std::vector<std::string> asked = parts(line);
        if (asked.size() != 8)
            return 2;
        if (asked[0] == "list") {
            listCommands(asked[2]);
            continue;
        }
        const pid_t child = fork();
        if (child == 0)
            runCommand(asked);
        int status = 0;
        if (child < 0 || waitpid(child, &status, 0) != child)
            return 2;
        std::cout << (WIFSIGNALED(status) ? "killed " : "ended ") << (WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status))
                  << std::endl;
    }
    return 0;
}
