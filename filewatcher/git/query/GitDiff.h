#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstdint>

/// A range of lines as a hunk's header has it.
struct GitLineRange {
    std::int32_t start = 0;  ///< line number, from 1; 0 for an empty range at the start of the file (1 in a combined diff)
    std::int32_t count = 1;
};

/// One hunk: a range of lines that differ, with the lines around them.
struct GitDiffHunk {
    cmArray<GitLineRange> oldRanges;  ///< one; in a combined diff one for each parent, in their order
    GitLineRange newRange;
    /// Each begins with its kind: '+', '-', ' ' or '\\' ("No newline at end of file"). In a combined diff it begins with one
    /// character for each parent: '+' when that parent lacks the line, '-' when the parent has it and the result lacks it.
    cmArray<cmStringT> lines;
};

/// What a diff says of a file. Modes are the digits that git writes; null where git says nothing of them.
struct GitDiffFile {
    cmStringT path;     ///< with slashes; the new path of a rename or copy, the old path of a deleted file
    cmStringT oldPath;  ///< of a rename or copy; null for any other file, and in a combined diff
    cmStringT
        oldMode;  ///< null for a new file; in a combined diff those of the parents, with commas between them, if any changed
    cmStringT newMode;  ///< null for a deleted file
    bool binary = false;
    bool combined = false;       ///< compared with several parents
    cmArray<GitDiffHunk> hunks;  ///< none for a binary file, or when only the name or the mode changed
};

/// Parses a diff as git writes it: a unified one, or a combined one of several parents. Skips what it cannot parse. Pure
/// function.
cmArray<GitDiffFile> parseGitDiff(cmROStringT output);
