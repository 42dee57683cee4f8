// The operations of GitBranchesModel that read what it has loaded or change what is shown of it; each takes the lock.

#include "filewatcher/git/browser/GitBranchesModel.h"

bool GitBranchesModel::isLogRunning()
{
    cmMutexLock hold(modelLock);
    return m_request.logThread && m_request.logThread->isRunning();
}

bool GitBranchesModel::isLoaded()
{
    cmMutexLock hold(modelLock);
    return m_loaded;
}

std::int32_t GitBranchesModel::loadLimit()
{
    cmMutexLock hold(modelLock);
    return m_request.loadLimit;
}

cmStringT GitBranchesModel::path()
{
    cmMutexLock hold(modelLock);
    return m_request.path;
}

cmStringT GitBranchesModel::gitExePath()
{
    cmMutexLock hold(modelLock);
    return m_request.gitExePath;
}

cmStringT GitBranchesModel::currentBranchEndHash()
{
    cmMutexLock hold(modelLock);
    return m_history->branches().currentEndHash();
}

bool GitBranchesModel::getBranchName(std::int64_t number, cmStringT& name)
{
    cmMutexLock hold(modelLock);
    const BranchInfo* const branch = m_history->branches().branch(number);
    if (branch)
        name = branch->name;
    return branch != nullptr;
}

cmStringT GitBranchesModel::branchHash(std::int64_t number)
{
    cmMutexLock hold(modelLock);
    const BranchInfo* const branch = m_history->branches().branch(number);
    return branch ? branch->hash : cmStringT("");
}

std::int32_t GitBranchesModel::publishedCommitCount()
{
    cmMutexLock hold(modelLock);
    return m_history->commitCount();
}

std::int32_t GitBranchesModel::copyCommit(std::int64_t number, GitCommitInfo& info)
{
    cmMutexLock hold(modelLock);
    return m_history->copyCommit(number, info) ? 0 : -1;
}

bool GitBranchesModel::findCommit(cmROStringT hash, GitCommitInfo& info)
{
    cmMutexLock hold(modelLock);
    return m_history->findCommit(hash, info);
}

std::int32_t GitBranchesModel::copyTags(std::int64_t number, cmArray<cmStringT>& names)
{
    cmMutexLock hold(modelLock);
    return m_history->copyTags(number, names) ? 0 : -1;
}

std::int32_t GitBranchesModel::shownCount()
{
    cmMutexLock hold(modelLock);
    return m_history->rowCount();
}

std::int64_t GitBranchesModel::shownCommit(std::int32_t row)
{
    cmMutexLock hold(modelLock);
    return m_history->commitInRow(row);
}

std::int32_t GitBranchesModel::copyGraphRow(std::int64_t number, GraphRow& row)
{
    cmMutexLock hold(modelLock);
    return m_history->copyGraphRow(number, row) ? 0 : -1;
}

std::int32_t GitBranchesModel::graphWidth()
{
    cmMutexLock hold(modelLock);
    return m_history->graphWidth();
}

bool GitBranchesModel::filter(cmROStringT text)
{
    cmMutexLock hold(modelLock);
    return m_history->filter(text);
}

bool GitBranchesModel::applyWaitingFilter()
{
    cmMutexLock hold(modelLock);
    return m_history->applyWaitingFilter();
}

void GitBranchesModel::filterNewCommits()
{
    cmMutexLock hold(modelLock);
    m_history->filterNewCommits();
}
