#include "tests/TestSupport.h"
#include "tests/WatchProcess.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::json;

using Words = std::vector<std::string>;

ProgramResult txhost(const Words& arguments)
{
    return runBuilt("txhost", arguments);
}

std::vector<Json> jsonLines(const std::string& text)
{
    std::vector<Json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        objects.push_back(Json::parse(line));
    return objects;
}

TEST(Txhost, ListsThePrototypesToTheLetter)
{
    EXPECT_EQ(txhost({"functions"}).output, R"(int filewatcher:filewatcherAddPath(TXPSZ, int, int)
void filewatcher:filewatcherRemovePath(TXPSZ, int)
void filewatcher:filewatcherRemoveType(int)
void filewatcher:filewatcherInitType(int)
void filewatcher:filewatcherStop(int)
void filewatcher:filewatcherSetSuspendState(int)
int filewatcher:_GetFastReloadInfoTable(TXHREFVAR, int, int, TXHREFVAR, int)
int filewatcher:_GetSlowReloadFiles(TXHREFVAR)
int filewatcher:_GitGetBranchInfo(TXPSZ,TXPSZ)
void filewatcher:_GitBranchClose()
int filewatcher:_GitGetCommitInfo(TXPSZ, TXPSZ, TXPSZ, TXHREFVAR)
int filewatcher:_GitGetHistoryInfo(TXPSZ,TXPSZ, TXHREFVAR, TXPSZ, int, int, int)
int filewatcher:_GitGetBranchInfoRunning()
int filewatcher:_GitFilterTree(TMStringConst, TXHREFVAR)
int filewatcher:_GitGetDiffInfo(TXPSZ, TXPSZ, TXHREFVAR, TXPSZ)
int filewatcher:_GitGettingInfo()
TXPSZ filewatcher:_GitGetBranchName(int)
TXPSZ filewatcher:_GitGetBranchHash(int)
TXPSZ filewatcher:_GitCurBranchEndHash()
void filewatcher:_RecentFilesAdd(TXPSZ)
void filewatcher:_RecentFilesProcessPending()
void filewatcher:filewatcher_stop_async_work()
int filewatcher:_SVCLiveDiffGetVCFile(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)
int filewatcher:_SVCLiveDiffGetVCFileImmediate(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)
int filewatcher:_SVCLiveDiffHaveVCFile(TMStringConst)
)");
}

TEST(Txhost, ShowsTheStatusOfAWorkingCopy)
{
    const TempFolder folder;
    const fs::path top = folder / "it's a repo";
    makeRepository(top, {"a b.txt"});
    writeFile(top / "a b.txt", "22");

    const ProgramResult result = txhost({"status", "--json", text(top), text(folder.path())});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    const Json outside{{"path", text(folder.path())}, {"tool", "git"}, {"outside", true}};
    const Json file{{"path", text(top / "a b.txt")}, {"tool", "git"}, {"local", {"mod"}}, {"repository", Json::array()}};
    EXPECT_EQ(jsonLines(result.output), (std::vector<Json>{outside, file}));
}

