#include "tests/JsonPage.h"
#include "tests/WatchProcess.h"

#include <fstream>

namespace {

ProgramResult txhost(const Texts& arguments)
{
    return runBuilt("txhost", arguments);
}

void expectFailure(const Texts& arguments, int exitCode, const std::string& error)
{
    const ProgramResult result = txhost(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << Json(arguments);
    EXPECT_NE(result.error.find(error), std::string::npos) << Json(arguments) << result.error;
}

Json fileStatus(const fs::path& path, const char* tool, const Json& local, const Json& repository)
{
    return {{"path", text(path)}, {"tool", tool}, {"local", local}, {"repository", repository}};
}

TEST(Txhost, ListsAndCallsFunctions)
{
    const std::vector<Json> prototypes = json({"functions"});
    ASSERT_EQ(prototypes.size(), 25u);
    EXPECT_EQ(prototypes[0]["prototype"], "int filewatcher:filewatcherAddPath(TXPSZ, int, int)");

    EXPECT_EQ(json({"call", "_GitGetBranchName", "7"}).at(0)["result"], "Error");
    const std::string table = R"({"a":[1,"x",null],"b":{"c":-5000000000}})";
    const Json filled = json({"call", "_GetSlowReloadFiles", table}).at(0);
    EXPECT_EQ(filled, (Json{{"function", "_GetSlowReloadFiles"}, {"result", 0}, {"variables", {Json::parse(table)}}}));
    expectFailure({"call", "noSuchFunction"}, 2, "noSuchFunction");
    expectFailure({"call", "filewatcherStop", "99999999999"}, 2, "99999999999");
    expectFailure({"call", "_GetSlowReloadFiles", "{"}, 2, "not JSON");
    const ProgramResult failed = txhost({"call", "_GitFilterTree", "x", "[1,2]"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.output, "-104399\n[1,2]\n");
}

/// What the full-screen browser shows after these keys.
void expectScreen(const fs::path& repository, const std::string& keys, const Texts& wanted)
{
    const ProgramResult result = txhost({"browse", text(repository), "--dump", "100x30", "--keys", keys});
    for (const std::string& line : wanted)
        EXPECT_NE(result.output.find(line), std::string::npos) << keys << ": " << line << "\n" << result.output << result.error;
}

TEST(Txhost, BrowsesWhatCommitsAndTheWorkingCopyHaveChanged)
{
    const TempFolder folder;
    for (const std::string format : {"sha1", "sha256"}) {
        const fs::path top = folder / format;
        git(folder.path(), {"init", "--quiet", "--initial-branch=main", "--object-format=" + format, text(top)});
        expectScreen(top, "<Enter>", {"nothing modified or staged", "0 files"});
        makeRepository(top);
        writeFile(top / "f", "a\n");
        git(top, {"add", "f"});
        writeFile(top / "f", "b\n");
        expectScreen(top, "<Enter>", {"1 modified, 1 staged", "AA    +1        f"});
        commitFiles(top, {"gone/x"});
        git(top, {"tag", "--annotate", "--message", "One", "v1"});
        git(top, {"branch", "side"});
        git(top, {"mv", "gone/x", "y"});
        git(top, {"commit", "--quiet", "--message", "Rename", "--", "."});
        git(top, {"checkout", "--quiet", "side"});
        commitFiles(top, {"z"});
        git(top, {"merge", "--quiet", "--no-ff", "--message", "Join", "main"});
        writeFile(top / "z", "new\n");
        git(top, {"add", "z"});
        expectScreen(top, "<Enter><Tab>G<Enter>", {"1 staged", "M z", "+new"});
        expectScreen(top, "j<Enter>", {"Join", "parent", "2 files"});
        expectScreen(top, "j<Enter><Tab>G<Enter>", {"as in one of the parents"});
        expectScreen(top, "/rename<Enter><Enter>", {"gone/x -> y"});
        expectScreen(top, "&rename<Enter>", {"filter: rename", "1 commit "});
        expectScreen(top, ":v1<Enter><Enter>", {"2 files, +2 -0", "A    +1        gone/x"});
        expectScreen(top, ":v1<Enter><Enter><Tab>GH", {"gone/x  ", "1/1"});
        loseObject(top, git(top, {"rev-parse", "side^{tree}"}).substr(0, format == "sha1" ? 40 : 64));
        expectScreen(top, "j<Enter>", {"\n    Join", "unable to read tree"});
    }
}

TEST(Txhost, ShowsTheStatusOfEachDirectoryByItsTool)
{
    const TempFolder folder;
    const fs::path top = folder / "it's a repo";
    makeRepository(top, {"a b.txt", "sub/c"});
    writeFile(top / "a b.txt", "22");
    writeFile(top / "sub/c", "22");
    const Json outside{{"path", text(folder.path())}, {"tool", "git"}, {"outside", true}};
    const Json none = Json::array();
    const Json first = fileStatus(top / "a b.txt", "git", {"mod"}, none);
    EXPECT_EQ(txhost({"status", "--exit-code", text(top)}).exitCode, 3);
    EXPECT_EQ(txhost({"status", "--exit-code", text(folder.path())}).exitCode, 0);
    EXPECT_EQ(json({"status", text(top), text(folder.path()), text(top / "sub")}),
              (std::vector<Json>{first, fileStatus(top / "sub" / "c", "git", {"mod"}, none), outside}));

    makeRepository(top / "in" / "deep" / "it", {"x"});
    const Json within{{"path", text(top / "in")}, {"tool", "git"}, {"clean", true}};
    const Json nested{{"path", text(top / "in" / "deep" / "it")}, {"tool", "git"}, {"clean", true}};
    EXPECT_EQ(json({"status", "--recurse", text(top), text(top / "in")}),
              (std::vector<Json>{first, fileStatus(top / "sub" / "c", "git", {"mod"}, none), within, nested}));
    EXPECT_EQ(json({"status", "--recurse", text(top / "sub")}).at(0)["local"], Json({"mod"}));

    const std::string below = text(folder / "wc" / "deep" / "below");
    const std::string svn = helperAs(folder, "tool-svn");
    fs::create_directories(folder / "wc" / ".svn");
    fs::create_directories(folder / "wc" / "deep" / "below");
    writeFile(folder / "svn.xml", "<status><target><entry path='" + text(folder / "a")
                                      + "'><wc-status item='modified'/></entry><entry path='" + text(folder / "b")
                                      + "'><repos-status item='modified'/></entry></target></status>");
    const Json modified = fileStatus(folder / "a", "svn", {"mod"}, none);
    const Json outdated = fileStatus(folder / "b", "svn", none, {"mod"});
    EXPECT_EQ(json({"status", "--updates", "--svn", svn, below}), (std::vector<Json>{modified, outdated}));
    writeFile(folder / "server.err", "svn: E170013: no server\n");
    const Json unanswered{{"path", below}, {"tool", "svn"}, {"error", 2}, {"message", "svn: E170013: no server"}};
    EXPECT_EQ(json({"status", "--updates", "--exit-code", "--svn", svn, below}, 1),
              (std::vector<Json>{unanswered, modified, outdated}));
    expectFailure({"status", "--updates", "--svn", svn, below}, 1, below + ": svn: svn: E170013: no server\n");
    writeFile(folder / "wc" / "deep" / ".git", "gitdir: elsewhere\n");
    EXPECT_EQ(json({"status", "--tool", "svn", "--svn", svn, below}), std::vector<Json>{modified});
    const std::string missing = text(folder / "missing");
    expectFailure({"status", "--svn", svn, "--git", missing, below}, 1,
                  "txhost: " + below + ": git: no program that can be started: " + missing + "\n");
    writeFile(folder / "ws" / ".p4config", "P4CLIENT=x\n");
    for (const char* command : {"status", "watch"})
        expectFailure({command, "--p4", missing, text(folder / "ws")}, 1, missing);
    const std::vector<Json> some = json({"status", "--recurse", "--p4", missing, missing, text(folder / "ws"), text(top)}, 1);
    EXPECT_EQ(std::tuple(some.at(0)["path"], some.at(1)["tool"], some.at(2)), std::tuple(Json(missing), Json("p4"), first));
}

TEST(Txhost, TellsFailuresAndWrongUsageApart)
{
    const TempFolder folder;
    const std::string missing = text(folder / "missing");
    expectFailure({"status", missing}, 1, "txhost: " + missing + ": no such directory\n");
    for (const std::string command : {"recent", "reload"})
        expectFailure({command, missing}, 1, "txhost: " + missing + ": no such file\n");
    expectFailure({}, 2, "txhost: there is no command; txhost help lists them\n");
    expectFailure({"--json", "stauts", "show", "x"}, 2, "txhost: there is no command stauts; the nearest one is status\n");
    expectFailure({"watch", "--interval", "nan"}, 2, "Not a number: nan\nSee txhost help watch\n");
    expectFailure({"log", "a", "b", "[c"}, 2, "not expected: b [c\n");
    for (const std::string form : {"\"main", "main --output=x", "--form=%H", "-p"})
        expectFailure({"log", "--restrict", form}, 2, "txhost: --restrict: ");
    expectFailure({"log", "--topo-order", "--date-order"}, 2, "excludes");
    for (const Texts& command : {Texts{"show", ""}, {"diff", ".", ""}, {"history", ""}, {"watch", "--exec", ""}})
        expectFailure(command, 2, "empty");
    expectFailure({"help", "lgo"}, 2, "the nearest one is log\n");
    expectFailure({"xyz"}, 2, "there is no command xyz; txhost help lists them\n");
    EXPECT_EQ(txhost({"help", "show"}).output, txhost({"show", "--help"}).output);
    EXPECT_NE(txhost({"help"}).output, txhost({"help", "help"}).output);
    expectFailure({"call", "\xC3\xBC\xC2\x9B\xE2\x80\xAE\n\x1B"}, 2, "named \xC3\xBC\\xC2\\x9B\\xE2\\x80\\xAE\\x0A\\x1B (");
    expectFailure({"functions", "\xC2\x9B\x1B"}, 2, ": \\xC2\\x9B\\x1B\n");
    EXPECT_EQ(txhost({"call", "_GetSlowReloadFiles", R"({"a":"\u009b\u202e\u00fc\u007f"})"}).output,
              "0\n{\"a\":\"\\u009B\\u202E\xC3\xBC\\u007F\"}\n");
    const std::vector<Json> flood = json({"status", "--git", helperAs(folder, "tool-floods"), text(folder.path()), "."}, 1);
    ASSERT_EQ(flood.size(), 2u);
    for (const Json& failure : flood)
        EXPECT_EQ(failure["error"], -6657);
    Texts reload{"reload", "--budget", "0"};
    for (int number = 0; number < 4000; ++number)
        reload.push_back(std::to_string(number));
    ProgramResult cut;  // almost every run has no time for all of these files
    EXPECT_TRUE(eventually([&] {
        cut = txhost(reload);
        return cut.error.find("3999: no answer within 0 ms\n") != std::string::npos;
    })) << cut.output;
    EXPECT_EQ(cut.exitCode, 1);
    Texts names;
    for (int number = 10; number < 99; ++number)
        names.push_back(std::to_string(number));
    const std::string small = text(folder / "small");
    makeRepository(folder / "small", {"a"});
    makeRepository(folder / "large", names);
    git(folder / "large", {"read-tree", "--empty"});  // its status is long
    expectFailure({"watch", "--interval", "1", "--max-output", "300", small, text(folder / "large")}, 1,
                  small + ": git: -6657, ");
    writeFile(folder / "refused" / ".git", "gitdir: /no/where\n");
    const std::string refused = text(folder / "refused");
    const std::string file = text(folder / "refused" / "file");
    for (const Texts& command : {Texts{"status", refused}, {"diff", refused}, {"diff", refused, "HEAD"}, {"history", file}})
        expectFailure(command, 1, ": git: -1, fatal: not a git repository: ");
    expectFailure({"livediff", "--cache", text(folder / "cache"), file}, 1, ": git: -104370, fatal: not a git repository: ");
    EXPECT_EQ(txhost({"status", refused}).output, "");  // not "outside"
}

TEST(Txhost, ShowsHistoryDifferencesAndCommits)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top, {"a b"});
    git(top, {"mv", "a b", "c"});
    git(top, {"commit", "--quiet", "--message", "re\x1Bname\n\nwhy"});
    EXPECT_EQ(txhost({"diff", text(top), "HEAD~1"}).output, text(top / "c") + "\nfrom " + text(top / "a b") + "\n");
    writeFile(top / "c", "one\ntwo\n");
    const std::vector<Json> lines = json({"history", text(top / "c"), "--follow", "--working"});
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0]["subject"], "Not yet committed");
    EXPECT_EQ(lines[1]["files"], Json({"c"}));
    EXPECT_EQ(lines[1]["parents"], Json::array({lines[2]["hash"]}));
    EXPECT_EQ(lines[2]["files"], Json({"a b"}));
    const std::string plain = txhost({"history", text(top / "c"), "--follow"}).output;
    EXPECT_NE(plain.find("Ada  files  (as a b)\n"), std::string::npos) << plain;
    EXPECT_NE(plain.find("Ada  re\\x1Bname\n"), std::string::npos) << plain;

    const Json changed{{"path", text(top)}, {"local", {"c"}}, {"staged", Json::array()}};
    EXPECT_EQ(json({"diff", text(top)}), std::vector<Json>{changed});
    EXPECT_EQ(txhost({"diff", text(top), "HEAD"}).output, text(top / "c") + "\n@@ -1,1 +1,2 @@\n one\n+two\n");
    EXPECT_EQ(json({"history", text(top)}).at(0)["hash"], lines[1]["hash"]);
    expectFailure({"diff", text(top), "--", "--output=ran"}, 1, "-1");
    expectFailure({"diff", text(top / ".git")}, 1, "fatal: this operation must be run in a work tree");
    expectFailure({"history", text(top / "no" / "x")}, 1, text(top / "no" / "x") + ": no such file, and no revision in Git\n");

    Json commit = json({"show", text(top), "main"}).at(0);
    EXPECT_EQ(commit["hash"].get<std::string>() + "\n", git(top, {"rev-parse", "HEAD"}));
    EXPECT_EQ(commit["branches"], Json({"main"}));
    for (const char* key : {"branches", "tags"})
        commit.erase(key);
    EXPECT_EQ(commit, lines[1]) << "a commit is the same in history";
    expectFailure({"show", text(top), "nonsense"}, 1, "nonsense");
    expectFailure({"show", "--git", helperAs(folder, "tool-fails"), "main"}, 1, text(fs::current_path()) + ": git: ");
    git(top, {"commit", "--quiet", "--all", "--message", "equal"});
    EXPECT_TRUE(json({"diff", text(top), "HEAD"}).empty());

    writeFile(top / "c", "three\n");
    writeFile(top / "n", std::string(1, '\0'));
    git(top, {"add", "--all"});
    const std::string tree = git(top, {"write-tree"}).substr(0, 40);
    git(top, {"reset", "--hard", git(top, {"commit-tree", "-p", "HEAD", "-p", "HEAD~2", "-m", "m", tree}).substr(0, 40)});
    EXPECT_EQ(txhost({"diff", text(top), "HEAD^!"}).output,
              text(top / "c") + "\nmode 100644,000000 -> 100644\n@@@ -1,2 -1,0 +1,1 @@@\n- one\n- two\n++three\n"
                  + text(top / "n") + "\nnew file, mode 100644\nbinary file\n");
    const std::string shown = txhost({"show", text(top), "HEAD"}).output;
    const std::string second = "\nagainst " + git(top, {"rev-parse", "HEAD^2"}) + "file    a b\nfile    c\n";
    EXPECT_NE(shown.find("\nfile    c\nfile    n" + second), std::string::npos) << shown;
    writeFile(top / "c", "mine\n");
    git(top, {"commit", "--quiet", "--all", "--message", "x"});
    git(top, {"revert", "--mainline=1", "HEAD~1"});
    EXPECT_EQ(json({"diff", text(top)}).at(0)["local"], Json({"c"})) << "it has conflicts";
    loseObject(top, git(top, {"rev-parse", "HEAD"}).substr(0, 40));
    expectFailure({"show", text(top), "HEAD"}, 1, "git: -1, fatal: bad object HEAD\n");
}

