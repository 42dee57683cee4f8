#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "txhost/GraphWindow.h"

// Draws rows of the graph in box characters, two cells for each column: the column's own, and the gap behind it. Pure functions.
//
//     ●  commit   ○  commit without a line to a parent   ◍  commit with a parent that has no line
//     │  passes; between two ─ it crosses the row's horizontal line without touching it
//     ╯ ╰ ┴  ends at the commit   ╮ ╭ ┬  begins at the commit   ├ ┤ ┼  passes, and is joined by a line of the commit
//     ↓ ↑  a long line is left out from here, or up to here; a ╴ ╶ beside it passes behind it   …  columns are left out
//
// Two rows with different lines have different pictures, but for the commit's own column: whether a line comes from above and one
// goes on below is told by the rows there.

/// One cell of the picture. A view of a literal; 0 is the terminal's own colour, else an SGR number.
struct GraphCell {
    cmROStringT text;
    int colour = 0;
};

/// The part of the picture of `row` that `view` shows, in as many cells as that is wide. The last one is always blank.
cmArray<GraphCell> graphCells(const GraphRow& row, const GraphView& view);

/// Writes text in a colour, an SGR number; console::coloured, or `inNoColour`.
using Painter = cmStringT (*)(int colour, cmROStringT text);
cmStringT inNoColour(int colour, cmROStringT text);

/// The text of graphCells().
cmStringT graphText(const GraphRow& row, const GraphView& view, Painter paint = &inNoColour);
