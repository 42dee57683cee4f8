#include "filewatcher/status/SuspendState.h"

#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"

namespace {

std::int32_t suspendState = 0;

template <class Thread>
void suspendInstance(bool on)
{
    if (Thread* thread = Thread::instance(false))
        thread->setSuspended(on);
}

}  // namespace

bool isSuspendStateSet()
{
    return suspendState != 0;
}

void filewatcherSetSuspendState(std::int32_t suspended)
{
    suspendState = suspended;
    suspendInstance<GitStatusThread>(isSuspendStateSet());
    suspendInstance<SVNStatusThread>(isSuspendStateSet());
    suspendInstance<PerforceStatusThread>(isSuspendStateSet());
}
