#include "common/cmNativeThreads.h"

#include "common/cmThreadEvent.h"

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <ctime>
#include <memory>
#include <mutex>
#include <new>
#include <semaphore>

namespace {

pthread_mutex_t* nativeMutex(void* storage)
{
    static_assert(sizeof(pthread_mutex_t) <= cmNativeMutex::storageSize);
    return std::launder(static_cast<pthread_mutex_t*>(storage));
}

struct Event {
    std::mutex mutex;
    std::condition_variable changed;
    bool manualReset;
    bool signalled;
    std::uint64_t releases = 0;  ///< how often it was set
};

Event& nativeEvent(void* event)
{
    return *static_cast<Event*>(event);
}

struct Thread {
    void (*entry)(void*);
    void* argument;
    pthread_t id{};
    pid_t systemId = 0;
    std::binary_semaphore started{0};
    bool joined = false;
};

Thread& nativeThread(void* thread)
{
    return *static_cast<Thread*>(thread);
}

/// The signals that module threads block, so that the host's handlers do not run on our small stacks. Faults stay unblocked.
sigset_t hostSignals()
{
    sigset_t set;
    sigfillset(&set);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS})
        sigdelset(&set, fault);
    return set;
}

void* begin(void* argument)
{
    auto* thread = static_cast<Thread*>(argument);
    void (*entry)(void*) = thread->entry;
    void* object = thread->argument;
    thread->systemId = gettid();
    thread->started.release();  // from here on the handle's owner may free `thread`
    entry(object);
    return nullptr;
}

}  // namespace

void cmNativeMutex::create(void* storage)
{
    pthread_mutexattr_t recursive;
    pthread_mutexattr_init(&recursive);
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(new (storage) pthread_mutex_t, &recursive);
    pthread_mutexattr_destroy(&recursive);
}

void cmNativeMutex::lock(void* storage)
{
    pthread_mutex_lock(nativeMutex(storage));
}

void cmNativeMutex::unlock(void* storage)
{
    pthread_mutex_unlock(nativeMutex(storage));
}

void cmNativeMutex::destroy(void* storage)
{
    pthread_mutex_destroy(nativeMutex(storage));
}

void* cmNativeEvent::create(bool manualReset, bool initialState)
{
    return new (std::nothrow) Event{{}, {}, manualReset, initialState};
}

void cmNativeEvent::set(void* event)
{
    const std::lock_guard hold(nativeEvent(event).mutex);
    nativeEvent(event).signalled = true;
    ++nativeEvent(event).releases;
    // Notify under the mutex: a woken waiter may destroy the event as soon as it holds the mutex.
    nativeEvent(event).changed.notify_all();
}

void cmNativeEvent::reset(void* event)
{
    const std::lock_guard hold(nativeEvent(event).mutex);
    nativeEvent(event).signalled = false;
}

std::uint32_t cmNativeEvent::wait(void* event, std::uint32_t timeoutMs)
{
    Event& e = nativeEvent(event);
    std::unique_lock hold(e.mutex);
    // An event that is reset at once must still release those who waited when it was set.
    const auto signalled = [&e, before = e.releases] { return e.signalled || (e.manualReset && e.releases != before); };
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
    delete &nativeEvent(event);
}

void* cmNativeThread::create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId)
{
    std::unique_ptr<Thread> thread(new (std::nothrow) Thread);
    if (!thread)
        return nullptr;
    thread->entry = entry;
    thread->argument = argument;
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0)
        return nullptr;
    sigset_t before;
    const sigset_t blocked = hostSignals();
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const bool created = pthread_attr_setstacksize(&attributes, stackSize) == 0
                         && pthread_create(&thread->id, &attributes, &begin, thread.get()) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&attributes);
    if (!created)
        return nullptr;
    thread->started.acquire();
    threadId = static_cast<std::uint32_t>(thread->systemId);
    return thread.release();
}

void cmNativeThread::setPriority(void* thread, Priority priority)
{
    const pid_t id = nativeThread(thread).systemId;
    if (priority == Priority::lowest) {
        // A batch thread never preempts another one when it wakes. A higher nice value would be inherited by the children, slow
        // them down, and they could not lower it again.
        const sched_param none{};
        sched_setscheduler(id, SCHED_BATCH, &none);
    } else {
        constexpr int highest = -10;
        setpriority(PRIO_PROCESS, static_cast<id_t>(id), highest);
    }
}

bool cmNativeThread::wait(void* thread)
{
    nativeThread(thread).joined = pthread_join(nativeThread(thread).id, nullptr) == 0;
    return nativeThread(thread).joined;
}

bool cmNativeThread::isCaller(void* thread)
{
    return pthread_equal(nativeThread(thread).id, pthread_self()) != 0;
}

void cmNativeThread::close(void* thread)
{
    if (!nativeThread(thread).joined)
        pthread_detach(nativeThread(thread).id);
    delete &nativeThread(thread);
}

void cmNativeThread::sleep(std::uint32_t ms)
{
    timespec left{static_cast<std::time_t>(ms / 1000), static_cast<long>(ms % 1000) * 1'000'000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

void cmNativeThread::yield()
{
    sched_yield();
}
