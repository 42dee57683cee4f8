#pragma once

#include "txhost/Host.h"

#include <string>
#include <vector>

// The commands of txhost. Each returns the exit code (0 done, 1 the module reported a failure) or throws HostError.

/// Makes a scratch repository and uses every feature on it.
int runTour(const HostOptions& options);
/// The prototypes, in order of registration.
int runFunctions(const HostOptions& options);
/// Calls one function with arguments as text; those for variables by reference are JSON.
int runCall(const HostOptions& options, const std::string& name, const std::vector<std::string>& arguments);
/// One status pass per directory.
int runStatus(const HostOptions& options, const std::vector<std::string>& directories);
/// The dates of files, as the editor's reload check sees them.
int runReload(const HostOptions& options, const std::vector<std::string>& files);
/// The revisions of a file in Git.
int runHistory(const HostOptions& options, const std::string& file);
/// One commit of a Git repository.
int runShow(const HostOptions& options, const std::string& repository);
/// What differs in a Git working copy: from the index and the last commit, or from a revision.
int runDiff(const HostOptions& options, const std::string& repository);
/// The branches of a Git repository.
int runBranches(const HostOptions& options, const std::string& repository);
/// Which rows of the Git browser are shown.
struct LogOptions {
    int rows = -1;            ///< at most; below 0: all
    std::string restriction;  ///< what git log is asked for, instead of all branches
    std::string filter;       ///< only commits in which this occurs
};
/// The tree of the Git browser with its graph.
int runLog(const HostOptions& options, const std::string& repository, const LogOptions& wanted);
/// Status passes over the directories and the dates of the files at the update interval, until Ctrl-C.
int runWatch(const HostOptions& options, const std::vector<std::string>& names);
/// The committed revision of a file, by `command` or, when that is empty, by its tool's own.
int runLiveDiff(const HostOptions& options, const std::string& file, const std::string& command, bool background);
/// Hands files to the system's list of recent documents.
int runRecent(const HostOptions& options, const std::vector<std::string>& files);