TEST(Txhost, FindsTheToolOfADirectory)
{
    const TempFolder folder;
    const auto file = [&](const char* name, const char* local, const char* repository) {
        Json lists[2] = {Json::array(), Json::array()};
        if (*local)
            lists[0].push_back(local);
        if (*repository)
            lists[1].push_back(repository);
        return Json{{"path", text(folder / name)}, {"tool", "svn"}, {"local", lists[0]}, {"repository", lists[1]}};
    };
    fs::create_directories(folder / "wc" / ".svn");
    fs::create_directories(folder / "wc" / "deep" / "below");
    writeFile(folder / "svn.xml", "<status><target><entry path='" + text(folder / "a")
                                      + "'><wc-status item='modified'/></entry><entry path='" + text(folder / "b")
                                      + "'><repos-status item='modified'/></entry></target></status>");
    const Words status{"status", "--json", "--svn", helperAs(folder, "tool-svn"), text(folder / "wc" / "deep" / "below")};
    EXPECT_EQ(jsonLines(txhost(status).output), (std::vector<Json>{file("a", "mod", "")}));
    Words updates = status;
    updates.emplace_back("--updates");
    EXPECT_EQ(jsonLines(txhost(updates).output), (std::vector<Json>{file("a", "mod", ""), file("b", "", "mod")}));

    writeFile(folder / "wc" / "deep" / ".git", "gitdir: elsewhere\n");
    Words git = status;
    git[2] = "--git";
    git[3] = text(folder / "none");
    EXPECT_EQ(txhost(git).error, "txhost: no program that can be started: " + text(folder / "none") + "\n");
    git.insert(git.end(), {"--tool", "svn", "--svn", status[3]});
    EXPECT_EQ(jsonLines(txhost(git).output), (std::vector<Json>{file("a", "mod", "")}));
    EXPECT_EQ(txhost({"status", "--tool", "cvs", text(folder.path())}).exitCode, 2);

    writeFile(folder / "ws" / ".p4config", "P4CLIENT=x\n");
    EXPECT_EQ(txhost({"status", "--p4", text(folder / "none"), text(folder / "ws")}).exitCode, 1);
}

TEST(Txhost, TellsFailuresAndWrongUsageApart)
{
    const TempFolder folder;
    const std::string here = text(folder.path());
    const std::string missing = text(folder / "missing");
    const ProgramResult noPath = txhost({"status", missing});
    EXPECT_EQ(noPath.exitCode, 1);
    EXPECT_EQ(noPath.error, "txhost: no such directory: " + missing + "\n");
    const ProgramResult noGit = txhost({"status", "--git", missing, here});
    EXPECT_EQ(noGit.exitCode, 1);
    EXPECT_EQ(noGit.error, "txhost: no program that can be started: " + missing + "\n");
    const ProgramResult flood = txhost({"status", "--json", "--git", helperAs(folder, "tool-floods"), here, "."});
    EXPECT_EQ(flood.exitCode, 1);
    ASSERT_EQ(jsonLines(flood.output).size(), 2u) << flood.output;
    for (const Json& failure : jsonLines(flood.output))
        EXPECT_EQ(failure["status"], -6657);
    EXPECT_EQ(txhost({"status"}).exitCode, 2);
    EXPECT_EQ(txhost({"nonsense"}).exitCode, 2);
    EXPECT_EQ(txhost({"--help"}).exitCode, 0);
}

