#include "common/ChildProcess.h"

#include "common/ProcessFamily.h"
#include "common/UnreapedChildren.h"

#include <poll.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <utility>

// The handle of a child is its pidfd. It is ChildProcess::none for a child that the host had reaped before it could get one.

namespace {

constexpr std::chrono::milliseconds terminateGrace{50};

/// ppoll without its interruptions, which count as the end of the wait. Returns the number of ready sources, negative on failure.
template <std::size_t size>
int pollSources(std::array<pollfd, size>& sources, std::chrono::nanoseconds timeout)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(timeout);
    const timespec limit{seconds.count(), (timeout - seconds).count()};
    const int ready = ppoll(sources.data(), sources.size(), &limit, nullptr);
    return ready < 0 && errno == EINTR ? 0 : ready;
}

pollfd source(std::intptr_t descriptor)
{
    return {static_cast<int>(descriptor), POLLIN, 0};
}

bool hasEnded(std::intptr_t handle)
{
    std::array<pollfd, 1> child{source(handle)};
    return handle == ChildProcess::none || pollSources(child, {}) == 1;
}

/// The child comes first: the kernel checks the descriptors in order. It skips negative ones.
std::array<pollfd, 3> activitySources(std::intptr_t child, const ChildPipe& output, const ChildPipe& error)
{
    const auto pipeEnd = [](const ChildPipe& pipe) { return pipe.isEnded() ? ChildPipe::none : pipe.getParentEnd(); };
    return {source(child), source(pipeEnd(output)), source(pipeEnd(error))};
}

/// How the child has ended, which is not reaped by that; zeros when it has not.
siginfo_t endOf(std::intptr_t child)
{
    siginfo_t end{};
    if (child == ChildProcess::none || waitid(P_PIDFD, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) != 0)
        return {};
    return end;
}

}  // namespace

bool ChildProcess::isRunning()
{
    return valid && !hasEnded(handle);
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    if (handle != none)
        endProcessFamily(static_cast<int>(handle), static_cast<int>(processId));
    terminated = true;
}

cmStringT ChildProcess::abnormalEnd() const
{
    const siginfo_t end = endOf(handle);
    const bool killed = end.si_code == CLD_KILLED || end.si_code == CLD_DUMPED;
    return killed ? cmStringT("was killed (signal " + std::to_string(end.si_status) + ")") : cmStringT();
}

std::int32_t ChildProcess::exitCode() const
{
    const siginfo_t end = endOf(handle);
    return end.si_code == CLD_EXITED ? end.si_status : 0;
}

void ChildProcess::close()
{
    if (valid)
        UnreapedChildren::reapOrKeep(static_cast<int>(handle), terminated, terminated ? terminateGrace : terminateGrace.zero());
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
    bool failed = pollSources(sources, {}) < 0;
    for (const pollfd& polled : sources)
        failed |= (polled.revents & POLLNVAL) != 0;
    const auto hasData = [](ChildPipe& pipe, short events) {
        const bool data = (events & POLLIN) != 0;
        if (events != 0 && !data)
            pipe.markEnded();
        return data;
    };
    const auto& [child, outputEnd, errorEnd] = sources;
    if (failed)
        return {false, false, false, true};
    const bool running = valid && handle != none && child.revents == 0;
    return {running, hasData(output, outputEnd.revents), hasData(error, errorEnd.revents), false};
}

bool ChildProcess::waitForActivity(const ChildPipe& output, const ChildPipe& error, std::uint32_t timeoutMs)
{
    std::array<pollfd, 3> sources = activitySources(handle, output, error);
    return pollSources(sources, std::chrono::milliseconds(timeoutMs)) >= 0;
}

bool ChildProcess::waitForEnd(std::chrono::microseconds timeout)
{
    std::array<pollfd, 1> child{source(handle)};
    return pollSources(child, timeout) >= 0;
}
