#pragma once

#include "common/cmDateTime.h"
#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/SVNQuestion.h"
#include "filewatcher/status/SVNQuestionPace.h"
#include "filewatcher/status/VCStatusThread.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

/// Keeps the editor's per-file Subversion status. It runs the client for each watched path, reads its XML output through the
/// editor, and records which files are modified in the working copy and in the repository. The server is asked at most once a
/// minute for each path. A server that was silent during a pass is asked after the next ones, while no path waits.
class SVNStatusThread : public VCStatusThread {
public:
    using TickClock = SVNQuestion::TickClock;

    /// `clock` paces the questions to the server; this thread alone calls it.
    explicit SVNStatusThread(cmMutex& lock, TickClock clock = &cmTickCount)
        : VCStatusThread(txVCToolSVN, lock), m_clock(std::move(clock))
    {
    }

    std::int32_t run() override;

    static SVNStatusThread* instance(bool create) { return m_instance.get(create); }
    static void stopInstance() { m_instance.stop(); }

private:
    std::int32_t processEntry(const WatchEntry& entry) override;
    bool advanceIdleWork() override;

    /// The part of a pass that needs no server.
    std::int32_t runLocally(const WatchEntry& entry);
    /// The pass with a question to the server. Returns its status; nothing when runLocally must take its place.
    std::optional<std::int32_t> ask(const WatchEntry& entry);
    /// Begins the next question that waits for the end of the passes. Returns false when there is none.
    bool beginLateQuestion();
    void startQuestion(SVNQuestion& question);
    /// Takes what a question that is over has brought. Returns the status of a pass; statusPassFailed after silence.
    std::int32_t conclude(SVNQuestion& question, bool appliesLocalStatus);

    /// Runs the local command for one entry. Returns the status of runTool.
    std::int32_t svnStatusForItem(const WatchEntry& item, cmStringT& output, cmStringT& errorOutput);
    cmStringT commandLine(const WatchEntry& item, cmROStringT subcommand);
    /// Returns what parseSvnStatus returns; or statusPassFailed when the client reported an error.
    std::int32_t readAnswer(const WatchEntry& item, const cmStringT& output, cmROStringT errorOutput, bool appliesLocalStatus);
    /// Updates the editor's records from the output; their local status only if `appliesLocalStatus` holds. Returns 0;
    /// statusStopRequested; or statusPassFailed when the output is no complete document, or has no entry although the client
    /// wrote `warnings`.
    std::int32_t parseSvnStatus(const cmStringT& output, cmROStringT warnings, bool appliesLocalStatus);

    // All are used by this thread only.
    const TickClock m_clock;
    SVNQuestionPace m_pace;
    std::unique_ptr<SVNQuestion> m_lateQuestion;  ///< the one that goes on beside the passes; null for none
    bool m_isNoWorkingCopy = false;               ///< the client said so of the directory of the last answer

    static inline LockedInstance<SVNStatusThread> m_instance;
};
