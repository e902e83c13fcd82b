// Sorting of collections: keys are worked out once a record, then compared; equal records keep their order.
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "storage/FetchAhead.h"
#include "storage/StableOrder.h"
#include "storage/TextSearch.h"
#include "storage/qvDataSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

std::vector<dataObject*> inOrder(const std::vector<dataObject*>& records, const SortedPositions& positions)
{
    std::vector<dataObject*> sorted(positions.size());
    std::transform(positions.begin(), positions.end(), sorted.begin(), [&](std::uint32_t position) { return records[position]; });
    return sorted;
}

/// Use looks at the column and little else of each.
template <class Use>
void forEachFetched(const std::vector<dataObject*>& records, std::string_view column, Use use)
{
    const std::optional<std::size_t> field = records.empty() ? std::nullopt : records.front()->textField(column);
    const auto fetch = [field](const dataObject& record, int step) { field ? record.fetchText(step, *field) : record.fetch(step); };
    for (std::size_t n = 0; n < records.size(); ++n) {
        fetchFollowing([&](std::size_t more) { return n + more < records.size() ? records[n + more] : nullptr; }, fetch);
        use(*records[n]);
    }
}

template <class KeyOf>
std::vector<dataObject*> sortedBy(const std::vector<dataObject*>& records, std::string_view column, SortDirection direction, KeyOf keyOf)
{
    std::vector<std::uint64_t> keys;
    keys.reserve(records.size());
    forEachFetched(records, column, [&](dataObject& record) { keys.push_back(sortKey(keyOf(record))); });
    return inOrder(records, stableOrder(keys, direction));
}

void addFolded(TextKeys& keys, std::string_view text)
{
    appendFolded(keys.next(), text);
    keys.take();
}

/// The number as sorting takes it.
float sortable(float number)
{
    if (!std::isinf(number))
        return std::isnan(number) ? 0.0f : number;
    // Minus infinity becomes a tiny positive number, not a negative one; sorting relies on it.
    return number > 0 ? std::numeric_limits<float>::max() : std::numeric_limits<float>::min();
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
    const SortDirection direction = ascending ? SortDirection::ascending : SortDirection::descending;
    if (options == SortOptions::text)
        m_sortArray = sortedByText(column, direction);
    else if (options == SortOptions::date)
        m_sortArray = sortedByDate(column, direction);
    else if (isNumericOption(options))
        m_sortArray = sortedByNumber(column, direction, options);
    else
        m_sortArray.clear();
    m_selection.clear();
    reloadData();
    notifySelection();
}

std::vector<dataObject*> qvDataSource::sortedByText(std::string_view column, SortDirection direction) const
{
    if (const std::optional<LinkedColumn> linked = linkedColumn(column))
        return sortedByLinkedText(*linked, direction);
    TextKeys keys(m_collection.size());
    forEachFetched(m_collection, column, [&](const dataObject& record) { addFolded(keys, record.getFieldByName(column)); });
    return inOrder(m_collection, stableOrder(keys.ranks(), direction));
}

/// However many records one of the others belongs to, its text is looked at once.
std::vector<dataObject*> qvDataSource::sortedByLinkedText(const LinkedColumn& column, SortDirection direction) const
{
    const qvDataSource& others = column.collection;
    TextKeys texts(others.m_collection.size());
    forEachFetched(others.m_collection, column.name, [&](const dataObject& other) { addFolded(texts, other.getFieldByName(column.name)); });
    std::vector<std::size_t> textOf;
    textOf.reserve(m_collection.size());
    forEachLink(m_collection, column.linkOf, [&](const dataObject&, const dataObject* link) {
        const bool isListed = link && others.holds(*link);
        textOf.push_back(isListed ? link->m_position : texts.size());
        // A deleted record still belongs to those that name it.
        if (!isListed)
            addFolded(texts, link ? link->getFieldByName(column.name) : std::string());
    });
    const std::vector<std::uint64_t> ranks = texts.ranks();
    std::vector<std::uint64_t> keys(textOf.size());
    std::transform(textOf.begin(), textOf.end(), keys.begin(), [&](std::size_t text) { return ranks[text]; });
    return inOrder(m_collection, stableOrder(keys, direction));
}

std::vector<dataObject*> qvDataSource::sortedByDate(std::string_view column, SortDirection direction) const
{
    const std::string name = std::string(column) + "asdate";
    return sortedBy(m_collection, column, direction, [&](const dataObject& record) { return record.getDateByName(name); });
}

std::vector<dataObject*> qvDataSource::sortedByNumber(std::string_view column, SortDirection direction, SortOptions options) const
{
    const NumberColumn numbers = numberColumn(column);
    return sortedBy(m_collection, column, direction, [&](dataObject& record) {
        record.setTempSortNSNumber(sortable(plainNumberFrom(record, numbers, options)));
        return *record.getTempSortNSNumber();
    });
}

qvDataSource::NumberColumn qvDataSource::numberColumn(std::string_view fieldName) const
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
    if (!isCode && !isOrdernum)
        return {fieldName, NumberColumn::Value::field};
    if (m_settings.codeSort() == "2")
        return {fieldName, NumberColumn::Value::id};
    // The last name that matches decides.
    const bool endsWithOrdernum = mapped == "order:number" || (mapped != "code" && fieldName == "ordernum");
    return {fieldName, endsWithOrdernum ? NumberColumn::Value::ordernum : NumberColumn::Value::code};
}

float qvDataSource::plainNumberFrom(const dataObject& record, const NumberColumn& column, SortOptions options)
{
    if (options == SortOptions::numericOfRecord)
        return record.getdObject() ? static_cast<float>(record.getdObject()->getID()) : 0.0f;
    switch (column.value) {
    case NumberColumn::Value::id: return static_cast<float>(record.getID());
    case NumberColumn::Value::code: return record.getNumericCode();
    case NumberColumn::Value::ordernum: return record.getNumericOrdernum();
    case NumberColumn::Value::field: break;
    }
    return numbers::leadingFloat(record.getFieldByName(column.name));
}

float qvDataSource::getNumberFrom(const dataObject& record, std::string_view fieldName, SortOptions options) const
{
    return sortable(plainNumberFrom(record, numberColumn(fieldName), options));
}

int qvDataSource::compare(const dataObject& a, const dataObject& b, std::string_view column, SortOptions options) const
{
    if (!isNumericOption(options))
        return 0;
    const NumberColumn numbers = numberColumn(column);
    const float first = plainNumberFrom(a, numbers, options);
    const float second = plainNumberFrom(b, numbers, options);
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
