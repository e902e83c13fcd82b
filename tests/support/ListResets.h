// Counts how often everything of a list had to be asked again.
#pragma once

#include "storage/qvDataSource.h"

struct ListResets : ListObserver {
    void listReset() override { ++count; }
    void rowChanged(int) override { }
    int count = 0;
};
