#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/browser/GitRunLogThread.h"
#include "txapi/EditorNumbers.h"

#include <cstdint>
#include <memory>

/// What the editor is asked to show when the timer of the browser goes off.
struct RefreshRequest {
    cmStringT path;
    cmStringT gitExePath;
    std::int32_t windowId = 0;
};

/// Where the browser's tree goes on.
struct TreeCursor {
    std::int32_t lastNode = 0;
    std::int32_t nextFlags = txNodeFirst;
};

/// The browser's side of the editor's thread, for which alone it is.
class BrowserState {
public:
    /// The timer that fills the tree; its routine is fillBranchTree. Armed once at most.
    bool isTimerArmed() const { return m_timer >= 0; }
    void armTimer(std::int32_t ms);
    void killTimer();
    /// Arms the timer for the request, at its usual pace, unless it is armed.
    void requestRefresh(const RefreshRequest& request);

    const std::shared_ptr<GitRunLogThread>& log() const { return m_log; }
    /// Makes `log` the current log thread; the one it replaces is asked to stop, and freed by a later call, when it has ended.
    void replaceLog(std::shared_ptr<GitRunLogThread> log);
    /// Stops all log threads and waits for them.
    void stopLogs();

    RefreshRequest refreshRequest;
    TreeCursor cursor;

private:
    std::int32_t m_timer = -1;
    std::shared_ptr<GitRunLogThread> m_log;
    cmArray<std::shared_ptr<GitRunLogThread>> m_retired;
};

BrowserState& browserState();
