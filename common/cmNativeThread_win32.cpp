#include "common/cmNativeThread.h"

#include <windows.h>

#include <memory>

namespace {

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

void* cmNativeThread::create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId)
{
    auto start = std::make_unique<Start>(Start{entry, argument});
    DWORD id = 0;
    HANDLE thread = CreateThread(nullptr, stackSize, &begin, start.get(), 0, &id);
    if (!thread)
        return nullptr;
    start.release();  // the new thread frees it
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
