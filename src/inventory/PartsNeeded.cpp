#include "inventory/PartsNeeded.h"

#include "inventory/Item.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace {

/// Beyond these a figure says nothing any more, but it must not become infinite or nothing.
constexpr double mostNeeded = 1e300;
constexpr double leastNeeded = 1e-300;
constexpr double mostMade = 1e15;
constexpr double slack = 1e-9;

double bounded(double needed)
{
    return std::clamp(needed, leastNeeded, mostNeeded);
}

/// The decimal that was meant: 0.1 in single precision is a little more than 0.1.
double asWritten(float number)
{
    std::array<char, 64> digits {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    double exact = 0;
    std::from_chars(digits.data(), end.ptr, exact);
    return exact;
}

/// Cut off after the point, but for what is a whole number save for its last digits.
double wholeOf(double number)
{
    const double nearest = std::round(number);
    return std::fabs(number - nearest) <= slack * std::max(1.0, std::fabs(number)) ? nearest : std::floor(number);
}

/// The items that are met, each with what one of it takes directly.
class PartsGraph {
public:
    PartsGraph(const Item& item, const PartsNeeded::ItemById& itemById) : m_itemById(itemById) { visitAll(nodeOf(item)); }

    /// From the item down: an item's turn comes when all that need it had theirs.
    std::vector<PartNeed> needs()
    {
        m_nodes.front().needed = 1;
        for (auto index = m_finished.rbegin(); index != m_finished.rend(); ++index) {
            const Node& node = m_nodes[*index];
            for (const Use& use : node.uses) {
                double& needed = use.leadsRound ? m_nodes[use.node].neededRound : m_nodes[use.node].needed;
                needed = bounded(needed + node.needed * use.qty);
            }
        }
        std::vector<PartNeed> needs;
        for (std::size_t index = 1; index < m_nodes.size(); ++index)
            add(needs, m_nodes[index], m_nodes[index].uses.empty());
        // An item that contains itself stands behind the real parts, whether it is the first one or another.
        for (const Node& node : m_nodes) {
            if (node.neededRound > 0)
                needs.push_back({node.item, node.neededRound, 0});
        }
        return needs;
    }

private:
    struct Use {
        std::size_t node;
        double qty;
        /// It leads to an item on the way to which it is.
        bool leadsRound = false;
    };
    enum class State { unseen, open, finished };
    struct Node {
        const Item* item;
        std::vector<Use> uses;
        State state = State::unseen;
        double needed = 0;
        double neededRound = 0;
    };
    struct Step {
        std::size_t node;
        std::size_t nextUse = 0;
    };

    static void add(std::vector<PartNeed>& needs, const Node& node, bool isPart)
    {
        if (!isPart || node.needed <= 0)
            return;
        // A collective item has no stock of its own.
        const double inStock = node.item->isCollectiveItem() ? 0 : asWritten(node.item->getQtyAsFloat());
        needs.push_back({node.item, node.needed, inStock});
    }

    std::size_t nodeOf(const Item& item)
    {
        const auto [found, isNew] = m_places.try_emplace(&item, m_nodes.size());
        if (isNew)
            m_nodes.push_back({&item, {}, State::unseen, 0, 0});
        return found->second;
    }

    void open(std::size_t index)
    {
        m_nodes[index].state = State::open;
        if (!m_nodes[index].item->isCollectiveItem())
            return;
        std::vector<Use> uses;
        for (const Constituent& part : m_nodes[index].item->getConstituents()) {
            const float qty = part.qty();
            const Item* item = qty > 0 ? m_itemById(part.id()) : nullptr;
            if (item)
                uses.push_back({nodeOf(*item), bounded(asWritten(qty))});
        }
        m_nodes[index].uses = std::move(uses);
    }

    /// Without recursion: the levels may be many.
    void visitAll(std::size_t first)
    {
        std::vector<Step> way;
        const auto enter = [&](std::size_t index) {
            open(index);
            way.push_back({index});
        };
        enter(first);
        while (!way.empty()) {
            Step& step = way.back();
            Node& node = m_nodes[step.node];
            if (step.nextUse == node.uses.size()) {
                node.state = State::finished;
                m_finished.push_back(step.node);
                way.pop_back();
                continue;
            }
            Use& use = node.uses[step.nextUse++];
            use.leadsRound = m_nodes[use.node].state == State::open;
            if (m_nodes[use.node].state == State::unseen)
                enter(use.node);
        }
    }

    const PartsNeeded::ItemById& m_itemById;
    std::vector<Node> m_nodes;
    std::unordered_map<const Item*, std::size_t> m_places;
    std::vector<std::size_t> m_finished;
};

} // namespace

PartsNeeded::PartsNeeded(const Item& item, const ItemById& itemById) : m_needs(PartsGraph(item, itemById).needs()) { }

const PartNeed* PartsNeeded::limiting() const
{
    const auto least = std::min_element(
        m_needs.begin(), m_needs.end(), [](const PartNeed& a, const PartNeed& b) { return a.inStock / a.forOne < b.inStock / b.forOne; });
    return least == m_needs.end() ? nullptr : &*least;
}

double PartsNeeded::canBeMade() const
{
    const PartNeed* least = limiting();
    return least ? std::clamp(wholeOf(least->inStock / least->forOne), 0.0, mostMade) : 0;
}

std::vector<PartShortage> PartsNeeded::missingFor(double count) const
{
    std::vector<PartShortage> missing;
    if (count <= 0)
        return missing;
    for (const PartNeed& need : m_needs) {
        const double needed = bounded(need.forOne * count);
        if (needed - need.inStock > slack * std::max(1.0, needed))
            missing.push_back({need.part, needed, need.inStock, needed - need.inStock});
    }
    return missing;
}
