#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"
#include "tests/ModuleFixture.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Status = std::map<std::string, std::string>;

void runProgram(const char* name, const std::string& arguments, const fs::path& directory)
{
    const CaptureResult result =
        captureCommand(cmStringT(cmCat(name) + " " + arguments), 0, directory.string(), {}, [](cmROStringT) {});
    EXPECT_EQ(result.status, 0) << result.failure.c_str();
    EXPECT_EQ(result.errorOutput.view().find("svn: E"), cmROStringT::npos) << result.errorOutput.c_str();
}

/// The real client, and a working copy of a repository beside it.
class SVNStatusTest : public ModuleTest {
protected:
    SVNStatusTest()
    {
        setTool("svn");
        runProgram("svnadmin", "create repo", folder.path());
        svn("checkout --quiet file://" + (folder / "repo").string() + " \"" + top.string() + "\"", folder.path());
    }

    static void svn(const std::string& arguments, const fs::path& directory) { runProgram("svn", arguments, directory); }
    std::string in(const std::string& name) const { return (top / name).string(); }

    void commit(const std::vector<std::string>& names)
    {
        for (const std::string& name : names)
            writeFile(top / name, "one\n");
        svn("add --quiet --force --no-ignore .", top);
        svn("commit --quiet --message x", top);
        svn("update --quiet", top);
    }
    void modify(const std::string& name) { writeFile(top / name, "two, changed\n"); }
    /// Another working copy commits a change to a file.
    void changeInRepository(const std::string& name)
    {
        svn("checkout --quiet file://" + (folder / "repo").string() + " other", folder.path());
        writeFile(folder / "other" / name, "from elsewhere\n");
        svn("commit --quiet --message y", folder / "other");
    }

    std::int32_t svnPass(const fs::path& path, std::int32_t flag = 1)
    {
        call("filewatcherAddPath", {cmStringT(cmROStringT(path.string())), svnType, flag});
        return waitForPass(path.string());
    }
    /// The next pass asks the server: a new thread does so first.
    void forgetThread() { call("filewatcherStop", {svnType}); }

    TempFolder folder;
    const fs::path top = folder / "a wc & more";
};

TEST_F(SVNStatusTest, MarksExactlyTheModifiedFiles)
{
    const std::vector<std::string> odd{"a b", "at@2", "a&b", "less<", "\xC3\xBC.txt", "it's", "50%", "sub/deep", "-dash"};
    commit({"normal", "deleted", "conflicted", "reverted"});
    commit(odd);
    changeInRepository("conflicted");
    modify("conflicted");
    svn("update --quiet --non-interactive", top);
    Status expected;
    for (const std::string& name : odd) {
        modify(name);
        expected[in(name)] = "mod";
    }
    modify("reverted");
    writeFile(top / "added", "new\n");
    svn("add --quiet added", top);
    svn("remove --quiet deleted", top);
    writeFile(top / "unversioned", "x\n");
    svn("propset --quiet svn:externals \"^/sub ext\" .", top);
    svn("update --quiet --non-interactive", top);
    expected[in("reverted")] = "mod";
    expected[in("conflicted")] = "edit";
    TXVCRECORD before;
    before.localStatus = "edit";  // the text leaves such a file alone
    txVCSetRecord(tamarin::TMString(in("conflicted").c_str()), before);

    EXPECT_EQ(svnPass(top), 0);
    Status marked = localStatus();
    marked.erase(top.string());  // the folder whose property was set
    EXPECT_EQ(marked, expected);
    EXPECT_EQ(editor.record(in("normal"))->tool, txVCToolSVN.number);
    for (const char* untouched : {"added", "deleted", "unversioned"})
        EXPECT_FALSE(editor.record(in(untouched))) << untouched;

    svn("revert --quiet reverted", top);
    EXPECT_EQ(svnPass(top), 0);
    EXPECT_EQ(editor.record(in("reverted"))->localStatus, "");
    EXPECT_EQ(editor.record(in("a b"))->localStatus, "mod");
}

TEST_F(SVNStatusTest, TellsWhatIsNewerInTheRepositoryUntilItIsUpdated)
{
    commit({"a", "b"});
    changeInRepository("a");
    EXPECT_EQ(svnPass(top), 0);
    EXPECT_EQ(editor.record(in("a"))->repositoryStatus, "mod");
    EXPECT_EQ(editor.record(in("b"))->repositoryStatus, "");
    svn("update --quiet", top);
    forgetThread();
    EXPECT_EQ(svnPass(top), 0);
    EXPECT_EQ(editor.record(in("a"))->repositoryStatus, "");
}

TEST_F(SVNStatusTest, LooksIntoFoldersOnlyWhenAsked)
{
    commit({"here", "sub/below", "at@2/file"});
    modify("here");
    modify("sub/below");
    modify("at@2/file");
    EXPECT_EQ(svnPass(top, 0), 0);
    EXPECT_EQ(localStatus(), (Status{{in("here"), "mod"}}));
    EXPECT_EQ(svnPass(top / "at@2", 0), 0);
    EXPECT_EQ(localStatus(), (Status{{in("at@2/file"), "mod"}, {in("here"), "mod"}}));
}

TEST_F(SVNStatusTest, TellsWhatIsModifiedHereWithoutTheRepository)
{
    commit({"a"});
    modify("a");
    fs::rename(folder / "repo", folder / "moved");
    EXPECT_EQ(svnPass(top), 0);
    EXPECT_EQ(localStatus(), (Status{{in("a"), "mod"}}));
}

TEST_F(SVNStatusTest, FailsWhereThereIsNoWorkingCopy)
{
    EXPECT_EQ(svnPass(folder.path()), -1);
    setTool(helperAs(folder, "tool-fails"));
    forgetThread();
    EXPECT_EQ(svnPass(top), -1);
    EXPECT_TRUE(localStatus().empty());
}

}  // namespace
