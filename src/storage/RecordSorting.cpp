// Sorting of collections: keys are worked out once a record, then compared; equal records keep their order.
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "storage/TextSearch.h"
#include "storage/qvDataSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A record and what it is sorted by.
template <class Key>
struct Keyed {
    Key key;
    dataObject* record;
};

template <class Key, class KeyOf>
std::vector<dataObject*> sortedBy(const std::vector<dataObject*>& records, bool ascending, KeyOf keyOf)
{
    std::vector<Keyed<Key>> keyed;
    keyed.reserve(records.size());
    for (dataObject* record : records)
        keyed.push_back({keyOf(*record), record});
    std::stable_sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) { return ascending ? a.key < b.key : b.key < a.key; });
    std::vector<dataObject*> sorted;
    sorted.reserve(keyed.size());
    for (const auto& entry : keyed)
        sorted.push_back(entry.record);
    return sorted;
}

bool isNumericOption(SortOptions options)
{
    return options == SortOptions::numeric || options == SortOptions::numericOfRecord;
}

} // namespace

void qvDataSource::setDefaultSortNew(bool newestFirst)
{
    m_defaultSortNew = newestFirst;
    invalidateRows();
}

void qvDataSource::setSortArray(std::vector<dataObject*> sorted)
{
    m_sortArray = std::move(sorted);
    reloadData();
}

void qvDataSource::resetSortArray()
{
    list.sortDescriptors.clear();
    columnsChanged();
}

void qvDataSource::sortUsingDescriptors(std::span<const SortDescriptor> descriptors)
{
    if (descriptors.empty())
        return;
    const SortDescriptor& first = descriptors.front();
    logLine("sorting by '" + first.key + "'");
    const bool isDate = dataObject::isDate(first.key);
    if (isDate)
        logLine("sorting by date");
    SortOptions options = isDate ? SortOptions::date : SortOptions::text;
    if (dataObject::isNumber(first.key, m_settings.codeSort()))
        options = SortOptions::numeric;
    sortByColumn(first.key, first.ascending, options);
}

void qvDataSource::sortByColumn(std::string_view column, bool ascending, SortOptions options)
{
    if (getCount() < 2)
        return;
    if (options == SortOptions::text)
        m_sortArray = sortedByText(column, ascending);
    else if (options == SortOptions::date)
        m_sortArray = sortedByDate(column, ascending);
    else if (isNumericOption(options))
        m_sortArray = sortedByNumber(column, ascending, options);
    else
        m_sortArray.clear();
    m_selection.clear();
    reloadData();
    notifySelection();
}

std::vector<dataObject*> qvDataSource::sortedByText(std::string_view column, bool ascending) const
{
    return sortedBy<std::string>(
        m_collection, ascending, [&](const dataObject& record) { return foldCase(record.getFieldByName(column)); });
}

std::vector<dataObject*> qvDataSource::sortedByDate(std::string_view column, bool ascending) const
{
    const std::string name = std::string(column) + "asdate";
    return sortedBy<std::int64_t>(m_collection, ascending, [&](const dataObject& record) { return record.getDateByName(name); });
}

std::vector<dataObject*> qvDataSource::sortedByNumber(std::string_view column, bool ascending, SortOptions options) const
{
    return sortedBy<float>(m_collection, ascending, [&](dataObject& record) {
        record.setTempSortNSNumber(getNumberFrom(record, column, options));
        return *record.getTempSortNSNumber();
    });
}

float qvDataSource::plainNumberFrom(const dataObject& record, std::string_view fieldName, SortOptions options) const
{
    constexpr std::size_t genericPrefix = 5;
    std::string_view mapped;
    if (!fields.empty() && fieldName.size() > genericPrefix) {
        const int column = numbers::leadingInt(fieldName.substr(genericPrefix));
        if (column >= 1 && column <= static_cast<int>(fields.size()))
            mapped = fields[static_cast<std::size_t>(column) - 1];
    }
    const bool isCode = fieldName == "code" || mapped == "code";
    const bool isOrdernum = fieldName == "ordernum" || mapped == "order:number";
    float number = 0;
    if (!isCode && !isOrdernum) {
        number = numbers::leadingFloat(record.getFieldByName(fieldName));
    } else if (m_settings.codeSort() == "2") {
        number = static_cast<float>(record.getID());
    } else {
        // The last name that matches decides.
        number = fieldName == "code" ? record.getNumericCode() : number;
        number = fieldName == "ordernum" ? record.getNumericOrdernum() : number;
        number = mapped == "code" ? record.getNumericCode() : number;
        number = mapped == "order:number" ? record.getNumericOrdernum() : number;
    }
    if (options == SortOptions::numericOfRecord)
        number = record.getdObject() ? static_cast<float>(record.getdObject()->getID()) : 0.0f;
    return number;
}

float qvDataSource::getNumberFrom(const dataObject& record, std::string_view fieldName, SortOptions options) const
{
    const float number = plainNumberFrom(record, fieldName, options);
    if (!std::isinf(number))
        return std::isnan(number) ? 0.0f : number;
    // Minus infinity becomes a tiny positive number, not a negative one; sorting relies on it.
    return number > 0 ? std::numeric_limits<float>::max() : std::numeric_limits<float>::min();
}

int qvDataSource::compare(const dataObject& a, const dataObject& b, std::string_view column, SortOptions options) const
{
    if (!isNumericOption(options))
        return 0;
    const float first = plainNumberFrom(a, column, options);
    const float second = plainNumberFrom(b, column, options);
    if (std::isinf(first) || std::isinf(second) || first == second)
        return 0;
    return first < second ? -1 : 1;
}

void qvDataSource::applyCurrentSort()
{
    if (!list.sortDescriptors.empty())
        sortUsingDescriptors(list.sortDescriptors);
}

void qvDataSource::toggleSort(const std::string& identifier)
{
    const bool again = !list.sortDescriptors.empty() && list.sortDescriptors.front().key == identifier;
    list.sortDescriptors = {{identifier, again ? !list.sortDescriptors.front().ascending : true}};
    applyCurrentSort();
    columnsChanged();
}
