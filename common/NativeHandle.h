#pragma once

#include <windows.h>

#include <cstdint>

/// The system's handle that a class keeps as a number, so that its header needs none of the system's.
inline HANDLE nativeHandle(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr): a handle is a number in a pointer's clothes
}
