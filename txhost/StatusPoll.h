#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txhost/Host.h"

#include <string>
#include <vector>

/// A directory that is asked about, and whom.
struct WatchedDirectory {
    cmStringT path;
    Tool tool = gitTool;
};

/// A file whose status the module reported.
struct FileStatus {
    cmROStringT tool;
    cmArray<cmStringT> local;
    cmArray<cmStringT> repository;
    bool operator==(const FileStatus&) const = default;
};

/// A status pass that could not be made.
struct FailedPass {
    cmROStringT tool;
    std::int32_t status = 0;
    cmStringT reason = {};  ///< what the tool said; null: what the status means is told instead
    bool operator==(const FailedPass&) const = default;
};

/// What one round of status passes found.
struct StatusRound {
    bool finished = false;                             ///< false: interrupted
    cmSortedDictionary<cmStringT, FileStatus> files;   ///< by absolute path
    cmArray<cmStringT> outside;                        ///< watched directories without a repository
    cmSortedDictionary<cmStringT, FailedPass> failed;  ///< by directory

    /// Whether all passes failed because their tool wrote too much: its thread has stopped for good.
    bool isSwitchedOff(std::size_t directories) const;
};

/// The directories as the editor would name them: absolute, without . and .. and trailing separators, each once; and the tool
/// of each, `tool` if that is not empty. Throws HostError for one that does not exist or is no directory.
cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool);
/// Throws HostError when the program of one of their tools cannot be started.
void requireTools(const Host& host, const cmArray<WatchedDirectory>& directories);

/// Tells of a pass that failed: in words on standard error and, with `json`, as an object on standard output.
void printFailure(const cmStringT& directory, const FailedPass& failure, bool json);

/// Asks the module for one status pass over each directory and waits for them all, or for Ctrl-C.
StatusRound pollStatus(Host& host, const cmArray<WatchedDirectory>& directories);
