#include "common/CommandQuoting.h"
#include "common/cmStatusException.h"
#include "common/cmThread.h"
#include "tests/Captured.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandRunner, TakesEveryByteWhateverTheAmountOfBothStreams)
{
    for (const std::size_t count : {0U, 1U, 8094U, 8095U, 8096U, 300000U}) {
        const Captured taken = run(helper("bytes " + std::to_string(count)));
        EXPECT_EQ(taken.result.status, 0);
        EXPECT_EQ(taken.output, pattern(count)) << count;
    }
    cmStringT output("before ");
    EXPECT_EQ(runCommandCapture(helper("bytes 0"), output, ""), 0);
    EXPECT_EQ(output, "before ");
    const Captured flood = run(helper("both 10000000"));
    EXPECT_EQ(flood.output, pattern(10000000));
    EXPECT_EQ(flood.result.errorOutput.view(), pattern(CaptureReadChunk));
}

TEST(CommandRunner, ReadsAllThatAnEndedChildHasLeftInThePipe)
{
    const TempFolder folder;
    const std::string program = helperAs(folder, "writes");  // more than one pass reads, less than a pipe holds
    CaptureControl control;
    control.stopRequested = [&program, gone = false]() mutable {
        gone = gone || eventually([&program] { return processesOf(program) == 0; });
        return !gone;
    };
    EXPECT_EQ(run("\"" + program + "\" bytes 65000", control).output, pattern(65000));
}

TEST(CommandRunner, FailsWithAReasonWhenItCannotStartAndLeavesNothingOpen)
{
    run(helper("bytes 1"));
    const Captured noProgram = run("\"/no/such/program\" x");
    EXPECT_EQ(noProgram.result.status, cmStatusProcessFailed);
    EXPECT_NE(noProgram.result.failure.view().find("/no/such/program"), cmROStringT::npos);
    const std::size_t before = openDescriptors();  // after everything was done once
    EXPECT_EQ(run(helper("bytes 1")).output.size(), 1u);
    const Captured noDirectory = run(helper("directory"), {}, spawnScannedCommand, "/no/such/directory");
    EXPECT_EQ(noDirectory.result.status, cmStatusProcessFailed);
    EXPECT_EQ(noDirectory.result.failure, "/no/such/directory: no such directory");
    EXPECT_EQ(run(helper(cmROStringT("args \"x&y \0\"", 12))).result.status, cmStatusProcessFailed);
    cmStringT output;
    EXPECT_EQ(runCommandCapture("\"no-such-program-in-path\"", output, ""), cmStatusProcessFailed);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(childProcesses(), 0u);
}

TEST(CommandRunner, EndsTheChildOneByteOverTheLimit)
{
    CaptureControl control;
    int calls = 0;
    control.outputTooLarge = [&calls] { ++calls; };
    control.maxOutput = 20000;
    EXPECT_EQ(run(helper("bytes 20000"), control).result.status, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(run(helper("bytes 20001"), control).result.status, statusOutputLimit);
    EXPECT_EQ(calls, 1);
}

TEST(CommandRunner, DoesNotWaitForAGrandchildThatKeepsThePipes)
{
    const TempFolder folder;
    const std::string program = helperAs(folder, "leave-child");
    const Captured left = run(quoteArgument(program));
    EXPECT_EQ(left.output, "parent");
    EXPECT_TRUE(eventually([&program] { return processesOf(program) == 1; }));
    killProcessesOf(program);
}

TEST(CommandRunner, StartsTheChildInItsDirectoryWithAQuietEnvironment)
{
    const TempFolder folder;
    const std::string odd = text(folder / "a b&c");
    fs::create_directory(folder / "a b&c");
    EXPECT_EQ(run(helper("directory"), {}, spawnScannedCommand, odd).output, odd);
    const std::string environment = "\n" + run(helper("environment")).output;
    EXPECT_NE(environment.find("\nGIT_OPTIONAL_LOCKS=0\n"), std::string::npos);
    EXPECT_EQ(environment.find("\nLC_ALL="), std::string::npos);
    const std::string there = "\n" + run(helper("environment"), {}, spawnScannedCommand, odd).output;
    EXPECT_EQ(there.find("\nPWD=") == std::string::npos, environment.find("\nPWD=") == std::string::npos);
    EXPECT_EQ(("\n" + run(helper("environment"), {}, spawnScannedCommand, ".").output).find("\nPWD="), std::string::npos);
    EXPECT_TRUE(there.find("\nPWD=") == std::string::npos || there.find("\nPWD=" + odd + "\n") != std::string::npos);
}

TEST(ChildProcess, IsReapedLaterWhenItWasGivenUp)
{
    const TempFolder folder;
    const std::string program = helperAs(folder, "hang");
    ChildProcess forgotten;
    spawnProcess(forgotten, quoteArgument(program), spawnForget, {}, "", {}, nullptr, true);
    EXPECT_FALSE(forgotten.isValid());
    killProcessesOf(program);
    EXPECT_TRUE(eventually([] {
        reapEndedChildren();
        return childProcesses() == 0;
    }));
}

TEST(ChildProcess, SharesOnePipeAndTakesInput)
{
    ChildProcess child;
    ChildPipe input;
    ChildPipe output;
    SpawnStreams streams;
    streams.input = &input;
    streams.output = &output;
    spawnProcess(child, helper("echo-input"), spawnErrorToOutput, {"X=1"}, "", streams, nullptr, true);
    EXPECT_TRUE(child.isRunning());
    EXPECT_FALSE(output.dataAvailable());
    EXPECT_EQ(input.write("text ", 5), 5);
    input.close();
    EXPECT_TRUE(eventually([&child] { return !child.isRunning(); }));
    char buffer[64];
    std::string taken;
    for (int count = output.read(buffer, sizeof buffer); count > 0; count = output.read(buffer, sizeof buffer))
        taken.append(buffer, static_cast<std::size_t>(count));
    EXPECT_EQ(taken, "text problem\n");
    EXPECT_FALSE(output.dataAvailable());
    EXPECT_TRUE(output.isEnded());
}

}  // namespace
