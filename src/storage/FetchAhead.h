// For going through many records. They and their fields lie all over the memory, and waiting for it would take most of the time.
#pragma once

#include "storage/dataObject.h"

/// While one record is looked at, the processor already fetches those that follow. recordAfter(n) answers the record n places further on,
/// none past the end. fetch takes a record and the step.
template <class RecordAfter, class Fetch>
void fetchFollowing(RecordAfter recordAfter, Fetch fetch)
{
    constexpr int ahead = 8;
    if (const dataObject* latest = recordAfter((dataObject::fetchSteps + 1) * ahead))
        __builtin_prefetch(latest, 1);
    for (int step = 0; step < dataObject::fetchSteps; ++step) {
        if (const dataObject* later = recordAfter((dataObject::fetchSteps - step) * ahead))
            fetch(*later, step);
    }
}

template <class RecordAfter>
void fetchFollowing(RecordAfter recordAfter)
{
    fetchFollowing(recordAfter, [](const dataObject& record, int step) { record.fetch(step); });
}
