#pragma once

#include "filewatcher/git/BrowserState.h"
#include "filewatcher/git/GitBranchesModel.h"
#include "filewatcher/git/GitCommitInfo.h"

#include <cstdint>

// The editor's tree of commits; all for the editor's thread.

/// The routine of the browser's timer: adds what the model has published to the tree, for 200 ms at most (50 ms while there is
/// nothing to see yet), and goes on at the next tick until the load has ended and all is there.
void fillBranchTree();

/// Adds the row of a commit behind the last one. False when it cannot be read yet.
bool addBranchTreeRow(GitBranchesModel& model, std::int64_t number, TreeCursor& cursor);
