#include "filewatcher/status/VCStatusThread.h"

#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "txapi/txapi.h"

#include <exception>
#include <new>
#include <string>
#include <utility>

namespace {

void endPass(const tamarin::TMString& path, std::int32_t status, const cmStringT& reason)
{
    if (!reason.isEmpty())
        txVCPassError(path, reason);
    txVCPassEnd(path, status);
}

}  // namespace

std::int32_t VCStatusThread::setStatusConfig(const cmStringT& exe, std::uint32_t milliseconds, std::int32_t outputLimit)
{
    cmMutexLock hold(singletonLock);
    exePath = exe;
    intervalMs = milliseconds;
    maxOutputSize = outputLimit;
    setConfigured();
    return 0;
}

std::uint32_t VCStatusThread::getIntervalMs()
{
    cmMutexLock hold(singletonLock);
    return intervalMs;
}

std::int32_t VCStatusThread::getMaxOutputSize()
{
    cmMutexLock hold(singletonLock);
    return maxOutputSize;
}

bool VCStatusThread::isStatusOutputTooLarge()
{
    cmMutexLock hold(singletonLock);
    return statusOutputTooLarge;
}

void VCStatusThread::requestStopUnderLock()
{
    cmMutexLock hold(singletonLock);
    requestStop();
}

std::int32_t VCStatusThread::run()
{
    while (!isStopping()) {
        const bool paused = isSuspended();
        if (paused)
            endIdleWork();
        WatchEntry entry;
        if (!paused && takeFirstPath(entry)) {
            process(entry);
        } else if (paused || !advanceIdleWork()) {
            if (!paused)
                notifyIfChanged();
            reapEndedChildren();
            sleepIdle();
        }
    }
    endIdleWork();
    if (isStatusOutputTooLarge())  // this thread takes no path any more
        failQueuedPaths(statusOutputLimit, "");
    return statusStopRequested;
}

void VCStatusThread::process(WatchEntry& entry)
{
    entry.path = cmStringT(cmWithoutTrailingSeparator(entry.path));
    const tamarin::TMString path(entry.path);
    txVCPassBegin(path);
    toolError.clear();
    missingAnswer.clear();
    const std::int32_t status = processGuarded(entry);
    endPass(path, status, status == 0 ? missingAnswer : toolError);
}

void VCStatusThread::failQueuedPaths(std::int32_t status, const cmStringT& reason)
{
    for (WatchEntry entry; takeFirstPath(entry);) {
        const tamarin::TMString path(cmStringT(cmWithoutTrailingSeparator(entry.path)));
        txVCPassBegin(path);
        endPass(path, status, reason);
    }
}

std::int32_t VCStatusThread::failPass(cmROStringT reason)
{
    // A mere warning of the tool is not why the pass failed.
    if (!hasFatalLine(toolError) && !hasErrorLine(toolError) && !hasSvnError(toolError))
        toolError = reason;
    return statusPassFailed;
}

std::int32_t VCStatusThread::processGuarded(const WatchEntry& entry)
{
    try {
        return processEntry(entry);
    } catch (const std::exception& failure) {  // out of memory, say: the pass has failed, the thread and the editor go on
        toolError = dynamic_cast<const std::bad_alloc*>(&failure) ? "out of memory" : failure.what();
        debugLog("VCStatusThread::processGuarded", __LINE__, failure.what());
        return statusPassFailed;
    }
}

void VCStatusThread::notifyIfChanged()
{
    if (std::exchange(changed, false))
        txVCStatusChanged();
}

cmStringT VCStatusThread::quotedProgram()
{
    cmMutexLock hold(singletonLock);
    return exePath.isEmpty() ? cmStringT("") : cmStringT(cmCat("\"") + exePath + "\"");
}

CaptureControl VCStatusThread::toolControl()
{
    CaptureControl control;
    control.stopRequested = [this] { return isStopping(); };
    control.maxOutput = static_cast<std::uint32_t>(getMaxOutputSize());
    control.outputTooLarge = [this] {
        cmMutexLock hold(singletonLock);
        statusOutputTooLarge = true;
        requestStop();
    };
    return control;
}

std::int32_t VCStatusThread::runTool(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                                     cmStringT& output, cmStringT& errorOutput)
{
    output.clear();
    const CaptureSink append = [&output](cmROStringT bytes) { output += bytes; };
    return runTool(commandLine, options, workingDirectory, append, errorOutput);
}

std::int32_t VCStatusThread::runTool(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                                     const CaptureSink& sink, cmStringT& errorOutput)
{
    return noteRun(commandLine, captureCommand(commandLine, options, workingDirectory, toolControl(), sink), errorOutput);
}

std::int32_t VCStatusThread::noteRun(cmROStringT commandLine, CaptureResult result, cmStringT& errorOutput)
{
    constexpr cmROStringT function = "VCStatusThread::runTool";
    logProblems(function, __LINE__, result);
    toolError = result.failure.isEmpty() ? cmStringT(toolSentence(result.errorOutput)) : result.failure;
    errorOutput = std::move(result.errorOutput);
    const std::int32_t ownEnd = result.stopped ? statusStopRequested : result.silent ? statusPassFailed : 0;
    const std::int32_t status = result.status == 0 ? ownEnd : result.status;
    debugLog(function, __LINE__, cmStringT(cmCat("status=") + std::to_string(status) + " " + commandLine));
    return status;
}
