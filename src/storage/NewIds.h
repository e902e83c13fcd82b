// Which ids the records of an earlier state get whose own ones others have by now: that of the record they came back as, when they are
// back already, else one that nobody has.
//
// What a record names counts as well when it is looked for, and may itself have got another id. So the ids are found again with those that
// were found before, until they stay as they are.
#pragma once

#include "storage/RecordComparison.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <unordered_map>
#include <unordered_set>

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

template <class R>
class NewIds {
public:
    using PresentById = std::unordered_map<int, const StoredRecord<R>*>;
    /// How the earlier record of that place in its file would stand among those of now under an id.
    using AsOfNow = std::function<StoredRecord<R>(std::size_t index, int id)>;

    NewIds(RecordComparison<R> comparison, const StoredRecords<R>& earlier, const PresentById& present, AsOfNow asOfNow)
        : m_comparison(comparison)
        , m_earlier(earlier)
        , m_present(present)
        , m_asOfNow(std::move(asOfNow))
    {
    }

    /// known: the ids as they were found so far. Who is known to be back stays the one that it is as long as the two are the same: of
    /// several alike each keeps its own.
    IdChanges::Ids find(const std::function<int(int earlier)>& known)
    {
        findReplaced();
        if (m_replaced.empty())
            return {};
        listOthers();
        for (const std::size_t index : m_replaced)
            takeKnown(index, known(m_earlier[index].id));
        for (const std::size_t index : m_replaced)
            takeSame(index);
        giveUnused();
        return std::move(m_ids);
    }

private:
    using Others = std::vector<const StoredRecord<R>*>;

    /// Those that find another one under their id, the first of each id.
    void findReplaced()
    {
        for (std::size_t index = 0; index < m_earlier.size(); ++index) {
            const int id = m_earlier[index].id;
            const auto now = m_present.find(id);
            if (now != m_present.end() && m_comparison.areTwo(m_asOfNow(index, id), *now->second) && m_replacedIds.insert(id).second)
                m_replaced.push_back(index);
        }
    }

    /// The present records that are no earlier one under the id it had, by what they are called, each list by id.
    void listOthers()
    {
        for (const StoredRecord<R>& record : m_earlier)
            m_used.insert(record.id);
        for (const auto& [id, record] : m_present) {
            if (m_used.insert(id).second || m_replacedIds.contains(id))
                m_others[m_comparison.wordsOf(*record)].push_back(record);
        }
        for (auto& [words, records] : m_others)
            std::sort(records.begin(), records.end(), [](const auto* a, const auto* b) { return a->id < b->id; });
    }

    void takeKnown(std::size_t index, int id)
    {
        const auto now = m_present.find(id);
        if (id == m_earlier[index].id || now == m_present.end())
            return;
        Others& others = m_others[m_comparison.wordsOf(m_earlier[index])];
        const auto other = std::find(others.begin(), others.end(), now->second);
        if (other != others.end() && isBackAs(index, **other))
            take(index, others, other);
    }

    void takeSame(std::size_t index)
    {
        if (m_ids.contains(m_earlier[index].id))
            return;
        Others& others = m_others[m_comparison.wordsOf(m_earlier[index])];
        const StoredRecord<R> record = m_asOfNow(index, m_earlier[index].id);
        const auto other = std::find_if(others.begin(), others.end(),
            [&](const StoredRecord<R>* one) { return !m_comparison.areTwo(record, *one) && isBackAs(index, *one); });
        if (other != others.end())
            take(index, others, other);
    }

    bool isBackAs(std::size_t index, const StoredRecord<R>& other) const
    {
        return m_comparison.areSame(m_earlier[index], m_asOfNow(index, other.id), other);
    }

    void take(std::size_t index, Others& others, typename Others::iterator other)
    {
        m_ids[m_earlier[index].id] = (*other)->id;
        others.erase(other);
    }

    /// In file order.
    void giveUnused()
    {
        UnusedIds unused(std::move(m_used));
        for (const std::size_t index : m_replaced) {
            if (const int id = m_earlier[index].id; !m_ids.contains(id))
                m_ids[id] = unused.next();
        }
    }

    RecordComparison<R> m_comparison;
    const StoredRecords<R>& m_earlier;
    const PresentById& m_present;
    AsOfNow m_asOfNow;
    std::vector<std::size_t> m_replaced;
    std::unordered_set<int> m_replacedIds;
    std::unordered_set<int> m_used;
    std::unordered_map<std::string, Others> m_others;
    IdChanges::Ids m_ids;
};
