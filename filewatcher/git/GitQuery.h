#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstdint>

// The git commands that the editor waits for. They run on its thread, to their end.

/// Runs one git command by the rules of runGitCommand and replaces `output` by what it wrote.
std::int32_t runGitQuery(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output);
/// Whether git would read a revision as an option: nobody means that, so it is refused.
bool isGitOption(cmROStringT revision);

/// The top level of the working copy that holds the file or folder at `path`, as git writes it (with slashes). 0 or the status
/// of the command; `root` is then left alone.
std::int32_t readRepositoryRoot(cmROStringT path, cmROStringT git, cmStringT& root);
/// The files of the whole working copy around `directory` that differ from the index or, with `staged`, those in the index that
/// differ from HEAD: from the top level, with slashes. 0 or the status of the command; `files` is then left alone.
std::int32_t listChangedFiles(cmROStringT directory, cmROStringT git, cmArray<cmStringT>& files, bool staged);
