#include "tests/GraphHistory.h"

#include <array>
#include <ostream>
#include <string>

cmStringT MadeCommits::hashOf(std::uint32_t row)
{
    return cmROStringT(std::to_string(1000000 + row));
}

void MadeCommits::node(std::uint32_t row, GraphNode& node) const
{
    node.id = idOf(row);
    node.parents.clear();
    for (const std::uint32_t parent : m_history[row])
        node.parents.push_back({idOf(parent), rowOf(idOf(parent))});
}

void PrintTo(const GraphEdge& edge, std::ostream* out)
{
    constexpr std::array names{"passes", "ends", "begins", "stub", "down", "up"};
    *out << names[static_cast<std::size_t>(edge.kind)] << ' ' << edge.from << '-' << edge.to << " (" << edge.other << ')';
}
