#pragma once

#include "common/cmString.h"
#include "filewatcher/git/commits/GitCommitInfo.h"

/// Copies the commit with this hash out of the branches model; false when there is no model or no such commit in it. For the
/// editor's thread.
bool findModelCommit(cmROStringT hash, GitCommitInfo& commit);
