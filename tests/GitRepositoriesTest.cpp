#include "tests/GitRepositoriesFixture.h"

namespace fs = std::filesystem;

namespace {

Texts linesOf(const std::string& text)
{
    Texts lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

}  // namespace

void GitRepositoriesTest::expectSameAsGit(const fs::path& path)
{
    SCOPED_TRACE(text(path));
    top = path;
    show();
    std::string log;
    std::map<std::string, std::set<std::string>> branches;
    std::set<std::string> marked;
    for (std::int64_t number = 1; number < published(); ++number) {
        const GitCommitInfo info = commit(number);
        const std::string hash = info.hash.c_str();
        std::string parents = info.firstParent.c_str();
        for (const cmStringT& parent : info.otherParents)
            parents += std::string(" ") + parent.c_str();
        for (const std::string& field :
             {hash, parents, std::string(info.authorEmail.c_str()), std::string(info.authorName.c_str()),
              std::string(info.date.text().c_str()), std::string(info.subject.c_str())})
            log += field + "\n";
        for (const std::int64_t attached : info.branchNumbers)
            branches[hash].insert(branch(static_cast<std::int32_t>(attached)));
        if (info.onCurrentBranch == 1)
            marked.insert(hash);
    }
    EXPECT_EQ(log, git(top, {"-c", "i18n.logOutputEncoding=UTF-8", "-c", "log.showSignature=false", "log", "--all",
                             "--date=format-local:%Y-%m-%d %H:%M:%S", "--format=%H%n%P%n%ae%n%an%n%cd%n%s"}));
    EXPECT_EQ(branches, branchesOfGit());
    EXPECT_EQ(branchHash(0), hashOf("HEAD"));
    const Texts ancestors = linesOf(git(top, {"rev-list", "HEAD"}));
    EXPECT_EQ(marked, std::set<std::string>(ancestors.begin(), ancestors.end()));
}

std::map<std::string, std::set<std::string>> GitRepositoriesTest::branchesOfGit()
{
    std::map<std::string, std::set<std::string>> branches;
    const bool oneRemote = linesOf(git(top, {"remote"})).size() == 1;
    for (const std::string& line :
         linesOf(git(top, {"for-each-ref", "--format=%(objectname) %(refname)", "refs/heads", "refs/remotes"}))) {
        const std::string ref = line.substr(46);
        const std::string name = ref.substr(ref.find('/') + 1);
        if (!oneRemote || !ref.starts_with("remotes/") || !name.ends_with("/HEAD"))
            branches[line.substr(0, 40)].insert(name);
    }
    if (git(top, {"rev-parse", "--abbrev-ref", "HEAD"}) == "HEAD\n")
        branches[hashOf("HEAD")].insert(branch(0));
    return branches;
}

void GitRepositoriesTest::importMerges()
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

TEST_F(GitRepositoriesTest, ShowsEveryShapeAsGitDoes)
{
    importMerges();
    expectSameAsGit(top);
    git(top, {"worktree", "add", "--quiet", text(folder / "tree"), "left"});
    expectSameAsGit(folder / "tree");
    git(folder.path(), {"init", "--quiet", "--bare", "--initial-branch=main", "bare"});
    top = folder / "bare";
    importMerges();
    expectSameAsGit(top);
    git(folder.path(), {"init", "--quiet", "tagged"});
    top = folder / "tagged";
    importMerges();
    git(top, {"checkout", "--quiet", "--detach", "v1"});
    git(top, {"branch", "--delete", "--force", "main", "left", "right", "alone", "late"});
    expectSameAsGit(top);
}

TEST_F(GitRepositoriesTest, ShowsTextsThatMakeTrouble)
{
    History history;
    // Their hashes share the first seven digits.
    history.commit("one", {}, "twin 3769");
    int last = history.commit("main", {}, "twin 1053");
    last = history.commit("main", {last}, std::string(10000, 's'), "Long <l@x>");
    last = history.commit("main", {last}, "\t[main]\tand \xC3\xBC < > \"'`$(x) %H", "Grace [G] \t \"H\" <g r@x>");
    last = history.commit("main", {last}, "no UTF-8: \xFF\xE9 in \xC3", "J\xF6rg <j\xF6@x>");
    last = history.commit("main", {last}, "", "<nobody@x>");
    last = history.commit("main", {last}, "Uncomitted changes");
    history.import(folder, top);
    expectSameAsGit(top);
    const std::string digits = hashOf("one").substr(0, 7);
    EXPECT_EQ(digits, hashOf("main~5").substr(0, 7));
    EXPECT_EQ(call("_GitFilterTree", {cmStringT(digits), 0}), 0);
    EXPECT_EQ(editor.tree().size(), 2u);
}

TEST_F(GitRepositoriesTest, ShowsTheSameWhateverTheUserConfigured)
{
    importMerges();
    History latin;
    latin.commit("latin", {}, "f\xC3\xBCr", "J\xC3\xB6rg <j@x>");
    latin.import(folder, top);
    for (const char* setting :
         {"log.showSignature=true", "log.date=raw", "format.pretty=oneline", "i18n.logOutputEncoding=ISO-8859-1",
          "color.ui=always", "color.branch=always", "column.ui=always", "log.decorate=full", "log.showRoot=false",
          "core.abbrev=4", "log.mailmap=false", "branch.sort=-committerdate", "core.pager=false", "alias.log=status",
          "diff.external=false", "notes.displayRef=*"}) {
        const std::string pair = setting;
        git(top, {"config", pair.substr(0, pair.find('=')), pair.substr(pair.find('=') + 1)});
    }
    expectSameAsGit(top);
}
