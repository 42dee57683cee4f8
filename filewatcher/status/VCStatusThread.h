#pragma once

#include "common/CommandRunner.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/status/FileWatcherThreadBase.h"
#include "txapi/VersionControlTools.h"

#include <cstdint>

/// Base of the status threads: the tool's settings, the loop that takes watched paths from the queue, and the way to run the
/// tool. A derived class supplies one pass over a path.
/// Any thread may call the public operations. Only the thread itself calls the protected ones.
class VCStatusThread : public FileWatcherThreadBase {
public:
    /// `tool` and `lock` must outlive the object. The lock guards the settings and `statusOutputTooLarge`.
    VCStatusThread(const TXVCTOOL& tool, cmMutex& lock) : m_tool(tool), singletonLock(lock) {}

    const TXVCTOOL& tool() const { return m_tool; }

    /// Stores the settings and marks the thread as configured. Returns 0.
    std::int32_t setStatusConfig(const cmStringT& exe, std::uint32_t milliseconds, std::int32_t outputLimit);
    /// The pace, in milliseconds, at which the editor adds a path again.
    std::uint32_t getIntervalMs();
    /// The most bytes that one run of the tool may write; -1 for no practical limit.
    std::int32_t getMaxOutputSize();
    /// Whether a run of the tool wrote more than that. Never reset.
    bool isStatusOutputTooLarge();
    /// A stop request that is made while the lock is held. Does not wait.
    void requestStopUnderLock();

    /// Empties the queue and tells the editor that the pass over each of its paths ended with `status`, and why unless `reason`
    /// is empty. For when the thread could not be started, or takes no paths any more.
    void failQueuedPaths(std::int32_t status, const cmStringT& reason);

    /// The loop. Returns statusStopRequested after a stop request. After too much output, the paths that still wait fail.
    std::int32_t run() override;

protected:
    /// One pass over a path, which has no trailing separator unless it is a root. Returns 0, or the status that ended the pass.
    virtual std::int32_t processEntry(const WatchEntry& entry) = 0;
    /// Called again and again while no path waits and the thread is not suspended: does a small part of what the thread has to do
    /// besides its passes, 20 ms or so. Returns false when there is nothing to do: the thread then sleeps. Throws nothing.
    virtual bool advanceIdleWork() { return false; }
    /// Ends the work that has begun. Called while the thread is suspended, and at its end.
    virtual void endIdleWork() {}

    /// The beginning of a command line: the executable in double quotes. Empty when the editor named none; a pass then does
    /// nothing.
    cmStringT quotedProgram();
    bool isStopping() { return stopRequested(singletonLock); }
    /// Runs one command of the tool. Replaces `output` by its standard output and `errorOutput` by the beginning of its
    /// standard error. Returns 0, statusStopRequested, why the command could not be started or its output is incomplete,
    /// statusPassFailed after silence, or statusOutputLimit; in the last case the thread has set `statusOutputTooLarge` and
    /// requested its own stop.
    std::int32_t runTool(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory, cmStringT& output,
                         cmStringT& errorOutput);
    /// The same with the standard output going to `sink` as it arrives.
    std::int32_t runTool(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory, const CaptureSink& sink,
                         cmStringT& errorOutput);
    /// For a run of the tool that is captured pass by pass: its control, and then what runTool does with the result. The latter
    /// returns what runTool returns.
    CaptureControl toolControl();
    std::int32_t noteRun(cmROStringT commandLine, CaptureResult result, cmStringT& errorOutput);
    /// What went wrong in the last run of the tool, in words; empty when nothing did.
    const cmStringT& lastToolError() const { return toolError; }
    /// Lets the present pass, if it ends with 0, tell the editor why the server gave no answer; empty for an answer.
    void tellMissingAnswer(const cmStringT& reason) { missingAnswer = reason; }
    /// Returns statusPassFailed. The editor is told `reason`, unless the last run of the tool wrote an error.
    std::int32_t failPass(cmROStringT reason);
    /// Makes the loop notify the editor as soon as the queue is empty and it is not suspended. Call when a record has changed.
    void noteChange() { changed = true; }

private:
    void process(WatchEntry& entry);
    std::int32_t processGuarded(const WatchEntry& entry);
    void notifyIfChanged();

    const TXVCTOOL& m_tool;
    cmMutex& singletonLock;
    cmStringT exePath CM_GUARDED_BY(singletonLock);
    std::uint32_t intervalMs CM_GUARDED_BY(singletonLock) = 0;
    std::int32_t maxOutputSize CM_GUARDED_BY(singletonLock) = -1;
    bool statusOutputTooLarge CM_GUARDED_BY(singletonLock) = false;
    cmStringT toolError;      ///< what went wrong in the last run of the tool, in words; used by this thread only
    cmStringT missingAnswer;  ///< why the server gave no answer to the present pass; used by this thread only
    bool changed = false;     ///< records changed since the last notification; used by this thread only
};
