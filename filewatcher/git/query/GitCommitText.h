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

/// The options of `git show` whose output parseFilesByParent parses. parseGitCommitText cannot tell whose files a list has: git
/// leaves a parent out when nothing differs from it.
inline constexpr cmROStringT gitFilesByParentOptions =
    "--name-only --diff-merges=separate --no-show-signature --no-decorate --no-notes --no-abbrev-commit --pretty=oneline";

/// Parses what `git show` writes of the merge `hash`: before the files changed against a parent, which are lines of their own, a
/// line "HASH (from PARENT) SUBJECT". No file name can imitate it, as the hash depends on the names. Returns one list for each of
/// `parents`. Pure function.
cmArray<cmArray<cmStringT>> parseFilesByParent(cmROStringT output, cmROStringT hash, const cmArray<cmStringT>& parents);
