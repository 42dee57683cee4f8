#include "common/CommandQuoting.h"
#include "common/cmStatusException.h"
#include "tests/Captured.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(CommandRunner, GivesTheChildItsThreeHandlesAndNothingElse)
{
    // Handles of a host that are all inheritable.
    constexpr int count = 500;
    const std::string before = run(helper("count-handles")).output;
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    std::vector<HANDLE> leaked;
    for (int i = 0; i < count; ++i)
        leaked.push_back(CreateEventW(&inheritable, TRUE, FALSE, nullptr));
    EXPECT_EQ(run(helper("count-handles")).output, before);
    for (HANDLE handle : leaked)
        CloseHandle(handle);
    EXPECT_EQ(run(helper("echo-input")).output, "");
}

TEST(CommandRunner, RefusesWhatTheInterpreterCannotBeGiven)
{
    const Captured lineBreak = run(helper("args \"one\ntwo\" \"|\""));
    EXPECT_EQ(lineBreak.result.status, cmStatusProcessFailed);
    EXPECT_FALSE(lineBreak.result.failure.isEmpty());
    const Captured tooLong = run(helper("args \"|\" " + std::string(9000, 'x')));
    EXPECT_EQ(tooLong.result.status, cmStatusProcessFailed);
    EXPECT_EQ(run(helper("args " + std::string(20000, 'x'))).output.size(), 20007u);
}

TEST(CommandRunner, FailsWhenTheToolCrashesButNotByItsOwnExitCode)
{
    EXPECT_EQ(run("\"cmd\" /c exit -1073741819").result.failure, "the tool crashed (0xC0000005)");
    EXPECT_EQ(run("\"cmd\" /c exit -1").result.status, 0);
}

TEST(ChildProcess, IsOpenedByTheShellWhenAsked)
{
    const TempFolder folder;
    const std::string marker = text(folder / "done");
    ChildProcess child;
    spawnProcess(child, helper("mark " + std::string(quoteArgument(marker))), spawnShellExecute | spawnHiddenWindow, {}, "", {},
                 nullptr, true);
    EXPECT_TRUE(eventually([&] { return !child.isRunning(); }));
    EXPECT_EQ(readFile(folder / "done"), "was here");
}

}  // namespace
