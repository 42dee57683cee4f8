#pragma once

#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/VCStatusThread.h"

/// Keeps the editor's per-file Perforce status: which files of the workspace are opened ("edit"), which of them differ from
/// the depot ("mod"), and which have a newer revision in the depot ("mod" as repository status).
class PerforceStatusThread : public VCStatusThread {
public:
    explicit PerforceStatusThread(cmMutex& lock) : VCStatusThread(txVCToolPerforce, lock) {}

    static PerforceStatusThread* instance(bool create) { return m_instance.get(create); }
    static void stopInstance() { m_instance.stop(); }

private:
    std::int32_t processEntry(const WatchEntry& entry) override { return perforceStatusForPath(entry.path); }
    /// A pass over the workspace that contains the directory. Writes records only when all four commands succeeded.
    std::int32_t perforceStatusForPath(const cmStringT& path);
    /// Runs one command in the directory. Returns the status of runTool; statusPassFailed when the client reports a problem.
    std::int32_t runClient(cmROStringT arguments, const cmStringT& path, cmStringT& output);

    static inline LockedInstance<PerforceStatusThread> m_instance;
};
