#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// One line of `git status --porcelain`.
struct GitPorcelainEntry {
    char indexState;
    char workTreeState;
    cmStringT path;  ///< relative to the top level, with slashes; the new name of a renamed file
};

/// Parses the output of `git status --porcelain` (version 1). Names in double quotes are unquoted, C and octal escapes
/// included. Lines of another form are skipped, and so is a last line without its line feed: its name may be cut. Any thread.
cmArray<GitPorcelainEntry> parseGitPorcelain(cmROStringT output);
