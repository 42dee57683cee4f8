#include "tests/LogRecords.h"
#include "tests/WatchProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

TEST(Txhost, EndsItsWatchOnCtrlCAndFailsWhenItsOutputCannotBeWritten)
{
    const TempFolder folder;
    makeRepository(folder / "repo", {"a"});
    writeFile(folder / "repo" / "a", "22");
    EXPECT_EQ(runInto(builtProgram("txhost"), "functions", "/dev/full", folder / "err"), 1);
    EXPECT_EQ(runInto(builtProgram("txhost"), "watch " + text(folder / "repo"), "/dev/full", folder / "err"), 1);
    WatchProcess watch({text(folder / "repo")});
    EXPECT_TRUE(watch.shows("modified"));
    kill(static_cast<pid_t>(watch.id()), SIGINT);
    EXPECT_TRUE(watch.ends());
    EXPECT_EQ(std::count(watch.output().begin(), watch.output().end(), '\n'), 1);

    const std::string top = text(folder / "repo");
    const std::string other = text(folder / "w");
    fs::create_directories(other);
    writeFile(folder / "svn.xml", "<status><target><entry path='/b'><wc-status item='modified'/></entry></target></status>");
    writeFile(other + ".silent", "");
    WatchProcess status({"--svn", helperAs(folder, "tool-svn"), "--patience", "100", top, other}, "status --tool svn");
    EXPECT_TRUE(status.shows("waiting for svn in " + other + "\n")) << status.errors();
    kill(static_cast<pid_t>(status.id()), SIGINT);
    EXPECT_TRUE(status.shows("txhost: interrupted: no answer from svn in " + other + "\n")) << status.errors();
    EXPECT_TRUE(status.shows("mod           /b\n")) << status.output();
}

TEST(Txhost, EndsTheToolsThatItWaitsForOnCtrlC)
{
    const TempFolder folder;
    const std::string tool = helperAs(folder, "tool-hangs-with-child");
    const std::string place = text(folder.path());
    for (const std::string& command :
         {"history " + place + "/f", "diff " + place, "show " + place + " x", "livediff " + place + "/f --cache " + place}) {
        ChildProcess process;
        const std::string line = "\"" + builtProgram("txhost") + "\" " + command + " --git " + tool;
        spawnProcess(process, line, 0, {}, "", {}, nullptr, false);
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 2; })) << command;
        kill(static_cast<pid_t>(process.getProcessId()), SIGINT);
        EXPECT_TRUE(eventually([&] { return !process.isRunning(); })) << command;
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0; })) << command;
        killProcessesOf(tool);
    }
}

TEST(Txhost, PrintsARestrictedLogWhenItHasEnded)
{
    const TempFolder folder;
    writeFile(folder / "log", logRecord(1, {2}) + logRecord(2, {}));
    const std::string command = "timeout --signal=INT 1 " + builtProgram("txhost") + " log " + text(folder.path()) + " --git "
                                + helperAs(folder, "tool-git-pauses") + " --restrict main >" + text(folder / "out");
    EXPECT_NE(std::system(command.c_str()), 0);
    EXPECT_EQ(readFile(folder / "out"), "") << "its graph is not final yet";
}

TEST(Txhost, TellsWhenTheRecentListHasNotTakenAFile)
{
    const TempFolder folder;
    const std::string list = text(folder / "recently-used.xbel");
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    writeFile(list, "<xbel");
    EXPECT_EQ(runBuilt("txhost", {"recent", list}).exitCode, 1);
    writeFile(list, "");
    EXPECT_EQ(runBuilt("txhost", {"recent", list}).exitCode, 0);
    unsetenv("XDG_DATA_HOME");
}

TEST(Txhost, EscapesMoreForATerminalThanForAPipeAndKeepsWithinIt)
{
    const TempFolder folder;
    const std::string name = "x\xC2\x9By\xFF\xED\xA0\x80\xC3\xBC";
    writeFile(folder / name, "");
    const std::string command = builtProgram("txhost") + " reload " + text(folder / "x*");
    for (const auto& [run, shown] :
         {std::pair(command, name),
          std::pair("script -qec '" + command + "' /dev/null", std::string("x\\xC2\\x9By\\xFF\\xED\\xA0\\x80\xC3\xBC"))}) {
        EXPECT_EQ(std::system((run + " >" + text(folder / "out")).c_str()), 0);
        EXPECT_NE(readFile(folder / "out").find("/" + shown), std::string::npos) << readFile(folder / "out");
    }
    makeRepository(folder / "repo", {"a"});
    const std::string log = "stty cols 9; " + builtProgram("txhost") + " log " + text(folder / "repo");
    EXPECT_EQ(std::system(("NO_COLOR=1 script -qec '" + log + "' /dev/null | tail -n 1 >" + text(folder / "out")).c_str()), 0);
    EXPECT_EQ(readFile(folder / "out").size(), std::string("● 1234567\r\n").size()) << readFile(folder / "out");
}

}  // namespace
