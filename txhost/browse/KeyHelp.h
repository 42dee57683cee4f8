#pragma once

#include "txhost/browse/Picture.h"
#include "txhost/browse/StyledLine.h"

// The list of keys, in as many pages as it needs. Pure functions.

std::size_t keyHelpPages(const Picture::Size& size);
/// The lines of a page, from 0.
cmArray<cmArray<StyledText>> keyHelp(const Picture::Size& size, Symbols symbols, std::size_t page);
