// An ordered list of records with ids, a sorted view, a filter and one level of undo: what every list in the program stands on.
//
// The collection owns its records for as long as the program runs, deleted ones too, since undo, the id map and other records
// may still answer with them. What lists ask again and again (visible rows in display order, a record's place, the highest id)
// is kept and gives what walking the records would give.
#pragma once

#include "storage/IdMap.h"
#include "storage/LinkedRecords.h"
#include "storage/ListState.h"
#include "storage/dataObject.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class Beeper;
class SearchIndex;
enum class SortDirection;

/// A list on screen (or a test) that follows a collection.
class ListObserver {
public:
    virtual ~ListObserver() = default;
    /// Rows came, went or moved: everything has to be asked again.
    virtual void listReset() = 0;
    /// The cells of one visible row changed.
    virtual void rowChanged(int row) = 0;
    /// Cells of any rows may have changed; the rows are the same.
    virtual void cellsChanged() { listReset(); }
    virtual void selectionChanged() { }
    /// Columns were shown, hidden, renamed or resized.
    virtual void columnsChanged() { }
};

/// How a column sorts.
enum class SortOptions { text = 0, numeric = 1, date = 2, numericOfRecord = 3 };

/// The settings every collection needs, answered at the moment of asking.
class SortSettings {
public:
    virtual ~SortSettings() = default;
    /// VendaroCodeSort: "1" codes sort as text, "2" by id, anything else by their digits; empty when never set.
    virtual std::string codeSort() const = 0;
};

struct RgbColour {
    float red = 0;
    float green = 0;
    float blue = 0;
};

class qvDataSource {
public:
    qvDataSource(const SortSettings& settings, Beeper& beeper);
    virtual ~qvDataSource();
    qvDataSource(const qvDataSource&) = delete;
    qvDataSource& operator=(const qvDataSource&) = delete;

    // Records

    /// Takes the record over and appends it. A record without id gets the next one; undo is over.
    dataObject& add(std::unique_ptr<dataObject> record);
    /// The same for many at once, in their order.
    void addAll(std::vector<std::unique_ptr<dataObject>> records);
    /// Makes room for so many records that are about to be added.
    void makeRoom(std::size_t more);
    /// Undo's way back: appends a record that was deleted. Ids and the id map stay as they are.
    void restore(dataObject& record);
    /// Takes the record out of the list; it stays known under its id.
    void deleteItem(dataObject& record);
    /// The same for several at once.
    void deleteItems(std::span<dataObject* const> records);
    void undo();
    void redo() { }
    /// Empties the list; the id map stays.
    void clear();
    virtual int getCount() const { return static_cast<int>(m_collection.size()); }
    /// The record known under the id, deleted or not; none when there never was one.
    dataObject* getItemById(int id) const;
    /// The highest id plus one; once the largest id of all is taken, the first free one.
    int getNextId();
    int highestId() const { return m_highestId; }
    void findAndSetHighestId();
    dataObject* getFirstItem() const;
    dataObject* getNextItem(const dataObject& record) const;
    dataObject* getNextVisibleItem(const dataObject& record) const;
    virtual dataObject* getnthItem(int n) const;
    virtual dataObject* getnthSortedItem(int n) const;
    dataObject* getnthVisibleItem(int n) const;
    static dataObject* getnthVisibleItem(int n, std::span<dataObject* const> array);
    static int countVisibleInArray(std::span<dataObject* const> array);
    void makeAllVisible();
    /// Exchanges the places of two records.
    void swop(dataObject& a, dataObject& b);
    /// Whether the record is in the list now (and not deleted).
    bool holds(const dataObject& record) const;
    /// All records in insertion order.
    const std::vector<dataObject*>& records() const { return m_collection; }
    void printLookup() const;

    // Sorting

