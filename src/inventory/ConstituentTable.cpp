#include "inventory/ConstituentTable.h"

#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "inventory/Item.h"
#include "storage/WriteGate.h"

ConstituentTable::ConstituentTable(const SortSettings& sorting, Beeper& beeper, WriteGate& gate)
    : qvDataSource(sorting, beeper)
    , m_gate(gate)
{
    list.columns = {
        {"code", localText("Code"), 110},
        {"item", localText("Item"), 320},
        {"qty", localText("Qty"), 90, ColumnAlign::right, true, true},
    };
}

void ConstituentTable::setItem(Item* item)
{
    m_item = item;
    selectConstituent(-1);
    reloadData();
}

void ConstituentTable::selectConstituent(int index)
{
    m_selected = index;
    notifySelection();
    if (onSelected)
        onSelected();
}

std::vector<int> ConstituentTable::selectedRows() const
{
    return m_selected < 0 ? std::vector<int>() : std::vector<int> {m_selected};
}

void ConstituentTable::setSelectedRows(const std::vector<int>& rows)
{
    const int index = rows.empty() ? -1 : rows.front();
    if (index != m_selected)
        selectConstituent(index);
}

int ConstituentTable::numberOfRows() const
{
    return m_item ? static_cast<int>(m_item->getConstituents().size()) : 0;
}

std::string ConstituentTable::objectValue(std::string_view identifier, int row) const
{
    if (row < 0 || row >= numberOfRows())
        return {};
    const Constituent& part = m_item->getConstituents()[static_cast<std::size_t>(row)];
    return identifier == "qty" ? numbers::general(static_cast<double>(part.qty())) : part.text(identifier);
}

bool ConstituentTable::setObjectValue(std::string_view identifier, int row, std::string_view value)
{
    const std::optional<double> quantity = numbers::decimal(value);
    if (identifier != "qty" || row < 0 || row >= numberOfRows() || !quantity) {
        beeper().beep();
        return false;
    }
    if (!m_gate.readOnlyCheck())
        return false;
    m_item->setConstituentQty(row, static_cast<float>(*quantity));
    reloadData();
    if (onEdited)
        onEdited();
    return true;
}
