#include "tests/GitStatusFixture.h"

#include <cctype>

namespace {

/// The path with its drive letter in the other case.
std::string withOtherDriveCase(std::string path)
{
    const auto letter = static_cast<unsigned char>(path[0]);
    path[0] = static_cast<char>(std::isupper(letter) ? std::tolower(letter) : std::toupper(letter));
    return path;
}

TEST_F(GitStatusTest, TheDriveLetterMayComeInEitherCase)
{
    commit({"sub/a", "b"});
    modify("sub/a");
    modify("b");
    for (const std::string& directory : {in("sub"), withOtherDriveCase(in("sub"))}) {
        editor.clearRecords(gitType);
        EXPECT_EQ(pass(directory), 0);
        ASSERT_EQ(localStatus().size(), 1u) << directory;
        // The record has git's own spelling of the drive; to the editor they are one file.
        EXPECT_EQ(editor.record(in("sub/a"))->localStatus, "mod");
    }
}

TEST_F(GitStatusTest, TakesEitherSeparatorAndAnyCase)
{
    commit({"Some Folder/a", "b"});
    modify("Some Folder/a");
    modify("b");
    std::string slashes = in("Some Folder");
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    for (const std::string& directory : {slashes, in("sOME fOLDER")}) {
        editor.clearRecords(gitType);
        EXPECT_EQ(pass(directory), 0);
        EXPECT_EQ(localStatus(), (Status{{in("Some Folder/a"), "mod"}})) << directory;
    }
}

TEST_F(GitStatusTest, TheTopLevelItselfMayEndInABackslash)
{
    commit({"a"});
    modify("a");
    addPath(text(top) + "\\");
    EXPECT_EQ(waitForPass(text(top)), 0);
    EXPECT_EQ(localStatus(), (Status{{in("a"), "mod"}}));
}

TEST_F(GitStatusTest, RefusesABatchFileAsTheTool)
{
    writeFile(folder / "git.bat", "@echo off\r\n");
    setTool(text(folder / "git.bat") + " .");
    EXPECT_EQ(pass(text(top)), -102646);
}

}  // namespace
