#pragma once

#include <cstdint>

/// What the platform gives for an event; only cmThreadEvent uses it. All calls are thread-safe.
namespace cmNativeEvent {

void* create(bool manualReset, bool initialState);  ///< null on failure; close frees it
void set(void* event);
void reset(void* event);
std::uint32_t wait(void* event, std::uint32_t timeoutMs);  ///< the codes of cmWaitHandle::wait
void close(void* event);

}  // namespace cmNativeEvent