TEST(Txhost, WatchesForChanges)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    const fs::path other = folder / "other";
    makeRepository(top, {"a"});
    makeRepository(other, {"b"});
    writeFile(top / "a", "22");
    writeFile(other / "b", "22");
    fs::create_directory(folder / "plain");
    writeFile(folder / "file", "x");
    const std::string command = "\"" + builtProgram("testhelper") + "\" echo-input";
    WatchProcess watch({"--exec", command, text(top), text(other), text(folder / "plain"), text(folder / "file")});
    WatchProcess flooded({"--git", helperAs(folder, "tool-floods"), text(top), text(folder / "file")});
    EXPECT_TRUE(flooded.shows("-6657")) << flooded.output();
    EXPECT_TRUE(watch.shows("modified")) << watch.output();
    const std::string index = readFile(top / ".git" / "index");
    const auto overwriteIndex = [&](const std::string& bytes) {  // in place: git reads it at any moment, and must not find it cut
        std::fstream(top / ".git" / "index", std::ios::binary | std::ios::in | std::ios::out) << bytes;
    };
    overwriteIndex(std::string(index.size(), '\0'));
    EXPECT_TRUE(watch.shows("fatal: index file corrupt")) << watch.output();
    git(other, {"checkout", "--quiet", "b"});
    EXPECT_TRUE(watch.shows("clean")) << watch.output();
    EXPECT_TRUE(watch.shows(text(other / "b") + '\0')) << watch.errors();
    writeFile(folder / "file", "y");
    EXPECT_TRUE(watch.shows("changed") && flooded.shows("changed")) << watch.output();
    fs::remove(folder / "file");
    EXPECT_TRUE(watch.shows("removed") && flooded.shows("removed")) << watch.output();
    const std::string clean = "\"clean\",\"path\":" + Json(text(top / "a")).dump();
    EXPECT_EQ(watch.output().find(clean), std::string::npos) << "its status is not known";
    overwriteIndex(index);
    git(top, {"checkout", "--quiet", "a"});
    EXPECT_TRUE(watch.shows(clean) && watch.shows("\"answers\",\"path\":" + Json(text(top)).dump())) << watch.output();
    watch.terminate();
    EXPECT_EQ(jsonLines("watch", watch.output()).size(), 9u) << watch.output();
    EXPECT_NE(watch.output().find("\"was\":\"modified\",\"is\":\"clean\""), std::string::npos) << watch.output();
    EXPECT_FALSE(jsonPage.unseen.contains("watch.tool") || jsonPage.unseen.contains("Failures.time"));
}

