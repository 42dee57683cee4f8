#pragma once

#include "common/CommandRunner.h"

#include <chrono>
#include <string>

using Milliseconds = std::chrono::milliseconds;

/// The command line that makes the helper program behave as `arguments` says.
cmStringT helper(cmROStringT arguments);

/// One capture, all its output, and the time it took.
struct Captured {
    CaptureResult result;
    std::string output;
    Milliseconds time{};
};
Captured run(cmROStringT commandLine, const CaptureControl& control = {}, SpawnOptions options = spawnScannedCommand,
             cmROStringT directory = "");
