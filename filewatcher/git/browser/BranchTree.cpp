#include "filewatcher/git/browser/BranchTree.h"

#include "filewatcher/bridge/EditorEntry.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/browser/LogThreads.h"
#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txapi/txapi.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t refreshMs = 300;
constexpr std::uint32_t firstSliceMs = 50;
constexpr std::uint32_t sliceMs = 200;
constexpr std::int32_t fewRows = 2;
constexpr std::int32_t workingCopyBranch = -1;

/// The cells of a row, separated by tabs: none, branches and subject, none, author, short hash.
cmStringT rowCaption(GitBranchesModel& model, const GitCommitInfo& info)
{
    cmStringT title("");
    for (const std::int64_t number : info.branchNumbers) {
        cmStringT name;
        if (!model.getBranchName(number, name) || name.isEmpty())
            continue;
        title += '[';
        title += name;
        title += "] ";
    }
    title += info.subject;
    std::replace(title.data(), title.data() + title.length(), '\t', ' ');
    cmStringT caption("\t");
    caption += title;
    caption += "\t\t";
    if (caption.view().find(CommitStore::workingCopySubject) == cmROStringT::npos && !info.authorName.isEmpty()) {
        caption += info.authorName;
        caption += " <";
        caption += info.authorEmail;
        caption += '>';
    }
    caption += '\t';
    caption += shortHash(info.hash);
    return caption;
}

void setBranchNumbers(TXHVAR array, std::int64_t commit, const GitCommitInfo& info)
{
    if (commit == 0) {
        storeInt(madeElement(array, 0), workingCopyBranch);
        return;
    }
    std::int32_t index = 0;
    for (const std::int64_t number : info.branchNumbers)
        storeInt(madeElement(array, index++), static_cast<std::int32_t>(number));
}

void fillTree(BranchTree& tree)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (!model) {
        tree.killTimer();
        tree.restart();
        return;
    }
    LogThreads& logs = logThreads();
    // Asked before the rows are counted: rows that are published in between are added at the next tick.
    const bool loading = model->isRunning() || (logs.current() && logs.current()->isRunning());
    if (model->publishedCommitCount() == 0 && loading)
        return;
    if (model->applyWaitingFilter()) {
        txTreeClear();
        tree.restart();
    }
    if (!loading)
        model->filterNewCommits();
    if (txTreeRowCount() < model->shownCount()) {
        tree.killTimer();
        tree.addSlice(*model);
    }
    if (!loading) {
        model->setLogThread(nullptr);
        logs.replace(nullptr);
    }
    if (loading || txTreeRowCount() < model->shownCount())
        tree.armTimer(refreshMs);
    else
        tree.killTimer();
    // Called last, because the macro may close the browser.
    if (txTreeRowCount() > 0)
        callEditorMacro("_TreeAdjustLastColButtonWidth");
}

}  // namespace

BranchTree& branchTree()
{
    static BranchTree tree;
    return tree;
}

void BranchTree::armTimer(std::int32_t ms)
{
    if (!isTimerArmed())
        m_timer = txSetTimer(ms, &GuardedEntry<&fillBranchTree>::call);
}

void BranchTree::killTimer()
{
    if (isTimerArmed())
        txKillTimer(std::exchange(m_timer, -1));
}

void BranchTree::requestRefresh(const RefreshRequest& request)
{
    armTimer(refreshMs);
    m_refreshRequest = request;
}

void BranchTree::restart()
{
    m_lastNode = 0;
    m_nextFlags = txNodeFirst;
}

void BranchTree::addSlice(GitBranchesModel& model, std::uint32_t (*tickCount)())
{
    const std::uint32_t startTick = tickCount();
    const std::int32_t rowsAtStart = txTreeRowCount();
    const std::int32_t count = model.shownCount();
    for (std::int32_t row = rowsAtStart; row < count; ++row) {
        if (!addRow(model, model.shownCommit(row)) || isSliceOver(tickCount() - startTick, rowsAtStart))
            return;
    }
}

bool BranchTree::addRow(GitBranchesModel& model, std::int64_t commit)
{
    GitCommitInfo info;
    if (model.copyCommit(commit, info) != 0)
        return false;
    const TXHVAR numbers = txHvarAlloc();
    setBranchNumbers(numbers, commit, info);
    const std::int32_t node = txTreeAdd(m_lastNode, rowCaption(model, info), m_nextFlags, numbers);  // 0: no user data
    if (numbers)
        txHvarFree(numbers);
    if (!node)
        return false;  // the timer tries again
    m_lastNode = node;
    m_nextFlags = 0;
    if (info.date.isSet()) {
        const cmDateTime date = info.date.unpacked();
        txTreeSetDate(m_lastNode, txTreeDateColumn, {date.year, date.month, date.day, date.hour, date.minute, date.second});
    }
    return true;
}

bool isSliceOver(std::uint32_t passedMs, std::int32_t rowsAtStart)
{
    return passedMs > sliceMs || (passedMs > firstSliceMs && rowsAtStart < fewRows);
}

void fillBranchTree()
{
    BranchTree& tree = branchTree();
    tree.armTimer(refreshMs);
    const std::int32_t window = txGetIntProperty(txPropertyBrowserWindow);
    txSetIntProperty(txPropertyBrowserWindow, tree.refreshRequest().windowId);
    guardEntry([&tree] { fillTree(tree); });  // whatever happens, the window is put back
    txSetIntProperty(txPropertyBrowserWindow, window);
}