TEST(Txhost, AToolThatHangsHoldsUpItsOwnDirectoriesAloneAndEachIsNamedOnce)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top, {"a"});
    writeFile(top / "a", "22");
    writeFile(folder / "svn.xml", "<status><target><entry path='x'/></target></status>");
    for (const std::string name : {"w1", "w2"}) {
        fs::create_directories(folder / name / ".svn");
        writeFile(folder / (name + ".silent"), "");
    }
    const Texts names{"--patience",       "100", "--svn", helperAs(folder, "tool-svn"), text(folder / "w1"), text(top),
                      text(folder / "w2")};
    WatchProcess watch(names);
    WatchProcess status(names, "status");
    const std::string first = "waiting for svn in " + text(folder / "w1");
    for (WatchProcess* process : {&watch, &status})
        EXPECT_TRUE(process->shows("mod") && process->shows(first + " and 1 more directory behind it"))
            << process->output() << process->errors();
    git(top, {"checkout", "--quiet", "a"});
    EXPECT_TRUE(watch.shows("clean")) << watch.output();
    writeFile(folder / "w1.slow", "");
    fs::remove(folder / "w1.silent");
    for (WatchProcess* process : {&watch, &status})
        EXPECT_TRUE(process->shows("waiting for svn in " + text(folder / "w2") + "\n")) << process->errors();
    fs::remove(folder / "w2.silent");
    const std::string nextRound = "--xml --verbose " + text(folder / "w2");
    EXPECT_TRUE(eventually([&] { return readFile(folder / "svn.log").find(nextRound) != std::string::npos; }));
    EXPECT_EQ(watch.errors().find(first), watch.errors().rfind(first));
}

