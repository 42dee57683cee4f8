#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// How a commit is to be shown: what parseGitCommitText reads.
inline constexpr cmROStringT gitCommitFormat = "%B%n%x00";

/// What git shows of a commit.
struct GitCommitText {
    cmArray<cmStringT> message;  ///< its lines
    cmArray<cmStringT> files;    ///< the changed ones, from the top level; for a merge those of every parent, one after the other
};

/// Reads the output of `git show --name-only -m` in gitCommitFormat.
GitCommitText parseGitCommitText(cmROStringT output);
