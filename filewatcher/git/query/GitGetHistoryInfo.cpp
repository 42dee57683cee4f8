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

/// Whether git could parse a lone file name as an option or as revisions, without checking that the file exists.
bool isAmbiguousAlone(cmROStringT name)
{
    return name.starts_with('-') || name.find_first_of("^:") != cmROStringT::npos || name.find("..") != cmROStringT::npos;
}

/// The nearest folder above the file that exists: its own one may have been deleted since. One that cannot be looked at stays.
cmROStringT existingFolderOf(cmROStringT file)
{
    cmROStringT folder = cmDirectoryOf(file);
    while (cmReadFileItem(folder).state == cmItemState::missing && cmDirectoryOf(folder).size() < folder.size())
        folder = cmDirectoryOf(folder);
    return folder;
}

/// The file's path from `folder`, which is above it.
cmROStringT nameIn(cmROStringT folder, cmROStringT file)
{
    cmROStringT name = cmFileNameOf(file);
    cmRelativePath(file, folder, name);
    return name;
}

/// Runs the log. For a lone name git checks whether it is a file or a revision, and refuses a name that is both or neither (a
/// deleted file). The log then runs again with "--" before the name, which marks it as a path.
GitOutcome runHistoryLog(cmROStringT command, cmROStringT revision, cmROStringT file, cmStringT& output)
{
    const cmROStringT directory = existingFolderOf(file);
    const cmStringT name = quoteArgument(nameIn(directory, file));
    if (!revision.empty())
        return runGitQuery(cmStringT(cmCat(command) + quoteArgument(revision) + " -- " + name), directory, output);
    if (!isAmbiguousAlone(nameIn(directory, file))) {
        GitOutcome outcome = runGitQuery(cmStringT(cmCat(command) + name), directory, output);
        if (outcome.status != statusGitFailed)
            return outcome;
    }
    return runGitQuery(cmStringT(cmCat(command) + "-- " + name), directory, output);
}

/// The path of `file` relative to the top level `root`, with slashes. git resolves the links in `root`, so the real path of the
/// file is tried as well.
cmStringT pathFromRoot(cmROStringT root, cmROStringT file)
{
    const cmStringT top = cmNativeSeparators(root);
    const cmStringT given = cmNativeSeparators(file);
    const cmROStringT folder = existingFolderOf(file);
    const cmStringT real = cmJoinPath(cmRealPath(folder), nameIn(folder, file));
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
        return refuseGitOption(revision);
    cmStringT root;
    GitOutcome outcome = readTopLevel(git, existingFolderOf(file), root);
    if (outcome.status != 0)
        return endGitQuery(outcome);
    const cmStringT command = cmCat(quotedGit(git)) + " --no-pager log --date=iso --date-order --name-only "
                              + (newestOnly ? "--max-count=1 " : "") + (follow ? "--follow " : "")
                              + " \"--pretty=format:" + gitHistoryFormat + "\" ";
    cmStringT output;
    outcome = runHistoryLog(command, revision, file, output);
    if (outcome.status != 0)
        return endGitQuery(outcome);
    cmArray<GitHistoryRecord> records;
    if (!output.isEmpty() && workingFile)
        records.push_back(workingFileRecord());
    cmArray<GitHistoryRecord> revisions = parseGitHistory(output);
    std::move(revisions.begin(), revisions.end(), std::back_inserter(records));
    return fillHistoryTree(result, records, pathFromRoot(root, file));
}
