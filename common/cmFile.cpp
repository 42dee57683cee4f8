#include "common/cmFile.h"

#include "common/cmPath.h"
#include "common/cmSystemPath.h"

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
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_symlink())  // permissions() would change the link's target
            fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add);
    }
    fs::remove_all(folder);
    return true;
} catch (const std::exception&) {
    return false;
}

cmStringT cmCurrentDirectory()
{
    std::error_code problem;
    const std::filesystem::path directory = std::filesystem::current_path(problem);
    return problem ? cmStringT() : cmPathText(directory);
}
