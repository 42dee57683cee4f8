#pragma once

#include "common/cmMutex.h"
#include "common/cmString.h"
#include "common/cmThreadEvent.h"

#include <cstddef>
#include <cstdint>

/// The status of a cmThread while it runs.
inline constexpr std::int32_t cmThreadStillRunning = -102619;
/// The status of a cmThread whose body ended with an exception.
inline constexpr std::int32_t cmThreadFailed = -1;

/// The stack size that every cmThread starts with, in bytes. Thread-safe.
std::size_t cmDefaultStackSize();
void cmSetDefaultStackSize(std::size_t bytes);

/// A thread with a virtual body. Created idle; `start` makes it run; it may be started again once it has ended.
/// A stop is cooperative: `requestStop` sets a flag which the body polls. Owners call `requestStop` and `join`
/// before they destroy the object. Any thread may call any operation, but only one at a time may join, and
/// never the thread itself.
class cmThread {
public:
    cmThread() = default;
    cmThread(const cmThread&) = delete;
    cmThread& operator=(const cmThread&) = delete;
    virtual ~cmThread();
    /// The body, on the new thread; its result becomes the status.
    virtual std::int32_t run() = 0;

    /// Kept for identification only; the system never sees it.
    void setName(cmROStringT text);
    cmStringT getName();
    /// 0 raises the thread to the highest priority, 1 lowers it to the lowest, anything else leaves it. For the next start.
    void setPriority(std::uint8_t code);
    /// With true the object deletes itself when the thread ends, or when the one who joins it returns.
    void setAutoDelete(bool on);
    /// An event that every stop request sets, for a body that sleeps on it; not owned, null for none.
    void setStopEvent(cmThreadEvent* event);

    /// Returns 0 when the thread was started, 1 when it runs already or could not be created.
    int start();
    bool isRunning();
    /// Whether somebody is inside `join`.
    bool isJoining();
    /// 0 before the first start, 1 while or after a start that failed, cmThreadStillRunning, or the body's result.
    std::int32_t getStatus();
    std::uint32_t getThreadId();
    void requestStop();
    bool stopRequested();
    /// The same, read while `outer` is held as well (when it is initialised).
    bool stopRequested(cmMutex& outer);
    /// Waits without limit for the thread to end. False only when the wait failed.
    bool join();

    /// The cmThread whose body the calling thread runs, or null.
    static cmThread* current();
    static void sleep(std::uint32_t ms);
    static void yield();

private:
    static void entry(void* object);
    std::int32_t runGuarded();
    void finish(std::int32_t result);
    static void releaseEnded(void* ended);

    void* handle CM_GUARDED_BY(lock) = nullptr;
    /// The system's side of a thread that has ended but was not joined. It is waited for (it has only its last
    /// instructions left) before the object goes, so that no thread outlives its object and its code: none but one
    /// that deletes its own object.
    void* endedHandle CM_GUARDED_BY(lock) = nullptr;
    cmMutex lock;
    std::uint8_t stopFlag CM_GUARDED_BY(lock) = 0;
    std::uint8_t joining CM_GUARDED_BY(lock) = 0;
    std::uint8_t autoDelete CM_GUARDED_BY(lock) = 0;
    std::uint8_t priority CM_GUARDED_BY(lock) = 2;
    std::int32_t status CM_GUARDED_BY(lock) = 0;
    cmStringT name CM_GUARDED_BY(lock) = "";
    std::uint32_t threadId CM_GUARDED_BY(lock) = 0;
    cmThreadEvent* stopEvent CM_GUARDED_BY(lock) = nullptr;
};
