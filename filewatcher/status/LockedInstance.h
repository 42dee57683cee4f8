#pragma once

#include "common/ChildProcess.h"
#include "common/cmMutex.h"

/// The single object of one status-thread class, and the lock that guards the pointer and the object's settings. The object's
/// constructor receives the lock.
/// Only the editor's thread calls `stop`, so the editor's thread may use the pointer that `get` returns without the lock.
template <class Thread>
class LockedInstance {
public:
    /// The object; when there is none it is created if `create` holds, else the result is null. Any thread.
    Thread* get(bool create)
    {
        cmMutexLock hold(m_lock);
        if (!m_object && create)
            m_object = new Thread(m_lock);
        return m_object;
    }

    /// Requests the thread to stop, waits without limit until it has ended, and destroys the object. The lock is free during
    /// the wait, so that the ending thread can still take it. Does nothing when there is no object.
    void stop()
    {
        Thread* const thread = get(false);
        if (!thread)
            return;
        thread->requestStopUnderLock();
        thread->join();
        reapEndedChildren();
        cmMutexLock hold(m_lock);
        delete m_object;
        m_object = nullptr;
    }

private:
    cmMutex m_lock;
    Thread* m_object CM_GUARDED_BY(m_lock) = nullptr;
};
