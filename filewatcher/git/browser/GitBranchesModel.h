#pragma once

#include "common/cmThread.h"
#include "filewatcher/git/browser/GitRunLogThread.h"
#include "filewatcher/git/browser/ShownHistory.h"

#include <cstdint>
#include <memory>

/// The parameters of a load.
struct GitLoadRequest {
    cmStringT gitExePath;
    cmStringT path;  ///< the repository's directory
    std::int32_t loadLimit = 0;
    cmStringT logRestriction;  ///< log arguments that replace "all refs"; empty for none
    std::shared_ptr<GitRunLogThread> logThread;
};

/// The branches and commits of the repository that the editor's Git browser shows. Its thread reads the branches with git
/// commands of its own, then takes the records from the log thread until that has ended, and notifies the editor of the end of
/// each of these parts. There is one instance in a process; the editor's thread creates and destroys it, starts its thread and
/// requests its stops. Any thread may call the reading operations.
class GitBranchesModel : public cmThread {
public:
    /// Returns the instance. Without one, creates it when `create` is set and returns null otherwise.
    static GitBranchesModel* instance(bool create);
    /// Stops the instance, waits for its thread, and destroys it.
    static void destroyInstance();

    std::int32_t run() override;

    /// Sets the parameters of the next load. The thread must not run.
    void init(const GitLoadRequest& request);
    /// Forgets the load: branches, commits, filter and log thread. When the thread runs, request its stop first; it then adds
    /// nothing afterwards.
    void clearModel();
    void setLogThread(std::shared_ptr<GitRunLogThread> logThread);

    bool isLogRunning();
    /// Whether a load has run to its end since the last clearModel.
    bool isLoaded();
    std::int32_t loadLimit();
    cmStringT path();
    cmStringT gitExePath();
    cmStringT currentBranchEndHash();
    /// Returns false when there is no branch of that number.
    bool getBranchName(std::int64_t number, cmStringT& name);
    /// Returns the empty string when there is no branch of that number.
    cmStringT branchHash(std::int64_t number);

    /// The number of commits that may be read, the working copy included.
    std::int32_t publishedCommitCount();
    /// Copies a commit by number. Returns 0, or -1 when there is none or when it has no row (the working copy needs none).
    std::int32_t copyCommit(std::int64_t number, GitCommitInfo& info);
    /// Copies a commit by its hash or its first seven digits, shown or not. Returns false when there is none.
    bool findCommit(cmROStringT hash, GitCommitInfo& info);
    /// Copies the names of the tags at a commit, shown or not. Returns 0, or -1 when there is no commit of that number.
    std::int32_t copyTags(std::int64_t number, cmArray<cmStringT>& names);
    /// The number of rows that are shown.
    std::int32_t shownCount();
    /// The number of the commit in a row below shownCount.
    std::int64_t shownCommit(std::int32_t row);
    /// Copies the graph beside a commit. Returns 0, or -1 when there is no such commit or it has no row.
    std::int32_t copyGraphRow(std::int64_t number, GraphRow& row);
    /// The largest number of columns that a row of the graph has so far.
    std::int32_t graphWidth();

    /// Shows only the commits that contain `text`; an empty text shows all. Returns false when no commit contains it; the shown
    /// rows stay as they are then, until applyWaitingFilter finds one. For the editor's thread.
    bool filter(cmROStringT text);
    /// Applies a filter that has found nothing yet when one of the commits that were published since then contains its text.
    /// Returns whether it did: all rows are new then. For the editor's thread.
    bool applyWaitingFilter();
    /// Applies the current filter to the commits that were published after it was set. For the editor's thread.
    void filterNewCommits();

private:
    GitBranchesModel();
    ~GitBranchesModel() override = default;

    /// Runs a part of the load and notifies the editor of its end. Returns false on a stop request.
    bool runPart(std::int32_t part, GitOutcome (GitBranchesModel::*read)());
    // What fails leaves its part of the model empty. The outcome of several commands is that of the first that failed.
    GitOutcome readBranches();
    GitOutcome getCurrentlyCheckedOutBranchName();
    GitOutcome readRemoteName(cmStringT& remoteName);
    GitOutcome readRefs();
    GitOutcome readTags();
    GitOutcome loadCommits();
    void takeRecords(GitRunLogThread& log);
    void parseRecords(cmROStringT batch);
    /// Gives every commit that came its row. Call when the log has ended, however it did.
    void finishLog();

    /// Runs a git command in the repository and replaces `output` by its standard output.
    GitOutcome runGit(cmROStringT arguments, cmStringT& output);
    /// Sleeps until the time has passed or a stop is requested.
    void pause(std::uint32_t ms);

    static cmMutex modelLock;

    cmThreadEvent m_wakeEvent{true, false};  ///< set by a stop request
    GitLoadRequest m_request CM_GUARDED_BY(modelLock);
    bool m_loaded CM_GUARDED_BY(modelLock) = false;
    bool m_pausePending CM_GUARDED_BY(modelLock) = true;  ///< parsing pauses once, so that the first commits can be read
    std::unique_ptr<ShownHistory> m_history CM_GUARDED_BY(modelLock);
};
