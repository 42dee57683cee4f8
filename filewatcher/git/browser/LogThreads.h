#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/browser/GitRunLogThread.h"

#include <memory>

/// The browser's log threads: the one of the current load, and those it replaced that have not ended yet. For the editor's
/// thread.
class LogThreads {
public:
    /// The log thread of the current load; null without one.
    const std::shared_ptr<GitRunLogThread>& current() const { return m_current; }
    /// Makes `log`, which may be null, the current one without waiting. The one that it replaces is asked to stop and is kept
    /// until a later call finds that it has ended.
    void replace(std::shared_ptr<GitRunLogThread> log);
    /// Stops all log threads and waits until they have ended.
    void stopAll();

private:
    std::shared_ptr<GitRunLogThread> m_current;
    cmArray<std::shared_ptr<GitRunLogThread>> m_replaced;
};

/// The browser's only instance.
LogThreads& logThreads();
