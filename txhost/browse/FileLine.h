#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/StyledLine.h"

/// Draws what has happened to a file in one line: " M   +12    -3  PATH", or "MM" for what is both staged and not.
void drawFileChange(StyledLine& line, const FileChange& file);
/// "2 files, +12 -3".
cmStringT changeSummary(const cmArray<FileChange>& files);
/// "1 file", "12,345 files".
cmStringT countedText(std::int64_t number, cmROStringT thing);
/// A number with its digits in groups of three: "12,345".
cmStringT groupedDigits(std::int64_t number);
