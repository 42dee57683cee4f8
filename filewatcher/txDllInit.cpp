#include "filewatcher/txDllInit.h"

#include "filewatcher/RegisteredFunctions.h"

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

/// The prototypes belong to the editor's interface exactly as they are, uneven blanks included.
const std::array<Registration, 25>& registrations()
{
    static const std::array<Registration, 25> table{{
        {"int filewatcher:filewatcherAddPath(TXPSZ, int, int)", address(&filewatcherAddPath)},
        {"void filewatcher:filewatcherRemovePath(TXPSZ, int)", address(&filewatcherRemovePath)},
        {"void filewatcher:filewatcherRemoveType(int)", address(&filewatcherRemoveType)},
        {"void filewatcher:filewatcherInitType(int)", address(&filewatcherInitType)},
        {"void filewatcher:filewatcherStop(int)", address(&filewatcherStop)},
        {"void filewatcher:filewatcherSetSuspendState(int)", address(&filewatcherSetSuspendState)},
        {"int filewatcher:_GetFastReloadInfoTable(TXHREFVAR, int, int, TXHREFVAR, int)", address(&getFastReloadInfoTable)},
        {"int filewatcher:_GetSlowReloadFiles(TXHREFVAR)", address(&getSlowReloadFiles)},
        {"int filewatcher:_GitGetBranchInfo(TXPSZ,TXPSZ)", address(&gitGetBranchInfo)},
        {"void filewatcher:_GitBranchClose()", address(&gitBranchClose)},
        {"int filewatcher:_GitGetCommitInfo(TXPSZ, TXPSZ, TXPSZ, TXHREFVAR)", address(&gitGetCommitInfo)},
        {"int filewatcher:_GitGetHistoryInfo(TXPSZ,TXPSZ, TXHREFVAR, TXPSZ, int, int, int)", address(&gitGetHistoryInfo)},
        {"int filewatcher:_GitGetBranchInfoRunning()", address(&gitGetBranchInfoRunning)},
        {"int filewatcher:_GitFilterTree(TMStringConst, TXHREFVAR)", address(&gitFilterTree)},
        {"int filewatcher:_GitGetDiffInfo(TXPSZ, TXPSZ, TXHREFVAR, TXPSZ)", address(&gitGetDiffInfo)},
        {"int filewatcher:_GitGettingInfo()", address(&gitGettingInfo)},
        {"TXPSZ filewatcher:_GitGetBranchName(int)", address(&gitGetBranchName)},
        {"TXPSZ filewatcher:_GitGetBranchHash(int)", address(&gitGetBranchHash)},
        {"TXPSZ filewatcher:_GitCurBranchEndHash()", address(&gitCurBranchEndHash)},
        {"void filewatcher:_RecentFilesAdd(TXPSZ)", address(&recentFilesAdd)},
        {"void filewatcher:_RecentFilesProcessPending()", address(&recentFilesProcessPending)},
        {"void filewatcher:filewatcher_stop_async_work()", address(&filewatcher_stop_async_work)},
        {"int filewatcher:_SVCLiveDiffGetVCFile(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)",
         address(&svcLiveDiffGetVCFile)},
        {"int filewatcher:_SVCLiveDiffGetVCFileImmediate(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, "
         "TMStringConst)",
         address(&svcLiveDiffGetVCFileImmediate)},
        {"int filewatcher:_SVCLiveDiffHaveVCFile(TMStringConst)", address(&svcLiveDiffHaveVCFile)},
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
