#include "tests/GitStatusFixture.h"

#include <algorithm>

namespace {

TEST_F(GitStatusTest, TakesEitherSeparatorAndAnyCase)
{
    commit({"Some Folder/a", "b"});
    modify("Some Folder/a");
    modify("b");
    std::string slashes = in("Some Folder");
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    std::string otherCase = in("sOME fOLDER");
    otherCase[0] ^= 0x20;  // the letter of the drive
    for (const std::string& directory : {slashes, otherCase}) {
        editor.clearRecords(gitType);
        EXPECT_EQ(pass(directory), 0);
        ASSERT_EQ(localStatus().size(), 1u) << directory;
        // git spells the drive in its own way; the editor's records ignore case.
        EXPECT_EQ(editor.record(in("Some Folder/a"))->localStatus, "mod") << directory;
    }
}

}  // namespace
