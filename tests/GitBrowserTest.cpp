#include "tests/GitBrowserFixture.h"
#include "tests/LogRecords.h"

namespace {

TEST_F(GitBrowserTest, ShowsBranchesAndCommitsInTheTree)
{
    importBranches();
    show();
    EXPECT_EQ((Texts{branch(0), branch(1), branch(2), branch(3), branch(4), branch(-1)}),
              (Texts{"main", "extra", "side", "origin/far", "Error", "Error"}));
    EXPECT_EQ(branchHash(2), hashOf("side"));
    EXPECT_EQ(branchHash(4), "");
    EXPECT_EQ(editor.call("_GitCurBranchEndHash", {}).text.c_str(), hashOf("main"));
    const auto shortHash = [this](const std::string& revision) { return "\t" + hashOf(revision).substr(0, 7); };
    EXPECT_EQ(captions(), (Texts{"\t[main] Uncomitted changes\t\t\t",
                                 "\t[extra] [origin/far] extra\t\tAda <ada@example.org>" + shortHash("extra"),
                                 "\t[main] merge\t\t\xC3\x96zg\xC3\xBCr <oz@example.org>" + shortHash("main"),
                                 "\tsecond with a tab\t\tAda <ada@example.org>" + shortHash("v1"),
                                 "\t[side] on the side\t\tGrace H <grace@example.org>" + shortHash("side"),
                                 "\troot\t\tAda <ada@example.org>" + shortHash("v1~1")}));
    const TreeRow& workingCopy = editor.tree()[0];
    const TreeRow& extra = editor.tree()[1];
    EXPECT_EQ((std::pair{workingCopy.flags, workingCopy.dateColumn}), (std::pair{2, -1}));
    EXPECT_EQ((std::pair{extra.flags, extra.dateColumn}), (std::pair{0, 2}));
    EXPECT_EQ(txHvarGetInt(txHvarArrayElement(workingCopy.userData, 0, 0)), -1);
    EXPECT_EQ(txHvarGetInt(txHvarArrayElement(extra.userData, 1, 0)), 3);
    EXPECT_EQ(callback<std::int32_t()>(txSlotGitGraphWidth)(), 3);
    EXPECT_EQ(editor.treeModel(), callback<GitBranchesModel*()>(txSlotGitModel)());
    cmStringT path;
    cmStringT gitPath;
    callback<void(cmStringT&, cmStringT&)>(txSlotGitPaths)(path, gitPath);
    EXPECT_EQ(path, cmStringT(text(top)));
    EXPECT_EQ(gitPath, "git");
}

TEST_F(GitBrowserTest, StartsALoadOnlyWhenSomethingChanged)
{
    load();
    EXPECT_EQ(published(), 0) << "the repository is empty";
    EXPECT_EQ(branch(0), "Error");
    importBranches();
    Texts commands;
    editor.setDebugSink([&](cmROStringT line) {
        if (line.find("GitRunLogThread::runLog") != cmROStringT::npos)
            commands.emplace_back(line.substr(line.find("cmdLine.get()=")));
    });
    load();  // the same request again only empties the model
    EXPECT_EQ(published(), 0);
    EXPECT_EQ(commands.size(), 0u);
    show({1});
    editor.setSetting("def_git_browser_single_load_limit", 10);  // the default
    load();
    EXPECT_EQ(commands.size(), 1u);
    editor.setSetting("def_git_browser_single_load_limit", 20);
    show();
    EXPECT_EQ(published(), 6);
    show({1, "side extra -- "});  // the rows of the load before are no rows of this one
    EXPECT_EQ(captions()[1].substr(0, 27), "\t[extra] [origin/far] extra");
    EXPECT_EQ(published(), 5);
    EXPECT_EQ(callback<std::int32_t()>(txSlotGitGraphWidth)(), 2);
    GraphRow row;
    EXPECT_EQ(callback<std::int32_t(std::int64_t, GraphRow&)>(txSlotGitGraphRow)(0, row), 0);
    EXPECT_TRUE(row.edges.empty()) << "the restricted log lacks HEAD";
    ++row.edgeSize;
    EXPECT_EQ(callback<std::int32_t(std::int64_t, GraphRow&)>(txSlotGitGraphRow)(0, row), -1) << "another layout";
    const std::string log = "cmdLine.get()=\"git\" --no-pager log  --date=iso ";
    const std::string format = " \"--pretty=format:%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x01\" ";
    EXPECT_EQ(commands,
              (Texts{log + " --all " + format + " ", log + " --all " + format + " ", log + format + "side extra --  "}));
}

TEST_F(GitBrowserTest, FiltersTheTree)
{
    const auto filter = [this](const std::string& wanted, int status = 0) {
        EXPECT_EQ(call("_GitFilterTree", {cmStringT(wanted), 0}), status);
        return editor.tree().size();
    };
    EXPECT_EQ(call("_GitFilterTree", {"x", 0}), -104399);
    importBranches();
    show();
    EXPECT_EQ(filter("ADA@"), 3u);
    GitCommitInfo info;
    EXPECT_EQ((callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(2, info)), -1);
    EXPECT_TRUE(waitForTree());
    callback<void(TXPSZ, TXPSZ, std::int32_t)>(txSlotGitRefresh)("", "git", 0);  // must not add the others
    EXPECT_TRUE(branchTree().isTimerArmed());
    EXPECT_TRUE(waitForTree());
    EXPECT_EQ(editor.tree().size(), 3u);
    EXPECT_EQ(filter("THE SIDE"), 1u);
    EXPECT_EQ(editor.tree()[0].flags, 2);
    EXPECT_EQ(filter("no such thing", 1), 1u);
    EXPECT_EQ(filter(""), 6u);
    editor.keepTreeRows(false);
    EXPECT_EQ(filter("ADA@"), 0u);
    EXPECT_EQ((callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(2, info)), -1);
}

TEST_F(GitBrowserTest, ASliceOfTheTreeEndsWhenItsTimeIsUp)
{
    static std::uint32_t now;
    static std::uint32_t step;
    importBranches();
    EXPECT_EQ(open(), 0);
    ASSERT_TRUE(eventually([this] { return call("_GitGetBranchInfoRunning", {}) == 0; }));
    BranchTree tree;
    now = 0;
    for (const auto& [milliseconds, rows] : {std::pair{50u, 2u}, {67u, 5u}, {201u, 6u}}) {
        step = milliseconds;
        tree.addSlice(*GitBranchesModel::instance(false), [] { return now += step; });
        EXPECT_EQ(editor.tree().size(), rows) << "the first slice has 50 ms, a later one 200 ms";
    }
    EXPECT_FALSE(isSliceOver(200, 2));
}

TEST_F(GitBrowserTest, LoadsALongHistoryInSlicesAndKeepsEveryCommit)
{
    History history;
    int last = 0;
    constexpr int count = 10000;
    for (int i = 0; i < count; ++i)
        last = history.commit("main", last == 0 ? std::vector<int>{} : std::vector<int>{last}, "commit " + std::to_string(i));
    history.import(folder, top);
    std::int32_t window = 0;
    editor.defineMacro("_TreeAdjustLastColButtonWidth", [&window] {
        window = txGetIntProperty(txPropertyBrowserWindow);
        return window == 7 ? throw std::bad_alloc() : cmStringT("");  // the timer goes on
    });
    editor.setProperty(txPropertyBrowserWindow, 7);
    EXPECT_EQ(open(), 0);
    editor.setProperty(txPropertyBrowserWindow, 8);
    EXPECT_TRUE(waitForTree());
    EXPECT_EQ(window, 7) << "the window that the load was asked for";
    EXPECT_EQ(txGetIntProperty(txPropertyBrowserWindow), 8);
    ASSERT_EQ(editor.tree().size(), count + 1u);
    const Texts shown = captions();
    for (int row = 1; row <= count; ++row)
        ASSERT_NE(shown[static_cast<std::size_t>(row)].find("commit " + std::to_string(count - row) + "\t"), std::string::npos);

    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(open({1}), 0);
        ASSERT_TRUE(eventually([this] { return published() > 0; }));
        EXPECT_EQ(open(), 0);  // clears the model while records are parsed
        EXPECT_TRUE(eventually([this] { return call("_GitGettingInfo", {}) == 0; }));
        EXPECT_EQ(published(), 0);
    }
    EXPECT_EQ(open({1}), 0);
    EXPECT_EQ(call("_GitFilterTree", {"commit 77", 0}), 1);
    txTreeAdd(0, "a row that is shown until then", 0, 0);
    EXPECT_TRUE(waitForTree());
    EXPECT_EQ(editor.tree().size(), 111u) << "a filter that was set before the first commit was published";
    EXPECT_NE(captions()[0].find("commit 7799\t"), std::string::npos);
    EXPECT_EQ(open({1}), 0);
    ASSERT_TRUE(eventually([this] { return published() > 0; }));
    EXPECT_EQ(call("_GitFilterTree", {"commit ", 0}), 0);
    EXPECT_TRUE(waitForTree());
    EXPECT_EQ(editor.tree().size(), count + 0u) << "commits that were published after the filter was set";
}

