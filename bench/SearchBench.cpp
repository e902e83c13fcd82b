// A letter typed into the search field of the orders: which of them, or of their contacts, hold the word.
#include "Business.h"

#include "storage/TextSearch.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

constexpr int large = 250;

Business& openBusiness()
{
    static Business business(large);
    static const bool opened = (business.open(), true);
    static_cast<void>(opened);
    return business;
}

/// Pairs of letters in turn, none of which is the start of another, so that nothing of the search before helps.
std::string nextWord()
{
    static unsigned int turn = 0;
    const unsigned int number = turn++ % (26 * 26);
    return {static_cast<char>('a' + number % 26), static_cast<char>('a' + number / 26)};
}

void typeIntoSearchField(benchmark::State& state)
{
    OrderManager& orders = openBusiness().orders();
    std::size_t found = 0;
    orders.listForm.search.edit(QString("zzzz"));
    for (auto _ : state) {
        orders.listForm.search.edit(QString::fromStdString(nextWord()));
        found += static_cast<std::size_t>(orders.numberOfRows());
    }
    state.counters["found"] = benchmark::Counter(static_cast<double>(found), benchmark::Counter::kAvgIterations);
}

/// One pass over the same texts, folded and laid end to end; a hit goes on behind its line's end as a search must.
void passOverFoldedTexts(benchmark::State& state)
{
    Business& business = openBusiness();
    std::string all;
    for (const dataObject* record : business.orders().records())
        record->appendSearchText(all);
    for (const dataObject* record : business.app().getContactManager().records())
        record->appendSearchText(all);
    const std::string folded = foldCase(all);
    std::size_t hits = 0;
    for (auto _ : state) {
        const std::string word = nextWord();
        const char* at = folded.data();
        const char* const end = folded.data() + folded.size();
        while ((at = static_cast<const char*>(memmem(at, static_cast<std::size_t>(end - at), word.data(), word.size())))) {
            ++hits;
            at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        }
    }
    benchmark::DoNotOptimize(hits);
    state.counters["bytes"] = static_cast<double>(folded.size());
}

} // namespace

BENCHMARK(typeIntoSearchField)->Name("keystroke/work")->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(passOverFoldedTexts)->Name("keystroke/yardstick")->Unit(benchmark::kMillisecond)->Iterations(300);
