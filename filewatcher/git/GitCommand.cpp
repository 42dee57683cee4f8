#include "filewatcher/git/GitCommand.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/DebugLog.h"
#include "filewatcher/StatusCodes.h"

cmStringT quotedGit(cmROStringT gitExePath)
{
    return cmCat("\"") + gitExePath + "\"";
}

std::int32_t runGitCommand(cmROStringT commandLine, cmROStringT workingDirectory, const CaptureControl& control,
                           const std::function<void(cmROStringT)>& sink)
{
    const CaptureResult result = captureCommand(commandLine, spawnScannedCommand, workingDirectory, control, sink);
    for (const cmStringT& problem : {result.failure, result.errorOutput}) {
        if (!problem.isEmpty())
            debugLog("runGitCommand", __LINE__, problem);
    }
    if (result.status != 0)
        return result.status;
    if (result.stopped)
        return statusStopRequested;
    return result.errorOutput.view().starts_with("fatal:") ? statusGitFailed : 0;
}
