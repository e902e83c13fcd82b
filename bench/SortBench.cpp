// The first sort of the orders by a column, right after the database was opened.
#include "Business.h"

#include "foundation/Numbers.h"

#include <benchmark/benchmark.h>

#include <QDate>

#include <algorithm>

namespace {

constexpr int large = 250;

void sortBy(benchmark::State& state, const char* column)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto business = std::make_unique<Business>(large);
        business->open();
        OrderManager& orders = business->orders();
        state.ResumeTiming();
        orders.toggleSort(column);
        benchmark::DoNotOptimize(orders.numberOfRows());
        state.PauseTiming();
        business.reset();
        state.ResumeTiming();
    }
}

/// What a yardstick compares, made beforehand.
struct Row {
    QString text;
    const dataObject* record;
};

template <class Less>
void sortRows(benchmark::State& state, const char* column, Less less)
{
    Business business(large);
    business.open();
    std::vector<Row> rows;
    for (const dataObject* record : business.orders().records())
        rows.push_back({QString::fromStdString(record->getFieldByName(column)), record});
    for (auto _ : state) {
        std::vector<Row> sorted = rows;
        std::stable_sort(sorted.begin(), sorted.end(), less);
        benchmark::DoNotOptimize(sorted.data());
    }
}

bool textIsLess(const Row& a, const Row& b)
{
    return a.text.compare(b.text, Qt::CaseInsensitive) < 0;
}

bool dateIsLess(const Row& a, const Row& b)
{
    const QString format = QStringLiteral("dd/MM/yy");
    return QDate::fromString(a.text, format) < QDate::fromString(b.text, format);
}

int digitsIn(const QString& text)
{
    int number = 0;
    for (const QChar character : text) {
        if (character.isDigit())
            number = number * 10 + character.digitValue();
    }
    return number;
}

bool codeIsLess(const Row& a, const Row& b)
{
    return digitsIn(a.text) < digitsIn(b.text);
}

void measureFirstSorts()
{
    const auto add = [](const char* kind, const char* column, bool (*less)(const Row&, const Row&), int times) {
        const std::string name = std::string("sort-") + kind;
        benchmark::RegisterBenchmark((name + "/work").c_str(), [=](benchmark::State& state) { sortBy(state, column); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(5);
        benchmark::RegisterBenchmark((name + "/yardstick").c_str(), [=](benchmark::State& state) { sortRows(state, column, less); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(times);
    };
    add("title", "title", textIsLess, 5);
    add("contact", "contactname", textIsLess, 5);
    add("date", "date", dateIsLess, 3);
    add("code", "ordernum", codeIsLess, 5);
}

const bool registered = (measureFirstSorts(), true);

} // namespace
