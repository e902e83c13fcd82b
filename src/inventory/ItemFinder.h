// Items by what a person types or a scanner sends: bar code, code or name, whatever the case.
//
// These texts are folded once and laid end to end, so that one pass finds them all. They are folded anew when one of them changed or
// items came or went; stock that moves costs nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class Item;
class ItemManager;
class dataObject;

class ItemFinder {
public:
    explicit ItemFinder(const ItemManager& items) : m_items(items) { }

    /// The items whose bar code the text is; when there are none, those whose code it is; else those whose name it is. Blanks around
    /// it do not count.
    std::vector<Item*> named(std::string_view text);
    /// At most so many items that the text may be the beginning or a part of: first those whose code starts with it, then bar code,
    /// then name, then those that have all of its words somewhere in these or in the variation.
    std::vector<Item*> suggestions(std::string_view text, std::size_t most);

    /// Items came or went.
    void forget() { m_valid = false; }
    /// A field of the item changed, perhaps one of these.
    void changed(const Item& item);

private:
    using Found = std::vector<Item*>;

    void build();
    std::string_view textOf(std::size_t place) const;
    /// Adds the items whose texts hold the pattern and all of the words, until there are enough.
    void collect(Found& found, const std::string& pattern, const std::vector<std::string>& words, std::size_t most) const;

    const ItemManager& m_items;
    std::string m_folded;
    /// Where each item's texts begin, in collection order; one more than items.
    std::vector<std::size_t> m_starts;
    std::vector<Item*> m_order;
    std::unordered_map<const Item*, std::size_t> m_places;
    bool m_valid = false;
};
