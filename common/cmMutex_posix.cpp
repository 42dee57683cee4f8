#include "common/cmMutex.h"

#include <pthread.h>

#include <new>

namespace {

pthread_mutex_t* native(std::byte* storage)
{
    return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

}  // namespace

cmMutex::cmMutex()
{
    static_assert(sizeof(pthread_mutex_t) <= sizeof cs);
    pthread_mutexattr_t recursive;
    pthread_mutexattr_init(&recursive);
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(new (cs) pthread_mutex_t, &recursive);
    pthread_mutexattr_destroy(&recursive);
    initialized = 1;
}

void cmMutex::lock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        pthread_mutex_lock(native(cs));
}

void cmMutex::unlock() CM_NO_THREAD_SAFETY_ANALYSIS
{
    if (isInitialized())
        pthread_mutex_unlock(native(cs));
}

void cmMutex::destroy()
{
    if (initialized.exchange(0))
        pthread_mutex_destroy(native(cs));
}
