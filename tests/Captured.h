#pragma once

#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"
#include "tests/TestSupport.h"

/// The command line that runs the helper program with `arguments`, of which the first names the behaviour.
inline cmStringT helper(cmROStringT arguments)
{
    return cmCat("\"") + builtProgram("testhelper") + "\" " + arguments;
}

struct Captured {
    CaptureResult result;
    std::string output;
};

inline Captured run(cmROStringT commandLine, const CaptureControl& control = {}, SpawnOptions options = spawnScannedCommand,
                    cmROStringT directory = "")
{
    Captured captured;
    const auto append = [&captured](cmROStringT bytes) { captured.output += bytes; };
    captured.result = captureCommand(commandLine, options, directory, control, append);
    return captured;
}
