#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/commits/GitRefs.h"
#include "tests/GitBrowserFixture.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

TEST(GitRefs, NumbersTheCurrentBranchFirst)
{
    EXPECT_EQ(currentBranchIn("  a\r\n* (HEAD detached at 12)\r\n* b\n"), "(HEAD detached at 12)");
    EXPECT_TRUE(currentBranchIn("  a\n").isNull());
    GitRefs refs;
    refs.read("1 HEAD\n1 refs/heads/z\n2 refs/heads/a/b\n3 refs/remotes/o/HEAD\n1 refs/remotes/o/a\n4 refs/remotes/z\n"
              "1 refs/tags/t\nnonsense\n",
              "o");
    const auto names = [&](cmROStringT current) {
        Texts found;
        for (const BranchInfo& branch : refs.numbered(current, "9"))
            found.push_back(std::string(branch.name.view()) + "=" + branch.hash.c_str());
        return found;
    };
    EXPECT_EQ(names("z"), (Texts{"z=1", "a/b=2", "o/a=1", "z=4"}));  // a remote branch may be called as a local one
    EXPECT_EQ(names("(no branch)"), (Texts{"(no branch)=9", "a/b=2", "z=1", "o/a=1", "z=4"}));
    EXPECT_EQ(refs.headHash(), "1");
    EXPECT_EQ(refs.nameAtHead(), "tags/t");
    EXPECT_TRUE(GitRefs().numbered("", "").empty());
}

TEST_F(GitBrowserTest, ShowsBranchesCommitsAndTheirGraph)
{
    importBranches();
    show();
    EXPECT_EQ(subjects(), (Texts{"Uncomitted changes", "extra", "merge", "second\twith a tab", "on the side", "root"}));
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
    EXPECT_EQ(editor.tree()[0].flags, 2);
    EXPECT_EQ(editor.tree()[1].flags, 0);
    EXPECT_EQ(editor.tree()[0].dateColumn, -1);
    EXPECT_EQ(editor.tree()[1].dateColumn, 2);
    EXPECT_EQ(txHvarGetInt(txHvarArrayElement(editor.tree()[0].userData, 0, 0)), -1);
    EXPECT_EQ(txHvarArrayLength(editor.tree()[1].userData), 2);
    EXPECT_EQ(txHvarGetInt(txHvarArrayElement(editor.tree()[1].userData, 1, 0)), 3);

    // The current branch runs straight down from the working copy.
    EXPECT_EQ(columns({0, 1, 2, 3, 4, 5}), (std::vector<std::uint16_t>{0, 1, 0, 0, 2, 0}));
    EXPECT_EQ(callback<std::int32_t()>(txSlotGitGraphWidth)(), 3);
    const GitCommitInfo merge = commit(2);
    EXPECT_EQ(merge.firstParent, cmStringT(hashOf("v1")));
    EXPECT_EQ(merge.otherParents, cmArray<cmStringT>{cmStringT(hashOf("side"))});
    EXPECT_EQ(merge.branchNumbers, cmArray<std::int64_t>{0});
    EXPECT_EQ(merge.row, 2);
    EXPECT_EQ(commit(0).branchNumbers, cmArray<std::int64_t>{0});
    EXPECT_EQ(commit(0).pendingBranches.size(), 1u);
    for (const std::int64_t number : {0, 1, 2, 3, 4, 5})
        EXPECT_EQ(commit(number).onCurrentBranch, number == 1 ? 0 : 1) << number;
    GitCommitInfo info;
    EXPECT_EQ((callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(6, info)), -1);
    EXPECT_EQ(editor.treeModel(), callback<GitBranchesModel*()>(txSlotGitModel)());
    cmStringT path;
    cmStringT gitPath;
    callback<void(cmStringT&, cmStringT&)>(txSlotGitPaths)(path, gitPath);
    EXPECT_EQ(path, cmStringT(text(top)));
    EXPECT_EQ(gitPath, "git");
}

