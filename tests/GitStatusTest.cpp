#include "tests/ModuleFixture.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Status = std::map<std::string, std::string>;

class GitStatusTest : public ModuleTest {
protected:
    GitStatusTest() { makeRepository(top); }

    void commit(const std::vector<std::string>& names) { commitFiles(top, names); }
    void modify(const std::string& name) { writeFile(top / name, "two, changed\n"); }
    std::string in(const std::string& name) const { return (top / name).string(); }

    TempFolder folder;
    const fs::path top = folder / "repo";
};

TEST_F(GitStatusTest, MarksExactlyTheFilesModifiedInTheWorkTree)
{
    const std::vector<std::string> odd{"a b",       "q\"uote",     "tab\there", "x -> y",       "-dash", "\xC3\xBC.txt",
                                       "new\nline", "back\\slash", "it's",      "$(touch ran)", "a&b|c", "sub/deep"};
    commit({"staged", "modified", "both", "renamed", "deleted", "clean"});
    commit(odd);
    modify("staged");
    modify("both");
    fs::rename(top / "renamed", top / "after rename");
    git(top, {"add", "--all"});
    modify("modified");
    modify("both");
    writeFile(top / "both", "three\n");
    writeFile(top / "after rename", "one\nand more\n");
    fs::remove(top / "deleted");
    writeFile(top / "untracked", "x");
    Status expected{{in("modified"), "mod"}, {in("both"), "mod"}, {in("after rename"), "mod"}};
    for (const std::string& name : odd) {
        modify(name);
        expected[in(name)] = "mod";
    }
    ASSERT_EQ(git(top, {"status", "--porcelain", "--", "after rename"}).substr(0, 2), "AM");  // a pathspec hides the rename
    const std::string renameLine = git(top, {"status", "--porcelain"});
    ASSERT_NE(renameLine.find("RM renamed -> \"after rename\""), std::string::npos);

    EXPECT_EQ(pass(top.string()), 0);
    EXPECT_EQ(localStatus(), expected);
    EXPECT_EQ(editor.record(in("modified"))->tool, 8);
    EXPECT_FALSE(fs::exists(top / "ran"));
}

TEST_F(GitStatusTest, LooksBelowTheWatchedDirectoryOnly)
{
    const std::vector<std::string> names{"top", "one & two/a", "-x/b", ":(top)/c", "plain/d", "a[b]/e", "ab/f", "*/g"};
    commit(names);
    for (const std::string& name : names)
        modify(name);
    for (const char* directory : {"one & two", "-x", ":(top)", "plain/", "a[b]", "*"}) {
        editor.clearRecords(8);
        addPath(in(directory));
        const std::string stripped = in(directory).substr(0, in(directory).find_last_not_of('/') + 1);
        EXPECT_EQ(waitForPass(stripped), 0);
        ASSERT_EQ(localStatus().size(), 1u) << directory;
        EXPECT_EQ(localStatus().begin()->first.rfind(stripped + "/", 0), 0u) << directory;
    }
}

TEST_F(GitStatusTest, FollowsALinkIntoTheWorkingCopy)
{
    commit({"sub/a", "b"});
    modify("sub/a");
    modify("b");
    fs::create_directory_symlink(top / "sub", folder / "link");
    EXPECT_EQ(pass((folder / "link").string()), 0);
    EXPECT_EQ(localStatus(), (Status{{in("sub/a"), "mod"}}));
}

TEST_F(GitStatusTest, ReportsADirectoryOutsideAnyRepository)
{
    const std::string outside = (folder / "outside").string();
    fs::create_directory(outside);
    EXPECT_EQ(pass(outside), 0);
    ASSERT_TRUE(editor.record(outside));
    EXPECT_EQ(editor.record(outside)->state, 2);
    EXPECT_TRUE(localStatus().empty());
    EXPECT_TRUE(editor.runUntil([&] { return notifications == 1; }, 5000));
    EXPECT_EQ(pass(outside), 0);
    EXPECT_FALSE(editor.runUntil([&] { return notifications > 1; }, 100));  // nothing new was written

    commit({"a"});
    EXPECT_EQ(pass(top.string()), 0);
    EXPECT_FALSE(editor.record(top.string()));
}

TEST_F(GitStatusTest, AddsToTheStatusThatAFileHasAndTellsTheEditorOnce)
{
    commit({"a", "b"});
    modify("a");
    modify("b");
    TXVCRECORD record;
    record.localStatus = "edit";
    record.fifth = "the editor's own";
    txVCSetRecord(tamarin::TMString(in("a").c_str()), record);
    for (int round = 1; round <= 2; ++round) {
        EXPECT_EQ(pass(top.string()), 0);
        EXPECT_TRUE(editor.runUntil([&] { return notifications == round; }, 5000));
        EXPECT_EQ(localStatus(), (Status{{in("a"), "edit|mod"}, {in("b"), "mod"}}));
    }
    EXPECT_EQ(editor.record(in("a"))->fifth, "the editor's own");
    git(top, {"checkout", "--quiet", "."});
    EXPECT_EQ(pass(top.string()), 0);
    EXPECT_FALSE(editor.runUntil([&] { return notifications > 2; }, 100));
}

TEST_F(GitStatusTest, RunsNothingThatTheRepositoryNamesAndLeavesTheIndexAlone)
{
    commit({"a"});
    const std::string trap = (folder / "trap").string();
    const std::string script = "#!/bin/sh\ntouch '" + trap + "'\n";
    for (const fs::path& program : {folder / "monitor", top / "git", top / "sh"}) {
        writeFile(program, script);
        fs::permissions(program, fs::perms::owner_all);
    }
    git(top, {"config", "core.fsmonitor", (folder / "monitor").string()});
    git(top, {"config", "status.showUntrackedFiles", "all"});
    fs::last_write_time(top / "a", fs::file_time_type::clock::now() + std::chrono::hours(1));  // makes git want to refresh
    const auto written = fs::last_write_time(top / ".git/index");
    const std::string index = readFile(top / ".git/index");

    EXPECT_EQ(pass(top.string()), 0);
    EXPECT_FALSE(fs::exists(trap));
    EXPECT_EQ(readFile(top / ".git/index"), index);
    EXPECT_EQ(fs::last_write_time(top / ".git/index"), written);
}

TEST_F(GitStatusTest, FailsRatherThanCallABrokenRepositoryClean)
{
    commit({"a"});
    modify("a");
    writeFile(top / ".git/index", "no index");
    EXPECT_EQ(pass(top.string()), -1);
    EXPECT_TRUE(editor.records().empty());
}

TEST_F(GitStatusTest, TakesAnEmptyAnswerForOutside)
{
    setTool(helperAs(folder, "tool-fails"));
    EXPECT_EQ(pass(top.string()), 0);
    ASSERT_TRUE(editor.record(top.string()));
    EXPECT_EQ(editor.record(top.string())->state, 2);
}

TEST_F(GitStatusTest, GivesTheReasonWhenGitCannotBeStarted)
{
    commit({"a"});
    modify("a");
    setTool((folder / "no-git").string());
    EXPECT_EQ(pass(top.string()), -102646);
    EXPECT_TRUE(editor.records().empty());
}

}  // namespace
