#pragma once

#include "common/cmMutex.h"
#include "txhost/browse/BrowseData.h"

#include <functional>

/// Carries values between the screen on the terminal's thread and the session on the editor's thread. Nobody waits in here: of
/// each kind of value only the newest is kept. Any thread.
class BrowseExchange {
public:
    /// `wakeSession` and `wakeScreen` are called, by the other side's thread, after something new has come for them.
    BrowseExchange(std::function<void()> wakeSession, std::function<void()> wakeScreen);

    // The screen's side.
    void want(const BrowseWants& wants);
    /// What is new since the last call.
    BrowseNews takeNews();
    /// The user has left: the session is to end.
    void leave();

    // The session's side.
    BrowseWants wants();
    bool hasLeft();
    /// Adds the parts that `news` has, in place of older ones that were not taken.
    void tell(BrowseNews news);

private:
    const std::function<void()> m_wakeSession;
    const std::function<void()> m_wakeScreen;
    cmMutex m_lock;
    BrowseWants m_wants CM_GUARDED_BY(m_lock);
    BrowseNews m_news CM_GUARDED_BY(m_lock);
    bool m_hasLeft CM_GUARDED_BY(m_lock) = false;
};
