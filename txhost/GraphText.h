#pragma once

#include "common/cmString.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>

/// A row of the graph in box characters, two places a column, a colour per column where the terminal has colours. Columns from
/// `columns` on are not drawn; a mark tells of them. Padded to 2 * columns places.
cmStringT graphText(const GraphRow& row, std::size_t columns);
