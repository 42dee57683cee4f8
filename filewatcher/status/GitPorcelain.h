#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// One line of `git status --porcelain`.
struct GitPorcelainEntry {
    char indexState;
    char workTreeState;
    cmStringT path;  ///< relative to the top level, with slashes; of a rename the new name
};

/// Reads the output of `git status --porcelain` (version 1). Names in double quotes are unquoted (C escapes, octal ones
/// included). Lines that are none are passed over.
cmArray<GitPorcelainEntry> parseGitPorcelain(cmROStringT output);
