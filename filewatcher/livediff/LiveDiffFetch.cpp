#include "filewatcher/livediff/LiveDiffFetch.h"

#include "common/cmDictionary.h"
#include "common/cmFileReplacement.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "txapi/txapi.h"

#include <exception>
#include <optional>

namespace {

cmMutex tableLock;
cmDictionary<cmStringT, std::int64_t> statusTable CM_GUARDED_BY(tableLock);

/// Stores the command's output in the cache file. Returns why that failed, in words; nothing on success.
std::optional<cmStringT> fetchIntoFile(const LiveDiffRequest& request, const CaptureControl& control)
{
    cmFileReplacement file(request.cacheFile);
    bool anyOutput = false;
    const auto keep = [&](cmROStringT bytes) {
        anyOutput = true;
        file.write(bytes);
    };
    const CaptureResult result = captureLogged("fetchLiveDiffFile", __LINE__, request.commandLine, spawnScannedCommand,
                                               request.workingDirectory, control, keep);
    if (result.status != 0)
        return result.failure;
    const cmROStringT error = result.errorOutput;
    if (error.find("fatal:") != cmROStringT::npos || (!anyOutput && hasSvnError(error)))
        return toolSentence(error);
    if (!file.finish())
        return cmCat("cannot write ") + request.cacheFile;
    return std::nullopt;
}

}  // namespace

std::int32_t fetchLiveDiffFile(const LiveDiffRequest& request, const CaptureControl& control, std::int32_t failure)
{
    std::optional<cmStringT> reason;
    try {
        reason = fetchIntoFile(request, control);
    } catch (const std::exception& error) {
        reason = error.what();
    }
    if (!reason) {
        setLiveDiffStatus(request.cacheFile, liveDiffReady);
        return 0;
    }
    debugLog("fetchLiveDiffFile", __LINE__, cmStringT(cmCat("cannot fetch ") + request.file + ": " + *reason));
    txQueryError(*reason);
    setLiveDiffStatus(request.cacheFile, failure);
    return failure;
}

std::int64_t liveDiffStatus(cmROStringT cacheFile)
{
    const cmStringT key = cmFileNameKey(cacheFile);
    cmMutexLock hold(tableLock);
    const auto entry = statusTable.find(key);
    return entry == statusTable.end() ? 0 : entry->second;
}

void setLiveDiffStatus(cmROStringT cacheFile, std::int64_t status)
{
    const cmStringT key = cmFileNameKey(cacheFile);
    cmMutexLock hold(tableLock);
    statusTable[key] = status;
}
