#pragma once

#include "common/cmString.h"

#include <cstddef>

// The width of UTF-8 text in terminal columns. Terminals differ in what they draw as one: where some join characters (families of
// emoji, the parts of a Korean syllable) and others put them side by side, this counts the latter, so that a line never becomes
// too long. A character of ambiguous width counts as one column, as does a byte that is no UTF-8.

std::size_t textWidth(cmROStringT text);
/// `text` cut to at most `columns` columns, never within what a reader sees as one character. An ellipsis of one column at the
/// end shows that it was cut.
cmStringT shortened(cmROStringT text, std::size_t columns, cmROStringT ellipsis = "…");