    void setDefaultSortNew(bool newestFirst);
    bool defaultSortNew() const { return m_defaultSortNew; }
    const std::vector<dataObject*>& getSortArray() const { return m_sortArray; }
    void setSortArray(std::vector<dataObject*> sorted);
    /// Clears the highlighted column only.
    void resetSortArray();
    virtual void sortUsingDescriptors(std::span<const SortDescriptor> descriptors);
    void sortByColumn(std::string_view column, bool ascending, SortOptions options = SortOptions::text);
    float getNumberFrom(const dataObject& record, std::string_view fieldName, SortOptions options) const;
    /// -1, 0 or 1.
    int compare(const dataObject& a, const dataObject& b, std::string_view column, SortOptions options) const;
    /// Field names that the generic columns "field1", "field2", … stand for; empty for ordinary lists.
    std::vector<std::string> fields;

    // The list on screen

    ListState list;
    /// Sort by the list's descriptors, if it has any.
    void applyCurrentSort();
    /// A click on the column's heading: sorts by it, turning the direction when it is the sorted one already.
    void toggleSort(const std::string& identifier);
    virtual int numberOfRows() const;
    /// The displayed text of a cell; row is a visible row.
    virtual std::string objectValue(std::string_view identifier, int row) const;
    /// A cell was edited; answers whether the value was taken.
    virtual bool setObjectValue(std::string_view identifier, int row, std::string_view value);
    /// Why the cell's value cannot be used as it stands, in one sentence; empty when it can.
    virtual QString cellFault(std::string_view identifier, int row) const;
    /// The colour of a row, none for clear.
    virtual std::optional<RgbColour> labelColorForRow(int row) const;
    /// Whether the row's record is done with and steps back in the list.
    virtual bool isFinishedRow(int row) const;
    /// Lets the records that pass the list's filter be shown, and tells the lists on screen.
    virtual void filter();
    /// filter() after one record changed. When it leaves the rows that the list was told last, only the record's row is told.
    void filterAfterChange(const dataObject& changed);
    virtual void deleteKey() { }
    virtual void edit() { }
    /// The rows on screen are asked again.
    void reloadData();
    /// The same where no row came, went or moved since the last time: lists keep their rows, and it costs the same however many there are.
    void reloadCells();

    /// Selected rows, ascending. Rows are kept as records, so sorting and filtering move the selection along.
    virtual std::vector<int> selectedRows() const;
    /// -1 when no row is selected: the first selected one.
    int selectedRow() const;
    virtual void setSelectedRows(const std::vector<int>& rows);
    void selectRow(int row);
    /// The same by record, for lists that are not flat.
    void setSelectedRecords(std::vector<dataObject*> records);
    const std::vector<dataObject*>& selectedRecords() const { return m_selection; }
    dataObject* getSelectedItem() const;
    /// From the last selected row to the first.
    std::vector<dataObject*> selectedItems() const;
    int rowOf(const dataObject& record) const;

    void addObserver(ListObserver& observer);
    void removeObserver(ListObserver& observer);
    void columnsChanged();

    /// The deleted records that undo would bring back.
    const std::vector<dataObject*>& deleteBuffer() const { return m_deleteBuffer; }
    void setDeleteBuffer(std::vector<dataObject*> records) { m_deleteBuffer = std::move(records); }
    /// What deleting the selected rows of a list ends with: undo brings these back, the list is asked again, and the row before the first
    /// selected one is selected.
    void finishDeleting(std::vector<dataObject*> deleted, int firstSelectedRow);
    void clearDeleteBuffer() { m_deleteBuffer.clear(); }

    /// Called by a record whose field changed.
    void noteChange(dataObject& record);
    /// Called by a record that goes with another one now, which its file does not say.
    void noteLink(dataObject& record);
    /// How many times a record came, went, changed or moved so far.
    std::uint64_t changes() const { return m_changes; }
    /// Where texts of records made in the program are kept.
    const TextStorePointer& textStore() const { return m_textStore; }

protected:
    /// The records shown, in display order. A list that shows only some of its records (the lines of one order) overrides it;
    /// rows, selection and cells all go by it.
    virtual const std::vector<dataObject*>& visibleRows() const;
    /// What a record's change means to an index that a subclass keeps.
    virtual void recordChanged(dataObject&) { }
    virtual void recordAdded(dataObject&) { }
    virtual void recordRemoved(dataObject&) { }
    virtual void recordsCleared() { }

