#include "common/ChildProcess.h"

#include "common/cmArray.h"
#include "common/cmMutex.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

// The handle of a child is its pidfd. It is ChildProcess::none for a child that had ended before it could get one.

namespace {

constexpr int terminateGraceMs = 50;

cmMutex unreapedLock;
/// Children whose records were closed before they could be reaped.
cmArray<pid_t> unreaped CM_GUARDED_BY(unreapedLock);

/// Returns true when the child was reaped, now or earlier by a host that ignores SIGCHLD.
bool reap(pid_t child)
{
    const pid_t result = waitpid(child, nullptr, WNOHANG);
    return result == child || (result < 0 && errno == ECHILD);
}

bool hasEnded(std::intptr_t handle, int timeoutMs)
{
    if (handle == ChildProcess::none)
        return true;
    pollfd child{static_cast<int>(handle), POLLIN, 0};
    int ready = ::poll(&child, 1, timeoutMs);
    while (ready < 0 && errno == EINTR)
        ready = ::poll(&child, 1, timeoutMs);
    return ready == 1;
}

/// Whether the child, running or ended, is not reaped yet. Only then do its process id and its group surely belong to it.
bool isUnreaped(std::intptr_t handle)
{
    siginfo_t info{};
    return handle != ChildProcess::none && waitid(P_PIDFD, static_cast<id_t>(handle), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

/// The child comes first: the kernel checks the descriptors in order. It skips negative ones.
std::array<pollfd, 3> activitySources(std::intptr_t child, const ChildPipe& output, const ChildPipe& error)
{
    const auto source = [](std::intptr_t descriptor) { return pollfd{static_cast<int>(descriptor), POLLIN, 0}; };
    const auto pipeEnd = [](const ChildPipe& pipe) { return pipe.isEnded() ? ChildPipe::none : pipe.getParentEnd(); };
    return {source(child), source(pipeEnd(output)), source(pipeEnd(error))};
}

}  // namespace

void reapEndedChildren()
{
    const cmMutexLock hold(unreapedLock);
    unreaped.erase(std::remove_if(unreaped.begin(), unreaped.end(), &reap), unreaped.end());
}

bool ChildProcess::isRunning()
{
    return valid && !hasEnded(handle, 0);
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    if (isUnreaped(handle))
        kill(-static_cast<pid_t>(processId), SIGKILL);
    terminated = true;
}

void ChildProcess::close()
{
    if (valid) {
        const auto child = static_cast<pid_t>(processId);
        hasEnded(handle, terminated ? terminateGraceMs : 0);
        if (!reap(child)) {
            const cmMutexLock hold(unreapedLock);
            unreaped.push_back(child);
        }
        if (handle != none)
            ::close(static_cast<int>(handle));
    }
    handle = none;
    processId = 0;
    valid = 0;
    terminated = false;
    reapEndedChildren();
}

ChildActivity ChildProcess::poll(ChildPipe& output, ChildPipe& error)
{
    // One system call for all three: a capture of hundreds of megabytes polls tens of thousands of times.
    std::array<pollfd, 3> sources = activitySources(handle, output, error);
    ::poll(sources.data(), sources.size(), 0);
    const auto hasData = [](ChildPipe& pipe, short events) {
        const bool data = (events & POLLIN) != 0;
        if (events != 0 && !data)
            pipe.markEnded();
        return data;
    };
    const auto& [child, outputEnd, errorEnd] = sources;
    const bool running = valid && handle != none && child.revents == 0;
    return {running, hasData(output, outputEnd.revents), hasData(error, errorEnd.revents)};
}

void ChildProcess::waitForActivity(const ChildPipe& output, const ChildPipe& error, std::uint32_t timeoutMs)
{
    std::array<pollfd, 3> sources = activitySources(handle, output, error);
    ::poll(sources.data(), sources.size(), static_cast<int>(timeoutMs));
}

void ChildProcess::waitForEnd(std::chrono::microseconds timeout)
{
    pollfd child{static_cast<int>(handle), POLLIN, 0};
    const auto seconds = std::chrono::floor<std::chrono::seconds>(timeout);
    const timespec limit{seconds.count(), std::chrono::nanoseconds(timeout - seconds).count()};
    ppoll(&child, 1, &limit, nullptr);
}
