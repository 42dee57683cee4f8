#include "filewatcher/git/GitCommand.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/LoggedCapture.h"

cmStringT quotedGit(cmROStringT gitExePath)
{
    return cmCat("\"") + gitExePath + "\"";
}

std::int32_t runGitCommand(cmROStringT commandLine, cmROStringT workingDirectory, const CaptureControl& control,
                           const std::function<void(cmROStringT)>& sink)
{
    bool wrote = false;
    const auto note = [&wrote, &sink](cmROStringT bytes) {
        wrote = true;
        sink(bytes);
    };
    const CaptureResult result =
        captureLogged("runGitCommand", commandLine, spawnScannedCommand, workingDirectory, control, note);
    if (result.status != 0)
        return result.status;
    if (result.stopped)
        return statusStopRequested;
    // An error alone may be one file's trouble; without any output it is the command's. git says it before some fatal ones, too.
    const cmROStringT error = result.errorOutput;
    return error.starts_with("fatal:") || (!wrote && error.starts_with("error:")) ? statusGitFailed : 0;
}
