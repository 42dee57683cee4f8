#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstdint>

/// Names the commits at the other ends of lines that are not drawn. All names beside a row belong to the row's own commit,
/// although the arrows of its lines stand in the row below it (to parents) and in the row above it (from children).
class GraphNames {
public:
    /// The names for the next row from the top, in lists: "↓ 1a2b3c4, 5d6e7f8" are parents, "↑ 9a8b7c6" children, whose lines
    /// were cut; "◍ 0f1e2d3" parents without a line. Only "(↓ 2b3c4d5)" is another commit's: the parent at the other end of an
    /// arrow in this row whose line was cut late, so that the child's row did not name it. Empty when there are none.
    cmStringT next(const GraphRow& row);

private:
    cmArray<cmStringT> m_children;        ///< of the next row's commit
    cmArray<std::uint16_t> m_namedLines;  ///< columns of the lines from the row above whose parents it named
};
