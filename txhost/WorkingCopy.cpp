#include "txhost/WorkingCopy.h"

#include "common/Environment.h"
#include "common/cmFile.h"
#include "common/cmSystemPath.h"

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

const Tool* findMarkedTool(const cmStringT& directory)
{
    const std::filesystem::path perforceName = perforceConfigurationName();
    for (const cmStringT& start : {directory, cmRealPath(directory)}) {
        std::error_code error;
        std::filesystem::path folder = cmSystemPath(start);
        for (std::filesystem::path below; folder != below; below = std::exchange(folder, folder.parent_path())) {
            if (std::filesystem::exists(folder / ".git", error))  // a file in a linked work tree
                return &gitTool;
            if (std::filesystem::is_directory(folder / ".svn", error))
                return &svnTool;
            if (std::filesystem::is_regular_file(folder / perforceName, error))
                return &p4Tool;
        }
    }
    return nullptr;
}

const Tool& findTool(const cmStringT& directory)
{
    const Tool* tool = findMarkedTool(directory);
    return tool ? *tool : gitTool;
}
