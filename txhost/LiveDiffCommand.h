#pragma once

#include "txhost/Host.h"

#include <cstdint>

/// The result of fetching a file's committed revision.
struct LiveDiffFile {
    cmStringT cacheFile;      ///< path of the cache file; null when the module refused
    cmStringT reason;         ///< of a failure, in words; null when its status tells all
    std::int32_t status = 0;  ///< 1: the cache file holds the revision; negative: a failure; 0: interrupted by Ctrl-C
};

/// Fetches the committed revision of a file (absolute path) into the editor's cache and waits for the end. `command` writes the
/// revision to its standard output; when it is empty, the command of the file's own tool is used. The module runs it on the
/// editor's thread when `immediate`, else in the background. Throws HostError when there is no program for the tool, and when the
/// module cannot start its thread.
LiveDiffFile fetchLiveDiff(Host& host, const cmStringT& file, bool immediate, const std::string& command);
