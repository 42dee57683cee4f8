#pragma once

#include "filewatcher/status/StatusThreads.h"

#include <cstdint>

/// Reads a tool's executable path, interval and output limit from the editor and stores them in the tool's status thread, which
/// is created when there is none. Does nothing when the thread is configured already: later changes do not reach it.
/// Calls a macro function of the editor. Returns 0, or statusNoExecutable when that function is missing or returns no path. When
/// the interval setting is missing the result is 0, but the thread stays unconfigured. For the editor's thread.
std::int32_t readStatusSettings(const StatusThreadKind& kind);

inline std::int32_t readGitStatusSettings()
{
    return readStatusSettings(*statusThreadOfType(txVCToolGit.number));
}

inline std::int32_t readPerforceStatusSettings()
{
    return readStatusSettings(*statusThreadOfType(txVCToolPerforce.number));
}

inline std::int32_t readSvnStatusSettings()
{
    return readStatusSettings(*statusThreadOfType(txVCToolSVN.number));
}
