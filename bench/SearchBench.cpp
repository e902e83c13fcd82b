// Two words typed into the search fields of contacts, orders and items: which of them hold both, orders also in their contacts.
#include "Business.h"

#include "storage/TextSearch.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <span>

namespace {

constexpr int large = 250;

/// Words that stand in the business.
using Words = std::span<const char* const>;
constexpr std::array people {"bloom", "okafor", "march", "sokol", "hartley", "thorne", "fairfax", "ashw", "quill", "press", "mill"};
constexpr std::array inContacts {"lane", "otley", "yorks", "cust", "bd2", "north", "example", "indiv", "cumbria", "street", "chapel"};
constexpr std::array inOrders {
    "oak", "kitchen", "hinges", "annual", "window", "gift", "sign", "coffee", "inv7", "wed", "enq", "quot", "cust"};
constexpr std::array products {"shelf", "bench", "hinge", "mug", "wool", "tea", "soap", "glass", "card", "oil"};
constexpr std::array inItems {"fenw", "furn", "lind", "gift", "kitch", "harrow", "hon"};

Business& openBusiness()
{
    static Business business(large);
    static const bool opened = (business.open(), true);
    static_cast<void>(opened);
    return business;
}

/// A list with its search field, and all whose texts are looked through.
struct Searched {
    ListForm& form;
    const qvDataSource& list;
    std::vector<qvDataSource*> texts;
    Words first;
    Words second;
};

Searched searchedContacts()
{
    ContactManager& contacts = openBusiness().app().getContactManager();
    return {contacts.listForm, contacts, {&contacts}, people, inContacts};
}

Searched searchedOrders()
{
    OrderManager& orders = openBusiness().orders();
    return {orders.listForm, orders, {&orders, &openBusiness().app().getContactManager()}, people, inOrders};
}

Searched searchedItems()
{
    ItemManager& items = openBusiness().app().getItemManager();
    return {items.listForm, items, {&items}, products, inItems};
}

/// Two words, another pair each time.
std::string nextWords(const Searched& searched)
{
    static unsigned int turn = 0;
    const unsigned int number = turn++;
    return std::string(searched.first[number % searched.first.size()]) + ' ' + searched.second[number % searched.second.size()];
}

/// What a search found is kept for the words that follow, until a record changes.
void forgetWords(const Searched& searched)
{
    for (qvDataSource* texts : searched.texts)
        texts->noteChange(*texts->records().front());
}

void typeIntoSearchField(benchmark::State& state, Searched (*find)())
{
    const Searched searched = find();
    std::size_t found = 0;
    for (auto _ : state) {
        state.PauseTiming();
        forgetWords(searched);
        state.ResumeTiming();
        searched.form.search.edit(QString::fromStdString(nextWords(searched)));
        found += static_cast<std::size_t>(searched.list.numberOfRows());
    }
    state.counters["found"] = benchmark::Counter(static_cast<double>(found), benchmark::Counter::kAvgIterations);
}

/// One pass over the same texts, folded and laid end to end; a hit goes on behind its line's end as a search must.
void passOverFoldedTexts(benchmark::State& state, Searched (*find)())
{
    const Searched searched = find();
    std::string all;
    for (const qvDataSource* texts : searched.texts) {
        for (const dataObject* record : texts->records())
            record->appendSearchText(all);
    }
    const std::string folded = foldCase(all);
    std::size_t hits = 0;
    for (auto _ : state) {
        const std::string words = nextWords(searched);
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

void often(benchmark::internal::Benchmark* bench)
{
    bench->Unit(benchmark::kMillisecond)->Iterations(60)->Repetitions(5);
}

} // namespace

BENCHMARK_CAPTURE(typeIntoSearchField, orders, searchedOrders)->Name("keystroke/work")->Apply(often);
BENCHMARK_CAPTURE(passOverFoldedTexts, orders, searchedOrders)->Name("keystroke/yardstick")->Apply(often);
BENCHMARK_CAPTURE(typeIntoSearchField, contacts, searchedContacts)->Name("keystroke-contacts/work")->Apply(often);
BENCHMARK_CAPTURE(passOverFoldedTexts, contacts, searchedContacts)->Name("keystroke-contacts/yardstick")->Apply(often);
BENCHMARK_CAPTURE(typeIntoSearchField, items, searchedItems)->Name("keystroke-items/work")->Apply(often);
BENCHMARK_CAPTURE(passOverFoldedTexts, items, searchedItems)->Name("keystroke-items/yardstick")->Apply(often);
