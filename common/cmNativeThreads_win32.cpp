#include "common/cmNativeThreads.h"

#include "common/cmThreadEvent.h"

#include <windows.h>

#include <memory>
#include <new>

namespace {

CRITICAL_SECTION* nativeMutex(void* storage)
{
    static_assert(sizeof(CRITICAL_SECTION) <= cmNativeMutex::storageSize);
    return std::launder(static_cast<CRITICAL_SECTION*>(storage));
}

struct Start {
    void (*entry)(void*);
    void* argument;
};

DWORD WINAPI begin(void* argument)
{
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    start->entry(start->argument);
    return 0;
}

}  // namespace

void cmNativeMutex::create(void* storage)
{
    InitializeCriticalSection(new (storage) CRITICAL_SECTION);
}

void cmNativeMutex::lock(void* storage)
{
    EnterCriticalSection(nativeMutex(storage));
}

void cmNativeMutex::unlock(void* storage)
{
    LeaveCriticalSection(nativeMutex(storage));
}

void cmNativeMutex::destroy(void* storage)
{
    DeleteCriticalSection(nativeMutex(storage));
}

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

void* cmNativeThread::create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId)
{
    std::unique_ptr<Start> start(new (std::nothrow) Start{entry, argument});
    if (!start)
        return nullptr;
    DWORD id = 0;
    HANDLE thread = CreateThread(nullptr, stackSize, &begin, start.get(), 0, &id);
    if (!thread)
        return nullptr;
    static_cast<void>(start.release());  // the new thread frees it
    threadId = id;
    return thread;
}

void cmNativeThread::setPriority(void* thread, Priority priority)
{
    SetThreadPriority(thread, priority == Priority::lowest ? THREAD_PRIORITY_LOWEST : THREAD_PRIORITY_HIGHEST);
}

bool cmNativeThread::wait(void* thread)
{
    return WaitForSingleObject(thread, INFINITE) == WAIT_OBJECT_0;
}

bool cmNativeThread::isCaller(void* thread)
{
    return GetThreadId(thread) == GetCurrentThreadId();
}

void cmNativeThread::close(void* thread)
{
    CloseHandle(thread);
}

void cmNativeThread::sleep(std::uint32_t ms)
{
    Sleep(ms);
}

void cmNativeThread::yield()
{
    SwitchToThread();
}
