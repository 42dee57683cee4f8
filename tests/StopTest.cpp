#include "common/ChildProcess.h"
#include "tests/ModuleFixture.h"

namespace {

using Clock = std::chrono::steady_clock;

class StopTest : public ModuleTest {
protected:
    StopTest() { setTool(helperAs(folder, "tool-hangs-with-child")); }

    static bool isReaped()
    {
        reapEndedChildren();
        return childProcesses() == 0;
    }
    /// Starts a pass with each tool, all of which hang, and calls `stop`. Returns the watch types of the passes in the order in
    /// which they ended.
    std::vector<std::int32_t> stopHangingTools(cmROStringT stop, const cmArray<CallArgument>& arguments)
    {
        const std::size_t threads = threadCount();
        for (const std::int32_t type : {perforceType, svnType, gitType})
            addPath(text(folder / std::to_string(type)), type);
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 6; }));
        call(stop, arguments);
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0 && threadCount() == threads && isReaped(); }));
        std::vector<std::int32_t> order;
        editor.runUntil([&] { return endedPaths.size() == 3; }, 10000);
        for (const std::string& path : endedPaths) {
            order.push_back(std::stoi(path.substr(path.find_last_of("/\\") + 1)));
            EXPECT_EQ(waitForPass(path), -102621);
        }
        endedPaths.clear();
        return order;
    }

    TempFolder folder;
};

using Types = std::vector<std::int32_t>;

TEST_F(StopTest, EndsHangingToolsInOrderAndLeavesNothingOpen)
{
    for (const char* type : {"1", "4", "8"})
        fs::create_directory(folder / type);
    std::size_t descriptors = 0;
    for (int round = 0; round < 2; ++round) {  // what the first round keeps belongs to libraries
        descriptors = openDescriptors();
        EXPECT_EQ(stopHangingTools("filewatcherStop", {svnType | perforceType | gitType}),
                  (Types{svnType, gitType, perforceType}));
        EXPECT_EQ(stopHangingTools("filewatcher_stop_async_work", {}), (Types{gitType, svnType, perforceType}));
    }
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(editor.records().empty());
    call("filewatcher_stop_async_work", {});
}

TEST_F(StopTest, StopsAtAnyMomentOfAPass)
{
    makeRepository(folder / "repo");
    writeFile(folder / "repo" / "a", "1");
    git(folder / "repo", {"add", "a"});
    setTool("git");
    for (int round = 0; round < 100; ++round) {
        addPath(text(folder / "repo"));
        const auto until = Clock::now() + std::chrono::microseconds(100 * round);
        while (Clock::now() < until) {
        }
        call("filewatcher_stop_async_work", {});
        ASSERT_TRUE(eventually([] { return isReaped(); })) << round;
    }
}

}  // namespace
