#include "filewatcher/bridge/LoggedCapture.h"

#include "filewatcher/bridge/DebugLog.h"

CaptureResult captureLogged(cmROStringT function, int line, cmROStringT commandLine, SpawnOptions options,
                            cmROStringT workingDirectory, const CaptureControl& control, const CaptureSink& sink)
{
    CaptureResult result = captureCommand(commandLine, options, workingDirectory, control, sink);
    logProblems(function, line, result);
    return result;
}

void logProblems(cmROStringT function, int line, const CaptureResult& result)
{
    for (const cmStringT& problem : {result.failure, result.errorOutput}) {
        if (!problem.isEmpty())
            debugLog(function, line, problem);
    }
}
