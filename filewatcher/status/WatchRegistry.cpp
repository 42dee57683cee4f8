#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorEntry.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/status/StatusThreads.h"
#include "filewatcher/status/VCStatusSettings.h"

namespace {

/// Switches the tool's file status off in the editor, and stops the thread. False when the editor has no such setting.
bool switchOff(VCStatusThread& thread)
{
    const TXHVAR setting = findEditorVariable(thread.tool().showFileStatusSetting);
    if (!setting)
        return false;
    if (txHvarGetInt(setting) != 0)
        txHvarSetInt(setting, 0);
    thread.requestStopUnderLock();
    return true;
}

/// The kind of the first bit in a type mask; null when it holds none.
const StatusThreadKind* firstKindOf(std::int32_t typeMask)
{
    for (const StatusThreadKind& kind : statusThreadKinds()) {
        if (typeMask & kind.tool.number)
            return &kind;
    }
    return nullptr;
}

std::int32_t addPath(TXPSZ path, std::int32_t type, std::int32_t flag)
{
    cmStringT context("");
    if (const TXHVAR property = txProperty(txPropertyWatchContext))
        txHvarGetString(property, context);
    const TXHVAR flagProperty = txProperty(txPropertyWatchContextFlag);
    const bool contextFlag = flagProperty && txHvarGetInt(flagProperty) != 0;
    const StatusThreadKind* const kind = statusThreadOfType(type);
    if (!kind)
        return 0;
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    VCStatusThread* thread = kind->instance(true);
    if (thread->isStatusOutputTooLarge() && switchOff(*thread))
        return 0;
    if (!thread->isConfigured()) {  // before the path is queued, because a thread that runs already takes it at once
        readStatusSettings(*kind);
        thread = kind->instance(true);  // the settings reader calls a macro function, which may have stopped the thread
    }
    thread->addPath(cmStringT(path), context, flag != 0, contextFlag && kind->takesContextFlag);
    if (thread->isRunning())
        return statusAlreadyRunning;
    if (thread->start() != 0 && !thread->isRunning())
        thread->failQueuedPaths(statusPassFailed, "the thread for the tool could not be started");
    return 0;
}

void removePath(TXPSZ path, std::int32_t typeMask)
{
    const StatusThreadKind* const kind = firstKindOf(typeMask);
    if (txFeatureAvailable() && kind)
        kind->instance(true)->removePath(cmStringT(path));
}

void removeType(std::int32_t typeMask)
{
    const StatusThreadKind* const kind = firstKindOf(typeMask);
    if (txFeatureAvailable() && kind)
        kind->instance(true)->removeAllPaths();
}

void initType(std::int32_t type)
{
    const StatusThreadKind* const kind = statusThreadOfType(type);
    if (txFeatureAvailable() && kind && kind->readsSettingsOnInit)
        readStatusSettings(*kind);
}

void stopTypes(std::int32_t typeMask)
{
    if (!txFeatureAvailable())
        return;
    for (const StatusThreadKind& kind : statusThreadKinds()) {
        if (typeMask & kind.tool.number) {
            kind.instance(true);
            kind.stopInstance();
        }
    }
}

}  // namespace

std::int32_t filewatcherAddPath(TXPSZ path, std::int32_t type, std::int32_t flag)
{
    return guardEntry(statusOutOfMemory, [&] { return addPath(path, type, flag); });
}

void filewatcherRemovePath(TXPSZ path, std::int32_t typeMask)
{
    guardEntry([&] { removePath(path, typeMask); });
}

void filewatcherRemoveType(std::int32_t typeMask)
{
    guardEntry([&] { removeType(typeMask); });
}

void filewatcherInitType(std::int32_t type)
{
    guardEntry([&] { initType(type); });
}

void filewatcherStop(std::int32_t typeMask)
{
    guardEntry([&] { stopTypes(typeMask); });
}

void filewatcherSetSuspendState(std::int32_t suspended)
{
    suspendStatusThreads(suspended != 0);
}
