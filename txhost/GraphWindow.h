#pragma once

#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>

/// How many columns the whole picture of `row` has.
std::size_t graphColumns(const GraphRow& row);

/// Which columns of one row are shown, and in which cells. The columns from `first` to `last` have two cells each. Of the others
/// only those that lead to a parent are shown, one cell each, beyond a "…".
struct GraphView {
    std::size_t width;   ///< cells of the whole picture, at least two
    std::size_t indent;  ///< cells before those of `first`
    std::size_t first;
    std::size_t last;
};

/// Decides for the rows of one log what of their pictures is shown. Columns of different rows stand below each other: all rows
/// show the same window of adjacent columns. It moves only for a row whose commit would be outside, or that has no room for its
/// lines to parents, and by as little as that takes, in strides of about a third of its columns: if it moved by one column a row,
/// commits of different columns would stand below each other and look like a chain. The text behind moves as little as possible:
/// the width grows at once, by up to four columns more than needed, and shrinks after 30 rows that needed less, to what they
/// needed.
class GraphWindow {
public:
    /// In a terminal of `terminalWidth` columns the window gets at most three eighths. A row whose lines to parents need more may
    /// get all but the room for a short hash and a blank. 0 is no terminal: then no picture is cut.
    explicit GraphWindow(std::size_t terminalWidth);
    /// For the next row from the top.
    GraphView next(const GraphRow& row);

private:
    void adjustWidth(std::size_t columns);

    std::size_t m_limit;   ///< of m_width
    std::size_t m_most;    ///< of a row that needs more
    std::size_t m_step;    ///< widths are multiples of it, but for the limit
    std::size_t m_stride;  ///< the window moves by multiples of so many columns
    std::size_t m_first = 0;
    std::size_t m_width = 0;
    std::size_t m_narrowRows = 0;  ///< how many rows since one needed all of m_width
    std::size_t m_widest = 0;      ///< what those needed
};
