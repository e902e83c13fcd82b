#include "foundation/ProcessMark.h"

#include "foundation/Numbers.h"
#include "foundation/SafeFile.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <sstream>
#include <unistd.h>

namespace {

constexpr char markHead[] = "process-1";

/// Where a process number means something.
struct Place {
    std::string machine;
    std::string host;
    /// Anew at each start of the computer.
    std::string boot;
    /// The set of processes that share their numbers.
    std::string numbering;

    bool isWhole() const { return !machine.empty() && !host.empty() && !boot.empty() && !numbering.empty(); }
};

struct Process {
    Place place;
    int number = 0;
    /// In clock ticks since the computer was started.
    std::string started;
};

std::string firstWordOf(const std::string& path)
{
    std::istringstream text(std::string(readWholeFile(path).bytes));
    std::string word;
    text >> word;
    return word;
}

Place thisPlace()
{
    std::array<char, 256> host {};
    std::array<char, 64> numbering {};
    if (::gethostname(host.data(), host.size() - 1) != 0 || ::readlink("/proc/self/ns/pid", numbering.data(), numbering.size() - 1) < 0)
        return {};
    return {firstWordOf("/etc/machine-id"), host.data(), firstWordOf("/proc/sys/kernel/random/boot_id"), numbering.data()};
}

/// State and start of a process; both empty when they cannot be seen.
struct Seen {
    std::string state;
    std::string started;
};

Seen look(const std::string& process)
{
    // The command's name stands in brackets and may hold anything, brackets too.
    const std::string all(readWholeFile("/proc/" + process + "/stat").bytes);
    const std::size_t nameEnd = all.rfind(')');
    if (nameEnd == std::string::npos)
        return {};
    constexpr int wordsBetween = 18;
    std::istringstream text(all.substr(nameEnd + 1));
    Seen seen;
    std::string skipped;
    text >> seen.state;
    for (int i = 0; i < wordsBetween; ++i)
        text >> skipped;
    text >> seen.started;
    return text ? seen : Seen();
}

/// None that is whole when the mark is no mark of ours.
Process read(std::string_view mark)
{
    std::istringstream text {std::string(mark)};
    std::string head;
    std::string number;
    Process process;
    Place& place = process.place;
    text >> head >> place.machine >> place.host >> place.boot >> place.numbering >> number >> process.started;
    process.number = numbers::leadingInt(number);
    return text && head == markHead ? process : Process();
}

processMark::Life lifeHere(const Process& process)
{
    using processMark::Life;
    if (::kill(process.number, 0) != 0 && errno == ESRCH)
        return Life::ended;
    const Seen seen = look(std::to_string(process.number));
    if (seen.started.empty())
        return ::kill(process.number, 0) != 0 && errno == ESRCH ? Life::ended : Life::unknown;
    const bool isOver = seen.state == "Z" || seen.state == "X";
    return isOver || seen.started != process.started ? Life::ended : Life::running;
}

} // namespace

namespace processMark {

std::string own()
{
    const Place place = thisPlace();
    const std::string started = look("self").started;
    if (!place.isWhole() || started.empty())
        return {};
    return std::string(markHead) + ' ' + place.machine + ' ' + place.host + ' ' + place.boot + ' ' + place.numbering + ' '
        + std::to_string(::getpid()) + ' ' + started;
}

Life lifeOf(std::string_view mark)
{
    const Process process = read(mark);
    const Place here = thisPlace();
    if (!process.place.isWhole() || process.number <= 0 || !here.isWhole())
        return Life::unknown;
    if (process.place.machine != here.machine || process.place.host != here.host)
        return Life::unknown;
    if (process.place.boot != here.boot)
        return Life::ended;
    return process.place.numbering == here.numbering ? lifeHere(process) : Life::unknown;
}

} // namespace processMark
