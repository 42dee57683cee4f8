#pragma once

#include "common/CommandRunner.h"
#include "common/cmString.h"

#include <cstdint>
#include <functional>

/// What a git command line begins with: the executable in double quotes.
cmStringT quotedGit(cmROStringT gitExePath);

/// Runs one git command of the browser and hands its output to `sink`. 0; statusStopRequested; statusGitFailed when git called
/// it a fatal error, or told an error and nothing else; or why it could not be started. Blocks the calling thread, any one, until
/// git ends or a stop is seen.
std::int32_t runGitCommand(cmROStringT commandLine, cmROStringT workingDirectory, const CaptureControl& control,
                           const std::function<void(cmROStringT)>& sink);
