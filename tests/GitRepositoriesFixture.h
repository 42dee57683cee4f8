#pragma once

#include "tests/GitBrowserFixture.h"

#include <map>
#include <set>

/// Compares what the browser shows of a repository with what git itself prints.
class GitRepositoriesTest : public GitBrowserTest {
protected:
    /// Loads the repository at `path` and expects every commit, branch and mark to be as git has it.
    void expectSameAsGit(const std::filesystem::path& path);
    /// Imports several merges and a commit that is listed below its child into the repository at `top`.
    void importMerges();

private:
    /// The names of the branches by the hash of their tips.
    std::map<std::string, std::set<std::string>> branchesOfGit();
};
