#include "tests/JsonPage.h"
#include "tests/LogRecords.h"
#include "tests/WatchProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

TEST(Txhost, EndsItsWatchOnCtrlCAndFailsWhenItsOutputCannotBeWritten)
{
    const TempFolder folder;
    makeRepository(folder / "repo", {"a"});
    writeFile(folder / "repo" / "a", "22");
    EXPECT_EQ(runInto(builtProgram("txhost"), "functions", "/dev/full", folder / "err"), 1);
    EXPECT_EQ(runInto(builtProgram("txhost"), "watch " + text(folder / "repo"), "/dev/full", folder / "err"), 1);
    const std::string readerLeft =
        "exec 3> >(true); wait $!; " + builtProgram("txhost") + " log " + text(folder / "repo") + " >&3";
    EXPECT_EQ(std::system(("bash -c '" + readerLeft + "'").c_str()), 0);
    const std::string later = text(folder / "later");
    WatchProcess watch({text(folder / "repo"), later, text(folder / "file")});
    EXPECT_TRUE(watch.shows("modified") && watch.shows(later + ": no such") && watch.shows("file: no such"));
    fs::create_directory(later);
    EXPECT_TRUE(watch.shows("returned\",\"path\":\"" + later) && watch.shows("outside"));
    makeRepository(folder / "made");
    fs::rename(folder / "made" / ".git", fs::path(later) / ".git");
    EXPECT_TRUE(watch.shows("inside"));
    writeFile(folder / "file", "");
    EXPECT_TRUE(watch.shows("created\",\"path\""));
    fs::rename(folder / "repo", folder / "gone");
    EXPECT_TRUE(watch.shows("vanished"));
    fs::rename(folder / "gone", folder / "repo");
    EXPECT_TRUE(watch.shows("returned\",\"path\":\"" + text(folder / "repo")));
    kill(static_cast<pid_t>(watch.id()), SIGINT);
    EXPECT_TRUE(watch.ends() && watch.shows("txhost: 5 changes of 3 paths since 2")) << watch.errors();
    EXPECT_EQ(jsonLines("watch", watch.output()).size(), 9u) << "no failure is told of a directory that vanishes";

    const std::string top = text(folder / "repo");
    const std::string other = text(folder / "w");
    fs::create_directories(other);
    writeFile(folder / "svn.xml", "<status><target><entry path='/b'><wc-status item='modified'/></entry></target></status>");
    writeFile(other + ".silent", "");
    WatchProcess status({"--svn", helperAs(folder, "tool-svn"), "--patience", "100", top, other}, "status --json --tool svn");
    EXPECT_TRUE(status.shows("waiting for svn in " + other + "\n")) << status.errors();
    kill(static_cast<pid_t>(status.id()), SIGINT);
    EXPECT_TRUE(status.shows("txhost: interrupted: no answer from svn in " + other + "\n")) << status.errors();
    EXPECT_TRUE(status.ends() && status.shows("\"path\":\"/b\",\"tool\":\"svn\",\"local\":[\"mod\"]")) << status.output();
    const Json unanswered{{"error", -102621}, {"message", "interrupted"}, {"path", other}, {"tool", "svn"}};
    EXPECT_EQ(jsonLines("status", status.output()).back(), unanswered);
    WatchProcess unheard({"--svn", helperAs(folder, "tool-svn"), other}, "watch --json --updates --tool svn --patience 0");
    EXPECT_TRUE(unheard.shows("waiting for svn"));
    kill(static_cast<pid_t>(unheard.id()), SIGINT);
    EXPECT_TRUE(unheard.ends() && unheard.shows("-102621")) << unheard.output();
}

