#include "common/ChildProcess.h"
#include "tests/ModuleFixture.h"

#include <algorithm>
#include <chrono>
#include <functional>

namespace {

using Clock = std::chrono::steady_clock;

class StopTest : public ModuleTest {
protected:
    /// Lets the Git thread run a tool that hangs with a child of its own, and calls `stop`: at once everything is gone.
    void stopWhileTheToolHangs(cmROStringT stop, const cmArray<CallArgument>& arguments)
    {
        const TempFolder folder;
        const std::string tool = helperAs(folder, "tool-hangs-with-child");
        setTool(tool);
        std::size_t descriptors = 0;
        for (int round = 0; round < 2; ++round) {  // what the first keeps for good belongs to the libraries
            descriptors = openDescriptors();
            stopOnce(text(folder.path()), tool, [&] { call(stop, arguments); });
        }
        EXPECT_EQ(openDescriptors(), descriptors);
    }

private:
    void stopOnce(const std::string& path, const std::string& tool, const std::function<void()>& stop)
    {
        const std::size_t threads = threadCount();
        addPath(path);
        ASSERT_TRUE(eventually([&] { return processesOf(tool) == 2; }));
        const auto start = Clock::now();
        stop();
        // Far below the second that an idle thread sleeps: nothing waited for a time-out.
        EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(500));
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0 && threadCount() == threads; }));
        EXPECT_TRUE(eventually([] { return (reapEndedChildren(), zombieChildren() == 0); }));
        EXPECT_EQ(waitForPass(path), -102621);
        EXPECT_TRUE(editor.records().empty());
    }
};

TEST_F(StopTest, FilewatcherStopEndsAHangingTool)
{
    stopWhileTheToolHangs("filewatcherStop", {gitType});
}

TEST_F(StopTest, StopAsyncWorkEndsAHangingTool)
{
    stopWhileTheToolHangs("filewatcher_stop_async_work", {});
    call("filewatcher_stop_async_work", {});
}

TEST_F(StopTest, AnIdleThreadEndsAtOnceAndStartsAtOnce)
{
    const TempFolder folder;
    makeRepository(folder / "repo");
    const std::string path = text(folder / "repo");
    Clock::duration fastest = Clock::duration::max();
    for (int round = 0; round < affordableStarts(50); ++round) {
        EXPECT_EQ(pass(path), 0);
        const auto start = Clock::now();
        EXPECT_EQ(pass(path), 0);  // asleep or about to be: the new path does not wait for the second to pass
        call("filewatcherStop", {gitType});
        fastest = std::min(fastest, Clock::now() - start);
    }
    EXPECT_LT(fastest, std::chrono::milliseconds(900));
}

TEST_F(StopTest, StopsAtAnyMomentOfAPass)
{
    const TempFolder folder;
    makeRepository(folder / "repo");
    writeFile(folder / "repo" / "a", "1");
    git(folder / "repo", {"add", "a"});
    const std::string path = text(folder / "repo");
    for (int round = 0; round < 100; ++round) {
        addPath(path);
        const auto until = Clock::now() + std::chrono::microseconds(100 * round);
        while (Clock::now() < until) {
        }
        call("filewatcher_stop_async_work", {});
        ASSERT_TRUE(eventually([] { return (reapEndedChildren(), zombieChildren() == 0); })) << round;
    }
}

}  // namespace
