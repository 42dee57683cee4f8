#include "common/CommandQuoting.h"
#include "common/ProcessFamily.h"
#include "common/cmStatusException.h"
#include "tests/Captured.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <future>
#include <thread>

namespace {

TEST(CommandRunner, WorksForAHostThatIgnoresTheEndOfItsChildren)
{
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    for (int round = 0; round < 50; ++round)
        ASSERT_EQ(run(helper("bytes 100")).output.size(), 100u) << round;
    std::signal(SIGCHLD, handler);
}

TEST(CommandRunner, FailsWhenTheToolIsKilledButNotByItsExitCode)
{
    const Captured killed = run("\"/bin/sh\" -c \"echo part; kill -9 $$\"", {}, spawnPlainCommand);
    EXPECT_EQ(killed.result.status, cmStatusPipeFailed);
    EXPECT_EQ(killed.result.failure, "the tool was killed (signal 9)");
    EXPECT_EQ(run("\"/bin/sh\" -c \"exit 137\"", {}, spawnPlainCommand).result.status, 0);
}

TEST(CommandRunner, WaitsForAChildThatClosedItsOutput)
{
    const TempFolder folder;
    run("\"/bin/sh\" -c \"exec >&- 2>&-; sleep 0.3; touch gone\"", {}, spawnPlainCommand, text(folder.path()));
    EXPECT_TRUE(fs::exists(folder / "gone"));
}

unsigned long long signalSet(const std::string& status, const std::string& name)
{
    return std::stoull(status.substr(status.find(name) + name.size()), nullptr, 16);
}

TEST(CommandRunner, GivesTheChildItsThreeStreamsAndNothingElse)
{
    // A host with an inheritable descriptor, a blocked signal and an ignored one.
    std::FILE* leaked = std::fopen("/dev/null", "r");
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGHUP, SIG_IGN);

    EXPECT_EQ(run(helper("count-handles")).output, "3");
    EXPECT_EQ(run(helper("echo-input")).output, "");
    const std::string status = run(helper("show /proc/self/status")).output;
    EXPECT_EQ(signalSet(status, "SigBlk:"), 0u);
    constexpr unsigned long long ownSignalsOfTheCLibrary = 0x180000000;
    EXPECT_EQ(signalSet(status, "SigIgn:") & ~ownSignalsOfTheCLibrary, 0u);

    std::signal(SIGHUP, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    std::fclose(leaked);
}

TEST(ChildPipe, IsNoStandardStreamOfAHostThatHasNone)
{
    const int kept[] = {dup(STDIN_FILENO), dup(STDOUT_FILENO)};
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    ChildPipe pipe;
    pipe.create(true, 4096);
    EXPECT_TRUE(fcntl(STDIN_FILENO, F_GETFD) == -1 && fcntl(STDOUT_FILENO, F_GETFD) == -1);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO}) {
        dup2(kept[stream], stream);
        close(kept[stream]);
    }
}

TEST(CommandRunner, StopsWhatItsDescendantsHaveStartedInOtherGroupsAndSessions)
{
    const TempFolder folder;
    const std::string hangs = helperAs(folder, "hang");
    // An orphan in a group of its own, and a session whose parent still runs.
    writeFile(folder / "wrapper", "(timeout 100 " + hangs + " &)\nsetsid sh -c '" + hangs + " & wait' &\nwait\n");
    CaptureControl control;
    control.stopRequested = [&hangs] { return processesOf(hangs) == 2; };
    const CaptureResult stopped = run("\"/bin/sh\" wrapper", control, spawnPlainCommand, text(folder.path())).result;
    EXPECT_TRUE(stopped.stopped && stopped.status == 0);
    EXPECT_TRUE(eventually([&hangs] { return processesOf(hangs) == 0; }));
}

TEST(CommandRunner, LetsGitRunNothingThatARepositoryNames)
{
    const TempFolder folder;
    makeRepository(folder / "repo", {"a"});
    const fs::path hook = folder / "repo/.git/hooks/post-index-change";
    writeFile(hook, "#!/bin/sh\ntouch " + text(folder / "ran") + "\n");
    fs::permissions(hook, fs::perms::owner_all);
    fs::last_write_time(folder / "repo/a", {});  // git looks at the content then, and writes its index
    EXPECT_EQ(run("\"git\" diff", {}, spawnScannedCommand, text(folder / "repo")).output, "");
    // A partial clone lacks an object.
    git(folder / "repo", {"config", "remote.origin.url", text(folder / "repo")});
    git(folder / "repo", {"config", "remote.origin.promisor", "true"});
    git(folder / "repo", {"config", "remote.origin.uploadpack", "touch " + text(folder / "ran") + ";"});
    git(folder / "repo", {"config", "extensions.partialClone", "origin"});
    const std::string missing = "\"git\" cat-file -p " + std::string(40, '1');
    const Captured taken = run(missing, {}, spawnScannedCommand, text(folder / "repo"));
    EXPECT_NE(taken.result.errorOutput.view().find("\nfatal:"), cmROStringT::npos) << taken.result.errorOutput.c_str();
    EXPECT_FALSE(fs::exists(folder / "ran"));
}

