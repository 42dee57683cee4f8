#include "txhost/Host.h"

#include "common/ChildProcess.h"
#include "common/Environment.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txhost/Console.h"

#include <cmath>
#include <filesystem>
#include <system_error>

namespace {

/// The program's name or path from the command line; empty when none was given.
std::string namedProgram(const HostOptions& options, const Tool& tool)
{
    const auto named = options.programs.find(tool.number);
    return named == options.programs.end() ? std::string() : named->second;
}

/// The absolute path of the tool's program: a name is searched in PATH, a path may be relative to the current directory. Null
/// when there is no such program.
cmStringT toolPath(const HostOptions& options, const Tool& tool)
{
    const std::string named = namedProgram(options, tool);
    if (named.empty())
        return findHostProgram(tool.name);
    const std::filesystem::path path = cmSystemPath(named);
    std::error_code error;
    return findHostProgram(path.has_parent_path() ? cmPathText(std::filesystem::absolute(path, error)) : cmStringT(named));
}

/// This program's folder below the user's cache folder; null when the user has none.
cmStringT privateDirectory()
{
    struct Place {
        const char* variable;
        const char* below;
    };
    const Environment environment = hostEnvironment();
    for (const Place& place : {Place{"LOCALAPPDATA", "txhost"}, {"XDG_CACHE_HOME", "txhost"}, {"HOME", ".cache/txhost"}}) {
        const cmStringT folder = environmentValue(environment, place.variable);
        if (cmIsAbsolutePath(folder))
            return cmJoinPath(folder, cmNativeSeparators(place.below));
    }
    return {};
}

}  // namespace

Host::Host(const HostOptions& options) : m_options(options)
{
    for (const Tool* tool : allTools) {
        cmStringT& program = m_programs[tool->number];
        program = toolPath(options, *tool);
        m_editor.defineMacro(tool->exePathMacro, [&program] { return program; });
        m_editor.setSetting(tool->intervalSetting, static_cast<std::int32_t>(std::ceil(options.intervalSeconds)));
        m_editor.setSetting(tool->showFileStatusSetting, 1);
    }
    m_editor.setSetting(txVCMaxOutputSetting, options.maxStatusOutput);
    if (options.debug)
        m_editor.setDebugSink(&console::printErrorLines);
    m_directory = options.cache.empty() ? privateDirectory() : cmStringT(options.cache);
    m_editor.setDirectory(m_directory);
    m_editor.defineClass("SVCHistoryInfo",
                         {"revision", "author", "date", "comment", "affectedFilesDetails", "picIndex", "lsibIndex", "rsibIndex",
                          "firstChildIndex", "parentIndex", "expandable", "hidden", "revisionCaption", "tagNames", "changelist",
                          "curVersionFilename", "parents", "email", "subject"});

    const cmStringT failure = m_module.load("filewatcher");
    auto* init = m_module.function<std::int32_t()>("txDllInit");
    if (!init)
        throw HostError("the module cannot be loaded: " + std::string(failure.c_str()));
    if (init() != 0)
        throw HostError("the module could not register its functions");
}

Host::~Host()
{
    m_editor.call("filewatcher_stop_async_work", {});
    if (auto* exit = m_module.function<void()>("txDllExit"))
        exit();
    m_module.unload();
}

void Host::requireTool(const Tool& tool) const
{
    if (!m_programs.at(tool.number).isNull())
        return;
    const std::string named = namedProgram(m_options, tool);
    const std::string name = tool.name;
    const std::string reason =
        named.empty() ? "not found in PATH; name it with --" + name : "no program that can be started: " + named;
    throw HostError({Failure::own, cmROStringT(reason), {}, tool.name});
}

std::int32_t Host::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const CallResult result = m_editor.call(name, arguments);
    if (!result.found)
        throw HostError(result.error.c_str());
    return result.number.value_or(0);
}
