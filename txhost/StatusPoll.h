#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txhost/Host.h"

#include <string>
#include <vector>

/// A directory to report the status of, and the tool that it belongs to.
struct WatchedDirectory {
    cmStringT path;
    Tool tool = gitTool;
};

/// The status of a file as the module reported it.
struct FileStatus {
    cmROStringT tool;               ///< the tool's name
    cmArray<cmStringT> local;       ///< tokens of the local status
    cmArray<cmStringT> repository;  ///< tokens of the repository status; always empty without --updates
    bool operator==(const FileStatus&) const = default;
};

/// A status pass that failed, or another failure of a tool in a directory.
struct FailedPass {
    cmROStringT tool;
    std::int32_t status = 0;
    cmStringT reason = {};  ///< what the tool or the system said; null: the meaning of `status` is shown instead
    bool operator==(const FailedPass&) const = default;
};

/// The result of one status pass over each directory.
struct StatusRound {
    bool finished = false;                             ///< false when Ctrl-C interrupted the round
    cmSortedDictionary<cmStringT, FileStatus> files;   ///< by absolute path
    cmArray<cmStringT> outside;                        ///< watched directories that are in no repository
    cmSortedDictionary<cmStringT, FailedPass> failed;  ///< by directory

    /// Whether the passes over all `directories` failed because their tool wrote too much, which ends its thread for good.
    bool isSwitchedOff(std::size_t directories) const;
};

/// The directories as the editor would name them: absolute, without ".", ".." and trailing separators, each once. Their tool is
/// `tool`, or detected when that is empty. Throws HostError for a name that does not exist or is no directory.
cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool);
/// Throws HostError when there is no program for the tool of one of the directories.
void requireTools(const Host& host, const cmArray<WatchedDirectory>& directories);

/// Prints a failure: as text on standard error and, with `json`, also as an object on standard output.
void printFailure(const cmStringT& directory, const FailedPass& failure, bool json);

/// Asks the module for one status pass over each directory and waits until all have ended, or for Ctrl-C.
StatusRound pollStatus(Host& host, const cmArray<WatchedDirectory>& directories);
