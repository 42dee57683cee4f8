#pragma once

#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/status/FileWatcherThreadBase.h"
#include "txapi/VersionControlTools.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

/// What the three status threads share: a process-wide instance per class behind the class's own lock, the settings that
/// this lock guards, the polling loop, and the way to run a tool. `Derived` supplies
///     static constexpr const TXVCTOOL& tool;
///     std::int32_t processEntry(const WatchEntry&);  // one pass, on the thread; 0 or the status that ended it
/// Only the thread itself calls the protected operations.
template <class Derived>
class VCStatusThread : public FileWatcherThreadBase {
public:
    /// The class's instance; made when there is none and `create` holds, else null. It stays until stopInstance, which
    /// only the editor's thread calls: so the editor's thread may use the pointer freely.
    static Derived* instance(bool create)
    {
        cmMutexLock hold(singletonLock);
        if (!theInstance && create)
            theInstance = new Derived;
        return theInstance;
    }

    /// Stops the instance, waits without limit for its thread, and destroys it. The lock is free meanwhile, so that the
    /// ending thread can still read its settings.
    static void stopInstance()
    {
        Derived* thread = instance(false);
        if (!thread)
            return;
        thread->requestStopUnderLock();
        thread->join();
        reapEndedChildren();
        cmMutexLock hold(singletonLock);
        delete theInstance;
        theInstance = nullptr;
    }

    /// Stores the settings for the instance's lifetime. Returns 0.
    std::int32_t setStatusConfig(const cmStringT& exe, std::uint32_t milliseconds, std::int32_t outputLimit)
    {
        cmMutexLock hold(singletonLock);
        exePath = exe;
        intervalMs = milliseconds;
        maxOutputSize = outputLimit;
        setConfigured();
        return 0;
    }

    /// The pace, in milliseconds, at which the editor adds a path again.
    std::uint32_t getIntervalMs()
    {
        cmMutexLock hold(singletonLock);
        return intervalMs;
    }

    std::int32_t getMaxOutputSize()
    {
        cmMutexLock hold(singletonLock);
        return maxOutputSize;
    }

    /// Whether a run of the tool wrote more than the limit; never reset.
    bool isStatusOutputTooLarge()
    {
        cmMutexLock hold(singletonLock);
        return statusOutputTooLarge;
    }

    void requestStopUnderLock()
    {
        cmMutexLock hold(singletonLock);
        requestStop();
    }

    std::int32_t run() override
    {
        if (isStopping())
            return statusStopRequested;
        for (;;) {
            const bool resting = isSuspended();
            WatchEntry entry;
            if (!resting && takeFirstPath(entry)) {
                process(entry);
            } else {
                if (!resting)
                    tellChanges();
                reapEndedChildren();
                sleepIdle();
            }
            if (isStopping())
                return statusStopRequested;
        }
    }

protected:
    ~VCStatusThread() override = default;

    /// What a command line begins with, the executable in double quotes; empty when there is none: a pass then does nothing.
    cmStringT quotedProgram()
    {
        cmMutexLock hold(singletonLock);
        return exePath.isEmpty() ? cmStringT("") : cmStringT(cmCat("\"") + exePath + "\"");
    }

    bool isStopping() { return stopRequested(singletonLock); }

    /// Runs one command of the tool and replaces `output` by what it wrote, `errorOutput` by the beginning of its standard
    /// error, which goes to the debug log as well. 0; statusOutputLimit, after which this thread stops for good;
    /// statusStopRequested; or why the command could not be started.
    std::int32_t runTool(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory, cmStringT& output,
                         cmStringT& errorOutput)
    {
        CaptureControl control;
        control.stopRequested = [this] { return isStopping(); };
        control.maxOutput = static_cast<std::uint32_t>(getMaxOutputSize());  // -1: no practical limit
        control.outputTooLarge = [this] {
            cmMutexLock hold(singletonLock);
            statusOutputTooLarge = true;
            requestStop();
        };
        output.clear();
        const auto append = [&output](cmROStringT bytes) { output += bytes; };
        CaptureResult result = captureLogged("VCStatusThread::runTool", commandLine, options, workingDirectory, control, append);
        errorOutput = std::move(result.errorOutput);
        const std::int32_t status = result.status == 0 && result.stopped ? statusStopRequested : result.status;
        debugLog("VCStatusThread::runTool", __LINE__, cmStringT(cmCat("status=") + std::to_string(status) + " " + commandLine));
        return status;
    }

    /// A record tells something new: the editor is told when the list has run empty.
    void noteChange() { changed = true; }

private:
    Derived& derived() { return static_cast<Derived&>(*this); }

    void tellChanges()
    {
        if (std::exchange(changed, false))
            txVCStatusChanged();
    }

    void process(WatchEntry& entry)
    {
        entry.path = cmStringT(cmWithoutTrailingSeparator(entry.path));
        const tamarin::TMString path(entry.path);
        txVCPassBegin(path);
        txVCPassEnd(path, processGuarded(entry));
    }

    /// A pass that runs out of memory is one that failed; the thread and the editor go on.
    std::int32_t processGuarded(const WatchEntry& entry)
    {
        try {
            return derived().processEntry(entry);
        } catch (const std::exception& failure) {
            debugLog("VCStatusThread::processGuarded", __LINE__, failure.what());
            return statusPassFailed;
        }
    }

    static inline cmMutex singletonLock;
    static inline Derived* theInstance CM_GUARDED_BY(singletonLock) = nullptr;

    cmStringT exePath CM_GUARDED_BY(singletonLock);
    std::uint32_t intervalMs CM_GUARDED_BY(singletonLock) = 0;
    std::int32_t maxOutputSize CM_GUARDED_BY(singletonLock) = -1;
    bool statusOutputTooLarge CM_GUARDED_BY(singletonLock) = false;
    bool changed = false;  ///< records were written that the editor was not told of; for this thread only
};
