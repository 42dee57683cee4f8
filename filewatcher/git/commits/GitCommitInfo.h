#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitDateTime.h"
#include "filewatcher/git/commits/GitFileList.h"

#include <cstdint>

/// A line of the graph that goes on below a commit's row, towards a parent whose row is not known yet.
struct PendingBranch {
    cmStringT parent;  ///< its hash
};

/// One commit, as it is handed out.
struct GitCommitInfo {
    cmStringT hash;  ///< 40 hexadecimal digits; empty for the working copy
    cmStringT firstParent;
    cmArray<cmStringT> otherParents;
    cmStringT authorName;
    cmStringT authorEmail;
    GitDateTime date;  ///< when it was committed
    cmStringT subject;
    cmStringT message;                    ///< all of it, where it was asked for
    cmArray<std::int64_t> branchNumbers;  ///< of the branches that end here
    std::int64_t row = -1;                ///< in the layout that is shown; below 0: none
    cmArray<PendingBranch> pendingBranches;
    GitFileList stagedFiles;
    std::int8_t onCurrentBranch = -1;  ///< 1 or 0; below 0: not asked yet
};
