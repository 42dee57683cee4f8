#include "filewatcher/git/browser/GitCallbacks.h"

#include "filewatcher/git/browser/BranchTree.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "txapi/txapi.h"

namespace {

constexpr std::int32_t noCommit = -1;

GitBranchesModel* modelCallback()
{
    return GitBranchesModel::instance(true);
}

void refreshCallback(TXPSZ repository, TXPSZ git, std::int32_t windowId)
{
    branchTree().requestRefresh({repository, git, windowId});
}

std::int32_t countCallback()
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->publishedCommitCount() : 0;
}

std::int32_t commitCallback(std::int64_t commit, GitCommitInfo& info)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->copyCommit(commit, info) : noCommit;
}

void pathsCallback(cmStringT& repository, cmStringT& git)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    repository = model ? model->path() : cmStringT("");
    git = model ? model->gitExePath() : cmStringT("");
}

std::int32_t graphRowCallback(std::int64_t commit, GraphRow& row)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->copyGraphRow(commit, row) : noCommit;
}

std::int32_t graphWidthCallback()
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->graphWidth() : 0;
}

template <class Function>
void offer(std::int32_t slot, Function* function)
{
    txSetCallback(slot, reinterpret_cast<TXPFN>(function));
}

}  // namespace

void registerGitCallbacks()
{
    offer(txSlotGitModel, &modelCallback);
    offer(txSlotGitRefresh, &refreshCallback);
    offer(txSlotGitCount, &countCallback);
    offer(txSlotGitCommit, &commitCallback);
    offer(txSlotGitPaths, &pathsCallback);
    offer(txSlotGitGraphRow, &graphRowCallback);
    offer(txSlotGitGraphWidth, &graphWidthCallback);
}

void withdrawGitCallbacks()
{
    for (const std::int32_t slot : {txSlotGitModel, txSlotGitRefresh, txSlotGitCount, txSlotGitCommit, txSlotGitPaths,
                                    txSlotGitGraphRow, txSlotGitGraphWidth})
        txSetCallback(slot, nullptr);
}
