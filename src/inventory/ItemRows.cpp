#include "inventory/ItemRows.h"

#include "desktop/TextTable.h"
#include "foundation/Numbers.h"
#include "inventory/Item.h"
#include "inventory/PartsNeeded.h"

#include <cmath>

std::string figureText(double figure)
{
    // Further out nobody counts digits.
    constexpr double longest = 1e15;
    return std::fabs(figure) > longest ? numbers::general(figure) : numbers::plain(figure);
}

UsedInRows::UsedInRows(const SortSettings& sorting, Beeper& beeper)
    : TextRows(sorting, beeper, {{localText("Code"), 110}, {localText("Item"), 320}, {localText("Takes"), 90}})
{
    list.columns.back().align = ColumnAlign::right;
}

void UsedInRows::show(const std::vector<Item*>& users, const Item& part)
{
    std::vector<std::vector<std::string>> rows;
    m_ids.clear();
    for (const Item* user : users) {
        double takes = 0;
        for (const Constituent& constituent : user->getConstituents())
            takes += constituent.id() == part.getID() ? static_cast<double>(constituent.qty()) : 0;
        rows.push_back({std::string(user->getCode()), std::string(user->getItem()), numbers::general(takes)});
        m_ids.push_back(user->getID());
    }
    setRows(rows);
}

int UsedInRows::selectedId() const
{
    const std::vector<std::size_t> places = selectedPlaces();
    return places.empty() ? 0 : m_ids[places.front()];
}

ShortageRows::ShortageRows(const SortSettings& sorting, Beeper& beeper)
    : TextRows(sorting, beeper,
        {{localText("Code"), 110}, {localText("Item"), 250}, {localText("Needed"), 90}, {localText("In stock"), 90},
            {localText("Missing"), 90}})
{
    for (std::size_t column = 2; column < list.columns.size(); ++column)
        list.columns[column].align = ColumnAlign::right;
}

void ShortageRows::show(const std::vector<PartShortage>& shortages)
{
    std::vector<std::vector<std::string>> rows;
    for (const PartShortage& shortage : shortages) {
        rows.push_back({std::string(shortage.part->getCode()), std::string(shortage.part->getItem()), figureText(shortage.needed),
            figureText(shortage.inStock), figureText(shortage.missing)});
    }
    setRows(rows);
}
