// What belongs to each of many records in another collection: to an order, its contact.
#pragma once

#include "storage/dataObject.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

/// The record that belongs to this one; null when there is none.
using LinkOf = const dataObject* (*)(const dataObject&);

/// Calls use(record, link) for each. The records lie all over the memory: looking at several at once, the waits overlap.
template <class Use>
void forEachLink(const std::vector<dataObject*>& records, LinkOf linkOf, Use use)
{
    std::array<const dataObject*, 32> links;
    for (std::size_t first = 0; first < records.size(); first += links.size()) {
        const std::size_t count = std::min(links.size(), records.size() - first);
        for (std::size_t i = 0; i < count; ++i) {
            links[i] = linkOf(*records[first + i]);
            __builtin_prefetch(links[i]);
        }
        for (std::size_t i = 0; i < count; ++i)
            use(*records[first + i], links[i]);
    }
}
