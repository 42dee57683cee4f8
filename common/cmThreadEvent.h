#pragma once

#include "common/cmMutex.h"

#include <cstdint>

/// Results of cmWaitHandle::wait.
inline constexpr std::uint32_t cmWaitSignalled = 0;
inline constexpr std::uint32_t cmWaitFailed = 128;  ///< failure and abandonment alike
inline constexpr std::uint32_t cmWaitIoCompletion = 192;
inline constexpr std::uint32_t cmWaitTimeout = 258;

inline constexpr std::uint32_t cmWaitInfinite = 0xFFFFFFFF;

/// Base of waitable objects. Any thread may call any operation; nobody may use the object while it is destroyed.
class cmWaitHandle {
public:
    cmWaitHandle(const cmWaitHandle&) = delete;
    cmWaitHandle& operator=(const cmWaitHandle&) = delete;
    virtual ~cmWaitHandle() = default;

    /// Blocks until the handle is signalled or `timeoutMs` milliseconds have passed; holds no lock meanwhile.
    /// Returns cmWaitSignalled, cmWaitTimeout, cmWaitIoCompletion or, for every other outcome, cmWaitFailed.
    std::uint32_t wait(std::uint32_t timeoutMs);
    /// How many threads are blocked in wait now.
    std::int64_t waiterCount();

protected:
    cmWaitHandle() = default;

    void* handle CM_GUARDED_BY(lock) = nullptr;
    cmMutex lock;
    std::int64_t waiters CM_GUARDED_BY(lock) = 0;
};

/// An event. A manual-reset event stays signalled until reset; the other kind lets one waiter through.
class cmThreadEvent : public cmWaitHandle {
public:
    cmThreadEvent(bool manualReset, bool initialState);
    ~cmThreadEvent() override;

    void set();
    void reset();
};
