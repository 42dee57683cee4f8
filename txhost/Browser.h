#pragma once

#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "txhost/Host.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

/// How a load has ended.
struct LoadReport {
    cmArray<Failure> failures;  ///< why parts of it are missing
    bool isEmpty = false;       ///< git knows the repository, and it has no commits
};

/// The editor's Git browser on one repository. The module loads the history in the background; the getters answer for what is
/// loaded so far. The destructor ends the load. For the editor's thread; one at a time.
class Browser {
public:
    /// Starts the load. A non-empty `restriction` replaces "all branches" in the arguments of git log. Throws HostError when git
    /// cannot be started or the module refuses. `observer` gets the editor's other notices meanwhile.
    Browser(Host& host, const cmStringT& repository, const cmStringT& restriction, EditorObserver observer = {});
    ~Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    /// Runs the editor's event loop until `done` returns true, the load has ended, or Ctrl-C. Returns false only for Ctrl-C.
    bool waitFor(const std::function<bool()>& done);
    bool isLoading();
    /// Whether all branches are read. They are before the first commit is.
    bool hasBranches() const { return m_ended.contains(txGitLoadBranches); }
    /// What failed in the parts of the load up to `lastPart`; call when these have ended. Asks git when there are no commits, and
    /// waits for it.
    LoadReport report(std::int32_t lastPart = txGitLoadCommits);
    /// Prints it. That there are no commits is no failure, but told on standard error. Returns the exit code.
    int reportFailures(std::int32_t lastPart = txGitLoadCommits);

    /// How many commits are loaded; the working copy counts as one.
    std::int32_t count() const;
    /// Fills `info` with commit `number`, counted from 0. Returns false when the commit is not shown (yet).
    bool commit(std::int64_t number, GitCommitInfo& info) const;
    /// The same for the commit's row of the graph.
    bool graphRow(std::int64_t number, GraphRow& row) const;
    /// The names of the tags at that commit. Throws HostError when the module cannot tell them.
    cmArray<cmStringT> tags(std::int64_t number) const;
    /// The number of columns in the widest row of the graph so far.
    std::int32_t graphWidth() const;

    /// Name and hash of a branch; branch 0 is the current one. Empty beyond the last branch.
    cmStringT branchName(std::int32_t number);
    cmStringT branchHash(std::int32_t number);
    /// The names of the branches whose tip the commit is.
    cmArray<cmStringT> branchNames(const GitCommitInfo& commit);
    /// Shows only the commits that contain `text`. Returns false when there are none. Throws HostError when the module refuses.
    bool filter(const std::string& text);

private:
    /// The end of a part of the load, as the module reported it.
    struct PartEnd {
        std::int32_t status;
        cmStringT message;
    };

    Host& m_host;
    const cmStringT m_repository;
    std::map<std::int32_t, PartEnd> m_ended;  ///< by the number of the part
};

/// Prints that Ctrl-C came before the answer about `path`. Returns the exit code.
int reportInterrupt(const HostOptions& options, const cmStringT& path);

/// Why git's silence in `directory` is no answer: it does not even name the repository, as a program that is no git. Nothing when
/// git knows the repository.
std::optional<Failure> suspectSilence(const Host& host, const cmStringT& directory);

/// The absolute path of a repository's directory, as the editor would name it. Throws HostError when it does not exist.
cmStringT browsedDirectory(const std::string& named);
