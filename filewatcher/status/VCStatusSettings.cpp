#include "filewatcher/status/VCStatusSettings.h"

#include "filewatcher/bridge/EditorSettings.h"

namespace {

constexpr std::int32_t missingSetting = -1;
constexpr std::uint32_t msPerSecond = 1000;

}  // namespace

std::int32_t readStatusSettings(const StatusThreadKind& kind)
{
    VCStatusThread* const thread = kind.instance(true);
    if (thread->isConfigured())
        return 0;
    thread->setSuspended(areStatusThreadsSuspended());
    const cmStringT exePath = callEditorMacro(kind.tool.exePathMacro);
    const std::int32_t interval = editorSetting(kind.tool.intervalSetting, missingSetting);
    if (exePath.isEmpty())
        return statusNoExecutable;
    const std::int32_t maxOutputSize = editorSetting(txVCMaxOutputSetting, missingSetting);
    if (interval == missingSetting)
        return 0;
    // The macro function may have called filewatcherStop: `thread` is gone then, and a new one takes its place.
    VCStatusThread* const current = kind.instance(true);
    current->setSuspended(areStatusThreadsSuspended());
    current->setStatusConfig(exePath, static_cast<std::uint32_t>(interval) * msPerSecond, maxOutputSize);
    return 0;
}
