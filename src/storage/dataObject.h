// The base of every business record: identity, visibility under the list's filter, and its fields by name.
#pragma once

#include "foundation/Text.h"

#include <QDateTime>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class PlistValue;
class qvDataSource;

class dataObject {
public:
    dataObject() = default;
    virtual ~dataObject();
    dataObject(const dataObject&) = delete;
    dataObject& operator=(const dataObject&) = delete;

    /// 0 while not yet assigned.
    int getID() const { return m_id; }
    void setID(int id) { m_id = id; }
    /// Whether the record stands in the list of its collection: added, and not deleted since.
    bool isListed() const;
    /// Whether the record passes its list's filter.
    bool getVisible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }
    std::optional<QDateTime> getNSDate() const { return m_seldom ? m_seldom->nsdate : std::nullopt; }
    /// Setting nothing keeps the old value.
    void setNSDate(const std::optional<QDateTime>& date);
    /// Used only while sorting by number.
    std::optional<float> getTempSortNSNumber() const { return m_hasTempSortNumber ? std::optional(m_tempSortNSNumber) : std::nullopt; }
    void setTempSortNSNumber(float number)
    {
        m_tempSortNSNumber = number;
        m_hasTempSortNumber = true;
    }

    /// The field's value as text, or the empty text for an unknown name.
    virtual std::string getFieldByName(std::string_view name) const;
    /// Sets a field from text, as imports do; answers false for a name that cannot be set.
    virtual bool setFieldByName(std::string_view name, std::string_view value);
    /// The date behind a name ending in "asdate" ("dateasdate") as a day number (QDate's Julian day), for sorting.
    virtual std::int64_t getDateByName(std::string_view nameAsDate) const;
    /// The search test: whether the text occurs in one of the searched fields, whatever the case.
    virtual bool contains(std::string_view text) const;
    /// The record's searched fields, one after the other, each on a line of its own; what the search index folds and keeps.
    virtual void appendSearchText(std::string& text) const;
    /// For report rows: the field a generic column name stands for.
    virtual std::string getActualFieldNameFor(std::string_view name) const;
    /// For report rows: the record behind the row.
    virtual dataObject* getdObject() const { return nullptr; }

    /// For going through many records: the processor already fetches what lists show of one that comes soon. In steps, since each
    /// piece of memory says where the next one lies.
    virtual void fetch(int) const { }
    static constexpr int fetchSteps = 3;
    /// The same for one text of each, as sorting by it needs. textField() names it; none when the name is not that of a text of the record's own.
    virtual void fetchText(int step, std::size_t) const { fetch(step); }
    virtual std::optional<std::size_t> textField(std::string_view) const { return std::nullopt; }

    virtual float getNumericCode() const { return 0; }
    virtual float getNumericOrdernum() const { return 0; }
    virtual bool isComplete() const { return false; }
    virtual std::string getType() const { return {}; }

    /// Whether the field name sorts as a date.
    static bool isDate(std::string_view name);
    /// Whether the field name sorts as a number; codes and order numbers do unless codeSort (VendaroCodeSort) is "1".
    static bool isNumber(std::string_view name, std::string_view codeSort);

    /// What the record's file held beside the fields known here; kept so that saving gives it back. May be null.
    std::shared_ptr<const PlistValue> unknownKeys() const { return m_seldom ? m_seldom->unknownKeys : nullptr; }
    void setUnknownKeys(std::shared_ptr<const PlistValue> keys);

protected:
    /// Tells the collection that a field changed, so that what it keeps about the record is worked out anew.
    void noteChange();
    /// The same when only the record that belongs to this one is another, which the file does not say.
    void noteLink();
    /// A text with these bytes, cleaned, in the record's store.
    Text keep(std::string_view bytes);

private:
    friend class qvDataSource;
    /// What hardly any record has: there are a million records, and every byte of each counts.
    struct Seldom {
        std::optional<QDateTime> nsdate;
        std::shared_ptr<const PlistValue> unknownKeys;
    };
    Seldom& seldom();

    int m_id = 0;
    /// Place in the collection while the collection keeps places up to date.
    mutable std::uint32_t m_position = 0;
    float m_tempSortNSNumber = 0;
    bool m_hasTempSortNumber = false;
    bool m_visible = true;
    qvDataSource* m_collection = nullptr;
    TextStorePointer m_store;
    std::unique_ptr<Seldom> m_seldom;

public:
    /// The store that holds the record's texts; made on first need, or given by the collection that loads it.
    const TextStorePointer& store();
    void setStore(TextStorePointer store) { m_store = std::move(store); }
};
