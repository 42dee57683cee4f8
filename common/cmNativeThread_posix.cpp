#include "common/cmNativeThread.h"

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <memory>
#include <semaphore>

namespace {

struct Thread {
    void (*entry)(void*);
    void* argument;
    pthread_t id{};
    pid_t systemId = 0;
    std::binary_semaphore started{0};
    bool joined = false;
};

Thread& native(void* thread)
{
    return *static_cast<Thread*>(thread);
}

/// The signals that are meant for the host: its handlers must not run on our small stacks. Faults stay as they are.
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
    thread->started.release();  // from here on whoever has the handle may free it
    entry(object);
    return nullptr;
}

}  // namespace

void* cmNativeThread::create(void (*entry)(void*), void* argument, std::size_t stackSize, std::uint32_t& threadId)
{
    auto thread = std::make_unique<Thread>();
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
    const pid_t id = native(thread).systemId;
    if (priority == Priority::lowest) {
        // Never preempts a thread by waking up. A higher nice value would also starve the children, who inherit it
        // and could not give it back.
        const sched_param none{};
        sched_setscheduler(id, SCHED_BATCH, &none);
    } else {
        constexpr int highest = -10;
        setpriority(PRIO_PROCESS, static_cast<id_t>(id), highest);
    }
}

bool cmNativeThread::wait(void* thread)
{
    native(thread).joined = pthread_join(native(thread).id, nullptr) == 0;
    return native(thread).joined;
}

bool cmNativeThread::isCaller(void* thread)
{
    return pthread_equal(native(thread).id, pthread_self()) != 0;
}

void cmNativeThread::close(void* thread)
{
    if (!native(thread).joined)
        pthread_detach(native(thread).id);
    delete &native(thread);
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
