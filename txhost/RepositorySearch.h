#pragma once

#include "txhost/WatchedDirectories.h"

/// What a search for repositories has found.
struct FoundRepositories {
    cmArray<WatchedDirectory> repositories;  ///< in the order of their paths, each once
    cmArray<Failure> failures;               ///< folders that cannot be read
};

/// Searches `directories` and all folders below them for working copies. A directory inside of one counts as one itself. The
/// search goes on in those that it finds, but not through links. Unless `tool` is empty, only those of that tool are taken.
/// Throws HostError when there are none although all folders could be read, and after an interrupt.
FoundRepositories findRepositories(const cmArray<WatchedDirectory>& directories, const std::string& tool);
