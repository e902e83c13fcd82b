// Counts how often everything of a list had to be asked again, and how often only its cells.
#pragma once

#include "storage/qvDataSource.h"

struct ListResets : ListObserver {
    void listReset() override { ++count; }
    void rowChanged(int) override { }
    void cellsChanged() override { ++cells; }
    int count = 0;
    int cells = 0;
};
