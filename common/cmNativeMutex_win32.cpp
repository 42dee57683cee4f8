#include "common/cmNativeMutex.h"

#include <windows.h>

#include <new>

namespace {

CRITICAL_SECTION* native(std::byte* storage)
{
    static_assert(sizeof(CRITICAL_SECTION) <= cmNativeMutex::storageSize);
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

}  // namespace

void cmNativeMutex::create(std::byte* storage)
{
    InitializeCriticalSection(new (storage) CRITICAL_SECTION);
}

void cmNativeMutex::lock(std::byte* storage)
{
    EnterCriticalSection(native(storage));
}

void cmNativeMutex::unlock(std::byte* storage)
{
    LeaveCriticalSection(native(storage));
}

void cmNativeMutex::destroy(std::byte* storage)
{
    DeleteCriticalSection(native(storage));
}