    /// Empties the list and destroys its records, deleted ones and those of the id map included: for rows made anew at each use,
    /// which nobody else holds.
    void destroyRecords();
    /// Hides every visible record that does not hold all words of the search text.
    void hideWithoutWords(std::string_view searchText);
    /// The same, where a word may also stand in the record that belongs to it in another collection.
    void hideWithoutWords(std::string_view searchText, qvDataSource& linked, LinkOf linkOf);
    /// A column that shows a text of the record that belongs to each in another collection, and nothing where none does.
    struct LinkedColumn {
        const qvDataSource& collection;
        LinkOf linkOf;
        /// The other record's own name for it.
        std::string_view name;
    };
    /// None for a column of the records' own.
    virtual std::optional<LinkedColumn> linkedColumn(std::string_view) const { return std::nullopt; }
    /// Lets the records that pass the list's filter be visible, and no others; the rows on screen are not asked again.
    virtual void applyFilter() { }
    /// Tells the lists on screen.
    void notifySelection();
    const SortSettings& sortSettings() const { return m_settings; }
    Beeper& beeper() const { return m_beeper; }

private:
    void appendToCollection(dataObject& record);
    void insertSorted(dataObject& record);
    std::vector<dataObject*> hideWithoutWord(
        const std::string& word, const std::vector<dataObject*>& records, qvDataSource& linked, LinkOf linkOf);
    void invalidateRows();
    /// What a column's numbers are, found out once for all records.
    struct NumberColumn {
        enum class Value { field, id, code, ordernum };
        std::string_view name;
        Value value;
    };
    NumberColumn numberColumn(std::string_view fieldName) const;
    static float plainNumberFrom(const dataObject& record, const NumberColumn& column, SortOptions options);
    std::vector<dataObject*> sortedByText(std::string_view column, SortDirection direction) const;
    std::vector<dataObject*> sortedByLinkedText(const LinkedColumn& column, SortDirection direction) const;
    std::vector<dataObject*> sortedByDate(std::string_view column, SortDirection direction) const;
    std::vector<dataObject*> sortedByNumber(std::string_view column, SortDirection direction, SortOptions options) const;

    const std::vector<bool>& recordsWithWord(std::string_view word);
    void updatePositions() const;

    const SortSettings& m_settings;
    Beeper& m_beeper;
    TextStorePointer m_textStore = std::make_shared<TextStore>();
    std::vector<std::unique_ptr<dataObject>> m_owned;
    std::vector<dataObject*> m_collection;
    std::vector<dataObject*> m_sortArray;
    IdMap m_idLookupDictionary;
    std::vector<dataObject*> m_deleteBuffer;
    std::vector<dataObject*> m_selection;
    std::vector<ListObserver*> m_observers;
    std::unique_ptr<SearchIndex> m_searchIndex;
    mutable std::vector<dataObject*> m_visibleRows;
    mutable bool m_visibleRowsValid = false;
    /// Whether the rows are those that the observers were told last.
    bool m_rowsAreTold = false;
    mutable bool m_positionsValid = true;
    int m_highestId = 0;
    std::uint64_t m_changes = 0;
    bool m_defaultSortNew = true;
};

/// A collection of one kind of record, its answers typed.
template <class R>
class Collection : public qvDataSource {
public:
    using qvDataSource::qvDataSource;
    using Kind = R;

    R& add(std::unique_ptr<R> record) { return static_cast<R&>(qvDataSource::add(std::move(record))); }
    R* getItemById(int id) const { return static_cast<R*>(qvDataSource::getItemById(id)); }
    R* getnthItem(int n) const override { return static_cast<R*>(qvDataSource::getnthItem(n)); }
    R* getnthVisibleItem(int n) const { return static_cast<R*>(qvDataSource::getnthVisibleItem(n)); }
    R* getnthSortedItem(int n) const override { return static_cast<R*>(qvDataSource::getnthSortedItem(n)); }
    R* getFirstItem() const { return static_cast<R*>(qvDataSource::getFirstItem()); }
    R* getSelectedItem() const { return static_cast<R*>(qvDataSource::getSelectedItem()); }
    /// The n-th record, which must exist.
    R& at(int n) const { return static_cast<R&>(*records()[static_cast<std::size_t>(n)]); }
};
