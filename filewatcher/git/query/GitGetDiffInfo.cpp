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

#include <algorithm>

namespace {

/// Makes git write its own unified diff, whatever external program, converter, colour or form is configured, with paths relative
/// to the working directory.
constexpr cmROStringT plainDiffOptions =
    "--no-ext-diff --no-textconv --no-color --submodule=short --src-prefix=a/ --dst-prefix=b/ --relative ";

/// Why git's diff has failed. In a directory that git refuses, or outside a repository, it compares paths and complains of its
/// arguments: the query for the top level tells more.
GitOutcome diffFailure(cmROStringT directory, cmROStringT git, const GitOutcome& outcome)
{
    cmStringT top;
    const GitOutcome refusal = outcome.status == statusGitFailed ? readTopLevel(git, directory, top) : GitOutcome();
    return refusal.status == statusGitFailed ? refusal : outcome;
}

/// Replaces `files` by those of the whole working copy around `directory` that differ from the index or, with `staged`, by those
/// in the index that differ from HEAD: paths from the top level, with slashes. On failure `files` is unchanged.
GitOutcome listChangedFiles(cmROStringT directory, cmROStringT git, cmArray<cmStringT>& files, bool staged)
{
    cmStringT output;
    const cmStringT commandLine =
        cmCat(quotedGit(git)) + " --no-pager diff " + " " + " --name-only" + (staged ? " --cached" : "");
    GitOutcome outcome = runGitQuery(commandLine, cmNativeSeparators(directory), output);
    if (outcome.status != 0)
        return outcome;
    if (!output.isEmpty() && !output.view().ends_with('\n'))
        return {statusGitFailed, "git's output breaks off"};
    files.clear();
    for (cmROStringT rest = output; !rest.empty() && rest.front() != '\n';)
        files.push_back(gitNameOnLine(cmWithoutLineEnd(cmTakeUntil(rest, '\n'))));
    return {};
}

/// Reads both lists before it stores either: outside a repository only the second command fails, and the table must then stay as
/// it was. Returns the status of the second; the first one's failure is told, too.
std::int32_t storeChangedFiles(TXPSZ repository, TXPSZ git, TXHVAR table)
{
    cmArray<cmStringT> local;
    cmArray<cmStringT> staged;
    const GitOutcome localOutcome = listChangedFiles(repository, git, local, false);
    const GitOutcome stagedOutcome = listChangedFiles(repository, git, staged, true);
    if (const GitOutcome& failed = localOutcome.status != 0 ? localOutcome : stagedOutcome; failed.status != 0)
        endGitQuery(diffFailure(repository, git, failed));
    if (stagedOutcome.status != 0)
        return stagedOutcome.status;
    const TXHVAR element = madeElement(table, repository);
    if (localOutcome.status == 0)
        storeTexts(madeElement(element, "local"), local);
    storeTexts(madeElement(element, "staged"), staged);
    return 0;
}

void storeHunk(TXHVAR element, const GitDiffHunk& hunk)
{
    if (hunk.oldRanges.size() == 1) {
        storeInt(madeElement(element, "oldStart"), hunk.oldRanges.front().start);
        storeInt(madeElement(element, "oldCount"), hunk.oldRanges.front().count);
    } else {
        const TXHVAR ranges = madeElement(element, "oldRanges");
        for (std::size_t i = 0; i < hunk.oldRanges.size(); ++i) {
            const TXHVAR range = madeElement(ranges, static_cast<std::int32_t>(i));
            storeInt(madeElement(range, "start"), hunk.oldRanges[i].start);
            storeInt(madeElement(range, "count"), hunk.oldRanges[i].count);
        }
    }
    storeInt(madeElement(element, "newStart"), hunk.newRange.start);
    storeInt(madeElement(element, "newCount"), hunk.newRange.count);
    storeTexts(madeElement(element, "lines"), hunk.lines);
}

cmStringT fullPath(cmROStringT directory, cmROStringT path)
{
    return cmJoinPath(directory, cmNativeSeparators(path));
}

void storeFile(TXHVAR table, cmROStringT directory, const GitDiffFile& file)
{
    const TXHVAR element = madeElement(table, fullPath(directory, file.path).c_str());
    storeText(madeElement(element, "oldPath"), file.oldPath.isNull() ? cmStringT("") : fullPath(directory, file.oldPath));
    storeText(madeElement(element, "oldMode"), file.oldMode.isNull() ? cmStringT("") : file.oldMode);
    storeText(madeElement(element, "newMode"), file.newMode.isNull() ? cmStringT("") : file.newMode);
    storeInt(madeElement(element, "binary"), file.binary ? 1 : 0);
    const TXHVAR hunks = madeElement(element, "hunks");
    shortenEditorArray(hunks, 0);  // a hunk of another kind has other keys
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
/// first order a comparison of two paths, so it is left out. When nothing differs, the status is statusGitFailed without a
/// sentence.
GitOutcome runDiff(cmROStringT repository, cmROStringT git, cmROStringT revision, cmStringT& output)
{
    const cmStringT command = cmCat(quotedGit(git)) + " --no-pager diff ";
    const cmStringT path = quoteArgument(repository);
    const cmStringT commit = quoteArgument(revision);
    GitOutcome outcome{statusGitFailed, {}};
    if (!isPathIn(repository, revision))
        outcome = runGitQuery(cmStringT(cmCat(command) + path + " " + commit), repository, output);
    if (outcome.status == statusGitFailed)
        outcome = runGitQuery(cmStringT(cmCat(command) + plainDiffOptions + commit + " -- ."), repository, output);
    if (outcome.status != 0)
        return diffFailure(repository, git, outcome);
    return {output.isEmpty() ? statusGitFailed : 0, {}};
}

/// Makes the paths of a combined diff relative to `directory`: git writes them from the top level whatever it is told.
GitOutcome makeRelative(cmROStringT directory, cmROStringT git, cmArray<GitDiffFile>& files)
{
    if (!std::ranges::any_of(files, &GitDiffFile::combined))
        return {};
    cmStringT output;
    GitOutcome outcome = runGitQuery(cmStringT(cmCat(quotedGit(git)) + " rev-parse --show-prefix"), directory, output);
    const cmROStringT prefix = cmWithoutLineEnd(output);
    for (GitDiffFile& file : files) {
        cmROStringT relative;
        if (!prefix.empty() && cmRelativePath(file.path, prefix, relative))
            file.path = cmStringT(relative);
    }
    return outcome;
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
        return refuseGitOption(commit);
    cmStringT output;
    GitOutcome outcome = runDiff(repository, git, commit, output);
    cmArray<GitDiffFile> files;
    if (outcome.status == 0) {
        files = parseGitDiff(output);
        outcome = makeRelative(repository, git, files);
    }
    if (outcome.status != 0)
        return endGitQuery(outcome);
    for (const GitDiffFile& file : files)
        storeFile(result, cmNativeSeparators(repository), file);
    return 0;
}
