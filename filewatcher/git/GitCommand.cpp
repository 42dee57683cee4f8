#include "filewatcher/git/GitCommand.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "txapi/txapi.h"

#include <string>

cmStringT quotedGit(cmROStringT gitExePath)
{
    return cmCat("\"") + gitExePath + "\"";
}

GitOutcome runGitCommand(cmROStringT commandLine, cmROStringT workingDirectory, const CaptureControl& control,
                         const std::function<void(cmROStringT)>& sink)
{
    bool anyOutput = false;
    const auto passOn = [&anyOutput, &sink](cmROStringT bytes) {
        anyOutput = true;
        sink(bytes);
    };
    const CaptureResult result =
        captureLogged("runGitCommand", __LINE__, commandLine, spawnScannedCommand, workingDirectory, control, passOn);
    if (result.status != 0)
        return {result.status, result.failure};
    if (result.stopped)
        return {statusStopRequested, {}};
    // With output, "error:" can concern a single file. Without output the whole command failed.
    const cmROStringT error = result.errorOutput;
    const bool failed = hasFatalLine(error) || (hasErrorLine(error) && !anyOutput);
    return failed ? GitOutcome{statusGitFailed, toolSentence(error)} : GitOutcome();
}

bool isUnbornBranch(const GitOutcome& outcome)
{
    return outcome.sentence.view().find("does not have any commits yet") != cmROStringT::npos;
}

GitOutcome runGitQuery(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output)
{
    output.clear();
    const auto append = [&output](cmROStringT bytes) { output += bytes; };
    GitOutcome outcome = runGitCommand(commandLine, workingDirectory, {}, append);
    debugLog("runGitQuery", __LINE__, cmStringT(cmCat("status=") + std::to_string(outcome.status) + " " + commandLine));
    return outcome;
}

GitOutcome readTopLevel(cmROStringT gitExePath, cmROStringT directory, cmStringT& top)
{
    cmStringT output;
    GitOutcome outcome = runGitQuery(cmStringT(cmCat(quotedGit(gitExePath)) + " rev-parse --show-toplevel"), directory, output);
    top = outcome.status == 0 ? cmWithoutLineEnd(output) : "";
    return outcome;
}

std::int32_t endGitQuery(const GitOutcome& outcome)
{
    if (outcome.status != 0 && !outcome.sentence.isEmpty())
        txQueryError(outcome.sentence);
    return outcome.status;
}

bool isGitOption(cmROStringT revision)
{
    return revision.starts_with('-');
}

std::int32_t refuseGitOption(cmROStringT revision)
{
    return endGitQuery({statusGitFailed, cmCat("not a revision: ") + revision});
}
