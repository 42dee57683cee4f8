#include "common/cmMutex.h"

#include <windows.h>

#include <new>

namespace {

CRITICAL_SECTION* native(std::byte* storage)
{
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

}  // namespace

cmMutex::cmMutex()
{
    static_assert(sizeof(CRITICAL_SECTION) <= sizeof cs);
    InitializeCriticalSection(new (cs) CRITICAL_SECTION);
    initialized = 1;
}

void cmMutex::lock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        EnterCriticalSection(native(cs));
}

void cmMutex::unlock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        LeaveCriticalSection(native(cs));
}

void cmMutex::destroy()
{
    if (initialized.exchange(0))
        DeleteCriticalSection(native(cs));
}
