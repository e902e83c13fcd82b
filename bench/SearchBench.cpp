// Two words typed into the search field of the orders: which of them hold both, themselves or their contacts.
#include "Business.h"

#include "storage/TextSearch.h"

#include <benchmark/benchmark.h>

#include <array>
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

/// Two words of the business, another pair each time.
std::string nextWords()
{
    static const std::array first {"bloom", "okafor", "march", "sokol", "hartley", "thorne", "fairfax", "ashw", "quill", "press", "mill"};
    static const std::array second {
        "oak", "kitchen", "hinges", "annual", "window", "gift", "sign", "coffee", "inv7", "wed", "enq", "quot", "cust"};
    static unsigned int turn = 0;
    const unsigned int number = turn++;
    return std::string(first[number % first.size()]) + ' ' + second[number % second.size()];
}

/// What a search found is kept for the words that follow: with so many others nothing is left of it.
void forgetWords(OrderManager& orders)
{
    QString others;
    for (int i = 100; i < 170; ++i)
        others += QString("~%1 ").arg(i);
    orders.listForm.search.edit(others);
}

void typeIntoSearchField(benchmark::State& state)
{
    OrderManager& orders = openBusiness().orders();
    std::size_t found = 0;
    for (auto _ : state) {
        state.PauseTiming();
        forgetWords(orders);
        state.ResumeTiming();
        orders.listForm.search.edit(QString::fromStdString(nextWords()));
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
        const std::string words = nextWords();
        const std::string word = words.substr(0, words.find(' '));
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

BENCHMARK(typeIntoSearchField)->Name("keystroke/work")->Unit(benchmark::kMillisecond)->Iterations(60)->Repetitions(5);
BENCHMARK(passOverFoldedTexts)->Name("keystroke/yardstick")->Unit(benchmark::kMillisecond)->Iterations(60)->Repetitions(5);
