#pragma once

#include "filewatcher/status/VCStatusThread.h"

/// Keeps the editor's per-file Git status: for each watched directory it asks git for the repository's top level and for
/// the status below the directory, and marks every file that is modified in the work tree "mod".
class GitStatusThread : public VCStatusThread<GitStatusThread> {
public:
    static constexpr const TXVCTOOL& tool = txVCToolGit;

private:
    friend class VCStatusThread<GitStatusThread>;
    GitStatusThread() = default;
    ~GitStatusThread() override = default;

    std::int32_t processEntry(const WatchEntry& entry) { return gitStatusForPath(entry.path); }
    /// One pass over a directory. 0, or why it was cut short.
    std::int32_t gitStatusForPath(const cmStringT& path);
    /// One git command; `failed` tells whether git called it a fatal error.
    std::int32_t runGit(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output, bool& failed);
};