TEST_F(GitBrowserTest, StartsALoadOnlyWhenSomethingChanged)
{
    importBranches();
    Texts commands;
    editor.setDebugSink([&](cmROStringT line) {
        if (line.find("GitRunLogThread::runLog") != cmROStringT::npos)
            commands.emplace_back(line.substr(line.find("cmdLine.get()=")));
    });
    show();
    EXPECT_EQ(open(), 0);  // the same again: the model is emptied, that is all
    EXPECT_TRUE(waitForLoad());
    EXPECT_EQ(published(), 0);
    EXPECT_EQ(commands.size(), 1u);
    show({1});
    EXPECT_EQ(published(), 6);
    editor.setSetting("def_git_browser_single_load_limit", 10);  // what a missing one stands for
    EXPECT_EQ(open(), 0);
    EXPECT_TRUE(waitForLoad());
    editor.setSetting("def_git_browser_single_load_limit", 20);
    show();
    txTreeClear();  // the editor's own business when it loads the same repository again
    show({1, "side extra -- "});
    EXPECT_EQ(subjects(), (Texts{"Uncomitted changes", "extra", "second\twith a tab", "on the side", "root"}));
    const std::string log = "cmdLine.get()=\"git\" --no-pager log  --date=iso ";
    const std::string format = " \"--pretty=format:%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x01\" ";
    EXPECT_EQ(commands, (Texts{log + " --all " + format + " ", log + " --all " + format + " ", log + " --all " + format + " ",
                               log + format + "side extra --  "}));
}

TEST_F(GitBrowserTest, ShowsADetachedHeadAndAnEmptyRepository)
{
    EXPECT_EQ(open(), 0);
    EXPECT_TRUE(waitForLoad());
    EXPECT_EQ(published(), 0);
    EXPECT_EQ(branch(0), "Error");
    importBranches();
    git(top, {"checkout", "--quiet", "--detach", "--force", "v1"});
    show({1});
    EXPECT_EQ(branch(0), "(HEAD detached at v1)");
    EXPECT_EQ(branchHash(0), hashOf("v1"));
    EXPECT_EQ(branch(2), "main");
    EXPECT_EQ(commit(3).branchNumbers, cmArray<std::int64_t>{0});
    EXPECT_EQ(captions()[0], "\t[(HEAD detached at v1)] Uncomitted changes\t\t\t");
    EXPECT_EQ(commit(2).onCurrentBranch, 0);
    EXPECT_EQ(commit(3).onCurrentBranch, 1);
    EXPECT_EQ(columns({0, 3}), (std::vector<std::uint16_t>{0, 0}));
}

TEST_F(GitBrowserTest, FiltersTheTreeAndItsGraph)
{
    const auto filter = [this](const std::string& wanted) { return call("_GitFilterTree", {cmStringT(wanted), 0}); };
    EXPECT_EQ(filter("x"), -104399);
    importBranches();
    show();
    EXPECT_EQ(filter("ADA@"), 0);
    EXPECT_EQ(editor.tree().size(), 3u);  // extra, second, root
    EXPECT_EQ(columns({1, 3, 5}), (std::vector<std::uint16_t>{0, 0, 0}));
    EXPECT_EQ(callback<std::int32_t()>(txSlotGitGraphWidth)(), 1);
    EXPECT_EQ(commit(3).row, 1);
    GitCommitInfo info;
    EXPECT_EQ((callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(2, info)), -1);
    callback<void(TXPSZ, TXPSZ, std::int32_t)>(txSlotGitRefresh)("", "git", 0);  // must not add the others
    EXPECT_FALSE(editor.runUntil([this] { return editor.tree().size() != 3; }, 700));

    for (const std::string& wanted : {hashOf("side").substr(5, 20), std::string("GRACE h"), std::string("THE SIDE")}) {
        EXPECT_EQ(filter(wanted), 0);
        ASSERT_EQ(editor.tree().size(), 1u) << wanted;
        EXPECT_NE(captions()[0].find("on the side"), std::string::npos);
        EXPECT_TRUE(GitBranchesModel::instance(false)->findCommit(hashOf("extra"), info)) << "it is known, though not shown";
    }
    EXPECT_EQ(filter("no such thing"), 0);
    EXPECT_EQ(editor.tree().size(), 1u);
    EXPECT_EQ(filter(""), 0);
    EXPECT_EQ(editor.tree().size(), 6u);
    EXPECT_EQ(commit(3).row, 3);
}

