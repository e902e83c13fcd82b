// The parts of the collective item in the editor, as a table; only quantities can be edited.
#pragma once

#include "storage/qvDataSource.h"

#include <functional>

class Item;
class WriteGate;

class ConstituentTable : public qvDataSource {
public:
    ConstituentTable(const SortSettings& sorting, Beeper& beeper, WriteGate& gate);

    void setItem(Item* item);
    /// Runs after a quantity was edited.
    std::function<void()> onEdited;
    /// -1 when none is selected.
    int selectedConstituent() const { return m_selected; }
    void selectConstituent(int index);
    /// Runs after another part, or none, was selected.
    std::function<void()> onSelected;

    // One at most, and by its place, since a part is no record of its own.
    std::vector<int> selectedRows() const override;
    void setSelectedRows(const std::vector<int>& rows) override;

    int numberOfRows() const override;
    std::string objectValue(std::string_view identifier, int row) const override;
    bool setObjectValue(std::string_view identifier, int row, std::string_view value) override;

private:
    WriteGate& m_gate;
    Item* m_item = nullptr;
    int m_selected = -1;
};
