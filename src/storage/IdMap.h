// The record known under each id.
//
// Ids are given one after the other, so nearly all of them are places in a list; only those far from the others are kept apart.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

class dataObject;

class IdMap {
public:
    /// None when the id was never set.
    dataObject* find(int id) const
    {
        if (isInList(id) && m_list[static_cast<std::size_t>(id)])
            return m_list[static_cast<std::size_t>(id)];
        const auto found = m_others.find(id);
        return found == m_others.end() ? nullptr : found->second;
    }
    void set(int id, dataObject& record);
    /// So many more are about to be set.
    void makeRoom(std::size_t more) { m_list.reserve(m_list.size() + more + 1); }
    void clear();
    template <class Use>
    void forEach(Use use) const
    {
        for (std::size_t id = 0; id < m_list.size(); ++id) {
            if (m_list[id])
                use(static_cast<int>(id), *m_list[id]);
        }
        for (const auto& [id, record] : m_others) {
            if (!isInList(id) || !m_list[static_cast<std::size_t>(id)])
                use(id, *record);
        }
    }

private:
    bool isInList(int id) const { return id >= 0 && static_cast<std::size_t>(id) < m_list.size(); }

    /// By id; null where there is none.
    std::vector<dataObject*> m_list;
    /// What came while its id lay beyond the list, and counts as long as the list has nothing there.
    std::unordered_map<int, dataObject*> m_others;
    std::size_t m_count = 0;
};
