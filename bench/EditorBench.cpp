// Opening an order's editor and leaving it again, in a small business and in a large one.
#include "Business.h"

#include <benchmark/benchmark.h>

namespace {

void openEditor(benchmark::State& state)
{
    Business business(static_cast<int>(state.range(0)));
    business.open();
    OrderManager& orders = business.orders();
    int next = 0;
    for (auto _ : state) {
        // A step that is prime to the number of orders comes past all of them.
        next = (next + 7919) % orders.getCount();
        orders.editThisOrder(orders.at(next));
        orders.cancel();
    }
    state.counters["orders"] = orders.getCount();
}

} // namespace

BENCHMARK(openEditor)->Name("editor")->Unit(benchmark::kMicrosecond)->Arg(1)->Arg(250)->Iterations(400);
