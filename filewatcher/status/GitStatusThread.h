#pragma once

#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/VCStatusThread.h"
#include "txapi/txapi.h"

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
    /// Writes the record of a directory for which git named no top level. Returns 0 when it is in no repository, and
    /// statusPassFailed when git had another reason.
    std::int32_t noteNoTopLevel(const cmStringT& path, TXVCRECORD directory, cmROStringT errorOutput);
    /// Runs one git command. Returns the status of runTool.
    std::int32_t runGit(cmROStringT commandLine, cmROStringT workingDirectory, cmStringT& output, cmStringT& errorOutput);

    static inline LockedInstance<GitStatusThread> m_instance;
};
