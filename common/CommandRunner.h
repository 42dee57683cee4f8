#pragma once

#include "common/CommandCapture.h"

/// The options for Git commands and live-diff fetches, and those for the other tools.
inline constexpr SpawnOptions spawnScannedCommand = spawnScanOperators | spawnStandardHandles | spawnHiddenWindow;
inline constexpr SpawnOptions spawnPlainCommand = spawnStandardHandles | spawnHiddenWindow;

/// Runs a command and passes its standard output to `sink`. Returns when the child has ended and nothing more is to be read; see
/// CommandCapture. Blocks the calling thread meanwhile; a stop takes effect within 20 ms and the time that endProcessFamily
/// takes. Throws only std::bad_alloc and what the callbacks throw; the command is terminated then. Any thread.
CaptureResult captureCommand(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                             const CaptureControl& control, const CaptureSink& sink);

/// The short form: appends the standard output to `output`. Returns the `status` of CaptureResult.
std::int32_t runCommandCapture(cmROStringT commandLine, cmStringT& output, cmROStringT workingDirectory);
