#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "filewatcher/status/VCStatusSettings.h"
#include "tests/ModuleFixture.h"

namespace {

class RegistryTest : public ModuleTest {
protected:
    /// Makes the threads leave their queues alone, so that a test can look at them.
    void suspend() { call("filewatcherSetSuspendState", {1}); }

    /// Empties the queue of a suspended thread and returns its paths.
    template <class Thread>
    static Texts takeQueue()
    {
        Texts paths;
        WatchEntry entry;
        while (Thread::instance(true)->takeFirstPath(entry))
            paths.push_back(entry.path.c_str());
        return paths;
    }
    static std::string threads()
    {
        return std::string(SVNStatusThread::instance(false) ? "s" : "") + (GitStatusThread::instance(false) ? "g" : "")
               + (PerforceStatusThread::instance(false) ? "p" : "");
    }
};

TEST_F(RegistryTest, AnswersByTypeGateAndRunningThread)
{
    suspend();
    for (const std::int32_t unknown : {0, 2, 3, 9, 64})
        EXPECT_EQ(addPath("/a", unknown), 0);
    editor.setFeatureAvailable(false);
    EXPECT_EQ(addPath("/a", 2), 0);
    EXPECT_EQ(addPath("/a"), -2173);
    call("filewatcherInitType", {8});
    call("filewatcherRemoveType", {8});
    call("filewatcherRemovePath", {"/a", 8});
    EXPECT_EQ(threads(), "");
    editor.setFeatureAvailable(true);

    for (const auto& [first, second] : {std::pair(8, 32), std::pair(1, 16), std::pair(4, 4)}) {
        EXPECT_EQ(addPath("/a", first), 0) << first;
        EXPECT_EQ(addPath("/b", second), -1) << second;
    }
    editor.setFeatureAvailable(false);
    call("filewatcherStop", {13});
    EXPECT_EQ(threads(), "sgp");
    editor.setFeatureAvailable(true);
    call("filewatcherStop", {48});
    call("filewatcherStop", {9});
    EXPECT_EQ(threads(), "p");
}

TEST_F(RegistryTest, KeepsAQueueOfDistinctPathsWithTheEditorsContext)
{
    suspend();
    editor.setProperty(txPropertyWatchContext, cmStringT("context"));
    editor.setProperty(txPropertyWatchContextFlag, 7);
    for (const char* path : {"/a", "/A", "/b", "/c"})
        addPath(path);
    editor.removeProperty(txPropertyWatchContext);
    addPath("/a");
    call("filewatcherAddPath", {"/p", perforceType, 0});
    call("filewatcherRemovePath", {"/b", 8});
    call("filewatcherRemovePath", {"/not there", 8});
    addPath("/b");
    EXPECT_EQ(GitStatusThread::instance(false)->findPath("/c"), 2);

    WatchEntry entry;
    ASSERT_TRUE(GitStatusThread::instance(false)->takeFirstPath(entry));
    EXPECT_EQ(entry.path, "/a");
    EXPECT_EQ(entry.context, "context");
    EXPECT_TRUE(entry.pathFlag && entry.contextFlag);
    addPath("/a");
    EXPECT_EQ(takeQueue<GitStatusThread>(), (Texts{"/A", "/c", "/b", "/a"}));
    ASSERT_TRUE(PerforceStatusThread::instance(false)->takeFirstPath(entry));
    EXPECT_EQ(entry.context, "");
    EXPECT_FALSE(entry.pathFlag || entry.contextFlag);
}

TEST_F(RegistryTest, PicksTheFirstThreadOfAMaskToRemoveFrom)
{
    suspend();
    for (const std::int32_t type : {svnType, perforceType, gitType})
        addPath("/a", type);
    call("filewatcherRemovePath", {"/a", 13});
    call("filewatcherRemoveType", {12});
    call("filewatcherRemoveType", {48});
    EXPECT_EQ(takeQueue<SVNStatusThread>(), Texts{});
    EXPECT_EQ(takeQueue<GitStatusThread>(), Texts{});
    EXPECT_EQ(takeQueue<PerforceStatusThread>(), Texts{"/a"});
    EXPECT_TRUE(GitStatusThread::instance(false)->isRunning());
}

TEST_F(RegistryTest, ReadsTheSettingsOnceItHasThemAll)
{
    setTool("");
    EXPECT_EQ(readGitStatusSettings(), -2);
    setTool("/usr/bin/git");
    editor.removeSetting(txVCToolGit.intervalSetting);
    EXPECT_EQ(readGitStatusSettings(), 0);
    EXPECT_FALSE(GitStatusThread::instance(false)->isConfigured());
    editor.setSetting(txVCToolGit.intervalSetting, 5);
    editor.removeSetting(txVCMaxOutputSetting);
    call("filewatcherInitType", {32});
    EXPECT_TRUE(GitStatusThread::instance(false)->isConfigured());
    EXPECT_EQ(GitStatusThread::instance(false)->getIntervalMs(), 5000u);
    EXPECT_EQ(GitStatusThread::instance(false)->getMaxOutputSize(), -1);

    const int calls = macroCalls;
    editor.setSetting(txVCMaxOutputSetting, 1);
    call("filewatcherInitType", {8});
    EXPECT_EQ(addPath("/not there"), 0);
    EXPECT_EQ(macroCalls, calls);
    EXPECT_EQ(GitStatusThread::instance(false)->getMaxOutputSize(), -1);

    call("filewatcherInitType", {4});
    EXPECT_EQ(threads(), "g");
    EXPECT_EQ(readPerforceStatusSettings(), 0);
    EXPECT_EQ(readSvnStatusSettings(), 0);
    EXPECT_EQ(SVNStatusThread::instance(false)->getMaxOutputSize(), 1);
}

TEST_F(RegistryTest, TheMacroMayStopTheThreadThatItConfigures)
{
    suspend();
    std::vector<char> elsewhere;  // keeps the next thread from taking the place of the first
    editor.defineMacro(txVCToolGit.exePathMacro, [&] {
        call("filewatcherStop", {gitType});
        elsewhere.resize(sizeof(GitStatusThread));
        return cmStringT("git");
    });
    EXPECT_EQ(addPath("/a"), 0);
    EXPECT_TRUE(GitStatusThread::instance(false)->isConfigured() && GitStatusThread::instance(false)->isRunning());
    EXPECT_TRUE(GitStatusThread::instance(false)->isSuspended());
    EXPECT_EQ(takeQueue<GitStatusThread>(), Texts{"/a"});
}

TEST_F(RegistryTest, ConfiguresARunningThreadAndFailsThePathsOfOneThatCannotStart)
{
    setTool("");
    EXPECT_EQ(pass("/a"), 0);
    setTool("no-such-tool");
    EXPECT_EQ(addPath("/a"), -1);
    EXPECT_EQ(waitForPass("/a"), -102646);

    call("filewatcherStop", {gitType});
    GitStatusThread::instance(true)->addPath("/b", "", false, false);
    const std::size_t stack = cmDefaultStackSize();
    cmSetDefaultStackSize(std::size_t{1} << 60);  // more than any system has
    EXPECT_EQ(addPath("/a/"), 0);
    cmSetDefaultStackSize(stack);
    EXPECT_EQ(waitForPass("/b") + waitForPass("/a"), -2);
    EXPECT_EQ(reason, "the thread for the tool could not be started");
}

TEST_F(RegistryTest, NoExceptionReachesTheEditor)
{
    const auto noMemory = []() -> cmStringT { throw std::bad_alloc(); };
    editor.defineMacro(txVCToolGit.exePathMacro, noMemory);
    editor.defineMacro(txVCToolSVN.exePathMacro, noMemory);
    EXPECT_EQ(addPath("/a"), -12);
    EXPECT_NO_THROW(call("filewatcherInitType", {svnType}));
    suspend();
    EXPECT_FALSE(GitStatusThread::instance(false)->isRunning());
}

TEST_F(RegistryTest, SuspendsThreadsThatExistAndThoseThatCome)
{
    call("filewatcherInitType", {gitType});
    suspend();
    EXPECT_TRUE(GitStatusThread::instance(false)->isSuspended());
    setTool("");  // not configured yet
    addPath("/a", perforceType);
    for (const std::int32_t state : {-1, 0}) {
        EXPECT_TRUE(PerforceStatusThread::instance(false)->isSuspended());
        call("filewatcherSetSuspendState", {state});
    }
    EXPECT_FALSE(GitStatusThread::instance(false)->isSuspended() || PerforceStatusThread::instance(false)->isSuspended());
}

TEST_F(RegistryTest, SwitchesAToolOffWhenItWroteTooMuch)
{
    const TempFolder folder;
    setTool(helperAs(folder, "tool-floods"));
    EXPECT_EQ(pass(text(folder.path())), -6657);
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0 && !GitStatusThread::instance(false)->isRunning(); }));
    EXPECT_EQ(GitStatusThread::instance(false)->getStatus(), -102621);
    EXPECT_TRUE(editor.records().empty());

    suspend();
    EXPECT_EQ(editor.setting(txVCToolGit.showFileStatusSetting), 1);
    for (int round = 0; round < 2; ++round) {  // the flag is never reset
        EXPECT_EQ(addPath("/a"), 0);
        EXPECT_EQ(editor.setting(txVCToolGit.showFileStatusSetting), 0);
        EXPECT_EQ(takeQueue<GitStatusThread>(), Texts{});
    }
    EXPECT_EQ(addPath("/a", svnType), 0);
    EXPECT_EQ(editor.setting(txVCToolSVN.showFileStatusSetting), 1);
    EXPECT_EQ(takeQueue<SVNStatusThread>(), Texts{"/a"});

    editor.removeSetting(txVCToolGit.showFileStatusSetting);
    EXPECT_EQ(addPath("/a"), 0);
    EXPECT_TRUE(GitStatusThread::instance(false)->isRunning());
    editor.setSetting(txVCToolGit.showFileStatusSetting, 1);
    EXPECT_EQ(addPath("/b"), 0);
    EXPECT_TRUE(GitStatusThread::instance(false)->join());  // the thread was asked to stop
    EXPECT_EQ(waitForPass("/a"), -6657);
    EXPECT_EQ(takeQueue<GitStatusThread>(), Texts{});
}

}  // namespace
