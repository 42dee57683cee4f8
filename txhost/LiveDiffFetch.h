#pragma once

#include "txhost/Host.h"

#include <cstdint>

/// What came of fetching a file's committed revision.
struct LiveDiffFile {
    cmStringT cacheFile;      ///< null when there is no place for it
    std::int32_t status = 0;  ///< 1: the cache file holds the revision; negative: a failure; 0: interrupted
};

/// Fetches the committed revision of a file (absolute path) into the editor's cache by `command`, or, when that is empty, by
/// the command of the tool that the file belongs to. In the background unless `immediate`; waits for the end either way.
LiveDiffFile fetchLiveDiff(Host& host, const cmStringT& file, bool immediate, const std::string& command);
