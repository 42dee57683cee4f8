#include "txhost/WatchedDirectories.h"

#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <filesystem>
#include <unordered_set>

WatchedDirectory watchedDirectory(const std::string& name, const std::string& tool)
{
    if (name.empty())
        throw UsageError("an empty name is no directory");
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(cmSystemPath(name), error).lexically_normal();
    const bool exists = !error && std::filesystem::exists(absolute, error);
    if (error)
        throw HostError(cmPathText(absolute), error.message());
    if (!exists)
        throw HostError(cmPathText(absolute), "no such directory");
    const cmStringT text = cmPathText(absolute);
    if (!cmIsDirectory(text))
        throw HostError(text, "not a directory");
    const cmStringT path(cmWithoutTrailingSeparator(text));
    const Tool* chosen = toolNamed(tool);
    return {path, chosen ? *chosen : findTool(path)};
}

cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool,
                                             const FailureListener& fail)
{
    cmArray<WatchedDirectory> directories;
    std::unordered_set<cmStringT> paths;
    for (const std::string& name : named) {
        try {
            const WatchedDirectory directory = watchedDirectory(name, tool);
            if (paths.insert(directory.path).second)
                directories.push_back(directory);
        } catch (const UsageError&) {
            throw;
        } catch (const HostError& error) {
            fail(error.failure());
        }
    }
    return directories;
}

cmArray<WatchedDirectory> withTheirTools(const Host& host, cmArray<WatchedDirectory> directories, const FailureListener& fail)
{
    std::erase_if(directories, [&](const WatchedDirectory& directory) {
        try {
            host.requireTool(directory.tool);
            return false;
        } catch (const HostError& error) {
            fail({Failure::own, error.failure().message, directory.path, directory.tool.name});
            return true;
        }
    });
    return directories;
}
