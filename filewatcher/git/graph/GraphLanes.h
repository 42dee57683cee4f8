#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>
#include <cstdint>

/// A commit as the graph sees it; commits are known by ids.
struct GraphNode {
    struct Parent {
        std::uint32_t id;
        bool above;  ///< its row is not below the commit's
    };
    std::uint32_t id = 0;
    cmArray<Parent> parents;
};

/// The lines between two rows: each is in a column and on its way to a commit. A commit takes the leftmost column that its
/// children reserved and ends the others; its first parent inherits the column, other parents share a column that is
/// reserved for them or take the leftmost free one. What follows depends on nothing but the lanes and the rows to come.
class GraphLanes {
public:
    static constexpr std::uint32_t free = 0xFFFFFFFF;

    /// Begins anew with these lanes; `targets`: by column the id it is reserved for, or `free`.
    void restart(const cmArray<std::uint32_t>& targets);
    const cmArray<std::uint32_t>& targets() const { return m_targets; }
    /// The most columns that were in use at once.
    std::int32_t widest() const { return m_widest; }
    /// Goes past the row of `node`; `row`, when given, is filled with it.
    void step(const GraphNode& node, GraphRow* row);

private:
    static constexpr std::uint32_t held = free - 1;  ///< by the commit of this row

    void addPassing(const GraphNode& node, GraphRow& row) const;
    std::uint16_t takeColumn(std::uint32_t id, GraphRow* row);
    std::uint16_t takeLeftmostFree();
    /// The leftmost of those reserved for it; graphNoColumn when there are none.
    std::uint16_t leftmostFor(std::uint32_t id) const;
    std::uint16_t reserveFor(const GraphNode::Parent& parent, bool first, std::uint16_t column);
    void reserve(std::uint16_t column, std::uint32_t id);
    void release(std::uint16_t column);

    std::uint16_t firstOf(std::uint32_t id) const { return id < m_firsts.size() ? m_firsts[id] : graphNoColumn; }

    cmArray<std::uint32_t> m_targets;  ///< by column; the last one is in use
    cmArray<std::uint16_t> m_next;     ///< by column, the next one with the same target
    cmArray<std::uint16_t> m_firsts;   ///< by target, one of its columns; graphNoColumn for none
    cmArray<std::uint16_t> m_free;     ///< a heap of free columns, and of some that are taken again
    std::int32_t m_widest = 0;
};
