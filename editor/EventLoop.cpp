#include "editor/EventLoop.h"

#include "common/cmArray.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::milliseconds longestWait{50};

}  // namespace

void EventLoop::post(std::function<void()> task)
{
    {
        cmMutexLock hold(m_lock);
        m_tasks.push_back(std::move(task));
    }
    m_posted.set();
}

std::int32_t EventLoop::setTimer(std::int32_t ms, void (*routine)())
{
    const std::chrono::milliseconds period{std::max(ms, 1)};
    m_timers.emplace(m_nextTimer, Timer{period, Clock::now() + period, routine});
    return m_nextTimer++;
}

void EventLoop::killTimer(std::int32_t timer)
{
    m_timers.erase(timer);
}

bool EventLoop::runUntil(const std::function<bool()>& done, std::int32_t timeoutMs)
{
    const bool limited = timeoutMs >= 0;
    const auto deadline = limited ? Clock::now() + std::chrono::milliseconds(timeoutMs) : Clock::time_point::max();
    while (!done()) {
        if (runTasks(done) || runTimers(done))
            return true;
        if (Clock::now() >= deadline)
            return done();
        waitUntil(deadline);
    }
    return true;
}

/// Runs the tasks that are queued now but not those that they post, so that timers get their turn. Returns whether `done` holds.
bool EventLoop::runTasks(const std::function<bool()>& done)
{
    for (std::size_t left = taskCount(); left > 0; --left) {
        const std::function<void()> task = takeTask();
        if (!task)
            return false;  // a nested runUntil has run the remaining tasks
        task();
        if (done())
            return true;
    }
    return false;
}

/// Runs each due timer once. Returns whether `done` holds.
bool EventLoop::runTimers(const std::function<bool()>& done)
{
    const Clock::time_point now = Clock::now();
    cmArray<std::int32_t> due;
    for (const auto& [id, timer] : m_timers)
        if (timer.due <= now)
            due.push_back(id);
    for (const std::int32_t id : due) {
        const auto found = m_timers.find(id);
        if (found == m_timers.end() || found->second.due > now)
            continue;  // an earlier routine killed this timer or ran it in a nested runUntil
        found->second.due = now + found->second.period;
        found->second.routine();
        if (done())
            return true;
    }
    return false;
}

std::function<void()> EventLoop::takeTask()
{
    cmMutexLock hold(m_lock);
    if (m_tasks.empty())
        return nullptr;
    std::function<void()> task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

std::size_t EventLoop::taskCount() const
{
    cmMutexLock hold(m_lock);
    return m_tasks.size();
}

void EventLoop::waitUntil(Clock::time_point deadline)
{
    // A nested runUntil may have consumed the event of tasks that it did not run: waiting would delay them.
    if (taskCount() > 0)
        return;
    const Clock::time_point now = Clock::now();
    Clock::time_point end = std::min(deadline, now + longestWait);
    for (const auto& [id, timer] : m_timers)
        end = std::min(end, timer.due);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
    if (left.count() > 0)
        m_posted.wait(static_cast<std::uint32_t>(left.count()));
}
