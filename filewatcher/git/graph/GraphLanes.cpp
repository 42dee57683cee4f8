#include "filewatcher/git/graph/GraphLanes.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

/// A row as GraphEdge tells it.
std::int64_t rowNumber(std::uint32_t row)
{
    return row == GraphNode::noRow ? std::int64_t{-1} : std::int64_t{row};
}

}  // namespace

void GraphLanes::restart(const State& state)
{
    for (const std::uint32_t target : m_state.targets) {
        if (target < m_firsts.size())
            m_firsts[target] = graphNoColumn;
    }
    m_free.clear();
    m_state = state;
    m_next.assign(state.targets.size(), graphNoColumn);
    m_widest = static_cast<std::int32_t>(state.targets.size());
    for (std::size_t i = 0; i < state.targets.size(); ++i) {
        const auto column = static_cast<std::uint16_t>(i);
        if (state.targets[i] == free)
            m_free.push_back(column);  // added in ascending order, so the array is a heap
        else if (isTarget(state.targets[i]))
            reserve(column, state.targets[i]);
    }
}

void GraphLanes::step(const GraphNode& node, const GraphStep& step, GraphRow* row)
{
    stopLongLines(step);
    if (row)
        addPassing(node.id, *row);
    const bool hasArrowUp = m_state.arrowUp != graphNoColumn;
    const std::uint16_t column = takeColumn(node.id, row);
    if (row)
        row->column = column;
    for (std::size_t i = 0; i < node.parents.size(); ++i) {
        const GraphNode::Parent& parent = node.parents[i];
        const std::uint16_t lane = lineTo(parent, i == 0, column, step);
        if (row)
            addLineTo(parent, column, lane, *row);
    }
    if (column != graphNoColumn && m_state.targets[column] == held)
        rest(column);
    if (row)
        addArrowsDown(*row);
    // The row above had no arrow when it was laid out before this commit was known, or when no column was left.
    if (row && !hasArrowUp)
        addArrowsUp(node.id, column, *row);
    if (step.nextId != none && m_cutLines.any(step.nextId))
        startAgain(step.nextId, row);
    endRow();
}

GraphLanes::Length GraphLanes::lengthOf(std::uint32_t parentRow, std::uint32_t childRow, const GraphStep& step)
{
    if (std::min(parentRow, step.known) - childRow >= step.longLine)
        return Length::longLine;
    return parentRow < step.known ? Length::shortLine : Length::unknown;
}

void GraphLanes::stopLongLines(const GraphStep& step)
{
    for (const std::uint16_t column : m_state.stopping)
        stop(column);
    m_state.stopping.clear();
    std::erase_if(m_state.open, [&](const OpenLine& line) {
        const std::uint32_t target = m_state.targets[line.column];
        const Length length = lengthOf(m_commits.rowOf(target), line.child, step);
        if (length == Length::longLine) {
            cut(target, line.child);
            stop(line.column);
        }
        return length != Length::unknown;
    });
}

void GraphLanes::cut(std::uint32_t parent, std::uint32_t childRow)
{
    if (m_addedLines)
        m_addedLines->add(parent, childRow);
}

void GraphLanes::stop(std::uint16_t column)
{
    m_stopped.push_back({column, m_state.targets[column]});
    unlink(column);
    rest(column);
}

void GraphLanes::addPassing(std::uint32_t id, GraphRow& row) const
{
    row.edges.clear();
    for (std::size_t i = 0; i < m_state.targets.size(); ++i) {
        const auto column = static_cast<std::uint16_t>(i);
        if (isTarget(m_state.targets[i]) && m_state.targets[i] != id)
            row.edges.push_back({column, column, GraphEdgeKind::passes});
    }
}

/// Ends all lines to the commit and returns its column, which is `held` then.
std::uint16_t GraphLanes::takeColumn(std::uint32_t id, GraphRow* row)
{
    const std::uint16_t arrowUp = std::exchange(m_state.arrowUp, graphNoColumn);
    std::uint16_t column = firstTo(id);
    if (column == graphNoColumn)
        return takeLeftmostFree();
    std::uint16_t taken = column;
    for (; column != graphNoColumn; column = m_next[column]) {
        m_state.targets[column] = held;
        m_ended.push_back(column);
        // The line with the arrow counts only when there is no other.
        if (taken == arrowUp || (column < taken && column != arrowUp))
            taken = column;
    }
    m_firsts[id] = graphNoColumn;
    if (row) {
        std::sort(m_ended.begin(), m_ended.end());
        for (const std::uint16_t ended : m_ended)
            row->edges.push_back({ended, taken, GraphEdgeKind::ends});
    }
    std::erase(m_ended, taken);
    return taken;
}

std::uint16_t GraphLanes::lineTo(const GraphNode::Parent& parent, bool first, std::uint16_t column, const GraphStep& step)
{
    if (parent.row <= step.row)
        return graphNoColumn;
    const bool canGoOn = column != graphNoColumn && m_state.targets[column] == held;
    const std::uint16_t joined = leftmostTo(parent.id);
    // The first parent rather goes on in the commit's column, so that main lines do not drift to the right.
    if (joined != graphNoColumn && !(first && canGoOn && column < joined))
        return joined;
    const std::uint16_t lane = canGoOn ? column : takeLeftmostFree();
    if (lane != graphNoColumn)
        begin(lane, parent, step);
    return lane;
}

