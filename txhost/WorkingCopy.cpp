#include "txhost/WorkingCopy.h"

#include "common/Environment.h"
#include "common/cmFile.h"
#include "common/cmSystemPath.h"
#include "txhost/Host.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

/// The name of the file that binds a folder to a server and workspace. P4CONFIG sets it.
std::filesystem::path perforceConfigurationName()
{
    const cmStringT chosen = environmentValue(hostEnvironment(), "P4CONFIG");
    return chosen.isEmpty() ? ".p4config" : cmSystemPath(chosen);
}

/// The type of the file at `path`. Throws HostError when the system cannot say whether there is one: the mark of a tool would be
/// overlooked. The root of a network share may refuse to answer.
std::filesystem::file_type markType(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::none && path.parent_path().has_relative_path())
        throw HostError(cmPathText(path.parent_path()), error.message());
    return type;
}

const Tool* toolMarkedAt(const std::filesystem::path& folder)
{
    static const std::filesystem::path perforceName = perforceConfigurationName();
    const std::filesystem::file_type git = markType(folder / ".git");
    if (git == std::filesystem::file_type::directory || git == std::filesystem::file_type::regular)  // a linked work tree
        return &gitTool;
    if (markType(folder / ".svn") == std::filesystem::file_type::directory)
        return &svnTool;
    return markType(folder / perforceName) == std::filesystem::file_type::regular ? &p4Tool : nullptr;
}

}  // namespace

std::vector<std::string> toolNames()
{
    std::vector<std::string> names;
    for (const Tool* tool : allTools)
        names.emplace_back(tool->name);
    return names;
}

const Tool* toolNamed(const std::string& name)
{
    for (const Tool* tool : allTools) {
        if (tool->name == name)
            return tool;
    }
    return nullptr;
}

const Tool& toolNumbered(std::int32_t number)
{
    for (const Tool* tool : allTools) {
        if (tool->number == number)
            return *tool;
    }
    return gitTool;
}

const Tool* toolMarkedIn(const cmStringT& folder)
{
    return toolMarkedAt(cmSystemPath(folder));
}

const Tool* findMarkedTool(const cmStringT& directory)
{
    for (const cmStringT& start : {directory, cmRealPath(directory)}) {
        std::filesystem::path folder = cmSystemPath(start);
        for (std::filesystem::path below; folder != below; below = std::exchange(folder, folder.parent_path())) {
            if (const Tool* tool = toolMarkedAt(folder))
                return tool;
        }
    }
    return nullptr;
}

const Tool& findTool(const cmStringT& directory)
{
    const Tool* tool = findMarkedTool(directory);
    return tool ? *tool : gitTool;
}
