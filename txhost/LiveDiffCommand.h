#pragma once

#include "txhost/Host.h"

#include <optional>
#include <string>

/// The result of fetching a file's committed revision.
struct LiveDiffFile {
    cmStringT cacheFile;             ///< path of the cache file; empty when the module refused
    std::optional<Failure> failure;  ///< why it does not hold the revision
};

/// Fetches the committed revision of a file (absolute path) into the editor's cache and waits for the end. `command` writes the
/// revision to its standard output; when it is empty, the command of the file's own tool is used. The module runs it on the
/// editor's thread when `immediate`, else in the background. A command that has written nothing, but an
/// error or an exit code other than 0, has failed; when `immediate`, the older revision stays in the cache then. Throws
/// HostError when `file` is a directory, when there is no program for the tool, and when the module cannot start its thread.
LiveDiffFile fetchLiveDiff(Host& host, const cmStringT& file, bool immediate, const std::string& command);
