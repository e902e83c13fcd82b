// What making a collective item takes, through all levels: the parts that are not made of others, each counted once for all the ways that
// lead to it, so that branches compete for the same stock.
//
// Every constituent is looked at once, however many ways lead to it. An item that contains itself can never be made: where it is met again
// on the way to itself, it counts as a part of which there is none.
#pragma once

#include <functional>
#include <vector>

class Item;

struct PartNeed {
    const Item* part = nullptr;
    /// How many of it one takes; above 0.
    double forOne = 0;
    double inStock = 0;
};

struct PartShortage {
    const Item* part = nullptr;
    double needed = 0;
    double inStock = 0;
    double missing = 0;
};

class PartsNeeded {
public:
    /// None for what is no item any more.
    using ItemById = std::function<const Item*(int id)>;

    /// Nothing is needed for an item that is not collective. Constituents without an item, or needed no times, are left out.
    PartsNeeded(const Item& item, const ItemById& itemById);

    /// In the order they are met.
    const std::vector<PartNeed>& needs() const { return m_needs; }
    /// The part there is too little of first; none when nothing is needed.
    const PartNeed* limiting() const;
    /// A whole number; 0 when nothing is needed.
    double canBeMade() const;
    /// What is missing for so many, in the order of the needs.
    std::vector<PartShortage> missingFor(double count) const;

private:
    std::vector<PartNeed> m_needs;
};
