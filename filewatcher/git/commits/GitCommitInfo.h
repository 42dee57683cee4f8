#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitDateTime.h"
#include "filewatcher/git/commits/GitFileList.h"

#include <cstdint>

/// A line of the graph that leads from a commit down to a parent without a row yet.
struct PendingBranch {
    cmStringT parent;  ///< hash
};

/// One commit, as the editor reads it.
struct GitCommitInfo {
    cmStringT hash;  ///< 40 or, in a SHA-256 repository, 64 hexadecimal digits; empty for the working copy
    cmStringT firstParent;
    cmArray<cmStringT> otherParents;
    cmStringT authorName;
    cmStringT authorEmail;
    GitDateTime date;  ///< when it was committed
    cmStringT subject;
    cmStringT message;                    ///< the full text; only history queries set it
    cmArray<std::int64_t> branchNumbers;  ///< of the branches whose tip this is
    std::int64_t row = -1;                ///< among the shown rows; below 0: none
    cmArray<PendingBranch> pendingBranches;
    GitFileList stagedFiles;
    std::int8_t onCurrentBranch = -1;  ///< 1 or 0; below 0: not determined
};
