#pragma once

#include "filewatcher/git/browser/BrowserState.h"
#include "filewatcher/git/browser/GitBranchesModel.h"

// The editor's tree of commits; all for the editor's thread.

/// The routine of the browser's timer: adds what the model has published to the tree, for 200 ms at most (50 ms while there is
/// nothing to see yet), and goes on at the next tick until the load has ended and all is there.
void fillBranchTree();

/// Adds the rows that the tree lacks, until the same time is up.
void addBranchTreeSlice(GitBranchesModel& model, TreeCursor& cursor);
