#include "filewatcher/git/graph/GraphLanes.h"

#include <algorithm>
#include <functional>
#include <utility>

void GraphLanes::restart(const cmArray<std::uint32_t>& targets)
{
    for (const std::uint32_t target : m_targets) {
        if (target < m_firsts.size())
            m_firsts[target] = graphNoColumn;
    }
    m_free.clear();
    m_targets = targets;
    m_next.assign(targets.size(), graphNoColumn);
    m_widest = static_cast<std::int32_t>(targets.size());
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const auto column = static_cast<std::uint16_t>(i);
        if (targets[i] == free)
            m_free.push_back(column);  // added in ascending order, so the array is a heap
        else
            reserve(column, targets[i]);
    }
}

void GraphLanes::step(const GraphNode& node, std::uint32_t index, GraphRow* row)
{
    if (row)
        addPassing(node, *row);
    const std::uint16_t column = takeColumn(node.id, row);
    if (row)
        row->column = column;
    // Without a first parent that inherits the column, the other parents may use it.
    if (column != graphNoColumn && (node.parents.empty() || node.parents.front().row <= index))
        release(column);
    for (std::size_t i = 0; i < node.parents.size(); ++i) {
        const std::uint16_t lane = reserveFor(node.parents[i], node.parents[i].row <= index, i == 0, column);
        if (row && lane == graphNoColumn)
            row->edges.push_back({column, column, GraphEdgeKind::stub});
        else if (row)
            row->edges.push_back({column, lane, GraphEdgeKind::begins});
    }
    while (!m_targets.empty() && m_targets.back() == free) {
        m_targets.pop_back();
        m_next.pop_back();
    }
}

void GraphLanes::addPassing(const GraphNode& node, GraphRow& row) const
{
    row.edges.clear();
    for (std::size_t i = 0; i < m_targets.size(); ++i) {
        const auto column = static_cast<std::uint16_t>(i);
        if (m_targets[i] != free && m_targets[i] != node.id)
            row.edges.push_back({column, column, GraphEdgeKind::passes});
    }
}

/// Ends all lines to the commit and returns its column, which is `held` then.
std::uint16_t GraphLanes::takeColumn(std::uint32_t id, GraphRow* row)
{
    const std::uint16_t taken = leftmostFor(id);
    if (taken == graphNoColumn)
        return takeLeftmostFree();
    std::uint16_t column = std::exchange(m_firsts[id], graphNoColumn);
    while (column != graphNoColumn) {
        const std::uint16_t next = m_next[column];
        if (row)
            row->edges.push_back({column, taken, GraphEdgeKind::ends});
        if (column != taken)
            release(column);
        column = next;
    }
    m_targets[taken] = held;
    if (row) {
        const auto ending = std::find_if(row->edges.begin(), row->edges.end(),
                                         [](const GraphEdge& edge) { return edge.kind == GraphEdgeKind::ends; });
        std::sort(ending, row->edges.end(), [](const GraphEdge& a, const GraphEdge& b) { return a.from < b.from; });
    }
    return taken;
}

std::uint16_t GraphLanes::takeLeftmostFree()
{
    while (!m_free.empty()) {
        std::pop_heap(m_free.begin(), m_free.end(), std::greater<>());
        const std::uint16_t column = m_free.back();
        m_free.pop_back();
        if (column < m_targets.size() && m_targets[column] == free) {
            m_targets[column] = held;
            return column;
        }
    }
    if (m_targets.size() >= graphNoColumn)
        return graphNoColumn;
    m_targets.push_back(held);
    m_next.push_back(graphNoColumn);
    m_widest = std::max(m_widest, static_cast<std::int32_t>(m_targets.size()));
    return static_cast<std::uint16_t>(m_targets.size() - 1);
}

std::uint16_t GraphLanes::leftmostFor(std::uint32_t id) const
{
    std::uint16_t leftmost = graphNoColumn;
    for (std::uint16_t column = firstOf(id); column != graphNoColumn; column = m_next[column])
        leftmost = std::min(leftmost, column);
    return leftmost;
}

/// Returns the column of the line to a parent; graphNoColumn when the parent gets no line.
std::uint16_t GraphLanes::reserveFor(const GraphNode::Parent& parent, bool above, bool first, std::uint16_t column)
{
    if (above)
        return graphNoColumn;
    std::uint16_t lane = column;
    if (!first || column == graphNoColumn) {
        lane = leftmostFor(parent.id);
        if (lane != graphNoColumn)
            return lane;
        lane = takeLeftmostFree();
    }
    if (lane != graphNoColumn)
        reserve(lane, parent.id);
    return lane;
}

void GraphLanes::reserve(std::uint16_t column, std::uint32_t id)
{
    m_targets[column] = id;
    if (m_firsts.size() <= id)
        m_firsts.resize(std::size_t{2} * id + 1, graphNoColumn);
    m_next[column] = std::exchange(m_firsts[id], column);
}

void GraphLanes::release(std::uint16_t column)
{
    m_targets[column] = free;
    m_free.push_back(column);
    std::push_heap(m_free.begin(), m_free.end(), std::greater<>());
}
