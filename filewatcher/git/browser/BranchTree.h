#pragma once

#include "common/cmDateTime.h"
#include "common/cmString.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "txapi/EditorNumbers.h"

#include <cstdint>

/// What a refresh of the tree is asked for.
struct RefreshRequest {
    cmStringT path;
    cmStringT gitExePath;
    std::int32_t windowId = 0;
};

/// The editor's tree of commits as the browser fills it, and the timer that does so (browserRefreshTimer). For the editor's
/// thread.
class BranchTree {
public:
    bool isTimerArmed() const { return m_timer >= 0; }
    /// Lets the timer run fillBranchTree every `ms` milliseconds; does nothing when it is armed already.
    void armTimer(std::int32_t ms);
    void killTimer();

    /// Saves the request and has the tree filled at the usual pace.
    void requestRefresh(const RefreshRequest& request);
    const RefreshRequest& refreshRequest() const { return m_refreshRequest; }
    void setRefreshRequest(const RefreshRequest& request) { m_refreshRequest = request; }

    /// Makes the next row that is added the first one. Leaves the editor's rows alone.
    void restart();
    /// Adds the rows that the tree lacks, in order, until isSliceOver. `tickCount` tells the time in milliseconds.
    void addSlice(GitBranchesModel& model, std::uint32_t (*tickCount)() = &cmTickCount);

private:
    /// Adds a commit's row below the last one. Returns false when the commit cannot be read.
    bool addRow(GitBranchesModel& model, std::int64_t commit);

    std::int32_t m_timer = -1;
    RefreshRequest m_refreshRequest;
    std::int32_t m_lastNode = 0;
    std::int32_t m_nextFlags = txNodeFirst;
};

/// The browser's only instance.
BranchTree& branchTree();

/// Whether one call may add no further row after `passedMs` milliseconds: 200, or 50 when it began with fewer than two rows, so
/// that the first screen shows at once.
bool isSliceOver(std::uint32_t passedMs, std::int32_t rowsAtStart);

/// The routine of the browser's timer. Adds one slice of the published commits to the tree and stays armed until the load has
/// ended and the tree is complete.
void fillBranchTree();
