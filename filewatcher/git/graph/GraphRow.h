#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstdint>
#include <utility>

/// The column of a commit or line for which no column is left.
inline constexpr std::uint16_t graphNoColumn = 0xFFFF;

enum class GraphEdgeKind : std::uint8_t {
    passes,     ///< a line between other commits
    ends,       ///< from a child above to the commit
    begins,     ///< from the commit to a parent below; joins the line that passes in its column, if there is one
    stub,       ///< a parent without a line, because it is above or no column is left; both ends are in the column of the commit
    arrowDown,  ///< the upper part of a long line stops here, in a column of its own
    arrowUp,    ///< the lower part of a long line starts here, in a column of its own or, for the commit itself, in its column
};

/// A part of a line, within one row.
struct GraphEdge {
    std::uint16_t from;  ///< column at the top of the row
    std::uint16_t to;    ///< column at the bottom of the row
    GraphEdgeKind kind;
    // Of an arrow, the commit at the far end of the line: the parent that it leads down to, or the child that it comes from. Of a
    // line that begins here and stops with an arrow in the next row, and of a stub, the parent. Unset for other edges.
    std::int64_t other = -1;  ///< row of that commit; below 0 as long as it has none
    cmStringT otherHash{};

    friend bool operator==(const GraphEdge&, const GraphEdge&) = default;
};

/// One row of the graph. The two sizes let the module refuse a caller that was built with another layout.
struct GraphRow {
    GraphRow() = default;
    GraphRow(std::uint16_t ofCommit, cmArray<GraphEdge> lines) : column(ofCommit), edges(std::move(lines)) {}

    std::uint32_t size = sizeof(GraphRow);  ///< in bytes, like the next one
    std::uint32_t edgeSize = sizeof(GraphEdge);
    std::uint16_t column = graphNoColumn;  ///< of the commit
    /// All `passes` by column, all `ends` by column, one for each parent in order, all `arrowDown` by column, all `arrowUp` of
    /// the commit itself by the row of the child, all those of the next commit likewise, which share a column.
    cmArray<GraphEdge> edges;
};