TEST(Txhost, ShowsBranchesAndTheHistoryWithItsGraph)
{
    const TempFolder folder;
    const fs::path top = folder / "repo";
    makeRepository(top);
    expectFailure({"log", text(folder.path())}, 1, text(folder.path()));
    expectFailure({"log", text(top)}, 0, "no commits");
    for (const char* command : {"log", "branches", "diff", "history"})  // the words of a program that is no git
        expectFailure({command, text(top), "--git", helperAs(folder, "tool-p4")}, 1, ": git: -1, ");
    expectFailure({"browse", text(top), "--dump", "80x24", "--git", helperAs(folder, "tool-p4")}, 1, "");
    commitFiles(top, {"a"});
    git(top, {"branch", "Error"});
    git(top, {"checkout", "--quiet", "-b", "work"});
    commitFiles(top, {"b"});
    git(top, {"tag", "--message=x", "v1"});
    git(top, {"tag", "v1-final"});
    const std::vector<Json> branches = json({"branches", text(top)});
    ASSERT_EQ(branches.size(), 3u);
    const Json hash = branches[1]["hash"];
    EXPECT_EQ(branches[0], (Json{{"number", 0}, {"name", "work"}, {"hash", branches[0]["hash"]}, {"current", true}}));
    EXPECT_EQ(branches[1], (Json{{"number", 1}, {"name", "Error"}, {"hash", hash}, {"current", false}}));
    const std::vector<Json> rows = json({"log", "--restrict", "work", "--max", "2", text(top)});
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1]["hash"], branches[0]["hash"]);
    EXPECT_EQ(rows[1]["parents"], Json::array({hash}));
    EXPECT_EQ(rows[1]["branches"], Json::array({"work"}));
    EXPECT_EQ(rows[1]["tags"], Json::array({"v1", "v1-final"}));
    EXPECT_NE(txhost({"log", text(top)}).output.find("[work] <v1> <v1-final> files  "), std::string::npos);
    const std::string shortHash = hash.get<std::string>().substr(0, 7);
    EXPECT_EQ(json({"log", "--filter", shortHash, text(top)}).at(0)["hash"], hash);
    EXPECT_NE(txhost({"log", text(top)}).output.find("    " + shortHash + " [Error] "), std::string::npos);
    const ProgramResult nothing = txhost({"log", "--filter", "no such thing", text(top)});
    EXPECT_EQ(std::pair(nothing.exitCode, nothing.output), std::pair(0, std::string()));
    git(top, {"checkout", "--quiet", "Error"});
    for (const std::string order : {"--date-order", "--topo-order"})
        EXPECT_EQ(txhost({"log", order, text(top)}).output, txhost({"log", text(top)}).output) << "all, with the copy's line";
    EXPECT_EQ(json({"log", "--topo-order", "--restrict", "Error", text(top)}).size(), 2u);
}

