// How a record of an earlier state compares with one there is now: what of it changed, and whether the two are one record at all.
//
// An id is given again once the record that had it last was deleted, so that equal ids alone do not make two records one. Records carry
// nothing else that stays for certain; what a person tells them apart by has to serve.
#pragma once

#include "storage/FieldTable.h"
#include "storage/RecordFile.h"

#include "foundation/ByteHash.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"

#include <algorithm>

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
    /// Numbers that are filled in from other records where a file leaves them open.
    std::span<const std::string_view> filledIn;
};

template <class R>
class RecordComparison {
public:
    explicit RecordComparison(ComparedKeys<R> keys) : m_keys(keys) { }

    /// The file's keys whose values are different, sorted; what the kind does not know counts as one, at the end. stored: the earlier
    /// record as its file has it; earlier: as it would stand now. What the file leaves open to be filled in says nothing.
    std::vector<std::string> changedKeys(
        const StoredRecord<R>& stored, const StoredRecord<R>& earlier, const StoredRecord<R>& present) const
    {
        std::vector<std::string> changed;
        visitChanged(stored, earlier, present, [&](std::string_view key) {
            changed.emplace_back(key);
            return true;
        });
        std::sort(changed.begin(), changed.end());
        if (isUnknownDifferent(earlier, present))
            changed.emplace_back("further keys");
        return changed;
    }

    /// Whether no key is different.
    bool areSame(const StoredRecord<R>& stored, const StoredRecord<R>& earlier, const StoredRecord<R>& present) const
    {
        return visitChanged(stored, earlier, present, [](std::string_view) { return false; }) && !isUnknownDifferent(earlier, present);
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

    /// The same for two records of which no key is different; what is filled in where a file leaves it open is not in it.
    std::uint64_t contentHash(const StoredRecord<R>& record) const
    {
        ByteHash hash;
        const auto add = [&](std::string_view value) {
            hash.add(value);
            hash.add(std::string_view("", 1));
        };
        for (const Row& row : R::fieldRows()) {
            if (!isCompared(row) || isFilledIn(row))
                continue;
            if (row.text)
                add(((*record.values).*row.text).view());
            else
                add(std::to_string(row.integer ? (*record.values).*row.integer : (*record.values).*row.flag));
        }
        for (const NestedKey<R>& nested : m_keys.nested)
            add(nestedText(nested, record));
        return hash.value();
    }

    /// What a person knows the record by; its id when there is nothing.
    std::string titleOf(const StoredRecord<R>& record) const
    {
        std::string words;
        for (const std::string_view key : m_keys.title) {
            const Row* row = rowFor(key);
            const std::string_view text = row && row->text ? ((*record.values).*row->text).view() : std::string_view();
            if (!text.empty())
                words.append(words.empty() ? "" : " ").append(text);
        }
        return words.empty() ? std::to_string(record.id) : words;
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
        const bool areFilled = row->text ? !((*earlier.values).*row->text).isEmpty() && !((*present.values).*row->text).isEmpty()
                                         : (*earlier.values).*row->integer != 0 && (*present.values).*row->integer != 0;
        if (!areFilled)
            return Answer::nothing;
        return isDifferent(*row, earlier, present) ? Answer::differs : Answer::same;
    }

    /// What is not read back from where it is written says nothing.
    static bool isCompared(const Row& row) { return row.key == row.readKey; }
    static bool isDifferent(const Row& row, const StoredRecord<R>& earlier, const StoredRecord<R>& present)
    {
        if (!isCompared(row))
            return false;
        if (row.text)
            return (*earlier.values).*row.text != ((*present.values).*row.text).view();
        if (row.integer)
            return (*earlier.values).*row.integer != (*present.values).*row.integer;
        return (*earlier.values).*row.flag != (*present.values).*row.flag;
    }

    /// Hands over the key of each difference until use says that it is enough; false when it did.
    template <class Use>
    bool visitChanged(const StoredRecord<R>& stored, const StoredRecord<R>& earlier, const StoredRecord<R>& present, Use use) const
    {
        for (const Row& row : R::fieldRows()) {
            if (!isLeftOpen(row, stored) && isDifferent(row, earlier, present) && !use(row.key))
                return false;
        }
        for (const NestedKey<R>& nested : m_keys.nested) {
            if (nestedText(nested, earlier) != nestedText(nested, present) && !use(nested.key))
                return false;
        }
        return true;
    }

    bool isLeftOpen(const Row& row, const StoredRecord<R>& stored) const
    {
        return row.integer && (*stored.values).*row.integer == 0 && isFilledIn(row);
    }

    bool isFilledIn(const Row& row) const
    {
        return std::find(m_keys.filledIn.begin(), m_keys.filledIn.end(), row.key) != m_keys.filledIn.end();
    }

    static bool isUnknownDifferent(const StoredRecord<R>& earlier, const StoredRecord<R>& present)
    {
        if (!earlier.unknownKeys && !present.unknownKeys)
            return false;
        const PlistValue none = PlistValue::makeDict();
        return !((earlier.unknownKeys ? *earlier.unknownKeys : none) == (present.unknownKeys ? *present.unknownKeys : none));
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
