#pragma once

#include "common/ChildProcess.h"

/// Everything that the platform needs to start a child; only spawnProcess uses it.
class ChildStarter {
public:
    cmStringT program;    ///< absolute
    cmStringT arguments;  ///< the text behind the program
    bool interpreter = false;
    SpawnOptions options = 0;
    Environment environment;
    cmStringT workingDirectory;
    SpawnStreams streams;

    /// Fills `process`; false on failure, with the reason in `detail`.
    bool start(ChildProcess& process, cmStringT& detail) const;
    /// Whether `path` is a file that can be started.
    static bool isProgram(const cmStringT& path);
};
