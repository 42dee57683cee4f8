#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitCommitInfo.h"

/// The log format that parseGitHistory parses.
inline constexpr cmROStringT gitHistoryFormat = "%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x00%B%x01";

/// One commit of a file's history.
struct GitHistoryRecord {
    GitCommitInfo commit;      ///< `message` is null for the working file
    cmArray<cmStringT> files;  ///< changed files, from the top level, with slashes
};

/// Parses the output of `git log --name-only` in gitHistoryFormat. Drops a record that is incomplete. Pure function.
cmArray<GitHistoryRecord> parseGitHistory(cmROStringT output);
