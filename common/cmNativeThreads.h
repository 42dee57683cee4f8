#pragma once

#include <cstddef>
#include <cstdint>

// The platform's locks, events and threads. Only cmMutex, cmThreadEvent and cmThread use them.

/// A recursive lock in storage of the caller.
namespace cmNativeMutex {

inline constexpr std::size_t storageSize = 64;  ///< bytes; enough on every platform, which each back end checks

void create(void* storage);
void lock(void* storage);
void unlock(void* storage);
void destroy(void* storage);

}  // namespace cmNativeMutex

/// Any thread may call.
namespace cmNativeEvent {

/// Returns null on failure; the caller closes the result.
void* create(bool manualReset, bool initialState);
void set(void* event);
void reset(void* event);
/// Returns a code of cmWaitHandle::wait.
std::uint32_t wait(void* event, std::uint32_t timeoutMs);
void close(void* event);

}  // namespace cmNativeEvent

namespace cmNativeThread {

enum class Priority { lowest, highest };

/// Runs `entry(argument)` on a new thread. Returns null on failure; otherwise fills `threadId`, and the caller closes the result.
void* create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId);
/// Best effort: does nothing when the system does not permit the change.
void setPriority(void* thread, Priority priority);
/// Waits without limit for the thread to end. Returns false when the wait failed.
bool wait(void* thread);
/// Whether the calling thread is `thread`.
bool isCaller(void* thread);
/// Releases the handle. A thread that was not waited for goes on running.
void close(void* thread);

void sleep(std::uint32_t ms);
void yield();

}  // namespace cmNativeThread
