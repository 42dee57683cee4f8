#include "filewatcher/livediff/GetFileFromVCThreaded.h"

#include "common/cmFileReplacement.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/bridge/LoggedCapture.h"
#include "filewatcher/livediff/LiveDiffStatus.h"

#include <exception>

namespace {

GetFileFromVCThreaded* theWorker = nullptr;

/// Returns whether the cache file holds what the command wrote.
bool fetchIntoFile(const LiveDiffRequest& request, const CaptureControl& control)
{
    cmFileReplacement file(request.cacheFile);
    const CaptureResult result =
        captureLogged("fetchLiveDiffFile", request.commandLine, spawnScannedCommand, request.workingDirectory, control,
                      [&file](cmROStringT bytes) { file.write(bytes); });
    if (result.status != 0 || result.errorOutput.view().find("fatal:") != cmROStringT::npos) {
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

GetFileFromVCThreaded* GetFileFromVCThreaded::instance(bool create)
{
    if (!theWorker && create)
        theWorker = new GetFileFromVCThreaded;
    return theWorker;
}

void GetFileFromVCThreaded::stopInstance()
{
    if (!theWorker)
        return;
    theWorker->requestStop();
    theWorker->join();
    delete theWorker;
    theWorker = nullptr;
}

int GetFileFromVCThreaded::fetch(const LiveDiffRequest& newRequest)
{
    request = newRequest;
    return start();
}

std::int32_t GetFileFromVCThreaded::run()
{
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    return fetchLiveDiffFile(request, control, statusLiveDiffFailed);
}
