// Exporting the orders as comma-separated text, from the records to the file.
#include "Business.h"

#include "foundation/SafeFile.h"
#include "storage/TableExport.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace {

constexpr int large = 250;

/// Always the same file.
class OneFile : public FilePanels {
public:
    std::optional<QString> openFile(const QString&) override { return {}; }
    std::optional<QString> saveFile(const SavePanel&) override { return path(); }
    static QString path() { return Business::folder(large) + "/orders.csv"; }
};

void exportOrders(benchmark::State& state)
{
    Business business(large);
    business.open();
    OneFile panels;
    for (auto _ : state) {
        if (!ListExport(panels).run(business.orders(), ExportForm::commaSeparated, "Orders").startsWith("Exported"))
            state.SkipWithError("the orders were not exported");
    }
    unlink(OneFile::path().toStdString().c_str());
}

void writeExportedBytes(benchmark::State& state)
{
    Business business(large);
    business.open();
    const std::string bytes = getDataAsCSV(business.orders());
    for (auto _ : state) {
        if (!writeFileSafely(OneFile::path().toStdString(), bytes))
            state.SkipWithError("the bytes could not be written");
    }
    unlink(OneFile::path().toStdString().c_str());
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

} // namespace

BENCHMARK(exportOrders)
    ->Name("export/work")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(7);
BENCHMARK(writeExportedBytes)
    ->Name("export/yardstick")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(7);
