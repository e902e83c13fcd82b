// Saving the orders: from the records to a file that is safely on disk.
#include "Business.h"

#include "foundation/SafeFile.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace {

constexpr int large = 250;

void saveOrders(benchmark::State& state)
{
    Business business(large);
    business.open();
    RecordFile* const file = &business.file("orders.xml");
    for (auto _ : state)
        business.app().folder().write({&file, 1}, DatabaseFolder::When::now);
    if (!business.app().folder().unsavedReason().isEmpty())
        state.SkipWithError("the orders were not saved");
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t step = write(file, bytes.data(), bytes.size());
        if (step <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(step));
    }
    return true;
}

/// Whether the file holds the bytes, read and compared a piece at a time.
bool holds(const std::string& path, std::string_view bytes)
{
    static std::string piece(1 << 20, '\0');
    const int file = open(path.c_str(), O_RDONLY);
    ssize_t count = 0;
    while ((count = read(file, piece.data(), piece.size())) > 0) {
        const std::string_view found(piece.data(), static_cast<std::size_t>(count));
        if (bytes.substr(0, found.size()) != found)
            break;
        bytes.remove_prefix(found.size());
    }
    return close(file) == 0 && count == 0 && bytes.empty();
}

bool flushFolderOf(const char* folder)
{
    const int file = open(folder, O_RDONLY | O_DIRECTORY);
    return fsync(file) == 0 && close(file) == 0;
}

/// Ready bytes written beside the file, flushed, read back, renamed over it, and the folder flushed.
void writeReadyBytes(benchmark::State& state)
{
    const std::string path = (Business::folder(large) + "/orders.xml").toStdString();
    const std::string bytes(readWholeFile(path).bytes);
    const std::string temporary = path + ".yardstick";
    const std::string target = path + ".written";
    const std::string folder = Business::folder(large).toStdString();
    // There is a file to be replaced from the first time on.
    if (!writeFileSafely(target, bytes))
        state.SkipWithError("the bytes could not be written");
    for (auto _ : state) {
        const int file = open(temporary.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
        const bool done = writeAll(file, bytes) && fsync(file) == 0 && close(file) == 0 && holds(temporary, bytes)
            && std::rename(temporary.c_str(), target.c_str()) == 0 && flushFolderOf(folder.c_str());
        if (!done)
            state.SkipWithError("the bytes could not be written");
    }
    unlink(target.c_str());
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

} // namespace

BENCHMARK(saveOrders)
    ->Name("save/work")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(7);
BENCHMARK(writeReadyBytes)
    ->Name("save/yardstick")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(7);
