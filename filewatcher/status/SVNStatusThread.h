#pragma once

#include "common/cmDateTime.h"
#include "filewatcher/status/LockedInstance.h"
#include "filewatcher/status/SVNQuestion.h"
#include "filewatcher/status/SVNQuestionPace.h"
#include "filewatcher/status/VCStatusThread.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>

/// Keeps the editor's per-file Subversion status. It runs the client for each watched path, reads its XML output through the
/// editor, and records which files are modified in the working copy and in the repository. The server is asked at most once a
/// minute for each path. A server that was silent during a pass is asked after the next ones, while no path waits. So are those
/// that came after it, until they answer.
class SVNStatusThread : public VCStatusThread {
public:
    using TickClock = SVNQuestion::TickClock;

    /// `clock` paces the questions to the server; this thread alone calls it.
    explicit SVNStatusThread(cmMutex& lock, TickClock clock = &cmTickCount)
        : VCStatusThread(txVCToolSVN, lock), m_clock(std::move(clock))
    {
    }

    static SVNStatusThread* instance(bool create) { return m_instance.get(create); }
    static void stopInstance() { m_instance.stop(); }

private:
    std::int32_t processEntry(const WatchEntry& entry) override;
    bool advanceIdleWork() override;
    void endIdleWork() override;

    /// What a run of the client has brought.
    struct Outcome {
        std::int32_t status;           ///< of the pass
        bool isNoWorkingCopy = false;  ///< the client said so of the directory
    };

    /// The part of a pass that needs no server.
    Outcome runLocally(const WatchEntry& entry);
    /// The pass with a question to the server. Returns nothing when runLocally must take its place.
    std::optional<Outcome> ask(const WatchEntry& entry);
    /// Finds the next question that waits for the end of the passes: first one of a directory that was not silent before.
    bool findLateEntry(WatchEntry& entry);
    /// Begins questions that wait, as long as few go on.
    void beginLateQuestions();
    /// Does one pass of the question whose turn it is.
    void advanceLateQuestion();
    void startQuestion(SVNQuestion& question);
    /// Takes what a question that is over has brought. The status is statusPassFailed after silence.
    Outcome conclude(SVNQuestion& question, bool appliesLocalStatus);

    /// Runs the local command for one entry. Returns the status of runTool.
    std::int32_t svnStatusForItem(const WatchEntry& item, SVNAnswer& answer, cmStringT& errorOutput);
    cmStringT commandLine(const WatchEntry& item, cmROStringT subcommand);
    /// Finishes the answer of a run that did not fail, and updates the editor's records; their local status only if
    /// `appliesLocalStatus` holds. The status is 0; statusStopRequested; or statusPassFailed when the client reported an error,
    /// or when the output is no complete document or has no entry although the client wrote a warning. Forgets when the server
    /// was asked about what is no working copy.
    Outcome readAnswer(const WatchEntry& item, SVNAnswer& answer, cmROStringT errorOutput, bool appliesLocalStatus);
    /// Returns 0, or statusStopRequested.
    std::int32_t updateRecords(const WatchEntry& item, const SVNAnswer& answer, bool appliesLocalStatus);

    // All are used by this thread only.
    const TickClock m_clock;
    SVNQuestionPace m_pace;
    std::deque<std::unique_ptr<SVNQuestion>>
        m_lateQuestions;  ///< those that go on beside the passes; the first one's turn is next

    static inline LockedInstance<SVNStatusThread> m_instance;
};
