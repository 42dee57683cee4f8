#include "common/ChildProcess.h"

#include "common/NativeHandle.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

/// Waits for the handle, but not much longer than `time`. An ordinary wait is rounded up to the system's tick of 15.6 ms.
/// Returns false when the system cannot wait.
bool waitExactly(HANDLE handle, std::chrono::microseconds time)
{
    constexpr DWORD highResolution = 2;  // CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
    HANDLE timer = CreateWaitableTimerExW(nullptr, nullptr, highResolution, TIMER_MODIFY_STATE | SYNCHRONIZE);
    const auto atMostMs = static_cast<DWORD>(std::chrono::ceil<std::chrono::milliseconds>(time).count());
    LARGE_INTEGER due;
    due.QuadPart = -time.count() * 10;  // negative: relative to now, in units of 100 ns
    DWORD result = WAIT_FAILED;
    if (timer && SetWaitableTimer(timer, &due, 0, nullptr, nullptr, FALSE)) {
        const HANDLE handles[] = {handle, timer};
        result = WaitForMultipleObjects(2, handles, FALSE, atMostMs + 20);
    } else {
        result = WaitForSingleObject(handle, atMostMs);
    }
    if (timer)
        CloseHandle(timer);
    return result != WAIT_FAILED;
}

}  // namespace

// Closing the handle is all that Windows needs.
void reapEndedChildren() {}
void collectTerminatedChildren(std::uint32_t) {}

bool ChildProcess::isRunning()
{
    return valid && WaitForSingleObject(nativeHandle(handle), 0) != WAIT_OBJECT_0;
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    terminated = true;
    if (job != none)
        TerminateJobObject(nativeHandle(job), 0);
    if (isRunning()) {
        TerminateProcess(nativeHandle(handle), 0);
        return;
    }
    if (HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, processId)) {
        TerminateProcess(process, 0);
        CloseHandle(process);
    }
}

cmStringT ChildProcess::abnormalEnd() const
{
    // The exit codes that the system gives: its own errors and exceptions. A tool's own -1 lies above.
    constexpr DWORD firstFailure = 0xC0000000;
    constexpr DWORD firstOwn = 0xF0000000;
    DWORD code = 0;
    if (!valid || !GetExitCodeProcess(nativeHandle(handle), &code) || code < firstFailure || code >= firstOwn)
        return {};
    char text[40];
    std::snprintf(text, sizeof text, "crashed (0x%08lX)", static_cast<unsigned long>(code));
    return text;
}

std::int32_t ChildProcess::exitCode() const
{
    DWORD code = 0;
    const bool hasEnded = valid && WaitForSingleObject(nativeHandle(handle), 0) == WAIT_OBJECT_0;
    return hasEnded && GetExitCodeProcess(nativeHandle(handle), &code) ? static_cast<std::int32_t>(code) : 0;
}

void ChildProcess::close()
{
    constexpr DWORD terminateGraceMs = 50;
    if (terminated && valid)
        WaitForSingleObject(nativeHandle(handle), terminateGraceMs);
    if (handle != none)
        CloseHandle(nativeHandle(std::exchange(handle, none)));
    if (job != none)
        CloseHandle(nativeHandle(std::exchange(job, none)));
    processId = 0;
    valid = 0;
    idlePolls = 0;
    terminated = false;
}

ChildActivity ChildProcess::poll(ChildPipe& output, ChildPipe& error)
{
    const DWORD ended = valid ? WaitForSingleObject(nativeHandle(handle), 0) : WAIT_OBJECT_0;
    const bool outputWaits = output.dataAvailable();
    const bool errorWaits = error.dataAvailable();
    if (outputWaits || errorWaits)
        idlePolls = 0;
    return {ended == WAIT_TIMEOUT, outputWaits, errorWaits, ended == WAIT_FAILED || output.hasFailed() || error.hasFailed()};
}

bool ChildProcess::waitForActivity(const ChildPipe&, const ChildPipe&, std::uint32_t timeoutMs)
{
    // Windows cannot wait for anonymous pipes. So a child that has just written is polled again at once, a quiet one less often.
    constexpr std::uint32_t pollsWithoutSleep = 3;
    constexpr std::uint32_t longest = 10;
    if (++idlePolls > pollsWithoutSleep)
        return waitExactly(nativeHandle(handle),
                           std::chrono::milliseconds(std::min({idlePolls - pollsWithoutSleep, longest, timeoutMs})));
    SwitchToThread();
    return true;
}

bool ChildProcess::waitForEnd(std::chrono::microseconds timeout)
{
    return waitExactly(nativeHandle(handle), timeout);
}
