#include "filewatcher/status/GitStatusThread.h"

#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "filewatcher/status/GitPorcelain.h"
#include "filewatcher/status/VCRecord.h"
#include "filewatcher/status/WatchedSpelling.h"

namespace {

constexpr char workTreeModified = 'M';

/// The watched path as an argument of a command that runs in the top level. git reports the top level with links resolved and
/// in the spelling on the disk, so it is compared with `real`, the resolved path.
cmStringT pathArgument(const cmStringT& path, const cmStringT& real, const cmStringT& top)
{
    cmROStringT relative;
    if (!cmRelativePath(real, top, relative) && !cmRelativePath(path, top, relative))
        return quoteArgument(path);
    if (relative.empty())
        return "";
    if (relative.starts_with('-'))  // must not be read as an option
        return quoteArgument(cmStringT(cmCat("./") + relative));
    return quoteArgument(relative);
}

/// Whether git found no repository. It refuses to look into one that is damaged or belongs to another user in other words.
bool saysNoRepository(cmROStringT errorOutput)
{
    return toolSentence(errorOutput).starts_with("fatal: not a git repository (or any");
}

/// Whether git ended before it could tell the status: that does not mean that nothing is modified. It has told all of it when it
/// wrote any, even if an "error:" says that, for example, its commit graph is damaged.
bool isUnanswered(cmROStringT output, cmROStringT errorOutput)
{
    return hasFatalLine(errorOutput) || (output.empty() && hasErrorLine(errorOutput));
}

/// Whether the last line lacks its line feed: git was ended while it wrote.
bool breaksOff(cmROStringT output)
{
    return !output.empty() && !output.ends_with('\n');
}

constexpr cmROStringT outputBreaksOff = "git's output breaks off";

}  // namespace

std::int32_t GitStatusThread::gitStatusForPath(const cmStringT& path)
{
    const cmStringT program = quotedProgram();
    if (program.isEmpty())
        return 0;
    cmStringT output;
    cmStringT errorOutput;
    std::int32_t status = runGit(cmStringT(cmCat(program) + " rev-parse --show-toplevel"), path, output, errorOutput);
    if (status != 0)
        return status;
    const cmStringT top = cmNativeSeparators(cmWithoutLineEnd(output));
    const TXVCRECORD directory = readVCRecord(path);
    if (top.isEmpty())
        return noteNoTopLevel(path, directory, errorOutput);
    if (breaksOff(output))
        return failPass(outputBreaksOff);
    if (isStopping())
        return statusStopRequested;

    const cmStringT real = cmRealPath(path);
    status = runGit(cmStringT(cmCat(program) + " status --porcelain " + pathArgument(path, real, top)), top, output, errorOutput);
    if (status != 0)
        return status;
    if (isUnanswered(output, errorOutput))
        return statusPassFailed;
    const WatchedSpelling spelling(path, real);
    for (const GitPorcelainEntry& entry : parseGitPorcelain(output)) {
        if (isStopping())
            return statusStopRequested;
        if (entry.workTreeState != workTreeModified)
            continue;
        markFile(spelling.respell(cmJoinPath(top, cmNativeSeparators(entry.path))), tool().number, "mod");
        noteChange();
    }
    return breaksOff(output) ? failPass(outputBreaksOff) : 0;
}

std::int32_t GitStatusThread::noteNoTopLevel(const cmStringT& path, TXVCRECORD directory, cmROStringT errorOutput)
{
    if (directory.state != txVCStateOutsideRepository)
        noteChange();
    directory.state = txVCStateOutsideRepository;
    txVCSetRecord(tamarin::TMString(path), directory);
    return saysNoRepository(errorOutput) ? 0 : failPass("git named no top level");
}

std::int32_t GitStatusThread::runGit(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output,
                                     cmStringT& errorOutput)
{
    return runTool(commandLine, spawnScannedCommand, workingDirectory, output, errorOutput);
}
