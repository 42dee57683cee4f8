#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// The format of `git show` that parseGitCommitText parses.
inline constexpr cmROStringT gitCommitFormat = "%B%n%x00";

/// Message and changed files of one commit.
struct GitCommitText {
    cmArray<cmStringT> message;  ///< its lines
    cmArray<cmStringT> files;    ///< from the top level; for a merge the files changed against each parent, parent after parent
};

/// Parses the output of `git show --name-only -m` in gitCommitFormat. Pure function.
GitCommitText parseGitCommitText(cmROStringT output);
