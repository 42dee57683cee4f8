#include "txhost/WatchedDirectories.h"

#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <filesystem>
#include <unordered_set>

cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool)
{
    const Tool* chosen = toolNamed(tool);
    cmArray<WatchedDirectory> directories;
    std::unordered_set<cmStringT> paths;
    for (const std::string& name : named) {
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
        if (paths.insert(path).second)
            directories.push_back({path, chosen ? *chosen : findTool(path)});
    }
    return directories;
}

void requireTools(const Host& host, const cmArray<WatchedDirectory>& directories)
{
    for (const WatchedDirectory& directory : directories)
        host.requireTool(directory.tool);
}
