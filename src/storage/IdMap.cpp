#include "storage/IdMap.h"

#include <algorithm>

namespace {

/// The list may be so much longer than the records are many.
constexpr std::size_t mostGaps = 1024;

} // namespace

void IdMap::set(int id, dataObject& record)
{
    ++m_count;
    if (id < 0 || static_cast<std::size_t>(id) >= std::max(m_list.size(), 2 * m_count + mostGaps)) {
        m_others[id] = &record;
        return;
    }
    if (!isInList(id))
        m_list.resize(static_cast<std::size_t>(id) + 1);
    m_list[static_cast<std::size_t>(id)] = &record;
}

void IdMap::clear()
{
    m_list.clear();
    m_others.clear();
    m_count = 0;
}
