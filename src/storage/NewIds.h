// Which ids the records of an earlier state get whose own ones others have by now: that of the record they came back as, when they are
// back already, else one that nobody has.
//
// Who came back is as it was, and so is all that it names of its own file: taken side by side with what the record of now names in the same
// places, each goes with one, and nothing differs. That holds for records that name each other in a circle as for any others.
#pragma once

#include "storage/RecordComparison.h"
#include "storage/RecordFile.h"

#include "foundation/ByteHash.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <list>
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

/// The present records of a file by id.
template <class R>
using PresentById = std::unordered_map<int, const StoredRecord<R>*>;
/// The id of now for an earlier one of the same file.
using OwnIds = std::function<int(int earlier)>;

template <class R>
struct NewIdsNeeds {
    RecordComparison<R> comparison;
    const StoredRecords<R>& earlier;
    const PresentById<R>& present;
    /// How the earlier record of that place in its file would stand among those of now.
    std::function<StoredRecord<R>(std::size_t index, const OwnIds& ownIds)> asOfNow;
    /// Hands over the id of each record of the same file that this one names, always in the same order.
    std::function<void(StoredRecord<R>& record, const std::function<void(int& id)>& use)> visitOwnLinks;
};

template <class R>
class NewIds {
public:
    explicit NewIds(NewIdsNeeds<R> needs) : m_needs(std::move(needs)) { }

    /// known: the ids as they were found so far. Who is known to be back stays the one that it is as long as the two are the same: of
    /// several alike each keeps its own.
    IdChanges::Ids find(const OwnIds& known)
    {
        findReplaced();
        if (m_replaced.empty())
            return {};
        listOthers();
        for (const Replaced& record : m_replaced)
            takeTogether(record, known(record.id));
        tellApart();
        takeAlike();
        giveUnused();
        return std::move(m_ids);
    }

private:
    struct Node {
        int id = 0;
        /// Those of its own file that it names.
        std::vector<int> named;
        /// The same for two that can be one.
        std::uint64_t colour = 0;
    };
    /// An earlier record that finds another one under its id.
    struct Replaced : Node {
        /// Its place in the earlier file.
        std::size_t index = 0;
    };
    /// A present record that is no earlier one under the id it had.
    struct Other : Node {
        const StoredRecord<R>* record = nullptr;
        bool isFree = true;
    };
    using Pairs = std::vector<std::pair<const Replaced*, Other*>>;

    // Listing

    /// In file order, the first of each id.
    void findReplaced()
    {
        for (std::size_t index = 0; index < m_needs.earlier.size(); ++index) {
            const auto now = m_needs.present.find(m_needs.earlier[index].id);
            if (now == m_needs.present.end())
                continue;
            const StoredRecord<R> record = m_needs.asOfNow(index, [](int id) { return id; });
            if (m_needs.comparison.areTwo(record, *now->second) && m_replacedById.emplace(record.id, m_replaced.size()).second)
                m_replaced.push_back({nodeOf(record), index});
        }
    }

    /// By id.
    void listOthers()
    {
        for (const StoredRecord<R>& record : m_needs.earlier)
            m_used.insert(record.id);
        for (const auto& [id, record] : m_needs.present) {
            if (m_used.insert(id).second || m_replacedById.contains(id))
                m_others.push_back({nodeOf(*record), record});
        }
        std::sort(m_others.begin(), m_others.end(), [](const Other& a, const Other& b) { return a.id < b.id; });
        for (std::size_t place = 0; place < m_others.size(); ++place)
            m_othersById.emplace(m_others[place].id, place);
    }

    /// The colour is what the record itself says, whatever ids it and those that it names have.
    Node nodeOf(StoredRecord<R> record) const
    {
        Node node {record.id, {}, 0};
        m_needs.visitOwnLinks(record, [&](int& id) {
            node.named.push_back(id);
            id = 0;
        });
        node.colour = m_needs.comparison.contentHash(record);
        return node;
    }

    // Telling apart

    /// Gives those different colours that name different ones, until that tells no more of them apart.
    void tellApart()
    {
        std::size_t before = 0;
        for (std::size_t colours = countColours(); colours > before; colours = countColours()) {
            before = colours;
            takeColoursOfNamed();
        }
    }

    std::size_t countColours() const
    {
        std::unordered_set<std::uint64_t> colours;
        for (const Replaced& record : m_replaced)
            colours.insert(record.colour);
        for (const Other& other : m_others)
            colours.insert(other.colour);
        return colours.size();
    }

