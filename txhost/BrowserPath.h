#pragma once

#include "txhost/Host.h"

#include <string>

/// The directory of a repository as the editor would name it. Throws HostError for one that does not exist.
cmStringT browsedDirectory(const std::string& named);
/// Tells the user why a repository has nothing to show; the exit code: 0 for one without commits, 1 for a failure.
int reportNothingToBrowse(Host& host, const cmStringT& directory);
