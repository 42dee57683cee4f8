#include "common/CommandQuoting.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/commits/GitDateTime.h"
#include "filewatcher/git/query/GitCommitText.h"

namespace {

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

/// Fills the elements that the hash table has; keys that it lacks are skipped.
void fillCommitTable(TXHVAR table, const GitCommitInfo& commit, const GitCommitText& text)
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
    if (!isWorkingCopy) {
        const cmStringT commandLine = cmCat(quotedGit(git)) + " --no-pager show --name-only -m \"--pretty=format:"
                                      + gitCommitFormat + "\" " + quoteArgument(revision);
        status = endGitQuery(runGitQuery(commandLine, repository, output));
    }
    GitBranchesModel* model = GitBranchesModel::instance(false);
    GitCommitInfo commit;
    if (result && status == 0 && (isWorkingCopy || !output.isEmpty()) && model && model->findCommit(revision, commit))
        fillCommitTable(result, commit, parseGitCommitText(output));
    return status;
}
