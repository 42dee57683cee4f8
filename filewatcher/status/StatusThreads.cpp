#include "filewatcher/status/StatusThreads.h"

#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"

namespace {

bool suspendState = false;

template <class Thread>
VCStatusThread* instanceOf(bool create)
{
    return Thread::instance(create);
}

template <class Thread>
constexpr StatusThreadKind kind(const TXVCTOOL& tool, bool readsSettingsOnInit, bool takesContextFlag)
{
    return {tool, readsSettingsOnInit, takesContextFlag, &instanceOf<Thread>, &Thread::stopInstance};
}

constexpr std::array<StatusThreadKind, 3> kinds{kind<SVNStatusThread>(txVCToolSVN, true, true),
                                                kind<GitStatusThread>(txVCToolGit, true, true),
                                                kind<PerforceStatusThread>(txVCToolPerforce, false, false)};
/// The order of the functions that address all threads.
constexpr std::array<const StatusThreadKind*, 3> kindsForAll{&kinds[1], &kinds[0], &kinds[2]};

}  // namespace

const std::array<StatusThreadKind, 3>& statusThreadKinds()
{
    return kinds;
}

const StatusThreadKind* statusThreadOfType(std::int32_t type)
{
    for (const StatusThreadKind& kind : kinds) {
        if (type != 0 && (type == kind.tool.number || type == kind.tool.secondWatchType))
            return &kind;
    }
    return nullptr;
}

void stopStatusThreads()
{
    for (const StatusThreadKind* kind : kindsForAll)
        kind->stopInstance();
}

void suspendStatusThreads(bool suspended)
{
    suspendState = suspended;
    for (const StatusThreadKind* kind : kindsForAll) {
        if (VCStatusThread* thread = kind->instance(false))
            thread->setSuspended(suspended);
    }
}

bool areStatusThreadsSuspended()
{
    return suspendState;
}
