#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

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

/// The commits that a layout shows, by row.
class GraphCommits {
public:
    virtual ~GraphCommits() = default;
    /// Sets `node` to the commit of a row and those of its parents that get a line. Once a row is laid out, the ids in the answer
    /// must not change while the layout is used.
    virtual void node(std::uint32_t row, GraphNode& node) const = 0;
    /// Returns the id of the commit in a row.
    virtual std::uint32_t idOf(std::uint32_t row) const = 0;
    /// Returns the row of the commit with this id; GraphNode::noRow as long as it has none.
    virtual std::uint32_t rowOf(std::uint32_t id) const = 0;
    virtual cmStringT hashText(std::uint32_t id) const = 0;
};
