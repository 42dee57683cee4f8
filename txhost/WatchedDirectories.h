#pragma once

#include "common/cmArray.h"
#include "txhost/Host.h"

#include <functional>
#include <string>
#include <vector>

/// A directory to report the status of, and the tool that it belongs to.
struct WatchedDirectory {
    cmStringT path;
    Tool tool = gitTool;
};

/// Is told why a directory has no answer.
using FailureListener = std::function<void(const Failure&)>;

/// The directory as the editor would name it: absolute, without ".", ".." and a trailing separator. Its tool is `tool`, or
/// detected when that is empty. Throws HostError for a name that does not exist, is no directory or cannot be looked at, and
/// UsageError for an empty one.
WatchedDirectory watchedDirectory(const std::string& name, const std::string& tool);
/// Those of the names, each once. `fail` is called for the names for which watchedDirectory throws HostError.
cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool,
                                             const FailureListener& fail);
/// The directories for whose tool there is a program. `fail` is called for the others.
cmArray<WatchedDirectory> withTheirTools(const Host& host, cmArray<WatchedDirectory> directories, const FailureListener& fail);
