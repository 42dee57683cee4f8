#pragma once

#include "common/CommandRunner.h"
#include "common/cmString.h"

#include <cstdint>

/// A revision to fetch.
struct LiveDiffRequest {
    cmStringT origin;       ///< given by the editor, not used
    cmStringT commandLine;  ///< writes the revision to its standard output
    cmStringT file;
    cmStringT cacheFile;
    cmStringT workingDirectory;
};

/// Runs the request's command and writes its standard output, byte for byte, to the cache file, whose folder exists. Blocks the
/// calling thread until the command ends or `control` cuts it short; the output of a fetch that is stopped counts as complete.
/// The fetch fails when the command cannot be started, its output cannot be read or it was killed, when the kept part of its
/// standard error contains "fatal:", when that holds an error of Subversion and there is no output, and when the file cannot be
/// written; the old cache file then stays. Stores liveDiffReady or `failure` as the file's status. Returns 0 or `failure`. Any
/// thread.
std::int32_t fetchLiveDiffFile(const LiveDiffRequest& request, const CaptureControl& control, std::int32_t failure);

// The status table of live diff: the result of the last fetch of each cache file. It lives as long as the module. Any thread.

inline constexpr std::int64_t liveDiffReady = 1;

/// liveDiffReady, a negative status, or 0 when nothing is known of the file.
std::int64_t liveDiffStatus(cmROStringT cacheFile);
void setLiveDiffStatus(cmROStringT cacheFile, std::int64_t status);
