#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstdint>

/// One hunk: a range of lines that differ, with the lines around them.
struct GitDiffHunk {
    std::int32_t oldStart = 0;  ///< line number, from 1; 0 for an empty range at the start of the file
    std::int32_t oldCount = 1;
    std::int32_t newStart = 0;
    std::int32_t newCount = 1;
    cmArray<cmStringT> lines;  ///< each begins with its kind: '+', '-', ' ' or '\\' ("No newline at end of file")
};

struct GitDiffFile {
    cmStringT path;              ///< from the top level, with slashes; the new path of a rename, the old path of a deleted file
    cmArray<GitDiffHunk> hunks;  ///< none for a binary file, or when only the name or the mode changed
};

/// Parses a unified diff as git writes it. Skips what it cannot parse. Pure function.
cmArray<GitDiffFile> parseGitDiff(cmROStringT output);
