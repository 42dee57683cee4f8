#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/query/GitHistory.h"
#include "txapi/txapi.h"

#include <cstdint>

/// The record for the uncommitted file on disk.
GitHistoryRecord workingFileRecord();

/// Replaces the editor array by a history tree of "SVCHistoryInfo" instances: element 0 is the root, the records follow in their
/// order as its children. `path` is the file's path from the top level, with slashes. Returns 0, or the editor's negative status
/// when it has no such class. For the editor's thread.
std::int32_t fillHistoryTree(TXHVAR array, const cmArray<GitHistoryRecord>& records, cmROStringT path);
