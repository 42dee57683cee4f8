#include "filewatcher/livediff/GetFileFromVCThreaded.h"

#include "filewatcher/StatusCodes.h"

namespace {

GetFileFromVCThreaded* theWorker = nullptr;  // for the editor's thread only

}  // namespace

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

int GetFileFromVCThreaded::fetch(const LiveDiffRequest& request)
{
    m_request = request;
    return start();
}

std::int32_t GetFileFromVCThreaded::run()
{
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    return fetchLiveDiffFile(m_request, control, statusLiveDiffFailed);
}
