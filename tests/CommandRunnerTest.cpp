#include "common/CommandRunner.h"
#include "common/cmStatusException.h"
#include "common/cmThread.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

namespace {

using Milliseconds = std::chrono::milliseconds;

cmStringT helper(cmROStringT arguments)
{
    cmStringT command("\"" TEST_HELPER "\" ");
    command += arguments;
    return command;
}

struct Captured {
    CaptureResult result;
    std::string output;
    Milliseconds time{};
};

Captured run(cmROStringT commandLine, const CaptureControl& control = {}, SpawnOptions options = spawnScannedCommand,
             cmROStringT directory = "")
{
    Captured captured;
    const auto append = [&captured](cmROStringT bytes) { captured.output += bytes; };
    const auto start = std::chrono::steady_clock::now();
    captured.result = captureCommand(commandLine, options, directory, control, append);
    captured.time = std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start);
    return captured;
}

std::string pattern(std::size_t count)
{
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<char>(i % 251);
    return bytes;
}

TEST(CommandRunner, TakesEveryByteWhateverTheAmount)
{
    for (const std::size_t count : {0U, 1U, 8094U, 8095U, 8096U, 300000U}) {
        const Captured taken = run(helper("bytes " + std::to_string(count)));
        EXPECT_EQ(taken.result.status, 0);
        EXPECT_EQ(taken.output, pattern(count)) << count;
    }
    cmStringT output("before ");
    EXPECT_EQ(runCommandCapture(helper("show /dev/null"), output, ""), 0);
    EXPECT_EQ(output, "before ");
}

TEST(CommandRunner, NeverBlocksAChildThatFloodsBothStreams)
{
    const Captured flood = run(helper("both 10000000"));
    EXPECT_EQ(flood.output, pattern(10000000));
    EXPECT_EQ(flood.result.errorOutput.view(), pattern(CaptureReadChunk));
}

TEST(CommandRunner, LosesNothingThatIsWrittenJustBeforeTheEnd)
{
    const std::string expected = pattern(100);
    for (int round = 0; round < 1000; ++round)
        ASSERT_EQ(run(helper("bytes 100")).output, expected) << round;
}

TEST(CommandRunner, WorksForAHostThatHasItsChildrenCollectedForIt)
{
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    for (int round = 0; round < 300; ++round)
        ASSERT_EQ(run(helper("bytes 100")).output.size(), 100u) << round;
    std::signal(SIGCHLD, handler);
}

TEST(CommandRunner, FailsWithAReasonWhenItCannotStart)
{
    const Captured noProgram = run("\"/no/such/program\" x");
    EXPECT_EQ(noProgram.result.status, cmStatusProcessFailed);
    EXPECT_NE(noProgram.result.failure.view().find("/no/such/program"), cmROStringT::npos);
    const Captured noDirectory = run(helper("directory"), {}, spawnScannedCommand, "/no/such/directory");
    EXPECT_EQ(noDirectory.result.status, cmStatusProcessFailed);
    EXPECT_EQ(noDirectory.result.failure, "/no/such/directory: no such directory");
    cmStringT output;
    EXPECT_EQ(runCommandCapture("\"no-such-program-in-path\"", output, ""), cmStatusProcessFailed);
    EXPECT_EQ(zombieChildren(), 0u);
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

    const TempFolder folder;
    const std::string floods = helperAs(folder, "tool-floods");
    EXPECT_EQ(run(quoteArgument(floods), control).result.status, statusOutputLimit);
    EXPECT_TRUE(eventually([&floods] { return processesOf(floods) == 0; }));
}

TEST(CommandRunner, StopsAtOnceAndTakesGrandchildrenAlong)
{
    const TempFolder folder;
    const std::string hangs = helperAs(folder, "tool-hangs-with-child");
    std::atomic<bool> stop{false};
    CaptureControl control;
    control.stopRequested = [&stop] { return stop.load(); };
    std::thread stopper([&] {
        eventually([&hangs] { return processesOf(hangs) == 2; });
        stop = true;
    });
    const Captured stopped = run(quoteArgument(hangs), control);
    stopper.join();
    EXPECT_TRUE(stopped.result.stopped);
    EXPECT_EQ(stopped.result.status, 0);
    EXPECT_TRUE(eventually([&hangs] { return processesOf(hangs) == 0; }));
    EXPECT_EQ(zombieChildren(), 0u);
}

TEST(CommandRunner, DoesNotWaitForAGrandchildThatKeepsThePipes)
{
    const TempFolder folder;
    const std::string program = helperAs(folder, "leave-child");
    const Captured left = run(quoteArgument(program));
    EXPECT_EQ(left.output, "parent");
    EXPECT_LT(left.time, Milliseconds(5000));
    EXPECT_TRUE(eventually([&program] { return processesOf(program) == 1; }));
    killProcessesOf(program);
}

TEST(CommandRunner, WaitsForAChildThatClosedItsOutput)
{
    const Captured closed = run(helper("close-output 300"));
    EXPECT_GE(closed.time, Milliseconds(290));
    EXPECT_EQ(closed.output, "");
}

