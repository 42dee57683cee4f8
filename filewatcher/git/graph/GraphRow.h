#pragma once

#include "common/cmArray.h"

#include <cstdint>

/// The column of what found no room.
inline constexpr std::uint16_t graphNoColumn = 0xFFFF;

enum class GraphEdgeKind : std::uint8_t {
    passes,  ///< a line that has nothing to do with the commit
    ends,    ///< from a child above, into the commit
    begins,  ///< from the commit, to a parent below
    stub,    ///< from the commit to a parent that has no line: it stands above, or no column is left; both ends are the commit's
};

/// A line through a row.
struct GraphEdge {
    std::uint16_t from;  ///< its column at the top
    std::uint16_t to;    ///< and at the bottom
    GraphEdgeKind kind;

    friend bool operator==(const GraphEdge&, const GraphEdge&) = default;
};

/// One row of the graph.
struct GraphRow {
    std::uint16_t column = graphNoColumn;  ///< of the commit
    cmArray<GraphEdge> edges;              ///< first those that pass, then those that end, then those of the parents in order
};
