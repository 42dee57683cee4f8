#include "filewatcher/FileDateThread.h"
#include "filewatcher/GetFileFromVCThreaded.h"
#include "filewatcher/GitStatusThread.h"
#include "filewatcher/PerforceStatusThread.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/SVNStatusThread.h"
#include "filewatcher/git/GitBrowser.h"

void filewatcher_stop_async_work()
{
    FileDateData::stopInstance();
    GitStatusThread::stopInstance();
    SVNStatusThread::stopInstance();
    PerforceStatusThread::stopInstance();
    stopGitBrowser();
    GetFileFromVCThreaded::stopInstance();
}
