#include "common/cmNativeEvent.h"

#include "common/cmThreadEvent.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>

namespace {

struct Event {
    std::mutex mutex;
    std::condition_variable changed;
    bool manualReset;
    bool signalled;
};

Event& native(void* event)
{
    return *static_cast<Event*>(event);
}

}  // namespace

void* cmNativeEvent::create(bool manualReset, bool initialState)
{
    return new (std::nothrow) Event{{}, {}, manualReset, initialState};
}

void cmNativeEvent::set(void* event)
{
    const std::lock_guard hold(native(event).mutex);
    native(event).signalled = true;
    // Notified under the mutex: a waiter that wakes may destroy the event as soon as it gets the mutex.
    native(event).changed.notify_all();
}

void cmNativeEvent::reset(void* event)
{
    const std::lock_guard hold(native(event).mutex);
    native(event).signalled = false;
}

std::uint32_t cmNativeEvent::wait(void* event, std::uint32_t timeoutMs)
{
    Event& e = native(event);
    std::unique_lock hold(e.mutex);
    const auto signalled = [&e] { return e.signalled; };
    if (timeoutMs == cmWaitInfinite)
        e.changed.wait(hold, signalled);
    else if (!e.changed.wait_for(hold, std::chrono::milliseconds(timeoutMs), signalled))
        return cmWaitTimeout;
    if (!e.manualReset)
        e.signalled = false;
    return cmWaitSignalled;
}

void cmNativeEvent::close(void* event)
{
    delete &native(event);
}
