#include "filewatcher/status/GitStatusThread.h"

#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/status/GitPorcelain.h"
#include "filewatcher/status/VCRecord.h"

namespace {

constexpr char workTreeModified = 'M';

/// The watched path as an argument of a command that runs in the top level. git reports the top level with links resolved and
/// in the spelling on the disk, so the path is resolved before the two are compared.
cmStringT pathArgument(const cmStringT& path, const cmStringT& top)
{
    const cmStringT real = cmRealPath(path);
    cmROStringT relative;
    if (!cmRelativePath(real, top, relative) && !cmRelativePath(path, top, relative))
        return quoteArgument(path);
    if (relative.empty())
        return "";
    if (relative.starts_with('-'))  // must not be read as an option
        return quoteArgument(cmStringT(cmCat("./") + relative));
    return quoteArgument(relative);
}

}  // namespace

std::int32_t GitStatusThread::gitStatusForPath(const cmStringT& path)
{
    const cmStringT program = quotedProgram();
    if (program.isEmpty())
        return 0;
    cmStringT output;
    bool failed = false;
    std::int32_t status = runGit(cmStringT(cmCat(program) + " rev-parse --show-toplevel"), path, output, failed);
    if (status != 0)
        return status;
    const cmStringT top = cmNativeSeparators(cmWithoutLineEnd(output));
    TXVCRECORD directory = readVCRecord(path);
    if (top.isEmpty()) {
        if (directory.state != txVCStateOutsideRepository)
            noteChange();
        directory.state = txVCStateOutsideRepository;
        txVCSetRecord(tamarin::TMString(path), directory);
        return 0;
    }
    if (isStopping())
        return statusStopRequested;

    status = runGit(cmStringT(cmCat(program) + " status --porcelain " + pathArgument(path, top)), top, output, failed);
    if (status != 0)
        return status;
    if (failed)
        return statusPassFailed;  // an unreadable index, for example: that does not mean that nothing is modified
    for (const GitPorcelainEntry& entry : parseGitPorcelain(output)) {
        if (isStopping())
            return statusStopRequested;
        if (entry.workTreeState != workTreeModified)
            continue;
        markFile(cmJoinPath(top, cmNativeSeparators(entry.path)), tool().number, "mod");
        noteChange();
    }
    return 0;
}

std::int32_t GitStatusThread::runGit(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output, bool& failed)
{
    cmStringT errorOutput;
    const std::int32_t result = runTool(commandLine, spawnScannedCommand, workingDirectory, output, errorOutput);
    failed = errorOutput.view().starts_with("fatal:");
    return result;
}
