#pragma once

#include "common/cmThread.h"
#include "common/cmThreadEvent.h"

#include <cstdint>

/// While an object lives and an answer is slow, the terminal shows what is waited for: from half a second on, with the seconds
/// since the beginning. Nothing without console::showsProgress, or where no thread can be had.
class WaitProgress : private cmThread {
public:
    /// `what` is waited for.
    explicit WaitProgress(cmStringT what);
    /// Removes what is shown.
    ~WaitProgress() override;
    /// From now on `what` is waited for. Any thread.
    void tell(cmStringT what);

private:
    std::int32_t run() override;

    cmMutex m_lock;
    cmStringT m_what CM_GUARDED_BY(m_lock);
    cmThreadEvent m_stop{true, false};
};
