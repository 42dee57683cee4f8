#pragma once

#include "txhost/Host.h"

#include <string>
#include <vector>

// The commands of txhost, named as on the command line. Each prints its results, as lines for people or with options.json as one
// JSON object a line, and returns the exit code: 0 done, 1 the module reported a failure, 3 as StatusOptions tells. Each throws
// HostError for a failure of its own and UsageError for arguments that make no sense.

/// tour: makes a scratch repository and uses every feature on it.
int runTour(const HostOptions& options);
/// functions: the registered prototypes, in the order of registration.
int runFunctions(const HostOptions& options);
/// call: calls one function. Arguments are given as text, those for variables by reference as JSON.
int runCall(const HostOptions& options, const std::string& name, const std::vector<std::string>& arguments);
struct StatusOptions {
    bool exitCode = false;  ///< 3 is the exit code when a file is modified and nothing has failed
    bool recurse = false;   ///< the working copies at and below the directories are shown, also those without modified files
};
/// status: one status pass per directory.
int runStatus(const HostOptions& options, const std::vector<std::string>& directories, const StatusOptions& wanted);
/// reload: the dates of files, as the editor's reload check gets them.
int runReload(const HostOptions& options, const std::vector<std::string>& files);
/// history: the revisions of a file in Git.
int runHistory(const HostOptions& options, const std::string& file);
/// show: the commit options.revision of a Git repository.
int runShow(const HostOptions& options, const std::string& repository);
/// diff: what differs in a Git working copy from the index and the last commit, or from options.revision.
int runDiff(const HostOptions& options, const std::string& repository);
/// branches: the branches of a Git repository, the current one first.
int runBranches(const HostOptions& options, const std::string& repository);
/// Which rows of the Git browser runLog prints.
struct LogOptions {
    int rows = -1;            ///< maximal number of rows; negative: all
    std::string restriction;  ///< arguments of git log that replace "all branches"; empty: all branches
    std::string order;        ///< an option of git log that sorts the rows; empty: the usual order
    std::string filter;       ///< only commits that contain this text; empty: all
};
/// log: the tree of the Git browser with its graph.
int runLog(const HostOptions& options, const std::string& repository, const LogOptions& wanted);
/// What runBrowse shows.
struct BrowseOptions {
    std::string dump;  ///< "WIDTHxHEIGHT" of the one screen that is printed; empty: the terminal is used
    std::string keys;  ///< keys to press before that, as keysFromText takes them
};
/// browse: the history of a repository on the full screen of a terminal.
int runBrowse(const HostOptions& options, const std::string& repository, const BrowseOptions& wanted);
/// watch: status changes of directories and date changes of files, checked every options.intervalSeconds until Ctrl-C. The shell
/// runs `command`, unless it is empty, when something has changed.
int runWatch(const HostOptions& options, const std::vector<std::string>& names, const std::string& command);
/// livediff: fetches the committed revision of a file into the cache, with `command` or, when that is empty, with the command of
/// the file's own tool.
int runLiveDiff(const HostOptions& options, const std::string& file, const std::string& command, bool background);
/// recent: adds files to the system's list of recent documents.
int runRecent(const HostOptions& options, const std::vector<std::string>& files);
