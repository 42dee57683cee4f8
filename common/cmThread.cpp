#include "common/cmThread.h"

#include "common/cmNativeThreads.h"

#include <utility>

namespace {

cmMutex stackSizeLock;
std::size_t stackSize CM_GUARDED_BY(stackSizeLock) = 524288;

thread_local cmThread* currentThread = nullptr;

}  // namespace

std::size_t cmDefaultStackSize()
{
    cmMutexLock hold(stackSizeLock);
    return stackSize;
}

void cmSetDefaultStackSize(std::size_t bytes)
{
    cmMutexLock hold(stackSizeLock);
    stackSize = bytes;
}

cmThread::~cmThread()
{
    void* ended = nullptr;
    {
        cmMutexLock hold(lock);
        if (handle)
            cmNativeThread::close(std::exchange(handle, nullptr));
        ended = std::exchange(endedHandle, nullptr);
        stopFlag = 1;
    }
    releaseEnded(ended);
}

void cmThread::setName(cmROStringT text)
{
    cmMutexLock hold(lock);
    name.assign(text);
}

cmStringT cmThread::getName()
{
    cmMutexLock hold(lock);
    return name;
}

void cmThread::setPriority(std::uint8_t code)
{
    cmMutexLock hold(lock);
    priority = code;
}

void cmThread::setAutoDelete(bool on)
{
    cmMutexLock hold(lock);
    autoDelete = on ? 1 : 0;
}

void cmThread::setStopEvent(cmThreadEvent* event)
{
    cmMutexLock hold(lock);
    stopEvent = event;
}

int cmThread::start()
{
    {
        cmMutexLock hold(lock);
        if (handle)
            return 1;
    }
    const std::size_t stack = cmDefaultStackSize();
    void* ended = nullptr;
    {
        cmMutexLock hold(lock);
        ended = std::exchange(endedHandle, nullptr);
    }
    releaseEnded(ended);

    // The lock is held across the creation, so the new thread cannot record its end before the start has finished.
    cmMutexLock hold(lock);
    if (handle)
        return 1;
    status = 1;
    stopFlag = 0;
    handle = cmNativeThread::create(&cmThread::entry, this, stack, threadId);
    if (!handle)
        return 1;
    status = cmThreadStillRunning;
    if (priority == 0)
        cmNativeThread::setPriority(handle, cmNativeThread::Priority::highest);
    else if (priority == 1)
        cmNativeThread::setPriority(handle, cmNativeThread::Priority::lowest);
    return 0;
}

bool cmThread::isRunning()
{
    cmMutexLock hold(lock);
    return handle != nullptr;
}

bool cmThread::isJoining()
{
    cmMutexLock hold(lock);
    return joining != 0;
}

std::int32_t cmThread::getStatus()
{
    cmMutexLock hold(lock);
    return status;
}

std::uint32_t cmThread::getThreadId()
{
    cmMutexLock hold(lock);
    return threadId;
}

void cmThread::requestStop()
{
    cmMutexLock hold(lock);
    stopFlag = 1;
    if (stopEvent)
        stopEvent->set();
}

bool cmThread::stopRequested()
{
    cmMutexLock hold(lock);
    return stopFlag != 0;
}

bool cmThread::stopRequested(cmMutex& outer)
{
    cmMutexLock hold(outer);
    return stopRequested();
}

bool cmThread::join()
{
    void* waited = nullptr;
    bool deleteAfter = false;
    {
        cmMutexLock hold(lock);
        if (!handle)
            return true;
        // From now on the joiner closes the handle and deletes the object, not the ending thread.
        waited = handle;
        deleteAfter = autoDelete != 0;
        joining = 1;
        autoDelete = 0;
    }
    const bool ended = cmNativeThread::wait(waited);
    {
        cmMutexLock hold(lock);
        joining = 0;
        handle = nullptr;
        cmNativeThread::close(waited);
    }
    if (deleteAfter)
        delete this;
    return ended;
}

cmThread* cmThread::current()
{
    return currentThread;
}

void cmThread::sleep(std::uint32_t ms)
{
    cmNativeThread::sleep(ms);
}

void cmThread::yield()
{
    cmNativeThread::yield();
}

void cmThread::entry(void* object)
{
    auto* self = static_cast<cmThread*>(object);
    currentThread = self;
    self->finish(self->runGuarded());
    currentThread = nullptr;
}

std::int32_t cmThread::runGuarded()
{
    try {
        return run();
    } catch (...) {
        return cmThreadFailed;  // an exception must not end the host process
    }
}

void cmThread::finish(std::int32_t result)
{
    bool deleteNow = false;
    {
        cmMutexLock hold(lock);
        status = result;
        if (!joining)
            endedHandle = std::exchange(handle, nullptr);
        deleteNow = autoDelete != 0;
    }
    if (deleteNow)
        delete this;
}

void cmThread::releaseEnded(void* ended)
{
    if (!ended)
        return;
    // A thread that deletes its own object cannot wait for itself.
    if (!cmNativeThread::isCaller(ended))
        cmNativeThread::wait(ended);
    cmNativeThread::close(ended);
}
