#include "filewatcher/status/VCStatusSettings.h"

#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/status/GitStatusThread.h"
#include "filewatcher/status/PerforceStatusThread.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "filewatcher/status/SuspendState.h"
#include "txapi/VersionControlTools.h"

namespace {

constexpr std::int32_t missingSetting = -1;

template <class Thread>
std::int32_t readStatusSettings()
{
    if (Thread::instance(true)->isConfigured())
        return 0;
    Thread::instance(true)->setSuspended(isSuspendStateSet());
    const cmStringT exePath = callEditorMacro(Thread::tool.exePathMacro);
    const std::int32_t interval = editorSetting(Thread::tool.intervalSetting, missingSetting);
    if (exePath.isEmpty())
        return statusNoExecutable;
    const std::int32_t maxOutputSize = editorSetting(txVCMaxOutputSetting, missingSetting);
    if (interval != missingSetting)
        // Got anew: the editor's macro may have stopped the thread.
        Thread::instance(true)->setStatusConfig(exePath, static_cast<std::uint32_t>(interval) * 1000, maxOutputSize);
    return 0;
}

}  // namespace

std::int32_t readGitStatusSettings()
{
    return readStatusSettings<GitStatusThread>();
}

std::int32_t readPerforceStatusSettings()
{
    return readStatusSettings<PerforceStatusThread>();
}

std::int32_t readSvnStatusSettings()
{
    return readStatusSettings<SVNStatusThread>();
}
