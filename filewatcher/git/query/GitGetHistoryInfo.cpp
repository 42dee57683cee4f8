#include "common/CommandLine.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/GitQuery.h"
#include "filewatcher/git/query/GitHistory.h"
#include "filewatcher/git/query/SVCHistoryInfo.h"

#include <iterator>
#include <utility>

namespace {

/// Whether git could read a file's name, alone, as an option or as revisions without looking for the file.
bool needsPathMark(cmROStringT name)
{
    return name.starts_with('-') || name.find_first_of("^:") != cmROStringT::npos || name.find("..") != cmROStringT::npos;
}

/// Runs the log. Other names git looks up as files and as revisions; what is both, or a file no more, it refuses: then it is told
/// that a path is meant.
std::int32_t runHistoryLog(cmROStringT command, cmROStringT revision, cmROStringT file, cmStringT& output)
{
    const cmROStringT directory = cmDirectoryOf(file);
    const cmStringT name = quoteArgument(cmFileNameOf(file));
    if (!revision.empty())
        return runGitQuery(cmStringT(cmCat(command) + quoteArgument(revision) + " -- " + name), directory, output);
    std::int32_t status = statusGitFailed;
    if (!needsPathMark(cmFileNameOf(file)))
        status = runGitQuery(cmStringT(cmCat(command) + name), directory, output);
    return status == statusGitFailed ? runGitQuery(cmStringT(cmCat(command) + "-- " + name), directory, output) : status;
}

/// The file's path from the top level, with slashes. git reports that with its links followed.
cmStringT pathBelow(cmROStringT root, cmROStringT file)
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
    return fillHistoryTree(result, records, pathBelow(root, file));
}
