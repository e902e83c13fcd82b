// How a record of an earlier state compares with one there is now: what of it changed, and whether the two are one record at all.
//
// An id is given again once the record that had it last was deleted, so that equal ids alone do not make two records one. Records carry
// nothing else that stays for certain; what a person tells them apart by has to serve.
#pragma once

#include "storage/FieldTable.h"
#include "storage/RecordFile.h"

#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

/// Which keys of a kind say what about a record.
template <class R>
struct ComparedKeys {
    std::span<const NestedKey<R>> nested;
    /// What a person knows the record by.
    std::span<const std::string_view> title;
    /// Values that a record keeps for life: where both have one and they are not the same, the records are two.
    std::span<const std::string_view> fixed;
    /// Values that are seldom the same in two records and seldom all changed in one.
    std::span<const std::string_view> telling;
};

template <class R>
class RecordComparison {
public:
    explicit RecordComparison(ComparedKeys<R> keys) : m_keys(keys) { }

    /// The file's keys whose values are different, sorted; what the kind does not know counts as one, at the end.
    std::vector<std::string> changedKeys(const StoredRecord<R>& earlier, const StoredRecord<R>& present) const
    {
        std::vector<std::string> changed;
        for (const Row& row : R::fieldRows()) {
            if (isDifferent(row, earlier, present))
                changed.emplace_back(row.key);
        }
        for (const NestedKey<R>& nested : m_keys.nested) {
            if (nestedText(nested, earlier) != nestedText(nested, present))
                changed.emplace_back(nested.key);
        }
        std::sort(changed.begin(), changed.end());
        const PlistValue none = PlistValue::makeDict();
        if (!((earlier.unknownKeys ? *earlier.unknownKeys : none) == (present.unknownKeys ? *present.unknownKeys : none)))
            changed.emplace_back("further keys");
        return changed;
    }

    /// Whether they are two records for certain, or as good as: a value that stays for life differs, or at least two telling values
    /// differ and none is the same. Otherwise the one may be the other after a change.
    bool areTwo(const StoredRecord<R>& earlier, const StoredRecord<R>& present) const
    {
        const auto differs = [&](std::string_view key) { return compared(key, earlier, present) == Answer::differs; };
        if (std::any_of(m_keys.fixed.begin(), m_keys.fixed.end(), differs))
            return true;
        const auto same = [&](std::string_view key) { return compared(key, earlier, present) == Answer::same; };
        return std::none_of(m_keys.telling.begin(), m_keys.telling.end(), same)
            && std::count_if(m_keys.telling.begin(), m_keys.telling.end(), differs) >= enoughDifferent;
    }

    std::string titleOf(const StoredRecord<R>& record) const
    {
        std::string title;
        for (const std::string_view key : m_keys.title) {
            const Row* row = rowFor(key);
            const std::string_view text = row && row->text ? (record.values.*row->text).view() : std::string_view();
            if (!text.empty())
                title.append(title.empty() ? "" : " ").append(text);
        }
        return title.empty() ? std::to_string(record.id) : title;
    }

private:
    using Row = FieldRow<typename R::Values>;
    /// Where one of them has no value, it says nothing.
    enum class Answer { nothing, same, differs };
    static constexpr int enoughDifferent = 2;

    static const Row* rowFor(std::string_view key)
    {
        const auto& rows = R::fieldRows();
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.key == key; });
        return found == rows.end() ? nullptr : &*found;
    }

    static Answer compared(std::string_view key, const StoredRecord<R>& earlier, const StoredRecord<R>& present)
    {
        const Row* row = rowFor(key);
        if (!row || row->flag)
            return Answer::nothing;
        const bool areFilled = row->text ? !(earlier.values.*row->text).isEmpty() && !(present.values.*row->text).isEmpty()
                                         : earlier.values.*row->integer != 0 && present.values.*row->integer != 0;
        if (!areFilled)
            return Answer::nothing;
        return isDifferent(*row, earlier, present) ? Answer::differs : Answer::same;
    }

    static bool isDifferent(const Row& row, const StoredRecord<R>& earlier, const StoredRecord<R>& present)
    {
        // What is not read back from where it is written says nothing.
        if (row.stored == Stored::never || row.key != row.readKey)
            return false;
        if (row.text)
            return earlier.values.*row.text != (present.values.*row.text).view();
        if (row.integer)
            return earlier.values.*row.integer != present.values.*row.integer;
        return earlier.values.*row.flag != present.values.*row.flag;
    }

    static std::string nestedText(const NestedKey<R>& nested, const StoredRecord<R>& record)
    {
        std::string text;
        PlistWriter writer([&](std::string_view bytes) { text += bytes; });
        writer.openDict();
        writer.key(nested.key);
        if (nested.filled(record))
            nested.write(record, writer);
        else
            writer.text({});
        writer.closeDict();
        writer.finish();
        return text;
    }

    ComparedKeys<R> m_keys;
};

/// Ids that none of the given ones is: those above the highest, and when there are none left, the free ones from 1 on.
class UnusedIds {
public:
    explicit UnusedIds(std::unordered_set<int> used) : m_used(std::move(used))
    {
        for (const int id : m_used)
            m_last = std::max(m_last, id);
    }
    int next()
    {
        do
            m_last = m_last == std::numeric_limits<int>::max() ? 1 : m_last + 1;
        while (!m_used.insert(m_last).second);
        return m_last;
    }

private:
    std::unordered_set<int> m_used;
    int m_last = 0;
};
