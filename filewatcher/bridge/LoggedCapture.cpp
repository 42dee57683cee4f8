#include "filewatcher/bridge/LoggedCapture.h"

#include "filewatcher/bridge/DebugLog.h"

CaptureResult captureLogged(cmROStringT function, int line, cmROStringT commandLine, SpawnOptions options,
                            cmROStringT workingDirectory, const CaptureControl& control,
                            const std::function<void(cmROStringT)>& sink)
{
    CaptureResult result = captureCommand(commandLine, options, workingDirectory, control, sink);
    for (const cmStringT& problem : {result.failure, result.errorOutput}) {
        if (!problem.isEmpty())
            debugLog(function, line, problem);
    }
    return result;
}
