#include "storage/qvDataSource.h"

#include "desktop/Desktop.h"
#include "foundation/Log.h"
#include "storage/SearchIndex.h"
#include "storage/TextSearch.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <unordered_set>

namespace {

dataObject* entryAt(const std::vector<dataObject*>& list, int n)
{
    return n >= 0 && n < static_cast<int>(list.size()) ? list[static_cast<std::size_t>(n)] : nullptr;
}

} // namespace

qvDataSource::qvDataSource(const SortSettings& settings, Beeper& beeper)
    : m_settings(settings)
    , m_beeper(beeper)
    , m_searchIndex(std::make_unique<SearchIndex>())
{
}

qvDataSource::~qvDataSource() = default;

// Records

void qvDataSource::appendToCollection(dataObject& record)
{
    record.m_position = static_cast<std::uint32_t>(m_collection.size());
    m_collection.push_back(&record);
    ++m_changes;
    m_searchIndex->appended(record);
    invalidateRows();
}

void qvDataSource::insertSorted(dataObject& record)
{
    if (m_sortArray.empty())
        return;
    m_sortArray.insert(m_defaultSortNew ? m_sortArray.begin() : m_sortArray.end(), &record);
}

dataObject& qvDataSource::add(std::unique_ptr<dataObject> owned)
{
    dataObject& record = *owned;
    record.m_collection = this;
    m_owned.push_back(std::move(owned));
    appendToCollection(record);
    insertSorted(record);
    if (record.getID() != 0)
        m_highestId = std::max(m_highestId, record.getID());
    else
        record.setID(getNextId());
    m_deleteBuffer.clear();
    m_idLookupDictionary.set(record.getID(), record);
    recordAdded(record);
    return record;
}

void qvDataSource::addAll(std::vector<std::unique_ptr<dataObject>> records)
{
    makeRoom(records.size());
    const std::size_t before = m_collection.size();
    // The sorted view moves aside once, and not for each of them.
    std::vector<dataObject*> sorted = std::exchange(m_sortArray, {});
    for (std::unique_ptr<dataObject>& record : records)
        add(std::move(record));
    if (sorted.empty())
        return;
    const auto first = m_collection.begin() + static_cast<std::ptrdiff_t>(before);
    if (m_defaultSortNew)
        sorted.insert(sorted.begin(), m_collection.rbegin(), std::make_reverse_iterator(first));
    else
        sorted.insert(sorted.end(), first, m_collection.end());
    m_sortArray = std::move(sorted);
}

void qvDataSource::makeRoom(std::size_t expected)
{
    // The first record that a person adds does not move all the others.
    constexpr std::size_t added = 1024;
    const std::size_t more = expected + added;
    m_owned.reserve(m_owned.size() + more);
    m_collection.reserve(m_collection.size() + more);
    m_idLookupDictionary.makeRoom(more);
}

void qvDataSource::restore(dataObject& record)
{
    appendToCollection(record);
    if (!m_sortArray.empty()) {
        insertSorted(record);
        m_highestId = std::max(m_highestId, record.getID());
    }
    recordAdded(record);
}

void qvDataSource::deleteItem(dataObject& record)
{
    dataObject* const one = &record;
    deleteItems({&one, 1});
}

void qvDataSource::deleteItems(std::span<dataObject* const> records)
{
    if (records.empty())
        return;
    const std::unordered_set<const dataObject*> deleted(records.begin(), records.end());
    const auto isDeleted = [&](const dataObject* candidate) { return deleted.contains(candidate); };
    for (dataObject* record : records) {
        if (holds(*record))
            recordRemoved(*record);
    }
    if (records.size() == 1 && holds(*records.front()))
        m_searchIndex->removed(*records.front(), records.front()->m_position);
    else
        m_searchIndex->reset();
    std::erase_if(m_collection, isDeleted);
    std::erase_if(m_sortArray, isDeleted);
    std::erase_if(m_selection, isDeleted);
    m_positionsValid = false;
    ++m_changes;
    findAndSetHighestId();
    invalidateRows();
}

void qvDataSource::findAndSetHighestId()
{
    m_highestId = 0;
    for (const dataObject* record : m_collection)
        m_highestId = std::max(m_highestId, record->getID());
}

void qvDataSource::undo()
{
    if (m_deleteBuffer.empty()) {
        m_beeper.beep();
        return;
    }
    const std::vector<dataObject*> buffered = std::exchange(m_deleteBuffer, {});
    for (dataObject* record : buffered)
        restore(*record);
    reloadData();
}

void qvDataSource::finishDeleting(std::vector<dataObject*> deleted, int firstSelectedRow)
{
    setDeleteBuffer(std::move(deleted));
    reloadData();
    selectRow(std::max(firstSelectedRow - 1, 0));
}

