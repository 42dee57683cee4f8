#include "common/cmNativeEvent.h"

#include "common/cmThreadEvent.h"

#include <windows.h>

void* cmNativeEvent::create(bool manualReset, bool initialState)
{
    return CreateEventA(nullptr, manualReset, initialState, nullptr);
}

void cmNativeEvent::set(void* event)
{
    SetEvent(event);
}

void cmNativeEvent::reset(void* event)
{
    ResetEvent(event);
}

std::uint32_t cmNativeEvent::wait(void* event, std::uint32_t timeoutMs)
{
    switch (WaitForSingleObject(event, timeoutMs)) {
    case WAIT_OBJECT_0: return cmWaitSignalled;
    case WAIT_TIMEOUT: return cmWaitTimeout;
    case WAIT_IO_COMPLETION: return cmWaitIoCompletion;
    default: return cmWaitFailed;
    }
}

void cmNativeEvent::close(void* event)
{
    CloseHandle(event);
}
