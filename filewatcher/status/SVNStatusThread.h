#pragma once

#include "common/cmDateTime.h"
#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/VCStatusThread.h"

#include <cstdint>
#include <functional>
#include <utility>

/// Keeps the editor's per-file Subversion status. It runs the client for each watched path, reads its XML output through the
/// editor, and records which files are modified in the working copy and in the repository. The server is asked at most once a
/// minute.
class SVNStatusThread : public VCStatusThread {
public:
    using TickClock = std::function<std::uint32_t()>;  ///< milliseconds; wraps around

    /// `clock` paces the questions to the server; this thread alone calls it.
    explicit SVNStatusThread(cmMutex& lock, TickClock clock = &cmTickCount)
        : VCStatusThread(txVCToolSVN, lock), m_clock(std::move(clock))
    {
    }

    static SVNStatusThread* instance(bool create) { return m_instance.get(create); }
    static void stopInstance() { m_instance.stop(); }

private:
    std::int32_t processEntry(const WatchEntry& entry) override;
    std::int32_t runAndParse(const WatchEntry& entry);
    /// Runs the command for one entry. Returns 0, also when the editor named no executable; the status of runTool; or
    /// statusPassFailed when the client reported an error.
    std::int32_t svnStatusForItem(const WatchEntry& item, cmStringT& output, cmStringT& errorOutput);
    /// Updates the editor's records from the output. Returns 0; statusStopRequested; or statusPassFailed when the output is no
    /// complete document, or has no entry although the client reported an error (`hasErrors`).
    std::int32_t parseSvnStatus(const cmStringT& output, bool hasErrors);
    cmROStringT subcommand(const WatchEntry& item);

    const TickClock m_clock;
    bool showUpdates = true;                ///< the next status command asks the server; used by this thread only
    std::uint32_t lastShowUpdatesTick = 0;  ///< when the server was last asked; used by this thread only

    static inline LockedInstance<SVNStatusThread> m_instance;
};
