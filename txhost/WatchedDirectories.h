#pragma once

#include "common/cmArray.h"
#include "txhost/Host.h"

#include <string>
#include <vector>

/// A directory to report the status of, and the tool that it belongs to.
struct WatchedDirectory {
    cmStringT path;
    Tool tool = gitTool;
};

/// The directories as the editor would name them: absolute, without ".", ".." and trailing separators, each once. Their tool is
/// `tool`, or detected when that is empty. Throws HostError for a name that does not exist or is no directory.
cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool);
/// Throws HostError when there is no program for the tool of one of the directories.
void requireTools(const Host& host, const cmArray<WatchedDirectory>& directories);
