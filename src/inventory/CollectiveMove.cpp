#include "inventory/CollectiveMove.h"

#include "inventory/ItemManager.h"
#include "storage/PresentItem.h"

#include <algorithm>
#include <limits>

namespace {

/// Up to here every way is followed.
constexpr std::size_t mostSteps = 4096;
/// No deeper, whatever a file says.
constexpr std::size_t deepest = 1000;

/// Quantities of a damaged file, multiplied level by level, must stay numbers.
float bounded(float amount)
{
    constexpr float most = std::numeric_limits<float>::max();
    return std::clamp(amount, -most, most);
}

} // namespace

bool CollectiveMove::run(Item& collective, float by)
{
    std::size_t steps = 0;
    if (hasFewSteps(collective, steps))
        return moveEachWay(collective, by);
    return moveTogether(collective, *explore(collective, 1), by);
}

/// Those that are there.
const std::vector<CollectiveMove::Part>& CollectiveMove::partsOf(const Item& collective)
{
    const auto [place, isNew] = m_parts.try_emplace(&collective);
    std::vector<Part>& parts = place->second;
    if (!isNew)
        return parts;
    parts.reserve(collective.getConstituents().size());
    for (const Constituent& constituent : collective.getConstituents()) {
        if (Item* const item = presentItem(m_items, constituent.id()))
            parts.push_back({item, constituent.qty()});
    }
    return parts;
}

/// Counts no further than that.
bool CollectiveMove::hasFewSteps(const Item& collective, std::size_t& steps)
{
    if (++steps > mostSteps || m_path.size() == deepest)
        return false;
    m_path.insert(&collective);
    const std::vector<Part>& parts = partsOf(collective);
    const bool are = std::all_of(parts.begin(), parts.end(), [&](const Part& part) {
        if (!part.item->isCollectiveItem())
            return ++steps <= mostSteps;
        return !isWayOn(*part.item) || hasFewSteps(*part.item, steps);
    });
    m_path.erase(&collective);
    return are;
}

bool CollectiveMove::moveEachWay(const Item& collective, float by)
{
    if (!m_steps.mayMove(collective, by))
        return false;
    m_path.insert(&collective);
    for (const Part& part : partsOf(collective)) {
        const float asked = bounded(by * part.qty);
        if (!part.item->isCollectiveItem())
            m_steps.movePart(*part.item, asked);
        else if (isWayOn(*part.item))
            moveEachWay(*part.item, asked);
    }
    m_path.erase(&collective);
    return true;
}

/// None while the way to the item comes from itself.
const CollectiveMove::Node* CollectiveMove::explore(const Item& collective, std::size_t depth)
{
    const auto [place, isNew] = m_nodes.try_emplace(&collective);
    Node& node = place->second;
    if (!isNew)
        return node.isOnPath ? nullptr : &node;
    for (const Part& part : partsOf(collective)) {
        if (depth == deepest)
            break;
        const bool isPlain = !part.item->isCollectiveItem();
        if (!isPlain && !explore(*part.item, depth + 1))
            continue;
        node.parts.push_back(part);
        if (!isPlain)
            ++m_nodes.at(part.item).ways;
    }
    node.isOnPath = false;
    return &node;
}

bool CollectiveMove::moveTogether(const Item& collective, const Node& node, float by)
{
    const bool moves = m_steps.mayMove(collective, by);
    for (const Part& part : node.parts)
        arrive(part, moves ? std::optional(bounded(by * part.qty)) : std::nullopt);
    return moves;
}

/// by: none when the way here ended before, which counts only where others lead here, too.
void CollectiveMove::arrive(const Part& part, std::optional<float> by)
{
    if (!part.item->isCollectiveItem()) {
        if (by)
            m_steps.movePart(*part.item, *by);
        return;
    }
    Node& node = m_nodes.at(part.item);
    if (by)
        node.asked = bounded(node.asked.value_or(0) + *by);
    if (++node.gone < node.ways)
        return;
    if (node.asked) {
        moveTogether(*part.item, node, *node.asked);
        return;
    }
    for (const Part& below : node.parts)
        arrive(below, std::nullopt);
}
