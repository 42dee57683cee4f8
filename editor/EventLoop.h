#pragma once

#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmThreadEvent.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>

/// Posted tasks and periodic timers. They run inside runUntil only; a task or timer may call runUntil itself.
/// For the editor's thread, except `post`.
class EventLoop {
public:
    /// Any thread. Queues `task`; tasks run in the order of posting.
    void post(std::function<void()> task);

    /// Calls `routine` every `ms` milliseconds (at least 1). A late timer does not make up for missed calls.
    /// Returns the timer's id, 0 or more.
    std::int32_t setTimer(std::int32_t ms, void (*routine)());
    /// The routine is not called again. Does nothing for an unknown id. A routine may call this.
    void killTimer(std::int32_t timer);

    /// Runs due tasks and timers until `done` returns true or `timeoutMs` milliseconds have passed. -1 is no limit; with 0 the
    /// tasks and timers that are due now still run. `done` is checked after each task and timer and at least every 50 ms.
    /// Returns the last answer of `done`.
    bool runUntil(const std::function<bool()>& done, std::int32_t timeoutMs);

private:
    using Clock = std::chrono::steady_clock;
    struct Timer {
        std::chrono::milliseconds period;
        Clock::time_point due;
        void (*routine)();
    };

    bool runTasks(const std::function<bool()>& done);
    bool runTimers(const std::function<bool()>& done);
    std::function<void()> takeTask();
    std::size_t taskCount() const;
    void waitUntil(Clock::time_point deadline);

    mutable cmMutex m_lock;
    std::deque<std::function<void()>> m_tasks CM_GUARDED_BY(m_lock);
    cmThreadEvent m_posted{false, false};
    cmSortedDictionary<std::int32_t, Timer> m_timers;
    std::int32_t m_nextTimer = 0;
};
