#include "tests/GitStatusFixture.h"

#include <algorithm>
#include <cctype>

namespace {

/// The path with its drive letter in the other case.
std::string withOtherDriveCase(std::string path)
{
    const auto letter = static_cast<unsigned char>(path[0]);
    path[0] = static_cast<char>(std::isupper(letter) ? std::tolower(letter) : std::toupper(letter));
    return path;
}

TEST_F(GitStatusTest, TakesEitherSeparatorAndAnyCase)
{
    commit({"Some Folder/a", "b"});
    modify("Some Folder/a");
    modify("b");
    std::string slashes = in("Some Folder");
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    for (const std::string& directory : {slashes, in("sOME fOLDER"), withOtherDriveCase(in("Some Folder"))}) {
        editor.clearRecords(gitType);
        EXPECT_EQ(pass(directory), 0);
        ASSERT_EQ(localStatus().size(), 1u) << directory;
        // git spells the drive in its own way; the editor's records ignore case.
        EXPECT_EQ(editor.record(in("Some Folder/a"))->localStatus, "mod") << directory;
    }
}

}  // namespace
