#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>
#include <cstdint>

/// A commit as the graph knows it, by ids.
struct GraphNode {
    static constexpr std::uint32_t noRow = 0xFFFFFFFF;

    struct Parent {
        std::uint32_t id;
        std::uint32_t row;  ///< noRow as long as it has none
    };
    std::uint32_t id = 0;
    cmArray<Parent> parents;
};

/// The lines of the graph between two rows. Each occupies a column and leads to a commit further down, its target. A commit takes
/// the leftmost column that its children reserved for it and ends the others. Its first parent inherits the column; each other
/// parent shares a column that is reserved for it already or takes the leftmost free one. For one thread at a time.
class GraphLanes {
public:
    static constexpr std::uint32_t free = 0xFFFFFFFF;

    /// Replaces all lines. `targets` holds for each column the id that it is reserved for, or `free`.
    void restart(const cmArray<std::uint32_t>& targets);
    const cmArray<std::uint32_t>& targets() const { return m_targets; }
    /// The largest number of columns since the last restart.
    std::int32_t widest() const { return m_widest; }
    /// Moves from above the row of `node` to below it. Fills `row` with the row unless it is null.
    void step(const GraphNode& node, std::uint32_t index, GraphRow* row);

private:
    static constexpr std::uint32_t held = free - 1;  ///< taken by the commit of the current row

    void addPassing(const GraphNode& node, GraphRow& row) const;
    std::uint16_t takeColumn(std::uint32_t id, GraphRow* row);
    std::uint16_t takeLeftmostFree();
    /// Returns the leftmost column reserved for a commit; graphNoColumn when there is none.
    std::uint16_t leftmostFor(std::uint32_t id) const;
    std::uint16_t reserveFor(const GraphNode::Parent& parent, bool above, bool first, std::uint16_t column);
    void reserve(std::uint16_t column, std::uint32_t id);
    void release(std::uint16_t column);

    std::uint16_t firstOf(std::uint32_t id) const { return id < m_firsts.size() ? m_firsts[id] : graphNoColumn; }

    cmArray<std::uint32_t> m_targets;  ///< by column; the last column is never free
    cmArray<std::uint16_t> m_next;     ///< by column: the next column with the same target
    cmArray<std::uint16_t> m_firsts;   ///< by target: one of its columns; graphNoColumn for none
    cmArray<std::uint16_t> m_free;     ///< a heap of free columns; may hold some that were taken again or dropped
    std::int32_t m_widest = 0;
};