TEST_F(GitBrowserTest, ShowsTheRowsOfALogThatPauses)
{
    writeFile(folder / "log", logRecord(1, {2}) + logRecord(2, {9}) + logRecord(3, {}));
    EXPECT_EQ(open({}, helperAs(folder, "tool-git-pauses")), 0);
    EXPECT_TRUE(editor.runUntil([this] { return editor.tree().size() == 3; }, 10000)) << "the last one may have a child";
    EXPECT_EQ(published(), 3);
    GraphRow row;
    EXPECT_EQ(callback<std::int32_t(std::int64_t, GraphRow&)>(txSlotGitGraphRow)(2, row), 0);
    EXPECT_EQ(row.edges.size(), 2u) << "a line that goes on";
    EXPECT_EQ(call("_GitGettingInfo", {}), 1);
}

TEST_F(GitBrowserTest, ClosesALoadAtAnyMoment)
{
    importBranches();
    const std::size_t threads = threadCount();
    for (int round = 0; round < affordableStarts(60); ++round) {
        EXPECT_EQ(open({1}), 0);
        editor.runUntil([] { return false; }, round % 15);
        call(round % 2 == 0 ? "_GitBranchClose" : "filewatcher_stop_async_work", {});
        EXPECT_EQ(GitBranchesModel::instance(true)->publishedCommitCount(), 0);
        EXPECT_TRUE(eventually([&] { return threadCount() == threads; }));
    }
}

