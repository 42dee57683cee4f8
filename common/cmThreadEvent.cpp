#include "common/cmThreadEvent.h"

#include "common/cmNativeThreads.h"

#include <new>

std::uint32_t cmWaitHandle::wait(std::uint32_t timeoutMs)
{
    void* waited = nullptr;
    {
        cmMutexLock hold(lock);
        waited = handle;
        ++waiters;
    }
    const std::uint32_t result = waited ? cmNativeEvent::wait(waited, timeoutMs) : cmWaitFailed;
    cmMutexLock hold(lock);
    --waiters;
    return result;
}

std::int64_t cmWaitHandle::waiterCount()
{
    cmMutexLock hold(lock);
    return waiters;
}

cmThreadEvent::cmThreadEvent(bool manualReset, bool initialState)
{
    cmMutexLock hold(lock);
    handle = cmNativeEvent::create(manualReset, initialState);
    if (!handle)
        throw std::bad_alloc();  // a wait for nothing would return at once, and its caller would spin
}

cmThreadEvent::~cmThreadEvent()
{
    cmMutexLock hold(lock);
    if (handle)
        cmNativeEvent::close(handle);
    handle = nullptr;
}

void cmThreadEvent::set()
{
    cmMutexLock hold(lock);
    if (handle)
        cmNativeEvent::set(handle);
}

void cmThreadEvent::reset()
{
    cmMutexLock hold(lock);
    if (handle)
        cmNativeEvent::reset(handle);
}
