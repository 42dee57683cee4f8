#include "common/cmNativeMutex.h"

#include <pthread.h>

#include <new>

namespace {

pthread_mutex_t* native(std::byte* storage)
{
    static_assert(sizeof(pthread_mutex_t) <= cmNativeMutex::storageSize);
    return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

}  // namespace

void cmNativeMutex::create(std::byte* storage)
{
    pthread_mutexattr_t recursive;
    pthread_mutexattr_init(&recursive);
    pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(new (storage) pthread_mutex_t, &recursive);
    pthread_mutexattr_destroy(&recursive);
}

void cmNativeMutex::lock(std::byte* storage)
{
    pthread_mutex_lock(native(storage));
}

void cmNativeMutex::unlock(std::byte* storage)
{
    pthread_mutex_unlock(native(storage));
}

void cmNativeMutex::destroy(std::byte* storage)
{
    pthread_mutex_destroy(native(storage));
}
