#pragma once

#include "common/cmThread.h"
#include "txhost/browse/BrowseExchange.h"
#include "txhost/browse/BrowseScreen.h"

/// Shows the screen on a thread of its own, while the session answers on the editor's thread. For that one, but for `wake`.
class BrowseFront : private cmThread {
public:
    BrowseFront() = default;
    ~BrowseFront() override = default;

    /// Starts the thread; it leaves when the user does. `exchange` must outlive it. Throws HostError when there is no thread.
    void begin(const cmStringT& repository, BrowseExchange& exchange);
    /// Ends the thread, if it has not ended, and waits for that. Call it before the object is destroyed.
    void end();
    /// After `end`: does what is left to do when the session has ended, too. Throws HostError for what has ended the thread
    /// early.
    virtual void finish();
    /// Any thread. There are news, or a stop is requested.
    virtual void wake() = 0;

protected:
    /// The thread's work: returns when the user leaves, or the thread is to stop.
    virtual void show(BrowseScreen& screen, BrowseExchange& exchange) = 0;
    using cmThread::stopRequested;

private:
    std::int32_t run() override;

    cmStringT m_repository;
    BrowseExchange* m_exchange = nullptr;
    cmStringT m_failure;
};
