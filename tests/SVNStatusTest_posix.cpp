#include "common/CommandRunner.h"
#include "tests/ModuleFixture.h"

namespace {

void run(const std::string& commandLine, const fs::path& directory)
{
    const CaptureResult result = captureCommand(cmROStringT(commandLine), 0, directory.string(), {}, [](cmROStringT) {});
    EXPECT_EQ(result.status, 0) << commandLine << ": " << result.failure.c_str();
    EXPECT_EQ(result.errorOutput.view().find("svn: E"), cmROStringT::npos) << result.errorOutput.c_str();
}

TEST_F(ModuleTest, MarksExactlyTheFilesThatTheRealSubversionCallsModified)
{
    const TempFolder folder;
    const fs::path top = folder / "a wc & more";
    const std::string checkOut = "svn checkout --quiet file://" + (folder / "repo").string();
    run("svnadmin create repo", folder.path());
    run(checkOut + " \"a wc & more\"", folder.path());
    const Texts odd{"a b", "at@2", "a&b", "less<", "\xC3\xBC.txt", "it's", "50%", "sub/deep", "-dash"};
    for (const Texts& names : {odd, Texts{"normal", "deleted", "newer"}}) {
        for (const std::string& name : names)
            writeFile(top / name, "one\n");
    }
    run("svn add --quiet --force --no-ignore .", top);
    run("svn commit --quiet --message x", top);
    run(checkOut + " other", folder.path());
    writeFile(folder / "other/newer", "from elsewhere\n");
    run("svn commit --quiet --message y", folder / "other");
    std::map<std::string, std::string> expected;
    for (const std::string& name : odd) {
        writeFile(top / name, "two, changed\n");
        expected[(top / name).string()] = "mod";
    }
    writeFile(top / "added", "new\n");
    run("svn add --quiet added", top);
    run("svn remove --quiet deleted", top);
    writeFile(top / "unversioned", "x\n");

    setTool("svn");
    EXPECT_EQ(pass(top.string(), svnType), 0);
    EXPECT_EQ(localStatus(), expected);
    EXPECT_EQ(record((top / "newer").string()), "/mod/1");
    EXPECT_EQ(record((top / "normal").string()), "//1");
    for (const char* untouched : {"added", "deleted", "unversioned"})
        EXPECT_FALSE(editor.record((top / untouched).string())) << untouched;
}

}  // namespace
