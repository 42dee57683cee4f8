#pragma once

#include "common/cmThread.h"
#include "filewatcher/git/browser/GitRunLogThread.h"
#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/commits/GitRefs.h"
#include "filewatcher/git/graph/AncestorMarks.h"
#include "filewatcher/git/graph/CommitGraph.h"

#include <cstdint>
#include <memory>

/// What a load is asked for.
struct GitLoadRequest {
    cmStringT gitExePath;
    cmStringT path;  ///< the repository's directory
    std::int32_t loadLimit = 0;
    cmStringT logRestriction;
    std::shared_ptr<GitRunLogThread> logThread;
};

/// The branches and commits of the repository that the editor's Git browser shows. Its thread reads the branches, then
/// takes what the log thread delivers until that has ended. One instance a process; the editor's thread makes and destroys it,
/// starts it and requests its stops. The reading operations are for any thread.
class GitBranchesModel : public cmThread {
public:
    /// The instance; made when there is none and `create` holds, else null.
    static GitBranchesModel* instance(bool create);
    /// Stops the instance, waits for its thread, and destroys it.
    static void destroyInstance();

    std::int32_t run() override;

    /// Takes over a request; the thread does not run.
    void init(const GitLoadRequest& request);
    /// Forgets everything. A thread that runs was told to stop before, so that it adds nothing afterwards.
    void clearModel();
    void setLogThread(std::shared_ptr<GitRunLogThread> logThread);

    bool isLogRunning();
    bool isLoaded();
    std::int32_t loadLimit();
    cmStringT path();
    cmStringT gitExePath();
    cmStringT currentBranchEndHash();
    /// False when there is no branch of that number.
    bool getBranchName(std::int64_t number, cmStringT& name);
    /// Empty when there is none.
    cmStringT branchHash(std::int64_t number);

    /// How many commits may be read, the working copy among them.
    std::int32_t publishedCommitCount();
    /// Copies a commit. 0; -1 when there is none of that number, or when it has no row (the working copy needs none).
    std::int32_t copyCommit(std::int64_t number, GitCommitInfo& info);
    /// Copies a commit, found by its hash or the first seven digits of it, whether it is shown or not. False when there is none.
    bool findCommit(cmROStringT hash, GitCommitInfo& info);
    /// How many rows there are to show, and the number of the commit in one of them (below that).
    std::int32_t shownCount();
    std::int64_t shownCommit(std::int32_t row);
    /// The row of the graph that belongs to a commit. 0; -1 when it has none.
    std::int32_t copyGraphRow(std::int64_t number, GraphRow& row);
    /// The most columns that a row of the graph has so far.
    std::int32_t graphWidth();

    /// Shows only the commits in which `text` occurs, all again when it is empty. False when it occurs in none: what is shown
    /// stays. For the editor's thread.
    bool filter(cmROStringT text);
    /// Shows also those of the commits that came after the filter was set in which its text occurs. They come below the others,
    /// whose lines may change. For the editor's thread.
    void filterNewCommits();

private:
    template <class Commits>
    struct Graph;

    GitBranchesModel();
    ~GitBranchesModel() override;

    std::int32_t getCurrentlyCheckedOutBranchName();
    std::int32_t readRemoteName(cmStringT& remoteName);
    std::int32_t readRefs();
    void numberBranches(const GitRefs& refs) CM_REQUIRES(modelLock);
    std::int32_t loadCommits();
    void parseRecords(cmROStringT batch);
    void parseSomeRecords(cmROStringT& batch);
    void addWorkingCopy() CM_REQUIRES(modelLock);

    /// Runs a git command in the repository and replaces `output` by what it wrote.
    std::int32_t runGit(cmROStringT arguments, cmStringT& output);
    /// Sleeps, a stop request aside.
    void pause(std::uint32_t ms);
    std::int64_t rowOf(std::uint32_t number) CM_REQUIRES(modelLock);
    void copyKnown(std::uint32_t number, GitCommitInfo& info) CM_REQUIRES(modelLock);
    void addPendingBranches(std::uint32_t number, GitCommitInfo& info) CM_REQUIRES(modelLock);
    GraphLayout& shownLayout() CM_REQUIRES(modelLock);

    static cmMutex modelLock;
    static std::int32_t published CM_GUARDED_BY(modelLock);

    cmThreadEvent m_wakeEvent{true, false};
    std::shared_ptr<GitRunLogThread> m_logThread CM_GUARDED_BY(modelLock);
    cmStringT m_path CM_GUARDED_BY(modelLock);
    cmStringT m_gitExePath CM_GUARDED_BY(modelLock);
    cmStringT m_logRestriction CM_GUARDED_BY(modelLock);
    std::int32_t m_loadLimit CM_GUARDED_BY(modelLock) = 0;
    bool m_loaded CM_GUARDED_BY(modelLock) = false;
    bool m_pausePending CM_GUARDED_BY(modelLock) = true;  ///< the parser is to let the editor read the first commits

    cmStringT m_headHash CM_GUARDED_BY(modelLock);
    cmStringT m_currentBranchName CM_GUARDED_BY(modelLock);
    cmStringT m_currentBranchEndHash CM_GUARDED_BY(modelLock);
    cmArray<BranchInfo> m_branches CM_GUARDED_BY(modelLock);
    cmDictionary<std::uint32_t, cmArray<std::int64_t>> m_branchesAt CM_GUARDED_BY(modelLock);  ///< numbers, by the tip's id

    CommitStore m_store CM_GUARDED_BY(modelLock);
    AncestorMarks m_onCurrentBranch CM_GUARDED_BY(modelLock);
    std::unique_ptr<Graph<AllCommits>> m_graph CM_GUARDED_BY(modelLock);
    std::unique_ptr<Graph<SomeCommits>> m_filtered CM_GUARDED_BY(modelLock);  ///< null when all are shown
    cmStringT m_filterText CM_GUARDED_BY(modelLock);
    std::uint32_t m_filterCount CM_GUARDED_BY(modelLock) = 0;  ///< of how many commits `m_filtered` was made
};
