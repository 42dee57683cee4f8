#include "filewatcher/git/browser/GitCallbacks.h"

#include "filewatcher/bridge/EditorEntry.h"
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
    const bool hasOurLayout = row.size == sizeof(GraphRow) && row.edgeSize == sizeof(GraphEdge);
    return model && hasOurLayout ? model->copyGraphRow(commit, row) : noCommit;
}

std::int32_t graphWidthCallback()
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->graphWidth() : 0;
}

std::int32_t tagsCallback(std::int64_t commit, cmArray<cmStringT>& tags)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model ? model->copyTags(commit, tags) : noCommit;
}

/// `failure` is the result when memory runs out.
template <auto function, auto... failure>
void offer(std::int32_t slot)
{
    txSetCallback(slot, reinterpret_cast<TXPFN>(&GuardedEntry<function, failure...>::call));
}

}  // namespace

void registerGitCallbacks()
{
    offer<&modelCallback, nullptr>(txSlotGitModel);
    offer<&refreshCallback>(txSlotGitRefresh);
    offer<&countCallback, 0>(txSlotGitCount);
    offer<&commitCallback, noCommit>(txSlotGitCommit);
    offer<&pathsCallback>(txSlotGitPaths);
    offer<&graphRowCallback, noCommit>(txSlotGitGraphRow);
    offer<&graphWidthCallback, 0>(txSlotGitGraphWidth);
    offer<&tagsCallback, noCommit>(txSlotGitTags);
}

void withdrawGitCallbacks()
{
    for (const std::int32_t slot : {txSlotGitModel, txSlotGitRefresh, txSlotGitCount, txSlotGitCommit, txSlotGitPaths,
                                    txSlotGitGraphRow, txSlotGitGraphWidth, txSlotGitTags})
        txSetCallback(slot, nullptr);
}
