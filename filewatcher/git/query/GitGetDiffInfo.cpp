#include "common/CommandQuoting.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/GitQuotedName.h"
#include "filewatcher/git/query/GitDiff.h"

namespace {

/// Makes git write its own unified diff, whatever external program, converter or colour is configured, with paths relative to the
/// working directory.
constexpr cmROStringT plainDiffOptions = "--no-ext-diff --no-textconv --no-color --relative ";

/// Replaces `files` by those of the whole working copy around `directory` that differ from the index or, with `staged`, by those
/// in the index that differ from HEAD: paths from the top level, with slashes. Returns 0 or the status of the command; `files` is
/// then unchanged.
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

/// Reads both lists before it stores either: outside a repository only the second command fails, and the table must then stay as
/// it was.
std::int32_t storeChangedFiles(TXPSZ repository, TXPSZ git, TXHVAR table)
{
    cmArray<cmStringT> local;
    cmArray<cmStringT> staged;
    const std::int32_t localStatus = listChangedFiles(repository, git, local, false);
    const std::int32_t status = listChangedFiles(repository, git, staged, true);
    if (status != 0)
        return status;
    const TXHVAR element = madeElement(table, repository);
    if (localStatus == 0)
        storeTexts(madeElement(element, "local"), local);
    storeTexts(madeElement(element, "staged"), staged);
    return 0;
}

void storeHunk(TXHVAR element, const GitDiffHunk& hunk)
{
    storeInt(madeElement(element, "oldStart"), hunk.oldStart);
    storeInt(madeElement(element, "oldCount"), hunk.oldCount);
    storeInt(madeElement(element, "newStart"), hunk.newStart);
    storeInt(madeElement(element, "newCount"), hunk.newCount);
    storeTexts(madeElement(element, "lines"), hunk.lines);
}

void storeFile(TXHVAR table, cmROStringT directory, const GitDiffFile& file)
{
    const cmStringT path = cmJoinPath(directory, cmNativeSeparators(file.path));
    const TXHVAR hunks = madeElement(madeElement(table, path.c_str()), "hunks");
    shortenEditorArray(hunks, file.hunks.size());
    for (std::size_t i = 0; i < file.hunks.size(); ++i)
        storeHunk(madeElement(hunks, static_cast<std::int32_t>(i)), file.hunks[i]);
}

/// Whether git would take `text` for the name of a file or folder.
bool isPathIn(cmROStringT directory, cmROStringT text)
{
    return cmReadFileItem(cmIsAbsolutePath(text) ? cmStringT(text) : cmJoinPath(directory, cmNativeSeparators(text))).state
           != cmItemState::missing;
}

/// Runs the diff with the repository before the revision, the order that is kept for compatibility. git expects the revision
/// first and refuses the other order; then the diff runs again in git's own order. A revision that is also a path would make the
/// first order a comparison of two paths, so it is left out. Returns statusGitFailed when nothing differs.
std::int32_t runDiff(cmROStringT repository, cmROStringT git, cmROStringT revision, cmStringT& output)
{
    const cmStringT command = cmCat(quotedGit(git)) + " --no-pager diff ";
    const cmStringT path = quoteArgument(repository);
    const cmStringT commit = quoteArgument(revision);
    std::int32_t status = statusGitFailed;
    if (!isPathIn(repository, revision))
        status = runGitQuery(cmStringT(cmCat(command) + path + " " + commit), repository, output);
    if (status == statusGitFailed)
        status = runGitQuery(cmStringT(cmCat(command) + plainDiffOptions + commit + " -- " + path), repository, output);
    return status == 0 && output.isEmpty() ? statusGitFailed : status;
}

}  // namespace

std::int32_t gitGetDiffInfo(TXPSZ repository, TXPSZ git, TXHREFVAR result, TXPSZ revision)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    const cmStringT commit(revision);
    if (commit.isEmpty())
        return storeChangedFiles(repository, git, result);
    if (isGitOption(commit))
        return statusGitFailed;
    cmStringT output;
    const std::int32_t status = runDiff(repository, git, commit, output);
    if (status != 0)
        return status;
    for (const GitDiffFile& file : parseGitDiff(output))
        storeFile(result, cmNativeSeparators(repository), file);
    return 0;
}