TEST(Txhost, RunsOneCommandAtATimeForWhatHasChangedAndEndsItOnCtrlC)
{
    const TempFolder folder;
    makeRepository(folder / "repo", {"a", "b", "c"});
    const std::string tool = helperAs(folder, "tool-hangs-with-child");
    const auto input = [&](const std::string& name) { return text(folder / "repo" / name) + '\0'; };
    writeFile(folder / "repo" / "c", "22");
    WatchProcess watch({"--exec", "cat >>'" + text(folder / "in") + "'; echo told; " + tool, text(folder / "repo")});
    EXPECT_TRUE(watch.shows("modified")) << "at first; that is no change";
    writeFile(folder / "repo" / "a", "22");
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 2; }) && watch.shows("told\n")) << watch.errors();
    writeFile(folder / "repo" / "b", "22");
    EXPECT_TRUE(watch.shows("b\",\"tool\":\"git\",\"was\""));
    git(folder / "repo", {"checkout", "--quiet", "c"});
    EXPECT_TRUE(watch.shows("\"change\":\"clean\""));
    EXPECT_EQ(readFile(folder / "in"), input("a"));
    killProcessesOf(tool);
    EXPECT_TRUE(watch.shows("the command ended with 137\n"));
    EXPECT_TRUE(eventually([&] { return readFile(folder / "in") == input("a") + input("b") + input("c"); }));
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 2; }));
    EXPECT_EQ(jsonLines("watch", watch.output()).size(), 4u);
    kill(static_cast<pid_t>(watch.id()), SIGINT);
    EXPECT_TRUE(watch.ends() && eventually([&] { return processesOf(tool) == 0; }));
    killProcessesOf(tool);
}

TEST(Txhost, EndsTheToolsThatItWaitsForOnCtrlC)
{
    const TempFolder folder;
    const std::string tool = helperAs(folder, "tool-hangs-with-child");
    const std::string place = text(folder.path());
    setenv("TMPDIR", place.c_str(), 1);
    for (const std::string& command : {"history " + place + "/f", "diff " + place, "show " + place + " x", std::string("tour"),
                                       "livediff " + place + "/f --cache " + place, "browse " + place + " --dump 80x24"}) {
        ChildProcess process;
        const std::string line = "\"" + builtProgram("txhost") + "\" " + command + " --git " + tool;
        spawnProcess(process, line, 0, {}, "", {}, nullptr, false);
        EXPECT_TRUE(eventually([&] { return processesOf(tool) >= 2; })) << command;
        kill(static_cast<pid_t>(process.getProcessId()), SIGINT);
        EXPECT_TRUE(eventually([&] { return !process.isRunning(); })) << command;
        EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0; })) << command;
        killProcessesOf(tool);
    }
    unsetenv("TMPDIR");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2)
        << "the tool and the cache; the tour's repository is removed";
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

TEST(Txhost, EndsAFilteredLogWithTheLastWantedRow)
{
    const TempFolder folder;
    std::string log;
    for (int number = 1; number < 600; ++number)
        log += logRecord(number, {number + 1});
    writeFile(folder / "log", log);
    const Texts names{"--git", helperAs(folder, "tool-git-pauses"), "--filter", "a", "--max", "2", text(folder.path())};
    WatchProcess process(names, "log --json");
    EXPECT_TRUE(process.ends()) << "git has not ended yet";
    EXPECT_EQ(jsonLines("log", process.output()).size(), 2u);
}

TEST(Txhost, ShowsOnATerminalAloneWhatItWaitsFor)
{
    const TempFolder folder;
    const std::string place = text(folder / "w");
    const std::string out = text(folder / "out");
    const std::string git = helperAs(folder, "tool-hangs-with-child");
    const std::string svn = "status --updates --tool svn --svn " + helperAs(folder, "tool-svn") + " " + place;
    writeFile(folder / "svn.xml", "<status><target></target></status>");
    fs::create_directory(place);
    // What the terminal shows of a command whose tool does not answer before `wanted` is there.
    const auto shown = [&](const std::string& command, const std::string& wanted) {
        writeFile(place + ".silent", "");
        writeFile(out, "");
        const std::string line = "script -qec 'stty cols 300; " + builtProgram("txhost") + " " + command + "' /dev/null >" + out;
        std::atomic<bool> hasEnded = false;
        std::thread terminal([&] { hasEnded = std::system(line.c_str()) != -1; });
        EXPECT_TRUE(eventually([&] { return readFile(out).find(wanted) != std::string::npos; })) << command << readFile(out);
        fs::remove(place + ".silent");
        EXPECT_TRUE(eventually([&] { return killProcessesOf(git), hasEnded.load(); })) << command;
        terminal.join();
        return readFile(out);
    };
    EXPECT_NE(shown(svn, "svn in " + place + ", 0 s").find("\r\033[Knothing is modified"), std::string::npos);
    EXPECT_EQ(shown(svn + " --patience 900 | cat", "waiting for svn in").find("\r\033[K"), std::string::npos);
    shown("branches --git " + git + " " + place, "the branches of " + place + ", 0 s");
    shown("log --git " + git + " " + place, place + ": 0 commits, 0 s");
    EXPECT_EQ(shown("status " + place, "outside").find("nothing is modified"), std::string::npos);
    makeRepository(folder / "clean");
    fs::create_directory(folder / "closed");
    fs::create_symlink(".git", folder / "closed" / ".git");  // cannot be read
    EXPECT_NE(shown("status --recurse " + text(folder.path()), "(not looked at").find("/closed: "), std::string::npos);
}

