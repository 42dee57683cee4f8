#pragma once

#include "common/ChildProcess.h"

/// All that a platform needs to start a child. Only spawnProcess uses it.
class ChildStarter {
public:
    cmStringT program;    ///< absolute path
    cmStringT arguments;  ///< the command line behind the program
    bool interpreter = false;
    SpawnOptions options = 0;
    Environment environment;
    cmStringT workingDirectory;
    SpawnStreams streams;

    /// Starts the child and fills `process`. Returns false on failure, with the reason in `detail`.
    bool start(ChildProcess& process, cmStringT& detail) const;
    /// Whether `path` names a file that can be started.
    static bool isProgram(const cmStringT& path);
};