TEST_F(GitBrowserTest, EndsAToolThatHangsAndSurvivesOneThatFails)
{
    const std::string hanging = helperAs(folder, "tool-hangs-with-child");
    EXPECT_EQ(open({}, hanging), 0);
    ASSERT_TRUE(eventually([&] { return processesOf(hanging) > 0; }));
    fillBranchTree();  // waits for nothing
    EXPECT_EQ(branch(0), "Error");
    importBranches();
    show({1});  // begins anew in the middle of a load of the same repository
    EXPECT_EQ(published(), 6);
    editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
    EXPECT_EQ(open({}, hanging), 0);
    ASSERT_TRUE(eventually([&] { return processesOf(hanging) > 0; }));
    git(top, {"init", "--quiet", text(folder / "other")});
    EXPECT_EQ(call("_GitGetBranchInfo", {cmStringT(text(folder / "other")), "git"}), 0);
    EXPECT_TRUE(eventually([&] { return processesOf(hanging) == 0; }));
    const std::pair<std::string, std::string> failing[] = {
        {helperAs(folder, "tool-fails"), "-1 fatal: this tool always fails"},
        {text(folder / "no-git"), "-102646 no program that can be started: " + text(folder / "no-git")}};
    for (const auto& [tool, expected] : failing) {
        editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
        ended.clear();
        load(tool);
        EXPECT_EQ(published(), 0);
        EXPECT_EQ(branch(0), "Error");
        EXPECT_EQ(ended, (std::map<std::int32_t, std::string>{{txGitLoadBranches, expected}, {txGitLoadCommits, expected}}));
    }
}

TEST_F(GitBrowserTest, ShowsWhatADamagedRepositoryStillHasAndTellsWhatFailed)
{
    load();
    EXPECT_EQ(ended, (std::map<std::int32_t, std::string>{{txGitLoadBranches, "0 "}, {txGitLoadCommits, "-1 "}})) << "no commits";
    importBranches();
    const Texts names{"main", "extra", "side", "origin/far", "Error"};
    const std::string lost = hashOf("v1~1");
    writeFile(top / ".git/refs/heads/x", "");
    for (const bool broken : {true, false}) {
        show({1});
        EXPECT_EQ((Texts{branch(0), branch(1), branch(2), branch(3), branch(4)}), names);
        EXPECT_EQ(ended[txGitLoadBranches].substr(0, 51), broken ? "-1 fatal: git show-ref: bad ref refs/heads/x (00000" : "0 ");
        EXPECT_EQ(ended[txGitLoadCommits], broken ? "-1 fatal: bad object refs/heads/x" : "0 ");
        std::filesystem::remove(top / ".git/refs/heads/x");
    }
    EXPECT_EQ(published(), 6);
    git(top, {"tag", "--message=x", "named", "v1"});
    writeFile(top / ".git/refs/tags/a", "");
    show({1, "main"});
    cmArray<cmStringT> tags;
    EXPECT_EQ((callback<std::int32_t(std::int64_t, cmArray<cmStringT>&)>(txSlotGitTags)(2, tags)), 0);
    EXPECT_EQ(tags, (cmArray<cmStringT>{"named", "v1"}));
    EXPECT_TRUE(ended[txGitLoadBranches].starts_with("-1 fatal: git show-ref: bad ref refs/tags/a")) << ended[txGitLoadBranches];
    std::filesystem::remove(top / ".git/refs/tags/a");
    loseObject(top, lost);
    show({1});
    EXPECT_GE(published(), 3);
    EXPECT_TRUE(ended[txGitLoadCommits].starts_with("-1 fatal: Failed to traverse parents of commit "))
        << ended[txGitLoadCommits];
}

}  // namespace
