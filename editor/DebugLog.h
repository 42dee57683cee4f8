#pragma once

#include "common/cmMutex.h"
#include "common/cmString.h"

#include <functional>
#include <utility>

/// Hands the lines of the debug log to whoever wants them. Any thread; the sink is called under the lock, so that lines do
/// not mix, and no sink is called any more once setSink has replaced it.
class DebugLog {
public:
    using Sink = std::function<void(cmROStringT line)>;

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
