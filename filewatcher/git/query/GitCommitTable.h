#pragma once

#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/query/GitCommitText.h"
#include "txapi/txapi.h"

/// Writes what is known of a commit into those elements that the editor's hash table has; for the editor's thread.
void fillCommitTable(TXHVAR table, const GitCommitInfo& commit, const GitCommitText& text);
