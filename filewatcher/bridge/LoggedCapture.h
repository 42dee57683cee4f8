#pragma once

#include "common/CommandRunner.h"

/// captureCommand that also calls logProblems. Any thread.
CaptureResult captureLogged(cmROStringT function, int line, cmROStringT commandLine, SpawnOptions options,
                            cmROStringT workingDirectory, const CaptureControl& control, const CaptureSink& sink);

/// Writes to the debug log, under the name `function` and the source line of the caller, why a command could not be started and
/// the kept part of its standard error, each only when there is one. Any thread.
void logProblems(cmROStringT function, int line, const CaptureResult& result);
