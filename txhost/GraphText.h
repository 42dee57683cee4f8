#pragma once

#include "common/cmString.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>

/// Draws a row of the graph in box characters, two characters for each column and padded to 2 * `columns`. Only the first
/// `columns` columns are drawn; an ellipsis shows that there are more. Each column has a colour when the terminal has colours.
cmStringT graphText(const GraphRow& row, std::size_t columns);
