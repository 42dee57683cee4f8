#include "common/CommandRunner.h"
#include "tests/ModuleFixture.h"

namespace {

/// The real client, and a working copy beside its repository.
class SVNStatusTest : public ModuleTest {
protected:
    SVNStatusTest()
    {
        setTool("svn");
        run("svnadmin create repo", folder.path());
        svn("checkout --quiet file://" + (folder / "repo").string() + " \"" + top.string() + "\"", folder.path());
    }

    static void run(const std::string& commandLine, const fs::path& directory)
    {
        const CaptureResult result = captureCommand(cmROStringT(commandLine), 0, directory.string(), {}, [](cmROStringT) {});
        EXPECT_EQ(result.status, 0) << commandLine << ": " << result.failure.c_str();
        EXPECT_EQ(result.errorOutput.view().find("svn: E"), cmROStringT::npos) << result.errorOutput.c_str();
    }
    static void svn(const std::string& arguments, const fs::path& directory) { run("svn " + arguments, directory); }
    std::string in(const std::string& name) const { return (top / name).string(); }

    void commit(const Texts& names)
    {
        for (const std::string& name : names)
            writeFile(top / name, "one\n");
        svn("add --quiet --force --no-ignore .", top);
        svn("commit --quiet --message x", top);
        svn("update --quiet", top);
    }
    void modify(const std::string& name) { writeFile(top / name, "two, changed\n"); }

    TempFolder folder;
    const fs::path top = folder / "a wc & more";
};

TEST_F(SVNStatusTest, MarksExactlyTheModifiedFiles)
{
    const Texts odd{"a b", "at@2", "a&b", "less<", "\xC3\xBC.txt", "it's", "50%", "sub/deep", "-dash"};
    commit({"normal", "deleted", "newer"});
    commit(odd);
    svn("checkout --quiet file://" + (folder / "repo").string() + " other", folder.path());
    writeFile(folder / "other/newer", "from elsewhere\n");
    svn("commit --quiet --message y", folder / "other");
    std::map<std::string, std::string> expected;
    for (const std::string& name : odd) {
        modify(name);
        expected[in(name)] = "mod";
    }
    writeFile(top / "added", "new\n");
    svn("add --quiet added", top);
    svn("remove --quiet deleted", top);
    writeFile(top / "unversioned", "x\n");

    EXPECT_EQ(pass(top.string(), svnType), 0);
    EXPECT_EQ(localStatus(), expected);
    EXPECT_EQ(record(in("newer")), "/mod/1");
    EXPECT_EQ(record(in("normal")), "//1");
    for (const char* untouched : {"added", "deleted", "unversioned"})
        EXPECT_FALSE(editor.record(in(untouched))) << untouched;
    svn("revert --quiet \"a b\"", top);
    svn("update --quiet newer", top);
    expected.erase(in("a b"));
    call("filewatcherStop", {svnType});  // the first pass of a thread asks the server
    EXPECT_EQ(pass(top.string(), svnType), 0);
    EXPECT_EQ(localStatus(), expected);
    EXPECT_EQ(record(in("newer")), "//1");
}

}  // namespace
