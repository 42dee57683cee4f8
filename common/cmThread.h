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

/// The stack size of every cmThread that is started from now on, in bytes. Any thread.
std::size_t cmDefaultStackSize();
void cmSetDefaultStackSize(std::size_t bytes);

/// A thread with a virtual body. The object is created idle, `start` runs the body, and it can be started again after the body
/// has ended. A stop is cooperative: `requestStop` sets a flag that the body polls. The owner calls `requestStop` and `join`
/// before it destroys the object. Any thread may call any operation, but only one at a time may join, and never the thread
/// itself.
class cmThread {
public:
    cmThread() = default;
    cmThread(const cmThread&) = delete;
    cmThread& operator=(const cmThread&) = delete;
    virtual ~cmThread();
    /// The body, called on the new thread. Its result becomes the status.
    virtual std::int32_t run() = 0;

    /// The name is only stored, for identification. It is not passed to the system.
    void setName(cmROStringT text);
    cmStringT getName();
    /// Sets the priority for the next start: 0 the highest, 1 the lowest, anything else the default.
    void setPriority(std::uint8_t code);
    /// With `on`, the object is deleted when the thread ends or, if a thread is in `join` then, by that thread.
    void setAutoDelete(bool on);
    /// Sets an event that every stop request signals, for a body that waits on it. Null for none. The caller keeps ownership.
    void setStopEvent(cmThreadEvent* event);

    /// Starts the thread. Returns 0 on success, 1 when it is already running or could not be created.
    int start();
    bool isRunning();
    /// Whether a thread is in `join`.
    bool isJoining();
    /// 0 before the first start, 1 during a start and after one that failed, cmThreadStillRunning, or the result of the body.
    std::int32_t getStatus();
    std::uint32_t getThreadId();
    void requestStop();
    bool stopRequested();
    /// The same, read while `outer` is locked as well (when it is initialized).
    bool stopRequested(cmMutex& outer);
    /// Waits without limit for the thread to end; returns at once when it is not running. Returns false only when the wait
    /// failed.
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
    /// The native handle of a thread whose body has ended without a join. The thread may still run its last instructions, so it
    /// is waited for before the object is destroyed: no thread outlives its object and its code. The exception is a thread that
    /// deletes its own object.
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
