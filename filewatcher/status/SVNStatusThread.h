#pragma once

#include "filewatcher/status/VCStatusThread.h"

#include <cstdint>

/// Keeps the editor's per-file Subversion status: runs the client for each watched path, reads its XML output through the
/// editor, and writes what is modified here and in the repository. The repository is asked at most once a minute.
class SVNStatusThread : public VCStatusThread<SVNStatusThread> {
public:
    static constexpr const TXVCTOOL& tool = txVCToolSVN;

private:
    friend class VCStatusThread<SVNStatusThread>;
    SVNStatusThread() = default;
    ~SVNStatusThread() override = default;

    std::int32_t processEntry(const WatchEntry& entry);
    std::int32_t runAndParse(const WatchEntry& entry);
    /// Runs the command for one entry. 0, also when there is no executable, or why it failed.
    std::int32_t svnStatusForItem(const WatchEntry& item, cmStringT& output, cmStringT& errorOutput);
    /// Writes what the output tells into the editor's records. 0; statusPassFailed for what is no whole document, or an
    /// empty one when the client `complained`.
    std::int32_t parseSvnStatus(const cmStringT& output, bool complained);
    cmROStringT subcommand(const WatchEntry& item);

    bool showUpdates = true;                ///< the next status command asks the repository; for this thread only
    std::uint32_t lastShowUpdatesTick = 0;  ///< when one did, in milliseconds of some clock
};
