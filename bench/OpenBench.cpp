// Opening a database: all record files into the collections, linked, sorted and filtered as they are when the main window shows them.
#include "Business.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

namespace {

constexpr int large = 250;
constexpr int huge = 2500;
constexpr int ordersPerScale = 400;

void openDatabase(benchmark::State& state, int scale)
{
    std::size_t records = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto business = std::make_unique<Business>(scale);
        state.ResumeTiming();
        business->open();
        state.PauseTiming();
        records = static_cast<std::size_t>(business->orders().getCount());
        business.reset();
        state.ResumeTiming();
    }
    if (records != static_cast<std::size_t>(scale) * ordersPerScale)
        state.SkipWithError("the database was not read whole");
    state.counters["orders"] = static_cast<double>(records);
}

/// Everything is written, and the same database is opened again.
void switchDatabase(benchmark::State& state)
{
    Business business(large);
    business.open();
    for (auto _ : state)
        business.app().session().switchDatabase();
    if (business.orders().getCount() != large * ordersPerScale)
        state.SkipWithError("the database was not read whole");
}

/// The same bytes into trees that are all kept.
void parseInPlace(benchmark::State& state, unsigned int options)
{
    const std::vector<std::string> originals = Business::bytes(large);
    std::size_t total = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::string> copies = originals;
        auto trees = std::make_unique<std::vector<pugi::xml_document>>(copies.size());
        total = 0;
        state.ResumeTiming();
        for (std::size_t file = 0; file < copies.size(); ++file) {
            const pugi::xml_parse_result parsed =
                (*trees)[file].load_buffer_inplace(copies[file].data(), copies[file].size(), options, pugi::encoding_utf8);
            if (!parsed)
                state.SkipWithError(parsed.description());
            total += copies[file].size();
        }
        state.PauseTiming();
        trees.reset();
        state.ResumeTiming();
    }
    state.counters["bytes"] = static_cast<double>(total);
}

void openLarge(benchmark::State& state)
{
    openDatabase(state, large);
}

void openHuge(benchmark::State& state)
{
    openDatabase(state, huge);
}

void parseWithOneNodeAText(benchmark::State& state)
{
    parseInPlace(state, pugi::parse_escapes | pugi::parse_embed_pcdata);
}

void parseByDefault(benchmark::State& state)
{
    parseInPlace(state, pugi::parse_default);
}

} // namespace

BENCHMARK(openLarge)->Name("open/250")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(openHuge)->Name("open/2500")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(switchDatabase)->Name("switch/250")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()->Iterations(1);
BENCHMARK(parseWithOneNodeAText)->Name("open/yardstick")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(parseByDefault)->Name("open/yardstick-default")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