    void takeColoursOfNamed()
    {
        std::vector<std::uint64_t> colours;
        for (const Replaced& record : m_replaced)
            colours.push_back(colourWithNamed(record, [&](int id) { return colourThen(id); }));
        for (const Other& other : m_others)
            colours.push_back(colourWithNamed(other, [&](int id) { return colourNow(id); }));
        auto colour = colours.begin();
        for (Replaced& record : m_replaced)
            record.colour = *colour++;
        for (Other& other : m_others)
            other.colour = *colour++;
    }

    template <class ColourOf>
    static std::uint64_t colourWithNamed(const Node& node, ColourOf colourOf)
    {
        ByteHash hash;
        const auto add = [&](std::uint64_t colour) { hash.add({reinterpret_cast<const char*>(&colour), sizeof colour}); };
        add(node.colour);
        for (const int id : node.named)
            add(colourOf(id));
        return hash.value();
    }

    /// Of an earlier id; one that stays names who has it now.
    std::uint64_t colourThen(int id) const
    {
        const auto replaced = m_replacedById.find(id);
        return replaced == m_replacedById.end() ? colourNow(id) : m_replaced[replaced->second].colour;
    }
    /// Whoever is looked for under no other id is told by it.
    std::uint64_t colourNow(int id) const
    {
        const auto other = m_othersById.find(id);
        return other == m_othersById.end() ? static_cast<std::uint64_t>(id) : m_others[other->second].colour;
    }

    // Taking the one for the other

    void takeAlike()
    {
        std::unordered_map<std::uint64_t, std::list<Other*>> othersByColour;
        for (Other& other : m_others)
            othersByColour[other.colour].push_back(&other);
        for (const Replaced& record : m_replaced) {
            if (!m_ids.contains(record.id))
                takeFirst(record, othersByColour[record.colour]);
        }
    }

    void takeFirst(const Replaced& record, std::list<Other*>& others)
    {
        for (auto other = others.begin(); other != others.end();) {
            if (!(*other)->isFree)
                other = others.erase(other);
            else if (takeTogether(record, (*other)->id))
                return;
            else
                ++other;
        }
    }

    /// Takes the other of that id for the earlier record, and what it names for what that one names, and so on as far as it goes. When
    /// anything on the way is different, or taken for another, nothing is taken.
    bool takeTogether(const Replaced& record, int id)
    {
        Pairs pairs;
        bool fits = take(record, id, pairs);
        for (std::size_t n = 0; fits && n < pairs.size(); ++n) {
            const auto [earlier, other] = pairs[n];
            fits = takeNamed(*earlier, *other, pairs) && isBackAs(*earlier, *other);
        }
        if (!fits)
            release(pairs);
        return fits;
    }

    bool take(const Replaced& record, int id, Pairs& pairs)
    {
        if (const auto taken = m_ids.find(record.id); taken != m_ids.end())
            return taken->second == id;
        const auto place = m_othersById.find(id);
        if (place == m_othersById.end() || !m_others[place->second].isFree)
            return false;
        Other& other = m_others[place->second];
        other.isFree = false;
        m_ids.emplace(record.id, id);
        pairs.emplace_back(&record, &other);
        return true;
    }

    bool takeNamed(const Replaced& record, const Other& other, Pairs& pairs)
    {
        if (record.named.size() != other.named.size())
            return false;
        for (std::size_t n = 0; n < record.named.size(); ++n) {
            const auto replaced = m_replacedById.find(record.named[n]);
            if (replaced != m_replacedById.end() && !take(m_replaced[replaced->second], other.named[n], pairs))
                return false;
        }
        return true;
    }

    void release(const Pairs& pairs)
    {
        for (const auto& [record, other] : pairs) {
            m_ids.erase(record->id);
            other->isFree = true;
        }
    }

    bool isBackAs(const Replaced& record, const Other& other) const
    {
        const auto idNow = [&](int earlier) {
            const auto found = m_ids.find(earlier);
            return found == m_ids.end() ? earlier : found->second;
        };
        return m_needs.comparison.areSame(m_needs.earlier[record.index], m_needs.asOfNow(record.index, idNow), *other.record);
    }

    /// In file order.
    void giveUnused()
    {
        UnusedIds unused(std::move(m_used));
        for (const Replaced& record : m_replaced) {
            if (!m_ids.contains(record.id))
                m_ids[record.id] = unused.next();
        }
    }

    NewIdsNeeds<R> m_needs;
    std::vector<Replaced> m_replaced;
    std::vector<Other> m_others;
    /// Places in the two.
    std::unordered_map<int, std::size_t> m_replacedById;
    std::unordered_map<int, std::size_t> m_othersById;
    std::unordered_set<int> m_used;
    IdChanges::Ids m_ids;
};
