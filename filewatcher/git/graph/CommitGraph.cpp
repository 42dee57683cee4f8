#include "filewatcher/git/graph/CommitGraph.h"

#include <algorithm>
#include <utility>

void AllCommits::node(std::uint32_t row, GraphNode& node) const
{
    node.id = m_store.idOf(row);
    node.parents.clear();
    const auto add = [&](std::uint32_t parent) {
        const std::uint32_t parentRow = rowOf(parent);
        if (m_parents == GraphParents::all || parentRow != GraphNode::noRow)
            node.parents.push_back({parent, parentRow});
    };
    const bool isWorkingCopy = node.id == CommitIds::workingCopy;
    const std::uint32_t first = isWorkingCopy ? m_workingCopyParent : m_store.firstParent(row);
    if (first != CommitStore::none)
        add(first);
    for (const std::uint32_t parent : m_store.otherParents(row))
        add(parent);
}

std::uint32_t AllCommits::idOf(std::uint32_t row) const
{
    return m_store.idOf(row);
}

std::uint32_t AllCommits::rowOf(std::uint32_t id) const
{
    return m_store.numberOf(id);
}

cmStringT AllCommits::hashText(std::uint32_t id) const
{
    return m_store.hashText(id);
}

SomeCommits::SomeCommits(const AllCommits& all, const CommitStore& store, cmArray<std::uint32_t> numbers)
    : m_all(all), m_store(store), m_numbers(std::move(numbers))
{
}

std::uint32_t SomeCommits::rowOfNumber(std::uint32_t number) const
{
    const auto found = std::lower_bound(m_numbers.begin(), m_numbers.end(), number);
    return found != m_numbers.end() && *found == number ? static_cast<std::uint32_t>(found - m_numbers.begin())
                                                        : GraphNode::noRow;
}

void SomeCommits::node(std::uint32_t row, GraphNode& node) const
{
    m_all.node(m_numbers[row], node);
    for (GraphNode::Parent& parent : node.parents)
        parent.row = rowOf(parent.id);
    std::erase_if(node.parents, [](const GraphNode::Parent& parent) { return parent.row == GraphNode::noRow; });
}

std::uint32_t SomeCommits::idOf(std::uint32_t row) const
{
    return m_store.idOf(m_numbers[row]);
}

std::uint32_t SomeCommits::rowOf(std::uint32_t id) const
{
    const std::uint32_t number = m_store.numberOf(id);
    return number == CommitStore::none ? GraphNode::noRow : rowOfNumber(number);
}

cmStringT SomeCommits::hashText(std::uint32_t id) const
{
    return m_store.hashText(id);
}