TEST(Txhost, FetchesTheCommittedRevision)
{
    const TempFolder folder;
    const fs::path file = folder / "repo" / "docs" / "a b.txt";
    makeRepository(folder / "repo", {"docs/a b.txt"});
    const std::string committed = readFile(file);
    writeFile(file, "edited");
    Texts fetch{"livediff", text(file), "--cache", text(folder / "cache")};
    const Json line = json(fetch).at(0);
    for (const std::string program : {"ends-with-2", "tool-p4"}) {
        Texts silent = fetch;
        silent.insert(silent.end(), {"--git", helperAs(folder, program)});
        expectFailure(silent, 1, program == "tool-p4" ? "the program says nothing" : "has written nothing and ended with 2");
    }
    EXPECT_EQ(readFile(cmSystemPath(line["cache"].get<std::string>())), committed);
    writeFile(folder / "repo" / "new", "x");
    fetch[1] = text(folder / "repo" / "new");
    EXPECT_EQ(json(fetch, 1).at(0)["error"], -104370);
    fetch[1] = text(folder / "repo" / "docs");
    expectFailure(fetch, 1, ": is a directory\n");

    writeFile(folder / "ws" / ".p4config", "P4CLIENT=x\n");
    writeFile(folder / "ws" / "a@b#c%d", "edited");
    writeFile(folder / "print-qa%40b%23c%25d#have.out", "depot's");
    fetch[1] = text(folder / "ws" / "a@b#c%d");
    fetch.insert(fetch.end(), {"--p4", helperAs(folder, "tool-p4")});
    EXPECT_EQ(readFile(cmSystemPath(json(fetch).at(0)["cache"].get<std::string>())), "depot's");
    const std::string failing = "\"" + builtProgram("testhelper") + "\" say \"\" \"its words\"";
    expectFailure({"livediff", text(file), "--cache", text(folder / "cache"), "--command", failing}, 1,
                  text(file) + ": its words\n");
}

