#pragma once

#include "common/cmArray.h"

#include <cstdint>

/// The column of a commit or line for which no column is left.
inline constexpr std::uint16_t graphNoColumn = 0xFFFF;

enum class GraphEdgeKind : std::uint8_t {
    passes,  ///< a line between other commits
    ends,    ///< from a child above to the commit
    begins,  ///< from the commit to a parent below
    stub,    ///< a parent without a line, because it is above or no column is left; both ends are in the column of the commit
};

/// A part of a line, within one row.
struct GraphEdge {
    std::uint16_t from;  ///< column at the top of the row
    std::uint16_t to;    ///< column at the bottom of the row
    GraphEdgeKind kind;

    friend bool operator==(const GraphEdge&, const GraphEdge&) = default;
};

/// One row of the graph.
struct GraphRow {
    std::uint16_t column = graphNoColumn;  ///< of the commit
    cmArray<GraphEdge> edges;              ///< first all `passes`, then all `ends`, then one for each parent in order
};
