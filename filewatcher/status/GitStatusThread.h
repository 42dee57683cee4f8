#pragma once

#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/VCStatusThread.h"

/// Keeps the editor's per-file Git status. For each watched directory it asks git for the repository's top level and for the
/// status below the directory, and marks every file that is modified in the work tree "mod".
class GitStatusThread : public VCStatusThread {
public:
    explicit GitStatusThread(cmMutex& lock) : VCStatusThread(txVCToolGit, lock) {}

    static GitStatusThread* instance(bool create) { return m_instance.get(create); }
    static void stopInstance() { m_instance.stop(); }

private:
    std::int32_t processEntry(const WatchEntry& entry) override { return gitStatusForPath(entry.path); }
    std::int32_t gitStatusForPath(const cmStringT& path);
    /// Runs one git command; sets `failed` when git called its problem fatal. Returns the status of runTool.
    std::int32_t runGit(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output, bool& failed);

    static inline LockedInstance<GitStatusThread> m_instance;
};
