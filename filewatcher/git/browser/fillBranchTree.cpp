#include "filewatcher/git/browser/fillBranchTree.h"

#include "common/cmDateTime.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/git/commits/CommitStore.h"

#include <algorithm>

namespace {

constexpr std::int32_t refreshMs = 300;
constexpr std::uint32_t firstSliceMs = 50;
constexpr std::uint32_t sliceMs = 200;
constexpr std::int32_t fewRows = 2;
constexpr std::int32_t workingCopyBranch = -1;

/// The caption's cells: none, branches with the subject, none, author, short hash.
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
    caption += info.hash.view().substr(0, CommitIds::shortLength);
    return caption;
}

void setBranchNumbers(TXHVAR array, std::int64_t commit, const GitCommitInfo& info)
{
    if (commit == 0) {
        txHvarSetInt(txHvarArrayElement(array, 0, txCreateMissing), workingCopyBranch);
        return;
    }
    std::int32_t index = 0;
    for (const std::int64_t number : info.branchNumbers)
        txHvarSetInt(txHvarArrayElement(array, index++, txCreateMissing), static_cast<std::int32_t>(number));
}

/// Adds the row of a commit behind the last one. False when it cannot be read.
bool addRow(GitBranchesModel& model, std::int64_t number, TreeCursor& cursor)
{
    GitCommitInfo info;
    if (model.copyCommit(number, info) != 0)
        return false;
    const TXHVAR numbers = txHvarAlloc();
    setBranchNumbers(numbers, number, info);
    cursor.lastNode = txTreeAdd(cursor.lastNode, rowCaption(model, info), cursor.nextFlags, numbers);
    cursor.nextFlags = 0;
    txHvarFree(numbers);
    if (info.date.isSet()) {
        const cmDateTime date = info.date.unpacked();
        txTreeSetDate(cursor.lastNode, txTreeDateColumn, {date.year, date.month, date.day, date.hour, date.minute, date.second});
    }
    return true;
}

void fillTree(BrowserState& state)
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (!model) {
        state.killTimer();
        state.cursor = {};
        return;
    }
    // First: what comes in between is seen at the next tick.
    const bool loading = model->isRunning() || (state.log() && state.log()->isRunning());
    if (model->publishedCommitCount() == 0 && loading)
        return;
    if (!loading)
        model->filterNewCommits();
    if (txTreeRowCount() < model->shownCount()) {
        state.killTimer();
        addBranchTreeSlice(*model, state.cursor);
    }
    if (!loading) {
        model->setLogThread(nullptr);
        state.replaceLog(nullptr);
    }
    if (loading || txTreeRowCount() < model->shownCount())
        state.armTimer(refreshMs);
    else
        state.killTimer();
    // The last: the macro may close the browser.
    if (txTreeRowCount() > 0)
        callEditorMacro("_TreeAdjustLastColButtonWidth");
}

}  // namespace

void fillBranchTree()
{
    BrowserState& state = browserState();
    state.armTimer(refreshMs);
    const std::int32_t window = txGetIntProperty(txPropertyBrowserWindow);
    txSetIntProperty(txPropertyBrowserWindow, state.refreshRequest.windowId);
    fillTree(state);
    txSetIntProperty(txPropertyBrowserWindow, window);
}

void addBranchTreeSlice(GitBranchesModel& model, TreeCursor& cursor)
{
    const std::uint32_t begun = cmTickCount();
    const std::int32_t first = txTreeRowCount();
    const std::int32_t count = model.shownCount();
    for (std::int32_t row = first; row < count; ++row) {
        if (!addRow(model, model.shownCommit(row), cursor))
            return;
        const std::uint32_t passed = cmTickCount() - begun;
        if (passed > sliceMs || (passed > firstSliceMs && first < fewRows))
            return;
    }
}