TEST(Txhost, CallsAFunctionWithVariables)
{
    EXPECT_EQ(jsonLines(txhost({"call", "--json", "_GitGetBranchName", "7"}).output).at(0)["result"], "Error");
    const auto filled = [](const std::string& variable) {
        return jsonLines(txhost({"call", "--json", "_GetSlowReloadFiles", variable}).output).at(0);
    };
    const std::string table = R"({"a":[1,"x",null],"b":{"c":-5000000000}})";
    EXPECT_EQ(filled(table)["result"], 0);
    EXPECT_EQ(filled(table)["variables"][0], Json::parse(table));
    EXPECT_EQ(filled("[1,2]")["variables"][0], Json({1, 2}));
    for (const Words& wrong : {Words{"noSuchFunction"}, Words{"filewatcherStop", "x"}, Words{"filewatcherStop", "99999999999"},
                               Words{"filewatcherStop"}, Words{"_GetSlowReloadFiles", "{"}}) {
        Words arguments{"call"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(txhost(arguments).exitCode, 2) << wrong.back();
    }
    const ProgramResult failed = txhost({"call", "_GitFilterTree", "x", "[]"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.output, "-104399\nnull\n");
}

TEST(Txhost, ShowsTheDatesOfFiles)
{
    const TempFolder folder;
    writeFile(folder / "a", "x");
    const std::vector<Json> lines = jsonLines(txhost({"reload", "--json", text(folder / "a"), text(folder / "none")}).output);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], (Json{{"path", text(folder / "a")}, {"time", lines[0]["time"]}, {"readOnly", false}}));
    EXPECT_GT(lines[0]["time"], 130'000'000'000'000'000);
    EXPECT_EQ(lines[1]["time"], 0);
}

TEST(Txhost, ShowsHistoryAndWhatDiffers)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top, {"a b"});
    git(top, {"mv", "a b", "c"});
    git(top, {"commit", "--quiet", "--message", "rename\n\nwhy"});
    writeFile(top / "c", "one\ntwo\n");
    const ProgramResult history = txhost({"history", text(top / "c"), "--follow", "--working", "--json"});
    const std::vector<Json> lines = jsonLines(history.output);
    ASSERT_EQ(lines.size(), 3u) << history.error;
    EXPECT_EQ(lines[0]["revision"], "Working file");
    EXPECT_EQ(lines[1]["files"], Json({"c"}));
    EXPECT_EQ(lines[2]["files"], Json({"a b"}));
    EXPECT_NE(txhost({"history", text(top / "c"), "--follow"}).output.find("Ada  files  (as a b)\n"), std::string::npos);

    const Json changed{{"local", {"c"}}, {"staged", Json::array()}};
    EXPECT_EQ(jsonLines(txhost({"diff", text(top), "--json"}).output), std::vector<Json>(1, Json{{text(top), changed}}));
    EXPECT_EQ(txhost({"diff", text(top), "HEAD"}).output, text(top / "c") + "\n@@ -1,1 +1,2 @@\n one\n+two\n");
    const ProgramResult outside = txhost({"diff", text(folder.path()), "--json"});
    EXPECT_EQ(outside.exitCode, 1);
    EXPECT_EQ(jsonLines(outside.output).at(0)["status"], -1);
}

TEST(Txhost, ShowsACommit)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top, {"a"});
    git(top, {"checkout", "--quiet", "-b", "side"});
    commitFiles(top, {"b c"});
    git(top, {"checkout", "--quiet", "main"});
    commitFiles(top, {"d"});
    git(top, {"merge", "--quiet", "--no-ff", "--message", "join\n\nb c", "side"});
    const Json merge = jsonLines(txhost({"show", text(top), "main", "--json"}).output).at(0);
    EXPECT_EQ(merge["hash"].get<std::string>() + "\n", git(top, {"rev-parse", "HEAD"}));
    EXPECT_EQ(merge["otherParents"], Json({git(top, {"rev-parse", "side"}).substr(0, 40)}));
    EXPECT_EQ(merge["longComment"], Json({"join", "", "b c", ""}));
    EXPECT_EQ(merge["modifiedFiles"], Json({"b c", "d"}));
    EXPECT_EQ(merge["comment"], "join");
    EXPECT_EQ(txhost({"show", text(top), "nonsense"}).exitCode, 1);
}

TEST(Txhost, WatchesForChanges)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top, {"a"});
    writeFile(top / "a", "22");
    writeFile(folder / "file", "x");
    WatchProcess watch({text(top), text(folder / "file")});
    EXPECT_TRUE(watch.shows("\"change\":\"modified\"")) << watch.shown();
    writeFile(folder / "file", "y");
    EXPECT_TRUE(watch.shows("\"change\":\"changed\"")) << watch.shown();
    git(top, {"checkout", "--quiet", "a"});
    EXPECT_TRUE(watch.shows("\"change\":\"clean\"")) << watch.shown();
    fs::remove(folder / "file");
    EXPECT_TRUE(watch.shows("\"change\":\"removed\"")) << watch.shown();
    watch.terminate();
    EXPECT_EQ(jsonLines(watch.shown()).size(), 4u) << watch.shown();
    EXPECT_EQ(txhost({"watch", text(folder / "none")}).error,
              "txhost: no such file or directory: " + text(folder / "none") + "\n");
}

