#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/query/GitHistory.h"
#include "filewatcher/git/query/SVCHistoryInfo.h"

#include <iterator>
#include <utility>

namespace {

/// Finds the top level of the working copy that holds `path`, as git writes it (with slashes). Returns 0 or the status of the
/// command; `root` is then unchanged.
std::int32_t readRepositoryRoot(cmROStringT path, cmROStringT git, cmStringT& root)
{
    cmStringT output;
    const std::int32_t status =
        runGitQuery(cmStringT(cmCat(quotedGit(git)) + " rev-parse --show-toplevel"), cmDirectoryOf(path), output);
    if (status == 0)
        root = cmStringT(cmWithoutLineEnd(output));
    return status;
}

/// Whether git could parse a lone file name as an option or as revisions, without checking that the file exists.
bool isAmbiguousAlone(cmROStringT name)
{
    return name.starts_with('-') || name.find_first_of("^:") != cmROStringT::npos || name.find("..") != cmROStringT::npos;
}

/// Runs the log. For a lone name git checks whether it is a file or a revision, and refuses a name that is both or neither (a
/// deleted file). The log then runs again with "--" before the name, which marks it as a path.
std::int32_t runHistoryLog(cmROStringT command, cmROStringT revision, cmROStringT file, cmStringT& output)
{
    const cmROStringT directory = cmDirectoryOf(file);
    const cmStringT name = quoteArgument(cmFileNameOf(file));
    if (!revision.empty())
        return runGitQuery(cmStringT(cmCat(command) + quoteArgument(revision) + " -- " + name), directory, output);
    std::int32_t status = statusGitFailed;
    if (!isAmbiguousAlone(cmFileNameOf(file)))
        status = runGitQuery(cmStringT(cmCat(command) + name), directory, output);
    return status == statusGitFailed ? runGitQuery(cmStringT(cmCat(command) + "-- " + name), directory, output) : status;
}

/// The path of `file` relative to the top level `root`, with slashes. git resolves the links in `root`, so the real path of the
/// file is tried as well.
cmStringT pathFromRoot(cmROStringT root, cmROStringT file)
{
    const cmStringT top = cmNativeSeparators(root);
    const cmStringT given = cmNativeSeparators(file);
    const cmStringT real = cmJoinPath(cmRealPath(cmDirectoryOf(file)), cmFileNameOf(file));
    cmROStringT relative = cmFileNameOf(file);
    if (!cmRelativePath(given, top, relative))
        cmRelativePath(real, top, relative);
    cmStringT path(relative);
    for (std::size_t i = 0; i < path.length(); ++i)
        path.data()[i] = cmIsPathSeparator(path[i]) ? '/' : path[i];
    return path;
}

}  // namespace

std::int32_t gitGetHistoryInfo(TXPSZ file, TXPSZ git, TXHREFVAR result, TXPSZ revision, std::int32_t newestOnly,
                               std::int32_t follow, std::int32_t workingFile)
{
    if (isGitOption(revision))
        return statusGitFailed;
    cmStringT root;
    std::int32_t status = readRepositoryRoot(file, git, root);
    if (status != 0)
        return status;
    const cmStringT command = cmCat(quotedGit(git)) + " --no-pager log --date=iso --date-order --name-only "
                              + (newestOnly ? "--max-count=1 " : "") + (follow ? "--follow " : "")
                              + " \"--pretty=format:" + gitHistoryFormat + "\" ";
    cmStringT output;
    status = runHistoryLog(command, revision, file, output);
    if (status != 0)
        return status;
    cmArray<GitHistoryRecord> records;
    if (!output.isEmpty() && workingFile)
        records.push_back(workingFileRecord());
    cmArray<GitHistoryRecord> revisions = parseGitHistory(output);
    std::move(revisions.begin(), revisions.end(), std::back_inserter(records));
    return fillHistoryTree(result, records, pathFromRoot(root, file));
}
