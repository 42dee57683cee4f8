#pragma once

#include "tests/GitBrowserFixture.h"

#include <string>
#include <vector>

/// Holds what the browser shows of a repository against what git itself says of it.
class GitRepositoriesTest : public GitBrowserTest {
protected:
    /// Loads the repository at `path`; every commit, branch, mark and line must be right.
    void expectSameAsGit(const std::filesystem::path& path);
    /// Two branches that were merged into main, one that was not, in the repository at `top`.
    void importMerges();

private:
    void expectSameCommits();
    void expectSameBranches();
    void expectSameMarks();
    void expectLinesToParents();
};