TEST_F(GitBrowserTest, LoadsALongHistoryInSlicesAndKeepsEveryCommit)
{
    History history;
    int last = 0;
    constexpr int count = 10000;
    for (int i = 0; i < count; ++i)
        last = history.commit("main", last == 0 ? std::vector<int>{} : std::vector<int>{last}, "commit " + std::to_string(i));
    history.import(folder, top);
    editor.setProperty(txPropertyBrowserWindow, 7);
    int adjusted = 0;
    editor.defineMacro("_TreeAdjustLastColButtonWidth", [&adjusted] {
        ++adjusted;
        return cmStringT("");
    });
    show();
    ASSERT_EQ(published(), count + 1);
    for (int number = 1; number <= count; ++number)
        ASSERT_EQ(commit(number).subject, cmStringT("commit " + std::to_string(count - number)));
    EXPECT_NE(captions().back().find("\tcommit 0\t"), std::string::npos);
    EXPECT_GT(adjusted, 0);
    const int before = adjusted;
    editor.runUntil([this] { return call("_GitGettingInfo", {}) != 0; }, 700);
    EXPECT_LE(adjusted, before + 1) << "the timer goes on";
    EXPECT_EQ(txGetIntProperty(txPropertyBrowserWindow), 7);

    txTreeClear();
    EXPECT_EQ(open({1}), 0);
    editor.runUntil([this] { return published() > 1; }, 30000);
    EXPECT_EQ(call("_GitFilterTree", {"commit ", 0}), 0);
    EXPECT_TRUE(editor.runUntil([this] { return editor.tree().size() == count; }, 30000)) << "what came after the filter";
}

TEST_F(GitBrowserTest, ClosesAndReplacesALoadAtAnyMoment)
{
    importBranches();
    const std::size_t threads = threadCount();
    for (int round = 0; round < affordableStarts(60); ++round) {
        editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
        EXPECT_EQ(open(), 0);
        editor.runUntil([] { return false; }, round % 15);
        if (round % 3 == 0) {
            call("_GitBranchClose", {});
            EXPECT_EQ(call("_GitGetBranchInfoRunning", {}), 0);
            EXPECT_EQ(published(), 0);
        } else if (round % 3 == 1) {
            open({1});
        } else {
            call("filewatcher_stop_async_work", {});
            EXPECT_TRUE(eventually([&] { return threadCount() == threads; }));
        }
    }
    for (const bool filtered : {false, true}) {
        if (filtered)
            call("_GitFilterTree", {"extra", 0});
        call("filewatcher_stop_async_work", {});
        show();
        EXPECT_EQ(editor.tree().size(), 6u);
        EXPECT_NE(captions()[0].find("Uncomitted changes"), std::string::npos);
    }
}

TEST_F(GitBrowserTest, EndsAToolThatHangsAndSurvivesOneThatFails)
{
    const std::string hanging = helperAs(folder, "tool-hangs-with-child");
    EXPECT_EQ(open({}, hanging), 0);
    ASSERT_TRUE(eventually([&] { return processesOf(hanging) > 0; }));
    editor.runUntil([] { return false; }, 300);  // the tree's timer ticks and waits for nothing
    EXPECT_EQ(branch(0), "Error");
    importBranches();
    show({1});  // forced, in the middle of a load of the same repository: begins anew
    EXPECT_EQ(published(), 6);
    editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
    EXPECT_EQ(open({}, hanging), 0);
    ASSERT_TRUE(eventually([&] { return processesOf(hanging) > 0; }));
    git(top, {"init", "--quiet", text(folder / "other")});
    EXPECT_EQ(call("_GitGetBranchInfo", {cmStringT(text(folder / "other")), "git"}), 0);
    EXPECT_TRUE(eventually([&] { return processesOf(hanging) == 0; }));
    for (const std::string& tool : {helperAs(folder, "tool-fails"), text(folder / "no-git")}) {
        editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
        EXPECT_EQ(open({}, tool), 0);
        EXPECT_TRUE(waitForLoad());
        EXPECT_EQ(published(), 0);
        EXPECT_EQ(branch(0), "Error");
    }
    editor.setProperty(txPropertyBrowserRepository, cmStringT(""));
    show();
    EXPECT_EQ(published(), 6);
}

}  // namespace