void qvDataSource::clear()
{
    m_collection.clear();
    m_sortArray.clear();
    m_selection.clear();
    m_highestId = 0;
    ++m_changes;
    m_textStore = std::make_shared<TextStore>();
    m_searchIndex->reset();
    recordsCleared();
    reloadData();
}

void qvDataSource::destroyRecords()
{
    clear();
    m_deleteBuffer.clear();
    m_idLookupDictionary.clear();
    m_owned.clear();
}

int qvDataSource::getNextId()
{
    if (m_highestId < std::numeric_limits<int>::max())
        return ++m_highestId;
    int free = 1;
    while (m_idLookupDictionary.find(free))
        ++free;
    return free;
}

dataObject* qvDataSource::getItemById(int id) const
{
    return m_idLookupDictionary.find(id);
}

void qvDataSource::updatePositions() const
{
    if (m_positionsValid)
        return;
    for (std::size_t i = 0; i < m_collection.size(); ++i)
        m_collection[i]->m_position = static_cast<std::uint32_t>(i);
    m_positionsValid = true;
}

bool qvDataSource::holds(const dataObject& record) const
{
    updatePositions();
    return record.m_position < m_collection.size() && m_collection[record.m_position] == &record;
}

dataObject* qvDataSource::getFirstItem() const
{
    return getnthItem(0);
}

dataObject* qvDataSource::getNextItem(const dataObject& record) const
{
    return holds(record) ? getnthItem(static_cast<int>(record.m_position) + 1) : nullptr;
}

dataObject* qvDataSource::getNextVisibleItem(const dataObject& record) const
{
    dataObject* next = getNextItem(record);
    while (next && !next->getVisible())
        next = getNextItem(*next);
    return next;
}

dataObject* qvDataSource::getnthItem(int n) const
{
    return entryAt(m_collection, n);
}

dataObject* qvDataSource::getnthSortedItem(int n) const
{
    if (dataObject* sorted = entryAt(m_sortArray, n))
        return sorted;
    return entryAt(m_collection, m_defaultSortNew ? getCount() - 1 - n : n);
}

dataObject* qvDataSource::getnthVisibleItem(int n) const
{
    return entryAt(visibleRows(), n);
}

dataObject* qvDataSource::getnthVisibleItem(int n, std::span<dataObject* const> array)
{
    for (dataObject* record : array) {
        if (record->getVisible() && n-- == 0)
            return record;
    }
    return nullptr;
}

int qvDataSource::countVisibleInArray(std::span<dataObject* const> array)
{
    return static_cast<int>(std::count_if(array.begin(), array.end(), [](const dataObject* record) { return record->getVisible(); }));
}

void qvDataSource::makeAllVisible()
{
    for (dataObject* record : m_collection)
        record->setVisible(true);
    invalidateRows();
}

void qvDataSource::swop(dataObject& a, dataObject& b)
{
    if (!holds(a) || !holds(b))
        return;
    std::swap(m_collection[a.m_position], m_collection[b.m_position]);
    std::swap(a.m_position, b.m_position);
    ++m_changes;
    m_searchIndex->reset();
    invalidateRows();
}

void qvDataSource::printLookup() const
{
    m_idLookupDictionary.forEach([](int id, const dataObject& record) { logFormat("%i = %p", id, static_cast<const void*>(&record)); });
}

// The list on screen

void qvDataSource::invalidateRows()
{
    m_visibleRowsValid = false;
    m_rowsAreTold = false;
}

const std::vector<dataObject*>& qvDataSource::visibleRows() const
{
    if (m_visibleRowsValid)
        return m_visibleRows;
    m_visibleRows.clear();
    constexpr int fetchedAhead = 16;
    for (int n = 0; n < getCount(); ++n) {
        __builtin_prefetch(getnthSortedItem(n + fetchedAhead));
        dataObject* record = getnthSortedItem(n);
        if (record && record->getVisible())
            m_visibleRows.push_back(record);
    }
    m_visibleRowsValid = true;
    return m_visibleRows;
}

int qvDataSource::numberOfRows() const
{
    return static_cast<int>(visibleRows().size());
}

std::string qvDataSource::objectValue(std::string_view, int) const
{
    return {};
}

bool qvDataSource::setObjectValue(std::string_view, int, std::string_view)
{
    return false;
}

QString qvDataSource::cellFault(std::string_view, int) const
{
    return {};
}

std::optional<RgbColour> qvDataSource::labelColorForRow(int) const
{
    return std::nullopt;
}

bool qvDataSource::isFinishedRow(int row) const
{
    const dataObject* record = getnthVisibleItem(row);
    return record && record->isComplete();
}

void qvDataSource::reloadData()
{
    invalidateRows();
    for (ListObserver* observer : m_observers)
        observer->listReset();
    m_rowsAreTold = true;
}

void qvDataSource::reloadCells()
{
    if (!m_rowsAreTold)
        return reloadData();
    for (ListObserver* observer : m_observers)
        observer->cellsChanged();
}

void qvDataSource::filter()
{
    applyFilter();
    reloadData();
}

