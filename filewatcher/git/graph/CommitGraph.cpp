#include "filewatcher/git/graph/CommitGraph.h"

#include <algorithm>
#include <utility>

void AllCommits::node(std::uint32_t row, GraphNode& node) const
{
    node.id = m_store.idOf(row);
    node.parents.clear();
    const auto add = [&](std::uint32_t parent) {
        const std::uint32_t number = m_store.numberOf(parent);
        node.parents.push_back({parent, number != CommitStore::none && number <= row});
    };
    const bool isWorkingCopy = node.id == CommitIds::workingCopy;
    const std::uint32_t first = isWorkingCopy ? m_workingCopyParent : m_store.firstParent(row);
    if (first != CommitStore::none)
        add(first);
    for (const std::uint32_t parent : m_store.otherParents(row))
        add(parent);
}

SomeCommits::SomeCommits(const AllCommits& all, const CommitStore& store, cmArray<std::uint32_t> numbers)
    : m_all(all), m_store(store), m_numbers(std::move(numbers))
{
}

std::uint32_t SomeCommits::rowOf(std::uint32_t number) const
{
    const auto found = std::lower_bound(m_numbers.begin(), m_numbers.end(), number);
    return found != m_numbers.end() && *found == number ? static_cast<std::uint32_t>(found - m_numbers.begin())
                                                        : CommitStore::none;
}

void SomeCommits::node(std::uint32_t row, GraphNode& node) const
{
    // Rows and numbers ascend together, so a parent that is above its child among all commits is above it here too.
    m_all.node(m_numbers[row], node);
    std::erase_if(node.parents, [this](const GraphNode::Parent& parent) {
        const std::uint32_t number = m_store.numberOf(parent.id);
        return number == CommitStore::none || rowOf(number) == CommitStore::none;
    });
}
