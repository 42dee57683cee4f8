#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitCommitInfo.h"

/// How the history's log is to be written: what parseGitHistory reads.
inline constexpr cmROStringT gitHistoryFormat = "%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x00%B%x01";

/// One commit of a file's history.
struct GitHistoryRecord {
    GitCommitInfo commit;      ///< its message is null when it is not known
    cmArray<cmStringT> files;  ///< the changed ones, from the top level, with slashes
};

/// Reads the output of a log in gitHistoryFormat with --name-only. A record without its end is dropped.
cmArray<GitHistoryRecord> parseGitHistory(cmROStringT output);
