#pragma once

#include "common/cmMutex.h"

#include <cstdint>

/// Results of cmWaitHandle::wait.
inline constexpr std::uint32_t cmWaitSignalled = 0;
inline constexpr std::uint32_t cmWaitFailed = 128;  ///< every outcome but the others
inline constexpr std::uint32_t cmWaitIoCompletion = 192;
inline constexpr std::uint32_t cmWaitTimeout = 258;

inline constexpr std::uint32_t cmWaitInfinite = 0xFFFFFFFF;

/// Base of waitable objects. Any thread may call any operation. The owner ensures that no other thread uses the object while
/// it is destroyed.
class cmWaitHandle {
public:
    cmWaitHandle(const cmWaitHandle&) = delete;
    cmWaitHandle& operator=(const cmWaitHandle&) = delete;
    virtual ~cmWaitHandle() = default;

    /// Blocks until the handle is signalled or `timeoutMs` milliseconds have passed. Holds no lock meanwhile. Returns one of the
    /// results above.
    std::uint32_t wait(std::uint32_t timeoutMs);
    /// The number of threads that are blocked in `wait`.
    std::int64_t waiterCount();

protected:
    cmWaitHandle() = default;

    void* handle CM_GUARDED_BY(lock) = nullptr;
    cmMutex lock;
    std::int64_t waiters CM_GUARDED_BY(lock) = 0;
};

/// An event. A manual-reset event stays signalled until `reset`, and `set` releases all who wait even when `reset` follows at
/// once; an automatic one releases a single waiter.
class cmThreadEvent : public cmWaitHandle {
public:
    /// Throws std::bad_alloc when the system makes no event.
    cmThreadEvent(bool manualReset, bool initialState);
    ~cmThreadEvent() override;

    void set();
    void reset();
};
