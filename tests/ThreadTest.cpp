#include "common/cmThread.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <utility>

namespace {

class Worker : public cmThread {
public:
    explicit Worker(std::function<std::int32_t(Worker&)> body) : m_body(std::move(body)) {}
    ~Worker() override
    {
        if (onDestroyed)
            onDestroyed();
    }
    std::int32_t run() override { return m_body(*this); }

    std::function<void()> onDestroyed;

private:
    std::function<std::int32_t(Worker&)> m_body;
};

TEST(Thread, GoesThroughItsStatesAndStartsAgain)
{
    cmThreadEvent gate(true, false);
    Worker worker([&gate](Worker& self) {
        EXPECT_EQ(cmThread::current(), &self);
        gate.wait(cmWaitInfinite);
        return 42;
    });
    EXPECT_EQ(worker.getStatus(), 0);
    EXPECT_TRUE(worker.join());
    EXPECT_FALSE(worker.isRunning());
    worker.requestStop();
    for (int round = 0; round < 2; ++round) {
        gate.reset();
        ASSERT_EQ(worker.start(), 0);
        EXPECT_FALSE(worker.stopRequested());
        EXPECT_EQ(worker.getStatus(), cmThreadStillRunning);
        EXPECT_NE(worker.getThreadId(), 0u);
        EXPECT_EQ(worker.start(), 1);
        EXPECT_TRUE(worker.isRunning());
        gate.set();
        EXPECT_TRUE(worker.join());
        EXPECT_EQ(worker.getStatus(), 42);
        EXPECT_FALSE(worker.isRunning());
    }
    EXPECT_EQ(cmThread::current(), nullptr);
    Worker failing([](Worker&) -> std::int32_t { throw std::bad_alloc(); });
    failing.start();
    failing.join();
    EXPECT_EQ(failing.getStatus(), cmThreadFailed);
}

/// Starts a worker that deletes itself, and records the cmThread that deletes it in `deletedOn`, which is no thread at first.
Worker* startAutoDeleted(std::function<std::int32_t(Worker&)> body, std::atomic<cmThread*>& deletedOn)
{
    auto* worker = new Worker(std::move(body));
    worker->setAutoDelete(true);
    worker->onDestroyed = [&deletedOn] { deletedOn = cmThread::current(); };
    worker->start();
    return worker;
}

TEST(Thread, IsDeletedByItselfOrByItsJoiner)
{
    Worker notYet([](Worker&) { return 0; });
    std::atomic<cmThread*> deletedOn{&notYet};
    cmThreadEvent gate(true, false);
    cmThread* unjoined =
        startAutoDeleted([&gate](Worker&) { return static_cast<std::int32_t>(gate.wait(cmWaitInfinite)); }, deletedOn);
    EXPECT_EQ(deletedOn, &notYet);
    gate.set();
    EXPECT_TRUE(eventually([&] { return deletedOn == unjoined; }));

    const auto endOnceJoined = [](Worker& self) { return eventually([&self] { return self.isJoining(); }) ? 0 : 1; };
    EXPECT_TRUE(startAutoDeleted(endOnceJoined, deletedOn)->join());
    EXPECT_EQ(deletedOn, nullptr);
}

TEST(Event, WaitsUntilItIsSetOrTheTimeIsOver)
{
    cmThreadEvent manual(true, false);
    EXPECT_EQ(manual.wait(0), cmWaitTimeout);
    manual.set();
    EXPECT_EQ(manual.wait(0), cmWaitSignalled);
    EXPECT_EQ(manual.wait(cmWaitInfinite), cmWaitSignalled);
    manual.reset();
    EXPECT_EQ(manual.wait(5), cmWaitTimeout);

    cmThreadEvent automatic(false, true);
    EXPECT_EQ(automatic.wait(0), cmWaitSignalled);
    EXPECT_EQ(automatic.wait(0), cmWaitTimeout);
}

TEST(Event, ReleasesAllWhoWaitedEvenWhenItIsResetAtOnce)
{
    cmThreadEvent event(true, false);
    const auto wait = [&event](Worker&) { return static_cast<std::int32_t>(event.wait(cmWaitInfinite)); };
    Worker first(wait);
    Worker second(wait);
    const auto anyRuns = [&] { return first.isRunning() || second.isRunning(); };
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        first.start();
        second.start();
        EXPECT_TRUE(eventually([&event] { return event.waiterCount() == 2; }));
        for (int pulse = 0; pulse < 2 && anyRuns(); ++pulse) {  // a waiter is counted just before it waits
            event.set();
            event.reset();
            eventually([&] { return !anyRuns(); }, std::chrono::milliseconds(200));
        }
        EXPECT_FALSE(anyRuns());
        event.set();
        first.join();
        second.join();
        event.reset();
    }
}

TEST(Mutex, IsHarmlessOnceTornDown)
{
    cmMutex mutex;
    mutex.destroy();
    EXPECT_FALSE(mutex.isInitialized());
    mutex.lock();
    mutex.unlock();
    mutex.destroy();
}

}  // namespace
