#include "tests/GitRepositoriesFixture.h"

namespace fs = std::filesystem;

// git clones with the help of a shell, which not every system has.
TEST_F(GitRepositoriesTest, ShowsClonesOfEveryKindAsGitDoes)
{
    importMerges();
    git(top, {"config", "uploadpack.allowFilter", "true"});
    const std::string address = "file://" + text(top);
    git(folder.path(), {"clone", "--quiet", address, "clone"});
    expectSameAsGit(folder / "clone");
    git(folder.path(), {"clone", "--quiet", "--origin", "first", address, "two"});
    git(folder / "two", {"remote", "add", "-f", "second", address});
    expectSameAsGit(folder / "two");
    git(folder.path(), {"clone", "--quiet", "--depth=2", "--no-single-branch", address, "shallow"});
    expectSameAsGit(folder / "shallow");
    git(folder.path(), {"clone", "--quiet", "--filter=tree:0", "--no-checkout", address, "partial"});
    expectSameAsGit(folder / "partial");
    git(folder / "clone", {"-c", "protocol.file.allow=always", "submodule", "--quiet", "add", address, "inner"});
    expectSameAsGit(folder / "clone" / "inner");
}
