#include "common/cmPath.h"
#include "tests/GitBrowserFixture.h"

#include <set>

namespace {

std::set<std::string> linesOf(const std::string& text)
{
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    return lines;
}

/// Compares what the browser shows of a repository with what git itself prints.
class GitRepositoriesTest : public GitBrowserTest {
protected:
    /// Loads the repository at `path` and expects every commit, branch and mark to be as git has it.
    void expectSameAsGit(const fs::path& path)
    {
        SCOPED_TRACE(text(path));
        top = path;
        show({1});
        std::ostringstream log;
        std::set<std::string> branches;
        std::set<std::string> tags;
        std::set<std::string> marked;
        for (std::int64_t number = 1; number < published(); ++number) {
            const GitCommitInfo info = commit(number);
            const std::string hash = info.hash.c_str();
            log << hash << "\n" << info.firstParent.c_str();
            for (const cmStringT& parent : info.otherParents)
                log << " " << parent.c_str();
            for (const cmStringT& field : {info.authorEmail, info.authorName, cmStringT(info.date.text()), info.subject})
                log << "\n" << field.c_str();
            log << "\n";
            for (const std::int64_t attached : info.branchNumbers)
                branches.insert(hash + " " + branch(static_cast<std::int32_t>(attached)));
            cmArray<cmStringT> tagNames{"old"};
            EXPECT_EQ((callback<std::int32_t(std::int64_t, cmArray<cmStringT>&)>(txSlotGitTags)(number, tagNames)), 0);
            for (const cmStringT& name : tagNames)
                tags.insert(hash + " " + name.c_str());
            if (info.onCurrentBranch == 1)
                marked.insert(hash);
        }
        EXPECT_EQ(log.str(), git(top, {"-c", "i18n.logOutputEncoding=UTF-8", "-c", "log.showSignature=false", "log", "--all",
                                       "--date=format-local:%Y-%m-%d %H:%M:%S", "--format=%H%n%P%n%ae%n%an%n%cd%n%s"}));
        EXPECT_EQ(branches, branchesOfGit());
        EXPECT_EQ(tags, tagsOfGit());
        EXPECT_EQ(branchHash(0), hashOf("HEAD"));
        EXPECT_EQ(marked, linesOf(git(top, {"rev-list", "HEAD"})));
    }
    /// Imports several merges and a commit that is listed below its child into the repository at `top`.
    void importMerges()
    {
        History history;
        const int root = history.commit("main", {}, "root");
        const int left = history.commit("left", {root}, "left");
        const int right = history.commit("right", {root}, "right");
        const int one = history.commit("left", {left, right}, "crossing one way");
        const int other = history.commit("right", {right, left}, "and the other");
        const int alone = history.commit("alone", {}, "a root of its own");
        history.minutesAhead = 500;
        const int early = history.commit("main", {root}, "by a clock that is ahead");
        history.minutesAhead = 0;
        history.commit("late", {early}, "its child, listed below it");
        history.commit("main", {early, one, other, alone}, "octopus");
        history.tag("tags/v1", early);
        history.tag("notes/commits", root);
        history.import(folder, top);
    }

private:
    std::set<std::string> branchesOfGit()
    {
        const std::string format = "--format=%(objectname) %(refname:lstrip=2)";
        std::set<std::string> branches = linesOf(git(top, {"for-each-ref", format, "refs/heads", "refs/remotes"}));
        if (linesOf(git(top, {"remote"})).size() == 1)
            std::erase_if(branches, [](const std::string& line) { return line.ends_with("/HEAD"); });
        if (git(top, {"rev-parse", "--abbrev-ref", "HEAD"}) == "HEAD\n")
            branches.insert(hashOf("HEAD") + " " + branch(0));
        return branches;
    }
    std::set<std::string> tagsOfGit()
    {
        std::set<std::string> tags;
        for (const std::string& name : linesOf(git(top, {"for-each-ref", "--format=%(refname:lstrip=2)", "refs/tags"}))) {
            if (git(top, {"cat-file", "-t", name + "^{}"}) == "commit\n")
                tags.insert(hashOf(name + "^{}").append(" ").append(name));
        }
        return tags;
    }
};

TEST_F(GitRepositoriesTest, ShowsEveryShapeAsGitDoes)
{
    importMerges();
    git(top, {"tag", "--message=x", "v1.0", "v1"});
    git(top, {"tag", "--message=x", "nested", "v1.0"});
    git(top, {"tag", "--message=x", "of/a/tree", "v1^{tree}"});
    git(top, {"tag", "tree", "v1^{tree}"});
    git(top, {"update-ref", "refs/remotes/first/far", "right"});
    git(top, {"symbolic-ref", "refs/remotes/first/HEAD", "refs/remotes/first/far"});
    git(top, {"remote", "add", "first", "nowhere"});
    expectSameAsGit(top);
    git(top, {"remote", "add", "second", "nowhere"});
    git(top, {"worktree", "add", "--quiet", text(folder / "tree"), "left"});
    expectSameAsGit(folder / "tree");
    for (const char* option : {"--bare", "--object-format=sha256"}) {
        top = folder / option;
        git(folder.path(), {"init", "--quiet", "--initial-branch=main", option, text(top)});
        importMerges();
        expectSameAsGit(top);
    }
    EXPECT_EQ(call("_GitFilterTree", {cmStringT(hashOf("main").substr(50)), 0}), 0);
    EXPECT_EQ(editor.tree().size(), 1u);
    git(folder.path(), {"init", "--quiet", "tagged"});
    top = folder / "tagged";
    importMerges();
    git(top, {"checkout", "--quiet", "--detach", "v1"});
    git(top, {"branch", "--delete", "--force", "main", "left", "right", "alone", "late"});
    expectSameAsGit(top);
}

TEST_F(GitRepositoriesTest, ShowsTextsThatMakeTroubleWhateverTheUserConfigured)
{
    History history;
    // Their hashes share the first seven digits.
    history.commit("one", {}, "twin 3769");
    int last = history.commit("main", {}, "twin 1053");
    last = history.commit("main", {last}, std::string(10000, 's'), "Long <l@x>");
    last = history.commit("main", {last}, "\t[main]\tand \xC3\xBC < > \"'`$(x) %H", "Grace [G] \t \"H\" <g r@x>");
    last = history.commit("main", {last}, "no UTF-8: \xFF\xE9 in \xC3", "J\xF6rg <j\xF6@x>");
    last = history.commit("main", {last}, "", "<nobody@x>");
    history.commit("main", {last}, "Uncomitted changes");
    history.import(folder, top);
    expectSameAsGit(top);
    const std::string digits = hashOf("one").substr(0, 7);
    EXPECT_EQ(digits, hashOf("main~5").substr(0, 7));
    EXPECT_EQ(call("_GitFilterTree", {cmStringT(digits), 0}), 0);
    EXPECT_EQ(editor.tree().size(), 2u);

    writeFile(top / ".git" / "settings",
              "[log]\nshowSignature\ndate=raw\ndecorate=full\nshowRoot=false\nmailmap=false\n[format]\npretty=oneline\n"
              "[color]\nui=always\nbranch=always\n[column]\nui=always\n[core]\nabbrev=4\n[branch]\nsort=-committerdate\n"
              "[notes]\ndisplayRef=*\n[i18n]\nlogOutputEncoding=ISO-8859-1\n");
    git(top, {"config", "include.path", "settings"});
    expectSameAsGit(top);
}

}  // namespace
