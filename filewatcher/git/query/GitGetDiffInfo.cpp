#include "common/CommandLine.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/GitQuery.h"
#include "filewatcher/git/query/GitDiff.h"

namespace {

/// Lines of git's own, whatever program or colour the user or the repository wants for them, and names as seen from the
/// directory that is put in front of them.
constexpr cmROStringT ownDiff = "--no-ext-diff --no-textconv --no-color --relative ";

/// Both lists are read before either is stored: outside a repository only the second command fails.
std::int32_t storeChangedFiles(TXPSZ repository, TXPSZ git, TXHVAR table)
{
    cmArray<cmStringT> local;
    cmArray<cmStringT> staged;
    const std::int32_t localStatus = listChangedFiles(repository, git, local, false);
    const std::int32_t status = listChangedFiles(repository, git, staged, true);
    if (status != 0)
        return status;
    const TXHVAR element = txHvarHashElement(table, repository, txCreateMissing);
    if (localStatus == 0)
        storeTexts(txHvarHashElement(element, "local", txCreateMissing), local);
    storeTexts(txHvarHashElement(element, "staged", txCreateMissing), staged);
    return 0;
}

void storeHunk(TXHVAR element, const GitDiffHunk& hunk)
{
    txHvarSetInt(txHvarHashElement(element, "oldStart", txCreateMissing), hunk.oldStart);
    txHvarSetInt(txHvarHashElement(element, "oldCount", txCreateMissing), hunk.oldCount);
    txHvarSetInt(txHvarHashElement(element, "newStart", txCreateMissing), hunk.newStart);
    txHvarSetInt(txHvarHashElement(element, "newCount", txCreateMissing), hunk.newCount);
    storeTexts(txHvarHashElement(element, "lines", txCreateMissing), hunk.lines);
}

void storeFile(TXHVAR table, cmROStringT directory, const GitDiffFile& file)
{
    const cmStringT path = cmJoinPath(directory, cmNativeSeparators(file.path));
    const TXHVAR hunks = txHvarHashElement(txHvarHashElement(table, path.c_str(), txCreateMissing), "hunks", txCreateMissing);
    shortenEditorArray(hunks, file.hunks.size());
    for (std::size_t i = 0; i < file.hunks.size(); ++i)
        storeHunk(txHvarArrayElement(hunks, static_cast<std::int32_t>(i), txCreateMissing), file.hunks[i]);
}

/// The repository comes before the revision, as editors have always asked. git takes a revision first and refuses this one as
/// no path: then it is asked the other way round.
std::int32_t runDiff(cmROStringT repository, cmROStringT git, cmROStringT revision, cmStringT& output)
{
    const cmStringT command = cmCat(quotedGit(git)) + " --no-pager diff ";
    const cmStringT path = quoteArgument(repository);
    const cmStringT tree = quoteArgument(revision);
    std::int32_t status = runGitQuery(cmStringT(cmCat(command) + path + " " + tree), repository, output);
    if (status == statusGitFailed)
        status = runGitQuery(cmStringT(cmCat(command) + ownDiff + tree + " -- " + path), repository, output);
    return status == 0 && output.isEmpty() ? statusGitFailed : status;
}

}  // namespace

std::int32_t gitGetDiffInfo(TXPSZ repository, TXPSZ git, TXHREFVAR result, TXPSZ revision)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    const cmStringT tree(revision);
    if (tree.isEmpty())
        return storeChangedFiles(repository, git, result);
    if (isGitOption(tree))
        return statusGitFailed;
    cmStringT output;
    const std::int32_t status = runDiff(repository, git, tree, output);
    if (status != 0)
        return status;
    for (const GitDiffFile& file : parseGitDiff(output))
        storeFile(result, cmNativeSeparators(repository), file);
    return 0;
}
