#pragma once

#include "common/ChildProcess.h"
#include "common/cmString.h"

#include <cstdint>
#include <functional>
#include <limits>

/// The unit of reading, in bytes; also how much of a command's standard error is kept.
inline constexpr std::uint32_t CaptureReadChunk = 8095;

inline constexpr std::int32_t statusOutputLimit = -6657;  ///< a command wrote more than it was allowed to

/// The options for Git commands and live-diff fetches, and those for the other tools.
inline constexpr SpawnOptions spawnScannedCommand = spawnScanOperators | spawnStandardHandles | spawnHiddenWindow;
inline constexpr SpawnOptions spawnPlainCommand = spawnStandardHandles | spawnHiddenWindow;

/// How a capture can be cut short. The calls come from the thread that captures.
struct CaptureControl {
    /// Asked at the start of every pass, after a yield; true ends the child. Unset: the capture cannot be stopped.
    std::function<bool()> stopRequested;
    /// The most bytes of output that are accepted.
    std::uint64_t maxOutput = std::numeric_limits<std::uint64_t>::max();
    /// Called once when there was more, before the child is ended.
    std::function<void()> outputTooLarge;
};

struct CaptureResult {
    /// 0 when the command was started; statusOutputLimit when it wrote too much; else why it could not be started.
    std::int32_t status = 0;
    bool stopped = false;   ///< `stopRequested` cut the capture short
    cmStringT errorOutput;  ///< the first CaptureReadChunk bytes of standard error
    cmStringT failure;      ///< in words, why the command could not be started
};

/// Runs a command and hands its standard output to `sink` as it comes, any bytes, in pieces of at most a pipe's
/// content. Returns when the child has ended and a pass finds nothing more to read, whoever else still holds its pipes. Blocks
/// the calling thread meanwhile; a stop is seen within 20 ms. Never throws on its own account.
CaptureResult captureCommand(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                             const CaptureControl& control, const std::function<void(cmROStringT)>& sink);

/// The short form: appends the standard output to `output`. 0 whenever the command was started.
std::int32_t runCommandCapture(cmROStringT commandLine, cmStringT& output, cmROStringT workingDirectory);