void GraphLanes::begin(std::uint16_t column, const GraphNode::Parent& parent, const GraphStep& step)
{
    reserve(column, parent.id);
    const Length length = lengthOf(parent.row, step.row, step);
    if (length == Length::unknown)
        m_state.open.push_back({column, step.row});
    if (length != Length::longLine)
        return;
    cut(parent.id, step.row);
    m_begun.push_back(column);
}

void GraphLanes::addLineTo(const GraphNode::Parent& parent, std::uint16_t column, std::uint16_t lane, GraphRow& row) const
{
    GraphEdge edge{column, lane, GraphEdgeKind::begins};
    if (lane == graphNoColumn)
        edge = {column, column, GraphEdgeKind::stub};
    if (lane == graphNoColumn || (!m_begun.empty() && m_begun.back() == lane)) {
        edge.other = rowNumber(parent.row);
        edge.otherHash = m_commits.hashText(parent.id);
    }
    row.edges.push_back(std::move(edge));
}

void GraphLanes::addArrowsDown(GraphRow& row) const
{
    const std::size_t start = row.edges.size();
    for (const Stopped& line : m_stopped)
        row.edges.push_back({line.column, line.column, GraphEdgeKind::arrowDown, rowNumber(m_commits.rowOf(line.parent)),
                             m_commits.hashText(line.parent)});
    std::sort(row.edges.begin() + static_cast<std::ptrdiff_t>(start), row.edges.end(),
              [](const GraphEdge& a, const GraphEdge& b) { return a.from < b.from; });
}

void GraphLanes::addArrowsUp(std::uint32_t parent, std::uint16_t column, GraphRow& row) const
{
    for (const std::uint32_t child : m_cutLines.children(parent))
        row.edges.push_back(
            {column, column, GraphEdgeKind::arrowUp, rowNumber(child), m_commits.hashText(m_commits.idOf(child))});
}

/// Starts the lower part of the long lines to the commit in the next row.
void GraphLanes::startAgain(std::uint32_t parent, GraphRow* row)
{
    m_state.arrowUp = takeLeftmostFree();
    if (m_state.arrowUp == graphNoColumn)
        return;
    reserve(m_state.arrowUp, parent);
    if (row)
        addArrowsUp(parent, m_state.arrowUp, *row);
}

void GraphLanes::endRow()
{
    for (cmArray<std::uint16_t>* columns : {&m_ended, &m_state.resting}) {
        for (const std::uint16_t column : *columns)
            release(column);
        columns->clear();
    }
    m_state.resting.swap(m_left);
    m_state.stopping.swap(m_begun);
    m_stopped.clear();
    while (!m_state.targets.empty() && m_state.targets.back() == free) {
        m_state.targets.pop_back();
        m_next.pop_back();
    }
}

std::uint16_t GraphLanes::takeLeftmostFree()
{
    cmArray<std::uint32_t>& targets = m_state.targets;
    while (!m_free.empty()) {
        std::pop_heap(m_free.begin(), m_free.end(), std::greater<>());
        const std::uint16_t column = m_free.back();
        m_free.pop_back();
        if (column < targets.size() && targets[column] == free) {
            targets[column] = held;
            return column;
        }
    }
    if (targets.size() >= graphNoColumn)
        return graphNoColumn;
    targets.push_back(held);
    m_next.push_back(graphNoColumn);
    m_widest = std::max(m_widest, static_cast<std::int32_t>(targets.size()));
    return static_cast<std::uint16_t>(targets.size() - 1);
}

std::uint16_t GraphLanes::leftmostTo(std::uint32_t id) const
{
    std::uint16_t leftmost = graphNoColumn;
    for (std::uint16_t column = firstTo(id); column != graphNoColumn; column = m_next[column]) {
        if (column < leftmost && !isOpen(column))
            leftmost = column;
    }
    return leftmost;
}

bool GraphLanes::isOpen(std::uint16_t column) const
{
    return std::any_of(m_state.open.begin(), m_state.open.end(),
                       [column](const OpenLine& line) { return line.column == column; });
}

void GraphLanes::reserve(std::uint16_t column, std::uint32_t id)
{
    m_state.targets[column] = id;
    if (m_firsts.size() <= id)
        m_firsts.resize(std::size_t{2} * id + 1, graphNoColumn);
    m_next[column] = std::exchange(m_firsts[id], column);
}

/// Removes a column from those of its target.
void GraphLanes::unlink(std::uint16_t column)
{
    std::uint16_t* link = &m_firsts[m_state.targets[column]];
    while (*link != column)
        link = &m_next[*link];
    *link = m_next[column];
}

void GraphLanes::rest(std::uint16_t column)
{
    m_state.targets[column] = rests;
    m_left.push_back(column);
}

void GraphLanes::release(std::uint16_t column)
{
    m_state.targets[column] = free;
    m_free.push_back(column);
    std::push_heap(m_free.begin(), m_free.end(), std::greater<>());
}
