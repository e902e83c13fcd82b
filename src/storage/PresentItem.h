// A record by id, as long as it is in its list.
#pragma once

#include "storage/qvDataSource.h"

/// None for a record that was deleted or belongs to a database that was open before: its id is still known to the collection, but
/// figures, links and stock go by what is there.
template <class R>
R* presentItem(const Collection<R>& collection, int id)
{
    R* const record = collection.getItemById(id);
    return record && collection.holds(*record) ? record : nullptr;
}

/// The next id that no record in the list has: one that undo brought back may have an id above the highest that is remembered.
template <class R>
int nextFreeId(Collection<R>& collection)
{
    int id = collection.getNextId();
    while (presentItem(collection, id))
        id = collection.getNextId();
    return id;
}