TEST(Txhost, ShowsBranchesAndTheHistoryWithItsGraph)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    EXPECT_EQ(txhost({"log", text(folder.path())}).exitCode, 1);
    makeRepository(top);
    EXPECT_EQ(txhost({"log", text(top)}).exitCode, 0) << "no commit yet";
    commitFiles(top, {"a"});
    git(top, {"branch", "Error"});
    git(top, {"checkout", "--quiet", "-b", "work"});
    commitFiles(top, {"b"});
    const std::vector<Json> branches = jsonLines(txhost({"branches", "--json", text(top)}).output);
    ASSERT_EQ(branches.size(), 3u);
    EXPECT_EQ(branches[0]["name"], "work");
    EXPECT_EQ(branches[0]["current"], true);
    EXPECT_EQ(branches[1]["name"], "Error");
    EXPECT_EQ(branches[1]["hash"], branches[2]["hash"]);

    const std::vector<Json> rows = jsonLines(txhost({"log", "--json", "--restrict", "work", text(top)}).output);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0]["subject"], "Uncomitted changes");
    EXPECT_EQ(rows[1]["hash"], branches[0]["hash"]);
    EXPECT_EQ(rows[1]["parents"], Json::array({rows[2]["hash"]}));
    EXPECT_EQ(rows[1]["branches"], Json::array({"work"}));
    EXPECT_EQ(rows[1]["column"], 0);
    EXPECT_EQ(jsonLines(txhost({"log", "--json", text(top)}).output).size(), 3u);
    EXPECT_EQ(jsonLines(txhost({"log", "--json", "--max", "2", text(top)}).output).size(), 2u);
    EXPECT_EQ(jsonLines(txhost({"log", "--json", "--restrict", "Error", text(top)}).output).size(), 2u);
    const std::string hash = rows[2]["hash"];
    const std::vector<Json> found = jsonLines(txhost({"log", "--json", "--filter", hash.substr(0, 7), text(top)}).output);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["hash"], hash);
    EXPECT_TRUE(txhost({"log", text(top)}).output.find("\xE2\x97\x8F " + hash.substr(0, 7)) != std::string::npos);
}

TEST(Txhost, FetchesTheCommittedRevision)
{
    const TempFolder folder;
    makeRepository(folder / "repo", {"a b.txt"});
    const std::string committed = readFile(folder / "repo" / "a b.txt");
    writeFile(folder / "repo" / "a b.txt", "edited");
    Words fetch{"livediff", "--json", "--cache", text(folder / "cache"), text(folder / "repo" / "a b.txt")};
    for (int way = 0; way < 2; ++way) {
        const ProgramResult result = txhost(fetch);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        const Json line = jsonLines(result.output).at(0);
        EXPECT_EQ(line["status"], 1);
        const fs::path cache = cmSystemPath(line["cache"].get<std::string>());
        EXPECT_EQ(readFile(cache), committed);
        fs::remove(cache);
        fetch.emplace_back("--background");
    }
    writeFile(folder / "repo" / "new", "x");
    const ProgramResult result = txhost({"livediff", "--json", "--cache", text(folder / "cache"), text(folder / "repo" / "new")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(jsonLines(result.output).at(0)["status"], -104370);
    EXPECT_EQ(txhost({"recent", text(folder / "none")}).exitCode, 1);
}

TEST(Txhost, GoesOnItsTour)
{
    const ProgramResult tour = txhost({"tour", "--json"});
    EXPECT_EQ(tour.exitCode, 0) << tour.output << tour.error;
    const std::vector<Json> steps = jsonLines(tour.output);
    EXPECT_GE(steps.size(), 8u);
    for (const Json& step : steps)
        EXPECT_TRUE(step["ok"].get<bool>()) << step;
    EXPECT_FALSE(fs::exists(cmSystemPath(steps.at(1)["detail"].get<std::string>())));
}

}  // namespace
