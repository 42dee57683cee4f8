#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/git/browser/GitBrowser.h"
#include "filewatcher/livediff/GetFileFromVCThreaded.h"
#include "filewatcher/reload/FileDateThread.h"
#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"

void filewatcher_stop_async_work()
{
    FileDateData::stopInstance();
    GitStatusThread::stopInstance();
    SVNStatusThread::stopInstance();
    PerforceStatusThread::stopInstance();
    stopGitBrowser();
    GetFileFromVCThreaded::stopInstance();
}
