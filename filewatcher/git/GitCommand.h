#pragma once

#include "common/CommandRunner.h"
#include "common/cmString.h"

#include <cstdint>
#include <functional>

/// The first word of a git command line: the executable's path in double quotes.
cmStringT quotedGit(cmROStringT gitExePath);

/// How a git command, or several of them, ended.
struct GitOutcome {
    std::int32_t status = 0;
    cmStringT sentence;  ///< for a person: what git said, or why it could not be run; null when `status` is 0 or git said nothing
};

/// Runs one git command in `workingDirectory` and passes its standard output to `sink` as it is read. Blocks the calling thread
/// until git ends or `control` cuts the run short. The status is 0; statusGitFailed when standard error has a
/// "fatal:" line, or an "error:" line and there is no output; statusStopRequested; statusOutputLimit; or what CaptureResult
/// says of a command that could not be started or whose output is incomplete. Standard error goes to the debug log. Any thread.
GitOutcome runGitCommand(cmROStringT commandLine, cmROStringT workingDirectory, const CaptureControl& control,
                         const std::function<void(cmROStringT)>& sink);

/// Whether git failed only because the current branch has no commit yet.
bool isUnbornBranch(const GitOutcome& outcome);

/// runGitCommand without a way to stop it, for queries that the editor waits for. Replaces `output` by git's standard output,
/// whatever the result, and writes the result to the debug log.
GitOutcome runGitQuery(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output);

/// Finds the top level of the working copy that holds `directory`, as git writes it (with slashes). `top` is empty on failure.
GitOutcome readTopLevel(cmROStringT gitExePath, cmROStringT directory, cmStringT& top);

/// Ends a query: tells the editor why it has failed, if it has and that is known in words, and returns its status.
std::int32_t endGitQuery(const GitOutcome& outcome);

/// Whether git would take `revision` for an option. A query refuses such a revision, since an option can write files.
bool isGitOption(cmROStringT revision);
/// Ends a query that was asked for such a revision.
std::int32_t refuseGitOption(cmROStringT revision);
