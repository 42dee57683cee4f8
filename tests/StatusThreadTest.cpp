#include "filewatcher/status/VCStatusThread.h"
#include "tests/ModuleFixture.h"

#include <atomic>
#include <new>

namespace {

cmMutex probeLock;

/// A status thread without a tool: its passes are what a test says.
class ProbeThread : public VCStatusThread {
public:
    ProbeThread() : VCStatusThread(txVCToolGit, probeLock) {}
    ~ProbeThread() override
    {
        requestStop();
        join();
    }

    using FileWatcherThreadBase::deferEntry, FileWatcherThreadBase::isDeferred, FileWatcherThreadBase::sleepIdle;
    void exceedOutputLimit() { toolControl().outputTooLarge(); }
    bool isWoken() { return wakeEvent().wait(0) == cmWaitSignalled; }
    bool isAsleep() { return wakeEvent().waiterCount() == 1; }

    /// One pass; its result is the status of the pass, its flag whether a record changed.
    std::function<std::pair<std::int32_t, bool>(const WatchEntry&)> pass;
    std::atomic<int> idleCalls = 0;

private:
    bool advanceIdleWork() override { return ++idleCalls, false; }
    std::int32_t processEntry(const WatchEntry& entry) override
    {
        const auto [status, hasChanged] = pass(entry);
        if (hasChanged)
            noteChange();
        return status;
    }
};

class StatusThreadTest : public ModuleTest {
protected:
    ProbeThread thread;
};

TEST_F(StatusThreadTest, AddedPathsAndStopRequestsEndOneSleep)
{
    for (const bool stops : {false, false, true}) {
        ASSERT_FALSE(thread.isWoken());
        stops ? thread.requestStop() : thread.addPath("/a", "", false, false);
        ASSERT_TRUE(thread.isWoken());
        thread.sleepIdle();
    }
    EXPECT_FALSE(thread.isWoken());
}

TEST_F(StatusThreadTest, ForgetsWhatItHasDeferredOfARemovedPath)
{
    thread.deferEntry({"/a", "", false, false});
    thread.removePath("/a/");
    EXPECT_FALSE(thread.isDeferred("/a"));
}

TEST_F(StatusThreadTest, NotifiesTheEditorOnceWhenTheQueueIsEmpty)
{
    thread.pass = [](const WatchEntry& entry) {
        return entry.path == "/c" ? throw std::bad_alloc() : std::pair(0, entry.path == "/a");
    };
    for (const char* path : {"/a", "/b", "/a/", "/c"})
        thread.addPath(path, "", false, false);
    ASSERT_EQ(thread.start(), 0);
    EXPECT_EQ(waitForPass("/c"), -1);
    EXPECT_EQ(reason, "out of memory");
    EXPECT_TRUE(eventually([&] { return thread.isAsleep(); }));
    thread.addPath("/b", "", false, false);
    EXPECT_TRUE(eventually([&] { return thread.findPath("/b") < 0 && thread.isAsleep(); }));
    thread.requestStop();
    thread.join();
    EXPECT_EQ(thread.getStatus(), -102621);
    editor.runUntil([] { return false; }, 0);
    EXPECT_EQ(endedPaths, (std::vector<std::string>{"/a", "/b", "/a", "/c", "/b"}));
    EXPECT_EQ(notifications, 1);
}

TEST_F(StatusThreadTest, SuspensionHoldsBackPassesAndNotifications)
{
    thread.pass = [&](const WatchEntry&) {
        thread.setSuspended(true);
        return std::pair(7, true);
    };
    thread.addPath("/a", "", false, false);
    thread.addPath("/b", "", false, false);
    ASSERT_EQ(thread.start(), 0);
    EXPECT_EQ(waitForPass("/a"), 7);
    EXPECT_TRUE(eventually([&] { return thread.isAsleep(); }));
    editor.runUntil([] { return false; }, 0);
    EXPECT_EQ(thread.findPath("/b"), 0);
    EXPECT_EQ(notifications + thread.idleCalls, 0);
}

TEST_F(StatusThreadTest, QueuedPathsFailAfterTooMuchOutput)
{
    thread.pass = [&](const WatchEntry&) { return thread.exceedOutputLimit(), std::pair(-6657, false); };
    for (const char* path : {"/a", "/b", "/c"})
        thread.addPath(path, "", false, false);
    ASSERT_EQ(thread.start(), 0);
    EXPECT_EQ(waitForPass("/b") + waitForPass("/c"), 2 * -6657);
}

}  // namespace
