// What stock that leaves or comes back does to a collective item: its parts move in its place, level by level.
//
// A part moves each time the structure leads to it, in list order, with questions of its own; a way ends where it would come back to an
// item that it came through. Where a file leads to the same collective items by more ways than anybody could follow, each of them moves
// once instead, with what all ways ask of it together, so that the work remains that of the parts.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class Item;
class ItemManager;

class CollectiveMove {
public:
    struct Steps {
        /// Whether the collective item may move at all; may ask.
        std::function<bool(const Item& collective, float by)> mayMove;
        /// Moves a part that is no collective item.
        std::function<void(Item& part, float by)> movePart;
    };

    CollectiveMove(const ItemManager& items, Steps steps) : m_items(items), m_steps(std::move(steps)) { }

    /// Moves the parts of so many of the collective item. Answers no when it may not move, and nothing moved.
    bool run(Item& collective, float by);

private:
    struct Part {
        Item* item;
        float qty;
    };
    /// A collective item where all ways to it are gone together.
    struct Node {
        /// Those that are there, without the ways back to where one came from.
        std::vector<Part> parts;
        bool isOnPath = true;
        /// How many ways lead here, how many of them were gone, and what they asked for.
        int ways = 0;
        int gone = 0;
        std::optional<float> asked;
    };

    const std::vector<Part>& partsOf(const Item& collective);
    bool isWayOn(const Item& item) const { return !m_path.contains(&item); }
    bool hasFewSteps(const Item& collective, std::size_t& steps);
    bool moveEachWay(const Item& collective, float by);
    const Node* explore(const Item& collective, std::size_t depth);
    bool moveTogether(const Item& collective, const Node& node, float by);
    void arrive(const Part& part, std::optional<float> by);

    const ItemManager& m_items;
    Steps m_steps;
    std::unordered_map<const Item*, std::vector<Part>> m_parts;
    /// Where the way that is being followed came through.
    std::unordered_set<const Item*> m_path;
    std::unordered_map<const Item*, Node> m_nodes;
};
