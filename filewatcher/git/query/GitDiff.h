#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstdint>

/// A run of lines that differ, with those around them.
struct GitDiffHunk {
    std::int32_t oldStart = 0;  ///< line numbers, from 1
    std::int32_t oldCount = 1;
    std::int32_t newStart = 0;
    std::int32_t newCount = 1;
    cmArray<cmStringT> lines;  ///< each behind the character that tells what it is: + - blank or backslash (a remark)
};

struct GitDiffFile {
    cmStringT path;  ///< from the top level, with slashes; the new one of a rename, the old one of a file that was deleted
    cmArray<GitDiffHunk> hunks;  ///< none for a binary file, or when only the name or the mode changed
};

/// Reads a unified diff as git writes it.
cmArray<GitDiffFile> parseGitDiff(cmROStringT output);
