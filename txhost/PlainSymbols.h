#pragma once

#include "common/cmString.h"

/// `text` with the symbols that the graph and its names are drawn with (see GraphText.h) replaced by ASCII of the same width, for
/// a terminal that shows no UTF-8: "*" and "o" for commits, "@" for ◍, "|" and "-" for lines, "." where one begins and "'" where
/// one ends, "+" where one is joined, "v" and "^" for arrows, "~" for the ellipsis, ":" for a
/// mark on the left, "-" for a dot between words. Pure.
cmStringT withPlainSymbols(cmROStringT text);
