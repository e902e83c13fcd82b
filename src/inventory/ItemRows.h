// What the item editor lists beside the parts: where the item is used, and what is missing to make some.
#pragma once

#include "storage/TextRows.h"

class Item;
struct PartShortage;

/// The collective items that list an item directly.
class UsedInRows : public TextRows {
public:
    UsedInRows(const SortSettings& sorting, Beeper& beeper);

    void show(const std::vector<Item*>& users, const Item& part);
    /// The id of the selected collective item; 0 when none is selected.
    int selectedId() const;

private:
    std::vector<int> m_ids;
};

class ShortageRows : public TextRows {
public:
    ShortageRows(const SortSettings& sorting, Beeper& beeper);

    void show(const std::vector<PartShortage>& shortages);
};

/// A figure of these lists.
std::string figureText(double figure);
