#include "common/ChildProcess.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace {

HANDLE native(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

void reapEndedChildren() {}

bool ChildProcess::isRunning()
{
    return valid && WaitForSingleObject(native(handle), 0) != WAIT_OBJECT_0;
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    terminated = true;
    if (group != none)
        TerminateJobObject(native(group), 0);
    if (isRunning()) {
        TerminateProcess(native(handle), 0);
        return;
    }
    if (HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, processId)) {
        TerminateProcess(process, 0);
        CloseHandle(process);
    }
}

void ChildProcess::close()
{
    if (handle != none)
        CloseHandle(native(std::exchange(handle, none)));
    if (group != none)
        CloseHandle(native(std::exchange(group, none)));
    processId = 0;
    valid = 0;
    idleLooks = 0;
    terminated = false;
}

ChildActivity ChildProcess::look(ChildPipe& output, ChildPipe& error)
{
    const bool running = isRunning();
    const bool outputWaits = output.dataAvailable();
    const bool errorWaits = error.dataAvailable();
    if (outputWaits || errorWaits)
        idleLooks = 0;
    return {running, outputWaits, errorWaits};
}

void ChildProcess::waitForActivity(const ChildPipe&, const ChildPipe&, std::uint32_t timeoutMs)
{
    // Anonymous pipes cannot be waited for. A child that has just written is looked at again at once, a quiet one less often.
    constexpr DWORD longest = 10;
    const DWORD pause = std::min<DWORD>(++idleLooks, longest);
    WaitForSingleObject(native(handle), std::min<DWORD>(pause, timeoutMs));
}
