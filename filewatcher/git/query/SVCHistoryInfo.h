#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/query/GitHistory.h"
#include "txapi/txapi.h"

#include <cstdint>

/// The entry that stands for the file as it is on the disk.
GitHistoryRecord workingFileRecord();

/// Fills an editor array with a history tree: element 0 is the root, the records follow as its children, in their order.
/// `path` is the file's path from the top level, with slashes. Returns 0, or the editor's negative status when it has no class
/// "SVCHistoryInfo". For the editor's thread.
std::int32_t fillHistoryTree(TXHVAR array, const cmArray<GitHistoryRecord>& records, cmROStringT path);
