#include "inventory/CollectiveMove.h"

#include "inventory/ItemManager.h"
#include "storage/PresentItem.h"

#include <algorithm>
#include <limits>

namespace {

/// Up to here every way is followed.
constexpr double mostSteps = 4096;
/// No deeper, whatever a file says.
constexpr int deepest = 1000;

/// Quantities of a damaged file, multiplied level by level, must stay numbers.
float bounded(float amount)
{
    constexpr float most = std::numeric_limits<float>::max();
    return std::clamp(amount, -most, most);
}

} // namespace

/// None while the way to the item comes from itself.
const CollectiveMove::Node* CollectiveMove::explore(const Item& collective, int depth)
{
    const auto [place, isNew] = m_nodes.try_emplace(&collective);
    Node& node = place->second;
    if (!isNew)
        return node.isOnPath ? nullptr : &node;
    node.parts.reserve(collective.getConstituents().size());
    for (const Constituent& constituent : collective.getConstituents()) {
        Item* const item = presentItem(m_items, constituent.id());
        if (!item || depth == deepest)
            continue;
        const bool isPlain = !item->isCollectiveItem();
        const Node* const below = isPlain ? nullptr : explore(*item, depth + 1);
        if (!isPlain && !below)
            continue;
        node.parts.push_back({item, constituent.qty()});
        node.steps += below ? below->steps : 1;
        if (below)
            ++m_nodes.at(item).ways;
    }
    node.isOnPath = false;
    return &node;
}

bool CollectiveMove::run(Item& collective, float by)
{
    const Node& top = *explore(collective, 1);
    m_isMerged = top.steps > mostSteps;
    return move(collective, top, by);
}

bool CollectiveMove::move(const Item& collective, const Node& node, float by)
{
    const bool moves = m_steps.mayMove(collective, by);
    if (!moves && !m_isMerged)
        return false;
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
    if (!m_isMerged) {
        move(*part.item, node, *by);
        return;
    }
    if (by)
        node.asked = bounded(node.asked.value_or(0) + *by);
    if (++node.gone < node.ways)
        return;
    if (node.asked) {
        move(*part.item, node, *node.asked);
        return;
    }
    for (const Part& below : node.parts)
        arrive(below, std::nullopt);
}
