#include "common/ChildProcess.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/bridge/EditorEntry.h"
#include "filewatcher/git/browser/GitBrowser.h"
#include "filewatcher/livediff/GetFileFromVCThreaded.h"
#include "filewatcher/reload/FileDateData.h"
#include "filewatcher/status/StatusThreads.h"

void filewatcher_stop_async_work()
{
    // Each has a guard of its own: where one cannot be stopped, the others are.
    guardEntry(&FileDateData::stopInstance);
    guardEntry(&stopStatusThreads);
    guardEntry(&stopGitBrowser);
    guardEntry(&GetFileFromVCThreaded::stopInstance);
    constexpr std::uint32_t longestDeathMs = 1000;
    collectTerminatedChildren(longestDeathMs);
}