void limitDescriptors(rlim_t count)
{
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = count;
    setrlimit(RLIMIT_NOFILE, &limit);
}

TEST(CommandRunner, FailsWhenTheSystemDoesNotGiveItTheOutput)
{
    const TempFolder folder;
    const std::string hangs = helperAs(folder, "hang");
    const int unreadable = open("/", O_RDONLY | O_CLOEXEC);  // ready to be read, which then fails
    // The output pipe, the error pipe, or the wait for them.
    for (int broken = 1; broken <= 3; ++broken) {
        CaptureControl control;
        control.stopRequested = [&, calls = 0]() mutable {
            if (++calls == 3 && broken == 3)
                limitDescriptors(2);  // the system refuses to wait for more descriptors than this
            else if (calls == 3)
                dup2(unreadable, unreadable + 2 * broken - 1);  // each pipe has two ends
            return false;
        };
        const Captured taken = run(quoteArgument(hangs), control);
        limitDescriptors(1024);
        EXPECT_EQ(taken.result.status, cmStatusPipeFailed) << broken;
        EXPECT_FALSE(taken.result.failure.isEmpty());
        EXPECT_TRUE(eventually([&hangs] { return processesOf(hangs) == 0; }));
    }
    close(unreadable);
    EXPECT_EQ(childProcesses(), 0u);
}

TEST(ChildProcess, IsEndedWhenItCannotHaveAHandle)
{
    const TempFolder folder;
    const std::string hangs = helperAs(folder, "hang");
    ChildPipe input;
    ChildPipe output;
    ChildPipe error;
    SpawnStreams streams{&input, &output, &error};
    ChildProcess child;
    const int free = dup(STDIN_FILENO);
    close(free);
    limitDescriptors(static_cast<rlim_t>(free) + 6);  // enough for the pipes
    EXPECT_THROW(spawnProcess(child, quoteArgument(hangs), 0, {}, "", streams, nullptr, true), cmStatusException);
    EXPECT_FALSE(child.isValid());
    limitDescriptors(1024);
    EXPECT_EQ(processesOf(hangs), 0u);
    EXPECT_EQ(childProcesses(), 0u);
}

TEST(ChildProcess, IsCollectedLaterWhenItDiesSlowly)
{
    const TempFolder folder;
    ChildProcess child;
    spawnProcess(child, quoteArgument(helperAs(folder, "hang")), 0, {}, "", {}, nullptr, true);
    const auto id = static_cast<pid_t>(child.getProcessId());
    const int handle = openChildHandle(id);
    if (ptrace(PTRACE_SEIZE, id, nullptr, PTRACE_O_TRACEEXIT) != 0)
        GTEST_SKIP() << "no process can be traced here";
    child.terminate();
    child.close();
    collectTerminatedChildren(20);
    EXPECT_EQ(kill(id, 0), 0);  // its tracer holds it up
    ptrace(PTRACE_DETACH, id, nullptr, nullptr);
    collectTerminatedChildren(10000);
    EXPECT_NE(kill(id, 0), 0);
    // As if the next child had got its number.
    spawnProcess(child, quoteArgument(text(folder / "hang")), 0, {}, "", {}, nullptr, true);
    endProcessFamily(handle, static_cast<int>(child.getProcessId()));
    child.waitForEnd(std::chrono::milliseconds(50));
    EXPECT_TRUE(child.isRunning());
    child.terminate();
    close(handle);
    EXPECT_EQ(openChildHandle(getppid()), -1) << "no child of this process";
}

TEST(ChildProcess, IsEndedWithThoseOfItsThreadAlone)
{
    ChildProcess mine;
    ChildProcess other;
    std::promise<void> started;
    std::promise<void> ended;
    std::thread thread([&] {
        spawnProcess(other, helper("hang"), 0, {}, "", {}, nullptr, false);
        started.set_value();
        ended.get_future().wait();
    });
    started.get_future().wait();
    spawnProcess(mine, helper("hang"), 0, {}, "", {}, nullptr, false);
    endChildFamiliesOf(gettid());
    EXPECT_TRUE(eventually([&] { return !mine.isRunning(); }));
    EXPECT_TRUE(other.isRunning());
    ended.set_value();
    thread.join();
}

TEST(ChildProcess, RaisesNoSignalWhenTheChildHasClosedItsInput)
{
    ChildProcess child;
    ChildPipe input;
    SpawnStreams streams;
    streams.input = &input;
    spawnProcess(child, helper("bytes 0"), 0, {}, "", streams, nullptr, true);
    EXPECT_TRUE(eventually([&child] { return !child.isRunning(); }));
    EXPECT_LT(input.write("x", 1), 1);
}

}  // namespace