void qvDataSource::filterAfterChange(const dataObject& changed)
{
    const bool wereTold = m_rowsAreTold && m_visibleRowsValid;
    const std::vector<dataObject*> before = wereTold ? m_visibleRows : std::vector<dataObject*>();
    applyFilter();
    if (!wereTold || visibleRows() != before)
        return reloadData();
    m_rowsAreTold = true;
    const int row = rowOf(changed);
    if (row < 0)
        return;
    for (ListObserver* observer : m_observers)
        observer->rowChanged(row);
}

void qvDataSource::columnsChanged()
{
    for (ListObserver* observer : m_observers)
        observer->columnsChanged();
}

void qvDataSource::noteChange(dataObject& record)
{
    ++m_changes;
    noteLink(record);
}

void qvDataSource::noteLink(dataObject& record)
{
    if (m_searchIndex->isBuilt() && holds(record))
        m_searchIndex->changed(record, record.m_position);
    recordChanged(record);
}

void qvDataSource::addObserver(ListObserver& observer)
{
    m_observers.push_back(&observer);
}

void qvDataSource::removeObserver(ListObserver& observer)
{
    std::erase(m_observers, &observer);
}

int qvDataSource::rowOf(const dataObject& record) const
{
    const std::vector<dataObject*>& rows = visibleRows();
    const auto found = std::find(rows.begin(), rows.end(), &record);
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::vector<int> qvDataSource::selectedRows() const
{
    std::vector<int> rows;
    const std::unordered_set<const dataObject*> selected(m_selection.begin(), m_selection.end());
    if (selected.empty())
        return rows;
    const std::vector<dataObject*>& shown = visibleRows();
    for (std::size_t row = 0; row < shown.size() && rows.size() < selected.size(); ++row) {
        if (selected.contains(shown[row]))
            rows.push_back(static_cast<int>(row));
    }
    return rows;
}

int qvDataSource::selectedRow() const
{
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
}

void qvDataSource::notifySelection()
{
    for (ListObserver* observer : m_observers)
        observer->selectionChanged();
}

void qvDataSource::setSelectedRows(const std::vector<int>& rows)
{
    std::vector<dataObject*> selection;
    for (const int row : rows) {
        if (dataObject* record = getnthVisibleItem(row))
            selection.push_back(record);
    }
    setSelectedRecords(std::move(selection));
}

void qvDataSource::setSelectedRecords(std::vector<dataObject*> records)
{
    if (records == m_selection)
        return;
    m_selection = std::move(records);
    notifySelection();
}

void qvDataSource::selectRow(int row)
{
    setSelectedRows({row});
}

dataObject* qvDataSource::getSelectedItem() const
{
    return getnthVisibleItem(selectedRow());
}

std::vector<dataObject*> qvDataSource::selectedItems() const
{
    std::vector<dataObject*> items;
    const std::vector<int> rows = selectedRows();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        items.push_back(getnthVisibleItem(*row));
    return items;
}

// Searching

const std::vector<bool>& qvDataSource::recordsWithWord(std::string_view word)
{
    return m_searchIndex->recordsWithWord(word, m_collection);
}

void qvDataSource::hideWithoutWords(std::string_view searchText)
{
    for (const std::string& word : searchWords(searchText)) {
        const std::vector<bool>& found = recordsWithWord(word);
        for (std::size_t i = 0; i < m_collection.size(); ++i) {
            if (!found[i])
                m_collection[i]->setVisible(false);
        }
    }
    invalidateRows();
}

/// Hides those of the records that the word is not in, neither in them nor in what belongs to them; answers the others.
std::vector<dataObject*> qvDataSource::hideWithoutWord(
    const std::string& word, const std::vector<dataObject*>& records, qvDataSource& linked, LinkOf linkOf)
{
    const WordSearch own(*m_searchIndex, word, m_collection, records.size());
    const WordSearch others(*linked.m_searchIndex, word, linked.m_collection, records.size());
    std::vector<dataObject*> left;
    forEachLink(records, linkOf, [&](dataObject& record, const dataObject* link) {
        // A deleted record is no longer in the index but still belongs to the records that name it.
        const auto linkMatches = [&] { return linked.holds(*link) ? others.isIn(link->m_position) : link->contains(word); };
        if (own.isIn(record.m_position) || (link && linkMatches()))
            left.push_back(&record);
        else
            record.setVisible(false);
    });
    return left;
}

void qvDataSource::hideWithoutWords(std::string_view searchText, qvDataSource& linked, LinkOf linkOf)
{
    updatePositions();
    linked.updatePositions();
    std::vector<dataObject*> left;
    std::copy_if(
        m_collection.begin(), m_collection.end(), std::back_inserter(left), [](const dataObject* record) { return record->getVisible(); });
    for (const std::string& word : searchWords(searchText))
        left = hideWithoutWord(word, left, linked, linkOf);
    invalidateRows();
}
