#include "filewatcher/git/GitQuery.h"

#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/GitQuotedName.h"

#include <string>

std::int32_t runGitQuery(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output)
{
    output.clear();
    const auto append = [&output](cmROStringT bytes) { output += bytes; };
    const std::int32_t status = runGitCommand(commandLine, workingDirectory, {}, append);
    debugLog("runGitQuery", __LINE__, cmStringT(cmCat("status=") + std::to_string(status) + " " + commandLine));
    return status;
}

bool isGitOption(cmROStringT revision)
{
    return revision.starts_with('-');
}

std::int32_t readRepositoryRoot(cmROStringT path, cmROStringT git, cmStringT& root)
{
    cmStringT output;
    const std::int32_t status =
        runGitQuery(cmStringT(cmCat(quotedGit(git)) + " rev-parse --show-toplevel"), cmDirectoryOf(path), output);
    if (status == 0)
        root = cmStringT(cmWithoutLineEnd(output));
    return status;
}

std::int32_t listChangedFiles(cmROStringT directory, cmROStringT git, cmArray<cmStringT>& files, bool staged)
{
    cmStringT output;
    const cmStringT commandLine =
        cmCat(quotedGit(git)) + " --no-pager diff " + " " + " --name-only" + (staged ? " --cached" : "");
    const std::int32_t status = runGitQuery(commandLine, cmNativeSeparators(directory), output);
    if (status != 0)
        return status;
    files.clear();
    for (cmROStringT rest = output; !rest.empty() && rest.front() != '\n';)
        files.push_back(gitNameOnLine(cmWithoutLineEnd(cmTakeUntil(rest, '\n'))));
    return 0;
}
