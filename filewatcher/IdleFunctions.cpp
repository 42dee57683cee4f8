#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"

// The registered functions whose subsystems do not exist yet. They answer as a module in which nothing is
// loaded and nothing could be started, and touch none of their arguments.

void recentFilesAdd(TXPSZ) {}

void recentFilesProcessPending() {}

std::int32_t svcLiveDiffGetVCFile(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)
{
    return 1;
}

std::int32_t svcLiveDiffGetVCFileImmediate(TMStringConst, TMStringConst, TMStringConst, TMStringByRef, TMStringConst)
{
    return statusLiveDiffImmediateFailed;
}

std::int32_t svcLiveDiffHaveVCFile(TMStringConst)
{
    return 0;
}
