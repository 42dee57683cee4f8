#pragma once

#include "common/cmMutex.h"
#include "common/cmString.h"

#include <utility>

/// Why a query of the module has failed, until somebody asks. Any thread.
class QueryError {
public:
    void set(const cmStringT& reason)
    {
        cmMutexLock hold(m_lock);
        m_reason = reason;
    }

    cmStringT take()
    {
        cmMutexLock hold(m_lock);
        return std::exchange(m_reason, {});
    }

private:
    cmMutex m_lock;
    cmStringT m_reason CM_GUARDED_BY(m_lock);
};
