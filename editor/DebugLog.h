#pragma once

#include "common/cmMutex.h"
#include "common/cmString.h"

#include <functional>
#include <utility>

/// Passes each line of the debug log to a sink. Any thread may call. The sink runs under the lock, on the thread that logs:
/// it sees one line at a time, and a replaced sink is never called after setSink has returned. It must not call back.
class DebugLog {
public:
    using Sink = std::function<void(cmROStringT line)>;

    /// `sink` replaces the present one; null drops all lines.
    void setSink(Sink sink)
    {
        cmMutexLock hold(m_lock);
        m_sink = std::move(sink);
    }

    void add(cmROStringT line)
    {
        cmMutexLock hold(m_lock);
        if (m_sink)
            m_sink(line);
    }

private:
    cmMutex m_lock;
    Sink m_sink CM_GUARDED_BY(m_lock);
};
