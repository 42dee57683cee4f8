#include "common/cmFile.h"

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>

bool cmIsDirectory(cmROStringT path)
try {
    return std::filesystem::is_directory(cmSystemPath(path));
} catch (const std::exception&) {
    return false;  // no valid path
}

bool cmMakeFolderBelow(cmROStringT root, cmROStringT relative)
try {
    namespace fs = std::filesystem;
    fs::path folder = cmSystemPath(root);
    fs::create_directories(folder);
    const cmStringT realRoot = cmRealPath(root);
    for (const fs::path& name : cmSystemPath(relative)) {
        folder /= name;
        if (fs::create_directory(folder))
            fs::permissions(folder, fs::perms::group_write | fs::perms::others_write, fs::perm_options::remove);
        cmROStringT below;
        if (fs::is_symlink(folder) || !cmRelativePath(cmRealPath(cmPathText(folder)), realRoot, below))
            return false;
    }
    return cmIsDirectory(cmPathText(folder));
} catch (const std::exception&) {
    return false;
}

bool cmRemoveFolder(cmROStringT path)
try {
    namespace fs = std::filesystem;
    const fs::path folder = cmSystemPath(path);
    if (!fs::exists(folder))
        return true;
    cmArray<fs::path> found{folder};  // a folder before what it holds
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_symlink())  // permissions() would change the link's target
            fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add);
        found.push_back(entry.path());
    }
    // Not remove_all: on Windows it tries without end to remove a file that has vanished since it was listed.
    std::error_code problem;
    std::for_each(found.rbegin(), found.rend(), [&](const fs::path& one) { fs::remove(one, problem); });
    return !fs::exists(folder);
} catch (const std::exception&) {
    return false;
}

cmStringT cmCurrentDirectory()
{
    std::error_code problem;
    const std::filesystem::path directory = std::filesystem::current_path(problem);
    return problem ? cmStringT() : cmPathText(directory);
}
