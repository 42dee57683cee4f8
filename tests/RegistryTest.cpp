#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "filewatcher/status/VCStatusSettings.h"
#include "tests/ModuleFixture.h"

#include <filesystem>

namespace {

class RegistryTest : public ModuleTest {
protected:
    /// Holds every thread back from its queue, so that the queue can be looked at.
    void suspend() { call("filewatcherSetSuspendState", {1}); }

    /// Paths in a suspended thread's queue, in order; empties it.
    template <class Thread>
    static std::vector<std::string> takeQueue()
    {
        std::vector<std::string> paths;
        WatchEntry entry;
        while (Thread::instance(true)->takeFirstPath(entry))
            paths.push_back(entry.path.c_str());
        return paths;
    }
};

using Paths = std::vector<std::string>;

TEST_F(RegistryTest, AnswersByTypeGateAndRunningThread)
{
    suspend();
    EXPECT_EQ(addPath("/a", 2), 0);
    EXPECT_EQ(GitStatusThread::instance(false), nullptr);
    editor.setFeatureAvailable(false);
    EXPECT_EQ(addPath("/a", 8), -2173);
    call("filewatcherInitType", {8});
    call("filewatcherRemoveType", {8});
    EXPECT_EQ(GitStatusThread::instance(false), nullptr);
    editor.setFeatureAvailable(true);

    for (const auto& [first, second] : {std::pair(8, 32), std::pair(1, 16), std::pair(4, 4)}) {
        EXPECT_EQ(addPath("/a", first), 0) << first;
        EXPECT_EQ(addPath("/b", second), -1) << second;
    }
    editor.setFeatureAvailable(false);
    call("filewatcherStop", {13});
    EXPECT_TRUE(GitStatusThread::instance(false)->isRunning());
    editor.setFeatureAvailable(true);
    call("filewatcherStop", {13});
    EXPECT_EQ(GitStatusThread::instance(false), nullptr);
    EXPECT_EQ(SVNStatusThread::instance(false), nullptr);
    EXPECT_EQ(PerforceStatusThread::instance(false), nullptr);
}

TEST_F(RegistryTest, KeepsAQueueOfDistinctPathsWithTheEditorsContext)
{
    suspend();
    editor.setProperty(txPropertyWatchContext, cmStringT("context"));
    editor.setProperty(txPropertyWatchContextFlag, 7);
    for (const char* path : {"/a", "/A", "/b", "/c", "/a"})
        addPath(path, gitType);
    addPath("/p", perforceType);
    call("filewatcherRemovePath", {"/b", 8});
    call("filewatcherRemovePath", {"/not there", 8});

    WatchEntry entry;
    GitStatusThread* thread = GitStatusThread::instance(false);
    EXPECT_EQ(thread->findPath("/c"), 2);
    ASSERT_TRUE(thread->takeFirstPath(entry));
    EXPECT_EQ(entry.path, "/a");
    EXPECT_EQ(entry.context, "context");
    EXPECT_TRUE(entry.pathFlag);
    EXPECT_TRUE(entry.contextFlag);
    EXPECT_EQ(takeQueue<GitStatusThread>(), (Paths{"/A", "/c"}));
    ASSERT_TRUE(PerforceStatusThread::instance(false)->takeFirstPath(entry));
    EXPECT_FALSE(entry.contextFlag);
    EXPECT_EQ(entry.context, "context");
}

TEST_F(RegistryTest, PicksTheFirstThreadOfAMaskToRemoveFrom)
{
    suspend();
    for (const std::int32_t type : {svnType, perforceType, gitType})
        addPath("/a", type);
    call("filewatcherRemovePath", {"/a", 9});
    EXPECT_EQ(takeQueue<SVNStatusThread>(), Paths{});
    call("filewatcherRemoveType", {12});
    EXPECT_EQ(takeQueue<GitStatusThread>(), Paths{});
    call("filewatcherRemoveType", {48});
    EXPECT_EQ(takeQueue<PerforceStatusThread>(), Paths{"/a"});
}

TEST_F(RegistryTest, ReadsTheSettingsOnceItHasThemAll)
{
    setTool("");
    EXPECT_EQ(readGitStatusSettings(), -2);
    setTool("/usr/bin/git");
    editor.removeSetting("def_git_update_interval");
    EXPECT_EQ(readGitStatusSettings(), 0);
    EXPECT_FALSE(GitStatusThread::instance(false)->isConfigured());
    editor.setSetting("def_git_update_interval", 5);
    editor.removeSetting("def_vc_max_status_output_size");
    call("filewatcherInitType", {32});
    EXPECT_TRUE(GitStatusThread::instance(false)->isConfigured());
    EXPECT_EQ(GitStatusThread::instance(false)->getIntervalMs(), 5000u);
    EXPECT_EQ(GitStatusThread::instance(false)->getMaxOutputSize(), -1);
    const int calls = macroCalls;
    call("filewatcherInitType", {8});
    EXPECT_EQ(macroCalls, calls);

    call("filewatcherInitType", {4});
    EXPECT_EQ(PerforceStatusThread::instance(false), nullptr);
    EXPECT_EQ(readPerforceStatusSettings(), 0);
    EXPECT_EQ(readSvnStatusSettings(), 0);
    EXPECT_TRUE(SVNStatusThread::instance(false)->isConfigured());
}

TEST_F(RegistryTest, SuspendsThreadsThatExistAndThoseThatCome)
{
    const TempFolder folder;
    const std::string tool = helperAs(folder, "tool-hangs");
    setTool(tool);
    suspend();
    EXPECT_EQ(addPath(text(folder.path())), 0);
    EXPECT_FALSE(editor.runUntil([&] { return passesBegun > 0; }, 300));
    EXPECT_EQ(processesOf(tool), 0u);
    call("filewatcherSetSuspendState", {0});
    EXPECT_TRUE(editor.runUntil([&] { return passesBegun == 1; }, 5000));
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 1; }));
}

TEST_F(RegistryTest, SwitchesAToolOffWhenItWroteTooMuch)
{
    const TempFolder folder;
    const std::string tool = helperAs(folder, "tool-floods");
    setTool(tool);
    EXPECT_EQ(pass(text(folder.path())), -6657);
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0; }));
    EXPECT_TRUE(eventually([] { return !GitStatusThread::instance(false)->isRunning(); }));
    EXPECT_EQ(GitStatusThread::instance(false)->getStatus(), -102621);
    EXPECT_TRUE(editor.records().empty());

    suspend();
    EXPECT_EQ(editor.setting("def_git_show_file_status"), 1);
    EXPECT_EQ(addPath("/a"), 0);
    EXPECT_EQ(editor.setting("def_git_show_file_status"), 0);
    EXPECT_EQ(takeQueue<GitStatusThread>(), Paths{});
    EXPECT_EQ(editor.setting("def_svn_show_file_status"), 1);
    EXPECT_EQ(addPath("/a", svnType), 0);
    EXPECT_EQ(takeQueue<SVNStatusThread>(), Paths{"/a"});

    editor.removeSetting("def_git_show_file_status");
    EXPECT_EQ(addPath("/a"), 0);
    EXPECT_TRUE(GitStatusThread::instance(false)->isRunning());
    EXPECT_EQ(takeQueue<GitStatusThread>(), Paths{"/a"});
}

}  // namespace
