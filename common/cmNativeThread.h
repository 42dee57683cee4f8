#pragma once

#include <cstddef>
#include <cstdint>

/// What the platform gives for a thread; only cmThread uses it.
namespace cmNativeThread {

enum class Priority { lowest, highest };

/// Starts `entry(argument)` on a new thread. Null on failure; otherwise `threadId` is filled and close frees the result.
void* create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId);
/// Best effort: what the system does not permit is left undone.
void setPriority(void* thread, Priority priority);
/// Waits without limit for the thread to end; false when the wait failed.
bool wait(void* thread);
bool isCaller(void* thread);
/// Gives the handle up; a thread that was not waited for goes on by itself.
void close(void* thread);

void sleep(std::uint32_t ms);
void yield();

}  // namespace cmNativeThread
