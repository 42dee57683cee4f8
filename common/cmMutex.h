#pragma once

#include "common/cmThreadAnnotations.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

/// A recursive lock. After `destroy` it ignores lock and unlock, so an object that is being destroyed, or a global one at the
/// end of the process, can still be locked harmlessly.
class CM_CAPABILITY("mutex") cmMutex {
public:
    cmMutex();
    ~cmMutex() { destroy(); }
    cmMutex(const cmMutex&) = delete;
    cmMutex& operator=(const cmMutex&) = delete;

    void lock() CM_ACQUIRE();
    void unlock() CM_RELEASE();
    /// Releases the lock's resources early. No thread may hold it.
    void destroy();
    bool isInitialized() const { return initialized.load(std::memory_order_relaxed) != 0; }

private:
    alignas(std::max_align_t) std::byte cs[64];  ///< the platform's recursive lock
    std::atomic<std::uint8_t> initialized{0};    ///< atomic, so that the compiler keeps the store in the destructor
};

/// Holds a lock during its own lifetime.
template <class Mutex>
class CM_SCOPED_CAPABILITY cmScopedLock {
public:
    explicit cmScopedLock(Mutex& mutex) CM_ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.lock(); }
    ~cmScopedLock() CM_RELEASE() { m_mutex.unlock(); }
    cmScopedLock(const cmScopedLock&) = delete;
    cmScopedLock& operator=(const cmScopedLock&) = delete;

private:
    Mutex& m_mutex;
};

using cmMutexLock = cmScopedLock<cmMutex>;
