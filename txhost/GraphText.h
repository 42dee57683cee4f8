#pragma once

#include "common/cmString.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>

// Draws rows of the graph in box characters, two cells for each column: the column's own, and the gap behind it. Pure functions.
//
//     ●  commit   ○  commit without a line to a parent   ◍  commit with a parent that has no line
//     │  passes; between two ─ it crosses the row's horizontal line without touching it
//     ╯ ╰ ┴  ends at the commit   ╮ ╭ ┬  begins at the commit   ├ ┤ ┼  passes, and is joined by a line of the commit
//     ↓ ↑  a long line is left out from here, or up to here   …  columns are left out
//
// Two rows with different lines have different pictures, but for the commit's own column: whether a line comes from above and one
// goes on below is told by the rows there.

/// Writes text in a colour, an SGR number; console::coloured, or `inNoColour`.
using Painter = cmStringT (*)(int colour, cmROStringT text);
cmStringT inNoColour(int colour, cmROStringT text);

/// The cells that the whole picture of `row` takes, with the blank behind it: two for each column.
std::size_t graphCells(const GraphRow& row);

/// The picture of `row` in `width` cells, at least two, padded with blanks; the last cell is always blank. When there are too few
/// cells for all columns, it keeps the commit's own, then those of its lines to parents, then the others, the nearest first.
cmStringT graphText(const GraphRow& row, std::size_t width, Painter paint = &inNoColour);

/// The commits at the other ends of what has no line: "↓ 1a2b3c4, 5d6e7f8  ↑ 9a8b7c6  ◍ 0f1e2d3", each list in the order of the
/// columns. Arrows up get a list for each column; one more than there are arrows in the picture belongs to the commit itself.
/// Empty when the row has none.
cmStringT graphNames(const GraphRow& row);

/// Decides how many cells each row's picture gets, so that the text behind it moves as little as possible: the width grows at
/// once, by up to four columns more than needed, and shrinks after 30 rows that needed less, to what they needed.
class GraphWidth {
public:
    /// In a terminal of `terminalWidth` columns the picture gets at most three eighths, and leaves room for a short hash. 0 is no
    /// terminal: then no picture is cut.
    explicit GraphWidth(std::size_t terminalWidth);
    /// The width for the next row from the top.
    std::size_t next(const GraphRow& row);

private:
    std::size_t m_limit;
    std::size_t m_step;  ///< widths are multiples of it, but for the limit
    std::size_t m_width = 0;
    std::size_t m_narrowRows = 0;  ///< how many rows since one needed all of m_width
    std::size_t m_widest = 0;      ///< what those needed
};
