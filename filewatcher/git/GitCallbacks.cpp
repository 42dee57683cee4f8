#include "filewatcher/git/GitCallbacks.h"

#include "filewatcher/git/BrowserState.h"
#include "filewatcher/git/GitBranchesModel.h"
#include "txapi/txapi.h"

namespace {

GitBranchesModel& model()
{
    return *GitBranchesModel::instance(true);
}

GitBranchesModel* modelCallback()
{
    return &model();
}

void refreshCallback(TXPSZ repository, TXPSZ git, std::int32_t windowId)
{
    browserState().requestRefresh({repository, git, windowId});
}

std::int32_t countCallback()
{
    return model().publishedCommitCount();
}

std::int32_t commitCallback(std::int64_t commit, GitCommitInfo& info)
{
    return model().copyCommit(commit, info);
}

void pathsCallback(cmStringT& repository, cmStringT& git)
{
    repository = model().path();
    git = model().gitExePath();
}

std::int32_t graphRowCallback(std::int64_t commit, GraphRow& row)
{
    return model().copyGraphRow(commit, row);
}

std::int32_t graphWidthCallback()
{
    return model().graphWidth();
}

template <class Function>
void offer(std::int32_t slot, Function* function)
{
    txSetCallback(slot, reinterpret_cast<TXPFN>(function));
}

}  // namespace

void registerGitCallbacks()
{
    offer(47, &modelCallback);
    offer(48, &refreshCallback);
    offer(49, &countCallback);
    offer(50, &commitCallback);
    offer(51, &pathsCallback);
    offer(52, &graphRowCallback);
    offer(54, &graphWidthCallback);
}
