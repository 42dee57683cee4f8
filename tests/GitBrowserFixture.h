#pragma once

#include "common/CommandRunner.h"
#include "filewatcher/git/browser/BranchTree.h"
#include "tests/ModuleFixture.h"

#include <sstream>

/// Commits for git fast-import, each a minute later than the one before it, unless the clock is wrong.
class History {
public:
    int minutesAhead = 0;

    /// Returns the mark of the commit. `parents` are marks.
    int commit(const std::string& branch, const std::vector<int>& parents, const std::string& subject,
               const std::string& author = "Ada <ada@example.org>")
    {
        const std::string when = std::to_string(1700000000 + 60 * (++m_last + minutesAhead)) + " +0000\n";
        m_text << "commit refs/heads/" << branch << "\nmark :" << m_last << "\nauthor " << author << " " << when
               << "committer C <c@example.org> " << when << "data " << subject.size() << "\n"
               << subject << "\n";
        for (std::size_t i = 0; i < parents.size(); ++i)
            m_text << (i == 0 ? "from :" : "merge :") << parents[i] << "\n";
        return m_last;
    }
    void tag(const std::string& ref, int mark) { m_text << "reset refs/" << ref << "\nfrom :" << mark << "\n\n"; }
    void import(const TempFolder& folder, const fs::path& repository) const
    {
        writeFile(folder / "history", m_text.str());
        cmStringT output("");
        runCommandCapture("\"git\" fast-import --quiet < ../history", output, text(repository));
    }

private:
    std::ostringstream m_text;
    int m_last = 0;
};

class GitBrowserTest : public ModuleTest {
protected:
    GitBrowserTest()
    {
        makeRepository(top);
        EditorObserver observer;
        observer.gitLoadEnded = [this](const cmStringT&, std::int32_t part, std::int32_t status, const cmStringT& message) {
            ended[part] = std::to_string(status) + " " + message.c_str();
        };
        editor.setObserver(observer);
    }

    template <class Function>
    Function* callback(std::int32_t slot) const
    {
        return reinterpret_cast<Function*>(editor.callback(slot));
    }
    std::int32_t open(const cmArray<CallArgument>& options = {}, const std::string& gitPath = "git")
    {
        cmArray<CallArgument> arguments{cmStringT(text(top)), cmStringT(cmROStringT(gitPath))};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return call("_GitGetBranchInfo", arguments);
    }
    /// Loads without a look at the tree.
    void load(const std::string& gitPath = "git")
    {
        EXPECT_EQ(open({}, gitPath), 0);
        EXPECT_TRUE(editor.runUntil([this] { return call("_GitGetBranchInfoRunning", {}) == 0; }, 30000));
        editor.runUntil([] { return false; }, 0);
    }
    std::int32_t published() const { return callback<std::int32_t()>(txSlotGitCount)(); }
    /// Lets the timer fill the tree until it has nothing left to do.
    bool waitForTree()
    {
        return editor.runUntil([] { return !branchTree().isTimerArmed(); }, 30000);
    }
    void show(const cmArray<CallArgument>& options = {})
    {
        EXPECT_EQ(open(options), 0);
        EXPECT_TRUE(waitForTree());
        EXPECT_EQ(call("_GitGetBranchInfoRunning", {}), 0);
        EXPECT_EQ(editor.tree().size(), static_cast<std::size_t>(published()));
    }
    GitCommitInfo commit(std::int64_t number) const
    {
        GitCommitInfo info;
        EXPECT_EQ(callback<std::int32_t(std::int64_t, GitCommitInfo&)>(txSlotGitCommit)(number, info), 0);
        return info;
    }
    std::string hashOf(const std::string& revision) const
    {
        const std::string hash = git(top, {"rev-parse", revision});
        return hash.substr(0, hash.find('\n'));
    }
    std::string branch(std::int32_t number) { return editor.call("_GitGetBranchName", {number}).text.c_str(); }
    std::string branchHash(std::int32_t number) { return editor.call("_GitGetBranchHash", {number}).text.c_str(); }
    Texts captions() const
    {
        Texts found;
        for (const TreeRow& row : editor.tree())
            found.emplace_back(row.caption.c_str());
        return found;
    }
    /// Imports a branch that is merged, one that is not, a tag and the branches of a remote; main is current.
    void importBranches()
    {
        History history;
        const int root = history.commit("main", {}, "root");
        const int side = history.commit("side", {root}, "on the side", "Grace H <grace@example.org>");
        const int second = history.commit("main", {root}, "second\twith a tab");
        history.commit("main", {second, side}, "merge", "\xC3\x96zg\xC3\xBCr <oz@example.org>");
        const int extra = history.commit("extra", {second}, "extra");
        history.tag("tags/v1", second);
        history.tag("remotes/origin/far", extra);
        history.tag("remotes/origin/HEAD", extra);
        history.import(folder, top);
        git(top, {"remote", "add", "origin", "nowhere"});
    }

    std::map<std::int32_t, std::string> ended;  ///< by part of the load: the status and the message of its last end
    TempFolder folder;
    fs::path top = folder / "repo";
};
