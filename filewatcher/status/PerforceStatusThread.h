#pragma once

#include "filewatcher/status/PerforceOutput.h"
#include "filewatcher/status/VCStatusThread.h"

/// Keeps the editor's per-file Perforce status: which files of the workspace are opened ("edit"), which of them differ from
/// the depot ("mod"), and which have a newer revision there ("mod" as repository status).
class PerforceStatusThread : public VCStatusThread<PerforceStatusThread> {
public:
    static constexpr const TXVCTOOL& tool = txVCToolPerforce;

private:
    friend class VCStatusThread<PerforceStatusThread>;
    PerforceStatusThread() = default;
    ~PerforceStatusThread() override = default;

    std::int32_t processEntry(const WatchEntry& entry) { return perforceStatusForPath(entry.path); }
    /// One pass over the workspace that a directory belongs to. 0, or why it was cut short; nothing is written unless all four
    /// commands could answer.
    std::int32_t perforceStatusForPath(const cmStringT& path);
    /// One command in that directory. 0; statusPassFailed when the client could not answer.
    std::int32_t runClient(cmROStringT arguments, const cmStringT& path, cmStringT& output);
};
