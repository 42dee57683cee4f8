#pragma once

#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmThreadEvent.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>

/// Posted tasks and periodic timers. They run inside runUntil only, which may be called from within a task or timer.
/// For the editor's thread, but `post`.
class EventLoop {
public:
    /// Any thread. Tasks run in the order of posting.
    void post(std::function<void()> task);

    /// Calls `routine` every `ms` milliseconds, at least 1, from then on. A timer that is late does not catch up.
    /// Returns the timer's id, from 0.
    std::int32_t setTimer(std::int32_t ms, void (*routine)());
    void killTimer(std::int32_t timer);

    /// Runs what is due until `done` holds, asked after each of them and at least every 50 ms, or until `timeoutMs` have
    /// passed (-1: no limit; 0: what is due now still runs). Returns whether it holds.
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
