#include "common/UnreapedChildren.h"

#include "common/ChildProcess.h"
#include "common/cmArray.h"
#include "common/cmMutex.h"
#include "common/cmThread.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

using Clock = std::chrono::steady_clock;

struct Unreaped {
    int handle;
    bool terminated;
};

cmMutex listLock;
cmArray<Unreaped> unreaped CM_GUARDED_BY(listLock);
std::size_t reserved CM_GUARDED_BY(listLock) = 0;

/// Returns true when the child was reaped, now or earlier by the host.
bool reap(int handle)
{
    siginfo_t child{};
    if (waitid(P_PIDFD, static_cast<id_t>(handle), &child, WEXITED | WNOHANG) != 0)
        return errno == ECHILD;
    return child.si_pid != 0 && child.si_code != CLD_TRAPPED;  // a host that traces the child is told of its stops as well
}

bool reapWithin(int handle, std::chrono::milliseconds limit)
{
    const auto end = Clock::now() + limit;
    for (bool waited = false; !reap(handle); waited = true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            return false;
        if (waited)
            cmThread::sleep(1);  // a wait that fails must not become a busy loop
        pollfd child{handle, POLLIN, 0};
        poll(&child, 1, static_cast<int>(left.count()));
    }
    return true;
}

}  // namespace

void UnreapedChildren::reserve()
{
    const cmMutexLock hold(listLock);
    unreaped.reserve(unreaped.size() + reserved + 1);
    ++reserved;
}

void UnreapedChildren::cancel() noexcept
{
    const cmMutexLock hold(listLock);
    --reserved;
}

void UnreapedChildren::reapOrKeep(int handle, bool terminated, std::chrono::milliseconds limit) noexcept
{
    const bool reaped = handle < 0 || reapWithin(handle, limit);
    if (reaped && handle >= 0)
        close(handle);
    const cmMutexLock hold(listLock);
    --reserved;
    if (!reaped)
        unreaped.push_back({handle, terminated});
}

void reapEndedChildren()
{
    const cmMutexLock hold(listLock);
    std::erase_if(unreaped, [](const Unreaped& child) {
        const bool reaped = reap(child.handle);
        if (reaped)
            close(child.handle);
        return reaped;
    });
}

void collectTerminatedChildren(std::uint32_t timeoutMs)
{
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    const auto isAnyLeft = [] {
        reapEndedChildren();
        const cmMutexLock hold(listLock);
        return std::any_of(unreaped.begin(), unreaped.end(), [](const Unreaped& child) { return child.terminated; });
    };
    while (isAnyLeft() && Clock::now() < end)
        cmThread::sleep(2);
}
