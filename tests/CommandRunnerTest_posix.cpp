#include "tests/Captured.h"
#include "tests/HelperSystem.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace {

TEST(CommandRunner, WorksForAHostThatIgnoresTheEndOfItsChildren)
{
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    for (int round = 0; round < 50; ++round)
        ASSERT_EQ(run(helper("bytes 100")).output.size(), 100u) << round;
    std::signal(SIGCHLD, handler);
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
    EXPECT_EQ(run(helper("count-input")).output, "0");
    const std::string status = run(helper("show /proc/self/status")).output;
    EXPECT_EQ(signalSet(status, "SigBlk:"), 0u);
    constexpr unsigned long long ownSignalsOfTheCLibrary = 0x180000000;
    EXPECT_EQ(signalSet(status, "SigIgn:") & ~ownSignalsOfTheCLibrary, 0u);

    std::signal(SIGHUP, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    std::fclose(leaked);
}

TEST(CommandRunner, GivesTheChildItsStreamsWhenTheHostHasNone)
{
    const TempFolder folder;
    run(helper("capture-without-streams error"), {}, spawnPlainCommand, text(folder.path()));
    EXPECT_EQ(readFile(folder / "error"), pattern(3));
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
