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

/// Ready bytes written beside the file, flushed and renamed over it.
void writeReadyBytes(benchmark::State& state)
{
    const std::string path = (Business::folder(large) + "/orders.xml").toStdString();
    const std::string bytes(readWholeFile(path).bytes);
    const std::string temporary = path + ".yardstick";
    const std::string target = path + ".written";
    for (auto _ : state) {
        const int file = open(temporary.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
        std::size_t done = 0;
        while (file >= 0 && done < bytes.size()) {
            const ssize_t step = write(file, bytes.data() + done, bytes.size() - done);
            if (step <= 0)
                break;
            done += static_cast<std::size_t>(step);
        }
        if (done < bytes.size() || fsync(file) != 0 || close(file) != 0 || std::rename(temporary.c_str(), target.c_str()) != 0)
            state.SkipWithError("the bytes could not be written");
    }
    unlink(target.c_str());
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

} // namespace

BENCHMARK(saveOrders)->Name("save/work")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()->Iterations(5);
BENCHMARK(writeReadyBytes)->Name("save/yardstick")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()->Iterations(5);
