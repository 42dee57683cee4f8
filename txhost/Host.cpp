#include "txhost/Host.h"

#include "common/ChildProcess.h"
#include "common/Environment.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txhost/Console.h"

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
        m_editor.setSetting(tool->intervalSetting, options.intervalSeconds);
        m_editor.setSetting(tool->showFileStatusSetting, 1);
    }
    m_editor.setSetting(txVCMaxOutputSetting, options.maxStatusOutput);
    if (options.debug)
        m_editor.setDebugSink(&console::printErrorLines);
    m_directory = options.cache.empty() ? privateDirectory() : cmStringT(options.cache);
    m_editor.setDirectory(m_directory);
    m_editor.defineClass("SVCHistoryInfo", {"revision", "author", "date", "comment", "affectedFilesDetails", "picIndex",
                                            "lsibIndex", "rsibIndex", "firstChildIndex", "parentIndex", "expandable", "hidden",
                                            "revisionCaption", "tagNames", "changelist", "curVersionFilename"});

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
    throw HostError(named.empty() ? name + " was not found in PATH; name it with --" + name
                                  : "no program that can be started: " + named);
}

std::int32_t Host::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const CallResult result = m_editor.call(name, arguments);
    if (!result.found)
        throw HostError(result.error.c_str());
    return result.number.value_or(0);
}

cmStringT meaningOfStatus(std::int32_t status)
{
    switch (status) {
    case -1: return "the tool could not answer, or had nothing to tell (--debug tells why)";
    case -2: return "the editor names no executable for the tool";
    case -12: return "memory ran out";
    case -2173: return "this edition of the editor lacks the feature";
    case -6657: return "the tool wrote more than the limit (--max-output); its file status is switched off";
    case -102621: return "stopped";
    case -102646: return "the tool could not be started (--debug tells why)";
    case -102696: return "a pipe failed, or the tool was killed (--debug tells why)";
    case -104360: return "another revision is being fetched";
    case -104357:
    case -104370: return "the committed revision could not be fetched or stored (--debug tells why)";
    case -104399: return "no Git repository is loaded";
    default: return {};
    }
}

cmStringT failureText(cmROStringT what, std::int32_t status)
{
    return cmCat(what) + ": " + std::to_string(status) + ", " + meaningOfStatus(status);
}
