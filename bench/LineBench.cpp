// Lines: adding one to an order in a small and in a large business, and stock that moves through four levels of collective items.
#include "Business.h"

#include <benchmark/benchmark.h>

namespace {

/// A different order each time, so that each grows by one line only.
void addLine(benchmark::State& state)
{
    Business business(static_cast<int>(state.range(0)));
    business.open();
    OrderManager& orders = business.orders();
    Item& item = business.app().getItemManager().at(0);
    item.makeCollectiveItem(false);
    item.setDecreaseQty(true);
    item.setQty("100000");
    int next = 0;
    int made = 0;
    for (auto _ : state) {
        state.PauseTiming();
        next = (next + 7919) % orders.getCount();
        orders.editThisOrder(orders.at(next));
        state.ResumeTiming();
        made += orders.addItemToCurrentOrder(item) ? 1 : 0;
    }
    if (made != static_cast<int>(state.iterations()))
        state.SkipWithError("not every line was made");
    state.counters["lines"] = business.app().getBOMManager().getCount();
}

constexpr int levels = 4;
constexpr int partsOfEach = 4;

/// Each collective item holds four of the level below, and neighbours share three of these.
std::vector<Item*> levelOver(ItemManager& items, const std::vector<Item*>& below)
{
    std::vector<Item*> level;
    for (std::size_t place = 0; place < below.size(); ++place) {
        auto made = std::make_unique<Item>(items.rules());
        made->makeCollectiveItem(true);
        made->setQty("1000000");
        for (std::size_t part = 0; part < partsOfEach; ++part)
            made->addConstituent(*below[(place + part) % below.size()]);
        level.push_back(&items.add(std::move(made)));
    }
    return level;
}

void moveStock(benchmark::State& state)
{
    Business business(1);
    business.open();
    ItemManager& items = business.app().getItemManager();
    std::vector<Item*> level;
    for (int place = 0; place < state.range(0); ++place) {
        auto made = std::make_unique<Item>(items.rules());
        made->setQty("9000000");
        level.push_back(&items.add(std::move(made)));
    }
    for (int n = 1; n < levels; ++n)
        level = levelOver(items, level);
    auto top = std::make_unique<Item>(items.rules());
    top->makeCollectiveItem(true);
    for (const Item* part : level)
        top->addConstituent(*part);
    Item& whole = items.add(std::move(top));
    float by = -1;
    for (auto _ : state) {
        if (!items.adjustQtyFor(whole, by))
            state.SkipWithError("the stock was not moved");
        by = -by;
    }
    state.counters["parts"] = static_cast<double>(state.range(0) * (1 + partsOfEach * (levels - 1)));
}

} // namespace

BENCHMARK(addLine)->Name("line")->Unit(benchmark::kMicrosecond)->Arg(1)->Arg(250)->Iterations(300)->Repetitions(3);
BENCHMARK(moveStock)->Name("stock")->Unit(benchmark::kMicrosecond)->Arg(100)->Arg(1000)->Iterations(20)->Repetitions(3);
