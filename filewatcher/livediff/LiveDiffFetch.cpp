#include "filewatcher/livediff/LiveDiffFetch.h"

#include "common/cmDictionary.h"
#include "common/cmFileReplacement.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/bridge/ToolErrors.h"

#include <exception>

namespace {

cmMutex tableLock;
cmDictionary<cmStringT, std::int64_t> statusTable CM_GUARDED_BY(tableLock);

/// Returns whether the cache file holds the command's output.
bool fetchIntoFile(const LiveDiffRequest& request, const CaptureControl& control)
{
    cmFileReplacement file(request.cacheFile);
    bool anyOutput = false;
    const auto keep = [&](cmROStringT bytes) {
        anyOutput = true;
        file.write(bytes);
    };
    const CaptureResult result = captureLogged("fetchLiveDiffFile", __LINE__, request.commandLine, spawnScannedCommand,
                                               request.workingDirectory, control, keep);
    const bool isFatal = result.errorOutput.view().find("fatal:") != cmROStringT::npos;
    if (result.status != 0 || isFatal || (!anyOutput && hasSvnError(result.errorOutput))) {
        debugLog("fetchLiveDiffFile", __LINE__, cmStringT(cmCat("cannot fetch ") + request.file));
        return false;
    }
    if (file.finish())
        return true;
    debugLog("fetchLiveDiffFile", __LINE__, cmStringT(cmCat("cannot write ") + request.cacheFile));
    return false;
}

}  // namespace

std::int32_t fetchLiveDiffFile(const LiveDiffRequest& request, const CaptureControl& control, std::int32_t failure)
{
    bool fetched = false;
    try {
        fetched = fetchIntoFile(request, control);
    } catch (const std::exception& error) {
        debugLog("fetchLiveDiffFile", __LINE__, error.what());
    }
    setLiveDiffStatus(request.cacheFile, fetched ? liveDiffReady : failure);
    return fetched ? 0 : failure;
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