TEST(Txhost, PrintsTheJsonThatThePageTells)
{
    jsonPage = JsonPage();  // on Windows the tests of a program share it
    const TempFolder folder;
    const fs::path top = folder / "repo";
    const std::string file = text(top / "a");
    makeRepository(top, {"a", "b"});
    makeRepository(folder / "clean");
    git(top, {"mv", "b", "c"});
    commitFiles(top, {"a"});
    writeFile(top / "a", "merged");
    git(top, {"add", "--all"});
    const std::string tree = git(top, {"write-tree"}).substr(0, 40);
    git(top, {"reset", "--hard", git(top, {"commit-tree", "-p", "HEAD", "-p", "HEAD~1", "-m", "m", tree}).substr(0, 40)});
    writeFile(top / "a", "22");
    for (const Texts& command : {Texts{"functions"},
                                 {"status", text(top), text(folder.path())},
                                 {"status", "--recurse", text(folder / "clean")},
                                 {"log", text(top)},
                                 {"branches", text(top)},
                                 {"history", "--working", file},
                                 {"diff", text(top)},
                                 {"diff", text(top), "HEAD~2"},
                                 {"diff", text(top), "HEAD^!"},
                                 {"livediff", "--cache", text(folder / "cache"), file},
                                 {"reload", file},
                                 {"tour"}})
        EXPECT_FALSE(json(command).empty()) << Json(command);
    EXPECT_EQ(json({"show", text(top), "HEAD"}).at(0)["files"], Json({"a", "c"})) << "each once";
    json({"call", "_GitFilterTree", "x", "[1]"}, 1);
    json({"diff", text(top), "none"}, 1);
    EXPECT_TRUE(eventually([&] {  // a machine that is busy may give no answer
        return jsonLines("reload", txhost({"reload", "--budget", "1", "--json", file}).output).at(0).contains("slow");
    }));
    EXPECT_EQ(jsonPage.unseen, (std::set<std::string>{"Failures.time", "recent.path", "watch.change", "watch.is", "watch.path",
                                                      "watch.time", "watch.tool", "watch.was"}));  // seen by other tests
}

TEST(Txhost, GoesOnItsTour)
{
    const std::vector<Json> steps = json({"tour"});
    for (const Json& step : steps)
        EXPECT_TRUE(step["ok"].get<bool>()) << step;
    EXPECT_FALSE(fs::exists(cmSystemPath(steps.at(1)["detail"].get<std::string>())));
    std::istringstream page(txhost({"tour"}).output);
    int count = 0;
    for (std::string line; std::getline(page, line); ++count)
        EXPECT_LE(line.size(), 80u) << line;
    EXPECT_LT(count, 24) << "one page";
}

}  // namespace
