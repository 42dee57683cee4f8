#include "common/cmPath.h"
#include "tests/GitStatusFixture.h"

namespace {

TEST_F(GitStatusTest, MarksExactlyTheFilesModifiedInTheWorkTree)
{
    const Texts odd = oddFileNames();
    commit({"staged", "modified", "both", "renamed", "deleted", "clean"});
    commit(odd);
    modify("staged");
    modify("both");
    fs::rename(top / "renamed", top / "after rename");
    makeRepository(top / "changed inside", {"f"});
    makeRepository(top / "only untracked", {"f"});
    git(top, {"add", "--all"});
    modify("modified");
    writeFile(top / "both", "three\n");
    writeFile(top / "after rename", "one\nand more\n");
    fs::remove(top / "deleted");
    modify("changed inside/f");
    writeFile(top / "only untracked/new", "x");
    Status expected{{in("both"), "mod"}, {in("after rename"), "mod"}, {in("changed inside"), "mod"}};
    for (const std::string& name : odd) {
        modify(name);
        expected[in(name)] = "mod";
    }
    TXVCRECORD record;
    record.localStatus = "modified|edit";
    record.fifth = "the editor's own";
    txVCSetRecord(tamarin::TMString(in("modified").c_str()), record);
    expected[in("modified")] = "modified|edit|mod";

    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(pass(text(top)), 0);
        EXPECT_EQ(localStatus(), expected);
    }
    EXPECT_TRUE(editor.runUntil([&] { return notifications > 0; }, 10000));
    EXPECT_EQ(editor.record(in("modified"))->tool, txVCToolGit.number);
    EXPECT_EQ(editor.record(in("modified"))->fifth, "the editor's own");
    EXPECT_FALSE(fs::exists(top / "ran"));
}

TEST_F(GitStatusTest, LooksBelowTheWatchedDirectoryOnly)
{
    Texts names{"top", "ab/f"};
    for (const std::string& directory : oddFolderNames())
        names.push_back(directory + "/f");
    commit(names);
    for (const std::string& name : names)
        modify(name);
    for (const std::string& directory : oddFolderNames()) {
        editor.clearRecords(gitType);
        addPath(in(directory) + cmPathSeparator());
        EXPECT_EQ(waitForPass(in(directory)), 0);
        EXPECT_EQ(localStatus(), (Status{{in(directory + "/f"), "mod"}}));
    }
    if (cmNativePathStyle == cmPathStyle::windows)
        return;  // no symbolic links under Wine
    editor.clearRecords(gitType);
    fs::create_directory_symlink(top / "plain", folder / "link");
    EXPECT_EQ(pass(text(folder / "link")), 0);
    EXPECT_EQ(localStatus(), (Status{{text(folder / "link/f"), "mod"}}));
}

TEST_F(GitStatusTest, ReportsADirectoryOutsideAnyRepository)
{
    const std::string outside = text(folder / "outside");
    fs::create_directory(folder / "outside");
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(pass(outside), 0);
        ASSERT_TRUE(editor.record(outside));
        EXPECT_EQ(editor.record(outside)->state, txVCStateOutsideRepository);
        EXPECT_TRUE(localStatus().empty());
        EXPECT_TRUE(editor.runUntil([&] { return notifications == 1; }, 10000));
    }
    commit({"a"});
    EXPECT_EQ(pass(text(top)), 0);
    EXPECT_FALSE(editor.record(text(top)));
    stopAndRunEvents();
    EXPECT_EQ(notifications, 1);  // neither the second pass nor the clean repository changed a record
}

TEST_F(GitStatusTest, RunsNothingThatTheRepositoryNamesAndLeavesTheIndexAlone)
{
    commit({"a"});
    for (const char* program : {"git", "sh"}) {
        const fs::path trap = cmSystemPath(helperAs(folder, program));
        fs::copy_file(trap, top / trap.filename());
    }
    git(top, {"config", "core.fsmonitor", helperAs(folder, "monitor")});
    git(top, {"config", "status.showUntrackedFiles", "all"});
    writeFile(top / std::string(100, 'u'), "x");  // alone more than the limit lets through
    editor.setSetting(txVCMaxOutputSetting, static_cast<std::int32_t>(text(top).size()) + 50);
    fs::last_write_time(top / "a", fs::file_time_type::clock::now() + std::chrono::hours(1));  // makes git want to refresh
    const std::string index = readFile(top / ".git/index");

    EXPECT_EQ(pass(text(top)), 0);
    EXPECT_FALSE(fs::exists(folder / "trace") || fs::exists(top / "trace"));
    EXPECT_EQ(readFile(top / ".git/index"), index);
}

TEST_F(GitStatusTest, FailsRatherThanCallABrokenRepositoryClean)
{
    commit({"a"});
    modify("a");
    const auto expectFailure = [this](const std::string& words, std::int32_t status = -1) {
        EXPECT_EQ(pass(text(top)), status);
        EXPECT_TRUE(reason.starts_with(words)) << reason;
    };
    const std::string index = readFile(top / ".git/index");
    writeFile(top / ".git/index", std::string(index.size(), '\0'));
    expectFailure("fatal: index file corrupt");
    writeFile(top / ".git/index", index);
    const std::string tree = git(top, {"rev-parse", "HEAD^{tree}"}).substr(0, 40);
    fs::rename(top / ".git/objects" / tree.substr(0, 2) / tree.substr(2), folder / "object");
    expectFailure("error: bad tree object HEAD");  // not called fatal
    EXPECT_TRUE(editor.records().empty());
    fs::rename(top / ".git", folder / "repository");
    writeFile(top / ".git", "gitdir: /no/where\n");
    expectFailure("fatal: not a git repository: ");
    EXPECT_EQ(editor.record(text(top))->state, txVCStateOutsideRepository);

    editor.clearRecords(0);
    call("filewatcherStop", {gitType});
    setTool(text(folder / "no-git"));
    expectFailure("", -102646);
    EXPECT_TRUE(editor.records().empty());
    call("filewatcherStop", {gitType});
    setTool(helperAs(folder, "tool-p4"));  // answers with these files
    writeFile(folder / "rev-parse--show-toplevel.out", text(top) + "\n");
    writeFile(folder / "status--porcelain.out", " M whole\n M cu");
    writeFile(folder / "status--porcelain.err", "warning: odd\n");
    expectFailure("git's output breaks off");
    EXPECT_EQ(localStatus(), (Status{{in("whole"), "mod"}}));
    writeFile(folder / "status--porcelain.err", "warning: odd\nfatal: it is wrong\n");
    expectFailure("fatal: it is wrong");
}

}  // namespace
