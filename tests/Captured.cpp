#include "tests/Captured.h"

#include "common/cmStringCatHelper.h"
#include "tests/TestSupport.h"

cmStringT helper(cmROStringT arguments)
{
    return cmCat("\"") + builtProgram("testhelper") + "\" " + arguments;
}

Captured run(cmROStringT commandLine, const CaptureControl& control, SpawnOptions options, cmROStringT directory)
{
    Captured captured;
    const auto append = [&captured](cmROStringT bytes) { captured.output += bytes; };
    const auto start = std::chrono::steady_clock::now();
    captured.result = captureCommand(commandLine, options, directory, control, append);
    captured.time = std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start);
    return captured;
}