TEST(Txhost, TellsWhenTheRecentListHasNotTakenAFile)
{
    const TempFolder folder;
    const std::string list = text(folder / "recently-used.xbel");
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    writeFile(list, "<xbel");
    json({"recent", list}, 1);
    writeFile(list, "");
    EXPECT_EQ(json({"recent", list}).at(0)["path"], list);
    unsetenv("XDG_DATA_HOME");
}

TEST(Txhost, WritesTimesWithTheOffsetOfTheirOwnAndNamesThatAreNoUTF8InBytesToo)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top);
    const std::string tree = git(top, {"write-tree"}).substr(0, 40);
    const auto commitAt = [&](const std::string& time) {
        const std::string person = " Ada <ada@example.org> " + time + " +0000\n";
        writeFile(folder / "commit", "tree " + tree + "\nauthor" + person + "committer" + person + "\nx\n");
        const std::string hash = git(top, {"hash-object", "-t", "commit", "-w", text(folder / "commit")}).substr(0, 40);
        git(top, {"reset", "--hard", hash});
        return json({"log", text(top)}).at(1)["date"];
    };
    setenv("TZ", "XST3:30XDT,M3.5.0,M10.5.0/3", 1);
    EXPECT_EQ(commitAt("1719792000"), "2024-06-30T21:30:00-02:30");
    EXPECT_EQ(commitAt("1730006999"), "2024-10-27T02:59:59-02:30") << "the repeated hour";
    EXPECT_EQ(commitAt("1730010600"), "2024-10-27T03:00:00-03:30");
    setenv("TZ", "LMT-0:19:32", 1);
    EXPECT_EQ(commitAt("1719792000"), "2024-07-01T00:00:00+00:00");
    unsetenv("TZ");

    const auto time = std::chrono::sys_seconds(std::chrono::seconds(1719792001)) + std::chrono::nanoseconds(234567800);
    fs::last_write_time(folder / "commit", fs::file_time_type::clock::from_sys(time));
    EXPECT_EQ(json({"reload", text(folder / "commit")}).at(0)["time"], "2024-07-01T00:00:01.2345678+00:00");
    git(top, {"branch", "x\xFC\xFCy"});
    EXPECT_EQ(json({"branches", text(top)}).at(1)["nameBase64"], "ePz8eQ==");
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
    const auto onTerminal = [&](const std::string& variables, const std::string& options) {
        const std::string log = "stty cols 9; " + builtProgram("txhost") + " log " + text(folder / "repo") + options;
        const std::string line = variables + " script -qec '" + log + "' /dev/null | tail -n 1 >" + text(folder / "out");
        EXPECT_EQ(std::system(line.c_str()), 0);
        return readFile(folder / "out");
    };
    EXPECT_EQ(onTerminal("NO_COLOR=1 LC_ALL=C.utf8", "").size(), std::string("● 1234567\r\n").size());
    const std::string shown = onTerminal("TERM=xterm LC_ALL=C LANG=C.UTF-8", "");
    EXPECT_TRUE(shown.find("mo\033[0m \033[33m") != std::string::npos) << shown;
    EXPECT_EQ(onTerminal("NO_COLOR=1 LC_ALL=C", " --color=always | cat"), shown) << "a pager";
    EXPECT_EQ(onTerminal("TERM=xterm LC_ALL=C", " --color=never").find('\033'), std::string::npos);
}

}  // namespace
