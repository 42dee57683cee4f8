#pragma once

#include "common/ChildProcess.h"
#include "common/cmString.h"

#include <cstdint>
#include <functional>
#include <limits>

/// The unit of reading, in bytes; also how much of a command's standard error is kept.
inline constexpr std::uint32_t CaptureReadChunk = 8095;

inline constexpr std::int32_t statusOutputLimit = -6657;  ///< a command wrote more than its limit

/// The options for Git commands and live-diff fetches, and those for the other tools.
inline constexpr SpawnOptions spawnScannedCommand = spawnScanOperators | spawnStandardHandles | spawnHiddenWindow;
inline constexpr SpawnOptions spawnPlainCommand = spawnStandardHandles | spawnHiddenWindow;

/// What can end a capture early. The capturing thread makes all calls.
struct CaptureControl {
    /// Called at the start of every pass, after a yield; true terminates the child. Unset: the capture cannot be stopped.
    std::function<bool()> stopRequested;
    /// The greatest accepted amount of output, in bytes.
    std::uint64_t maxOutput = std::numeric_limits<std::uint64_t>::max();
    /// Called once when there is more output, before the child is terminated.
    std::function<void()> outputTooLarge;
};

struct CaptureResult {
    /// 0 when the command was started and its output is complete or was stopped; statusOutputLimit when it wrote too much;
    /// cmStatusPipeFailed when its output could not be read to the end, or the command was killed or crashed before it came to
    /// its own end (the exit code of one that did is not read); otherwise why it could not be started.
    std::int32_t status = 0;
    bool stopped = false;   ///< whether `stopRequested` ended the capture
    cmStringT errorOutput;  ///< the first CaptureReadChunk bytes of standard error
    cmStringT failure;      ///< in words, why `status` is cmStatusPipeFailed or the command could not be started
};

/// Runs a command and passes its standard output to `sink` as it arrives, in pieces of any bytes, each at most as large as a
/// pipe's content. Returns when the child has ended and a pass finds nothing more to read; other processes may still hold the
/// pipes then. Blocks the calling thread meanwhile; a stop takes effect within 20 ms and the time that endProcessFamily takes.
/// Throws only std::bad_alloc and what the callbacks throw; the command is terminated then. Any thread.
CaptureResult captureCommand(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                             const CaptureControl& control, const std::function<void(cmROStringT)>& sink);

/// The short form: appends the standard output to `output`. Returns the `status` of CaptureResult.
std::int32_t runCommandCapture(cmROStringT commandLine, cmStringT& output, cmROStringT workingDirectory);
