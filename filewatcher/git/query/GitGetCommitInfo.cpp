#include "common/CommandQuoting.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/commits/GitDateTime.h"
#include "filewatcher/git/query/GitCommitText.h"

#include <optional>

namespace {

constexpr const char* filesByParentKey = "modifiedFilesByParent";

void setText(TXHVAR table, TXPSZ key, const cmStringT& text)
{
    if (const TXHVAR element = txHvarHashElement(table, key, 0))
        txHvarSetString(element, text);
}

void setTextUnlessEmpty(TXHVAR table, TXPSZ key, const cmStringT& text)
{
    if (!text.isEmpty())
        setText(table, key, text);
}

void setTexts(TXHVAR table, TXPSZ key, const cmArray<cmStringT>& texts)
{
    if (const TXHVAR element = txHvarHashElement(table, key, 0))
        storeTexts(element, texts);
}

void setTextsByParent(TXHVAR table, TXPSZ key, const cmArray<cmArray<cmStringT>>& lists)
{
    const TXHVAR element = txHvarHashElement(table, key, 0);
    shortenEditorArray(element, 0);
    for (std::size_t i = 0; i < lists.size(); ++i)
        storeTexts(madeElement(element, static_cast<std::int32_t>(i)), lists[i]);
}

/// Runs `git show` with `options`. Tells the editor why it failed, if it did.
std::int32_t showCommit(cmROStringT git, cmROStringT repository, cmROStringT options, cmROStringT revision, cmStringT& output)
{
    const cmStringT commandLine = cmCat(quotedGit(git)) + " --no-pager show " + options + " " + quoteArgument(revision);
    return endGitQuery(runGitQuery(commandLine, repository, output));
}

/// Fills the elements that the hash table has; keys that it lacks are skipped, and that of `filesByParent` when there are none.
void fillCommitTable(TXHVAR table, const GitCommitInfo& commit, const GitCommitText& text,
                     const std::optional<cmArray<cmArray<cmStringT>>>& filesByParent)
{
    setTextUnlessEmpty(table, "hash", commit.hash);
    setTextUnlessEmpty(table, "parentHash", commit.firstParent);
    setTexts(table, "otherParents", commit.otherParents);
    setTextUnlessEmpty(table, "authorName", commit.authorName);
    setTextUnlessEmpty(table, "authorEmail", commit.authorEmail);
    setText(table, "committerDate", commit.date.text());
    setText(table, "comment", commit.subject);
    setTexts(table, "longComment", text.message);
    setTexts(table, "modifiedFiles", text.files);
    if (filesByParent)
        setTextsByParent(table, filesByParentKey, *filesByParent);
    setTexts(table, "stagedFiles", commit.stagedFiles.names());
}

}  // namespace

std::int32_t gitGetCommitInfo(TXPSZ git, TXPSZ repository, TXPSZ hash, TXHREFVAR result)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    const cmStringT revision(hash);
    if (isGitOption(revision))
        return refuseGitOption(revision);
    const bool isWorkingCopy = revision.isEmpty();  // without a commit git would show HEAD
    std::int32_t status = 0;
    cmStringT output("");
    if (!isWorkingCopy)
        status = showCommit(git, repository, cmStringT(cmCat("--name-only -m \"--pretty=format:") + gitCommitFormat + "\""),
                            revision, output);
    GitBranchesModel* model = GitBranchesModel::instance(false);
    GitCommitInfo commit;
    if (!result || status != 0 || (!isWorkingCopy && output.isEmpty()) || !model || !model->findCommit(revision, commit))
        return status;
    std::optional filesByParent{cmArray<cmArray<cmStringT>>()};
    if (!commit.otherParents.empty() && txHvarHashElement(result, filesByParentKey, 0)) {
        cmStringT byParent;
        cmArray<cmStringT> parents{commit.firstParent};
        parents.insert(parents.end(), commit.otherParents.begin(), commit.otherParents.end());
        filesByParent.reset();
        if (showCommit(git, repository, gitFilesByParentOptions, commit.hash, byParent) == 0)  // an old git lacks the options
            filesByParent = parseFilesByParent(byParent, commit.hash, parents);
    }
    fillCommitTable(result, commit, parseGitCommitText(output), filesByParent);
    return status;
}
