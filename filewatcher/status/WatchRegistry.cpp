#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "filewatcher/status/VCStatusSettings.h"

namespace {

constexpr std::int32_t typeSvn = txVCToolSVN.number;
constexpr std::int32_t typePerforce = txVCToolPerforce.number;
constexpr std::int32_t typeGit = txVCToolGit.number;
constexpr std::int32_t typeSvnSecond = txVCToolSVN.secondWatchType;
constexpr std::int32_t typeGitSecond = txVCToolGit.secondWatchType;

/// Switches the tool's file status off for good, in the editor and here. False when the editor has no such setting.
template <class Thread>
bool switchOff(Thread& thread)
{
    const TXHVAR setting = findEditorVariable(Thread::tool.showFileStatusSetting);
    if (!setting)
        return false;
    if (txHvarGetInt(setting) != 0)
        txHvarSetInt(setting, 0);
    thread.requestStopUnderLock();
    return true;
}

template <class Thread>
std::int32_t addPath(const WatchEntry& entry, std::int32_t (*readSettings)())
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    Thread* thread = Thread::instance(true);
    if (thread->isStatusOutputTooLarge() && switchOff(*thread))
        return 0;
    thread->addPath(entry.path, entry.context, entry.pathFlag, entry.contextFlag);
    if (thread->isRunning())
        return statusAlreadyRunning;
    if (!thread->isConfigured())
        readSettings();
    Thread::instance(true)->start();  // got anew: reading the settings runs the editor's macros
    return 0;
}

/// Calls `operation` with the thread of the first type in the mask, which is made when there is none.
template <class Operation>
void withFirstThread(std::int32_t typeMask, Operation operation)
{
    if (typeMask & typeSvn)
        operation(*SVNStatusThread::instance(true));
    else if (typeMask & typeGit)
        operation(*GitStatusThread::instance(true));
    else if (typeMask & typePerforce)
        operation(*PerforceStatusThread::instance(true));
}

template <class Thread>
void stopThread()
{
    Thread::instance(true);  // a missing thread is made and goes at once
    Thread::stopInstance();
}

}  // namespace

std::int32_t filewatcherAddPath(TXPSZ path, std::int32_t type, std::int32_t flag)
{
    WatchEntry entry{path, "", flag != 0, false};
    if (const TXHVAR context = txProperty(txPropertyWatchContext))
        txHvarGetString(context, entry.context);
    if (const TXHVAR contextFlag = txProperty(txPropertyWatchContextFlag))
        entry.contextFlag = txHvarGetInt(contextFlag) != 0;
    switch (type) {
    case typeSvn:
    case typeSvnSecond: return addPath<SVNStatusThread>(entry, &readSvnStatusSettings);
    case typeGit:
    case typeGitSecond: return addPath<GitStatusThread>(entry, &readGitStatusSettings);
    case typePerforce: entry.contextFlag = false; return addPath<PerforceStatusThread>(entry, &readPerforceStatusSettings);
    default: return 0;
    }
}

void filewatcherRemovePath(TXPSZ path, std::int32_t typeMask)
{
    const cmStringT removed(path);
    if (txFeatureAvailable())
        withFirstThread(typeMask, [&removed](FileWatcherThreadBase& thread) { thread.removePath(removed); });
}

void filewatcherRemoveType(std::int32_t typeMask)
{
    if (txFeatureAvailable())
        withFirstThread(typeMask, [](FileWatcherThreadBase& thread) { thread.removeAllPaths(); });
}

void filewatcherInitType(std::int32_t type)
{
    if (!txFeatureAvailable())
        return;
    if (type == typeSvn || type == typeSvnSecond)
        readSvnStatusSettings();
    else if (type == typeGit || type == typeGitSecond)
        readGitStatusSettings();
}

void filewatcherStop(std::int32_t typeMask)
{
    if (!txFeatureAvailable())
        return;
    if (typeMask & typeSvn)
        stopThread<SVNStatusThread>();
    if (typeMask & typeGit)
        stopThread<GitStatusThread>();
    if (typeMask & typePerforce)
        stopThread<PerforceStatusThread>();
}
