#include "common/cmMutex.h"

#include "common/cmNativeThreads.h"

cmMutex::cmMutex()
{
    static_assert(sizeof cs == cmNativeMutex::storageSize);
    cmNativeMutex::create(cs);
    initialized = 1;
}

void cmMutex::lock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        cmNativeMutex::lock(cs);
}

void cmMutex::unlock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        cmNativeMutex::unlock(cs);
}

void cmMutex::destroy()
{
    if (initialized.exchange(0))
        cmNativeMutex::destroy(cs);
}
