#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txhost/Host.h"

#include <string>
#include <vector>

/// A file whose status the module reported.
struct FileStatus {
    cmArray<cmStringT> local;
    cmArray<cmStringT> repository;
    bool operator==(const FileStatus&) const = default;
};

/// What one round of status passes found.
struct StatusRound {
    bool finished = false;                               ///< false: interrupted
    cmSortedDictionary<cmStringT, FileStatus> files;     ///< by absolute path
    cmArray<cmStringT> outside;                          ///< watched directories without a repository
    cmSortedDictionary<cmStringT, std::int32_t> failed;  ///< passes that ended with a status, by directory

    /// Whether a tool wrote too much: its thread has stopped for good.
    bool isSwitchedOff() const;
};

/// The directories as the editor would name them: absolute, without . and .. and trailing separators, each once.
/// Throws HostError for one that does not exist or is no directory.
cmArray<cmStringT> watchedDirectories(const std::vector<std::string>& named);

/// Tells of a pass that failed: in words on standard error and, with `json`, as an object on standard output.
void printFailure(const cmStringT& directory, std::int32_t status, bool json);

/// Asks the module for one Git status pass over each directory and waits for them all, or for Ctrl-C.
StatusRound pollStatus(Host& host, const cmArray<cmStringT>& directories);
