#include "filewatcher/txDllInit.h"

#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorEntry.h"

#include <array>

namespace {

struct Registration {
    TXPSZ prototype;
    TXPFN function;
};

template <class Function>
TXPFN address(Function* function)
{
    return reinterpret_cast<TXPFN>(function);
}

/// The address under which the editor calls `function`; `failure` is its result when memory runs out.
template <auto function, auto... failure>
TXPFN guarded()
{
    return address(&GuardedEntry<function, failure...>::call);
}

constexpr char noText[] = "";
constexpr char noBranch[] = "Error";

/// The exported functions guard themselves. The prototypes belong to the editor's interface exactly as they are, uneven blanks
/// included.
const std::array<Registration, 25>& registrations()
{
    static const std::array<Registration, 25> table{{
        {"int filewatcher:filewatcherAddPath(TXPSZ, int, int)", address(&filewatcherAddPath)},
        {"void filewatcher:filewatcherRemovePath(TXPSZ, int)", address(&filewatcherRemovePath)},
        {"void filewatcher:filewatcherRemoveType(int)", address(&filewatcherRemoveType)},
        {"void filewatcher:filewatcherInitType(int)", address(&filewatcherInitType)},
        {"void filewatcher:filewatcherStop(int)", address(&filewatcherStop)},
        {"void filewatcher:filewatcherSetSuspendState(int)", guarded<&filewatcherSetSuspendState>()},
        {"int filewatcher:_GetFastReloadInfoTable(TXHREFVAR, int, int, TXHREFVAR, int)", guarded<&getFastReloadInfoTable, 1>()},
        {"int filewatcher:_GetSlowReloadFiles(TXHREFVAR)", guarded<&getSlowReloadFiles, 1>()},
        {"int filewatcher:_GitGetBranchInfo(TXPSZ,TXPSZ)", guarded<&gitGetBranchInfo, 1>()},
        {"void filewatcher:_GitBranchClose()", guarded<&gitBranchClose>()},
        {"int filewatcher:_GitGetCommitInfo(TXPSZ, TXPSZ, TXPSZ, TXHREFVAR)", guarded<&gitGetCommitInfo, statusOutOfMemory>()},
        {"int filewatcher:_GitGetHistoryInfo(TXPSZ,TXPSZ, TXHREFVAR, TXPSZ, int, int, int)",
         guarded<&gitGetHistoryInfo, statusOutOfMemory>()},
        {"int filewatcher:_GitGetBranchInfoRunning()", guarded<&gitGetBranchInfoRunning, 0>()},
        {"int filewatcher:_GitFilterTree(TMStringConst, TXHREFVAR)", guarded<&gitFilterTree, statusOutOfMemory>()},
        {"int filewatcher:_GitGetDiffInfo(TXPSZ, TXPSZ, TXHREFVAR, TXPSZ)", guarded<&gitGetDiffInfo, statusOutOfMemory>()},
        {"int filewatcher:_GitGettingInfo()", guarded<&gitGettingInfo, 0>()},
        {"TXPSZ filewatcher:_GitGetBranchName(int)", guarded<&gitGetBranchName, noBranch>()},
        {"TXPSZ filewatcher:_GitGetBranchHash(int)", guarded<&gitGetBranchHash, noText>()},
        {"TXPSZ filewatcher:_GitCurBranchEndHash()", guarded<&gitCurBranchEndHash, noText>()},
        {"void filewatcher:_RecentFilesAdd(TXPSZ)", guarded<&recentFilesAdd>()},
        {"void filewatcher:_RecentFilesProcessPending()", guarded<&recentFilesProcessPending>()},
        {"void filewatcher:filewatcher_stop_async_work()", guarded<&filewatcher_stop_async_work>()},
        {"int filewatcher:_SVCLiveDiffGetVCFile(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)",
         guarded<&svcLiveDiffGetVCFile, statusLiveDiffFailed>()},
        {"int filewatcher:_SVCLiveDiffGetVCFileImmediate(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, "
         "TMStringConst)",
         guarded<&svcLiveDiffGetVCFileImmediate, statusLiveDiffImmediateFailed>()},
        {"int filewatcher:_SVCLiveDiffHaveVCFile(TMStringConst)", guarded<&svcLiveDiffHaveVCFile, statusLiveDiffFailed>()},
    }};
    return table;
}

}  // namespace

std::int32_t txDllInit()
{
    std::int32_t result = 0;
    for (const Registration& registration : registrations())
        result = txRegisterFunction(registration.prototype, 0, 0, registration.function);
    return result;
}

void txDllExit() {}