unsigned long long signalSet(const std::string& status, const std::string& name)
{
    return std::stoull(status.substr(status.find(name) + name.size()), nullptr, 16);
}

TEST(CommandRunner, GivesTheChildItsThreeStreamsAndNothingElse)
{
    // A descriptor of a careless host, and a host that blocks and ignores signals.
    std::FILE* leaked = std::fopen("/dev/null", "r");
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGHUP, SIG_IGN);

    EXPECT_EQ(run("\"/bin/sh\" -c \"ls /proc/self/fd | wc -l\"", {}, 0).output, "4\n");  // ls has the folder open itself
    EXPECT_EQ(run(helper("count-input")).output, "0");
    const std::string status = run(helper("show /proc/self/status")).output;
    EXPECT_EQ(signalSet(status, "SigBlk:"), 0u);
    constexpr unsigned long long ownSignalsOfTheCLibrary = 0x180000000;
    EXPECT_EQ(signalSet(status, "SigIgn:") & ~ownSignalsOfTheCLibrary, 0u);

    std::signal(SIGHUP, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    std::fclose(leaked);
}

TEST(CommandRunner, StartsTheChildInItsDirectoryWithAQuietEnvironment)
{
    const TempFolder folder;
    const std::string odd = (folder / "a b&c").string();
    std::filesystem::create_directory(odd);
    EXPECT_EQ(run(helper("directory"), {}, spawnScannedCommand, odd).output, odd);
    const std::string environment = "\n" + run(helper("environment")).output;
    EXPECT_NE(environment.find("\nGIT_OPTIONAL_LOCKS=0\n"), std::string::npos);
    EXPECT_EQ(environment.find("\nLC_ALL="), std::string::npos);
}

TEST(CommandRunner, KeepsDataAsDataWithAndWithoutTheInterpreter)
{
    const TempFolder folder;
    const std::string marker = (folder / "ran").string();
    const cmArray<cmStringT> words{cmStringT("a&b|c $(touch " + marker + ").txt"),
                                   "`id`",
                                   "$HOME",
                                   "it's \"it\"",
                                   "x\\",
                                   "",
                                   "%PATH%",
                                   "a^^b",
                                   "^",
                                   "*",
                                   "\xC3\xBC\n\t;",
                                   "-n"};
    cmStringT arguments("args");
    std::string expected;
    for (const cmStringT& word : words) {
        arguments += " " + std::string(quoteArgument(word));
        expected += std::to_string(word.length()) + ":" + word.c_str() + "\n";
    }
    EXPECT_EQ(run(helper(arguments)).output, expected);  // the ampersand sends it through the interpreter
    EXPECT_EQ(run(helper(arguments), {}, spawnPlainCommand).output, expected);
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_EQ(run(helper("args plain | tr a-z A-Z")).output, "5:PLAIN\n");
    EXPECT_EQ(run(helper("args HEAD^ a|b"), {}, spawnPlainCommand).output, "5:HEAD^\n3:a|b\n");
}

TEST(CommandRunner, CapturesTwoChildrenAtOnce)
{
    Captured first;
    std::thread other([&first] { first = run(helper("bytes 2000000")); });
    const Captured second = run(helper("both 3000000"));
    other.join();
    EXPECT_EQ(first.output, pattern(2000000));
    EXPECT_EQ(second.output, pattern(3000000));
}

TEST(CommandRunner, LeavesNoDescriptorAndNoZombieBehind)
{
    run(helper("bytes 1"));
    const std::size_t before = openDescriptors();
    for (int round = 0; round < 2000; ++round)
        ASSERT_EQ(run(helper("bytes 1")).output.size(), 1u);
    run("\"/no/such/program\"");
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(zombieChildren(), 0u);
}

TEST(ChildProcess, IsReapedLaterWhenItWasGivenUp)
{
    const TempFolder folder;
    const std::string marker = (folder / "done").string();
    ChildProcess forgotten;
    spawnProcess(forgotten, helper("mark " + std::string(quoteArgument(marker))), spawnForget, {}, "", {}, nullptr, true);
    EXPECT_FALSE(forgotten.isValid());
    EXPECT_TRUE(eventually([&marker] { return readFile(marker) == "was here"; }));
    EXPECT_TRUE(eventually([] {
        run(helper("bytes 0"));
        return zombieChildren() == 0;
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
    spawnProcess(child, "\"/bin/sh\" -c \"cat; echo problem >&2\"", spawnErrorToOutput, {"X=1"}, "", streams, nullptr, true);
    EXPECT_TRUE(child.isRunning());
    EXPECT_FALSE(output.dataAvailable());
    EXPECT_EQ(input.write("text ", 5), 5);
    input.close();
    EXPECT_TRUE(eventually([&child] { return !child.isRunning(); }));
    char buffer[64];
    std::string text;
    for (int count = output.read(buffer, sizeof buffer); count > 0; count = output.read(buffer, sizeof buffer))
        text.append(buffer, static_cast<std::size_t>(count));
    EXPECT_EQ(text, "text problem\n");
    EXPECT_FALSE(output.dataAvailable());
    EXPECT_TRUE(output.isEnded());
    child.terminate();
    child.close();
    EXPECT_FALSE(child.isValid());
}

}  // namespace
