#include "tests/GitStatusFixture.h"

namespace {

TEST_F(GitStatusTest, FollowsALinkIntoTheWorkingCopy)
{
    commit({"sub/a", "b"});
    modify("sub/a");
    modify("b");
    std::filesystem::create_directory_symlink(top / "sub", folder / "link");
    EXPECT_EQ(pass(text(folder / "link")), 0);
    EXPECT_EQ(localStatus(), (Status{{in("sub/a"), "mod"}}));
}

}  // namespace
