#include "editor/Files.h"

#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

bool isSchemeCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

std::filesystem::path joined(cmROStringT path, cmROStringT directory)
{
    std::filesystem::path base = std::filesystem::current_path();
    if (!directory.empty())
        base /= cmSystemPath(directory);
    return path.empty() ? base : base / cmSystemPath(path);
}

}  // namespace

bool isUrl(cmROStringT path)
{
    const std::size_t length = path.find("://");
    // One letter would be a drive.
    return length != cmROStringT::npos && length > 1 && std::all_of(path.begin(), path.begin() + length, isSchemeCharacter);
}

PathKind pathKind(cmROStringT path)
{
    if (isUrl(path))
        return PathKind::remote;
    if (!cmIsAbsolutePath(path))
        return PathKind::relative;
    const bool share = cmNativePathStyle == cmPathStyle::windows && cmIsPathSeparator(path.front());
    return share ? PathKind::remote : PathKind::local;
}

cmStringT absolutePath(cmROStringT path, cmROStringT directory, bool normalise)
{
    if (isUrl(path))
        return path;
    try {
        const std::filesystem::path absolute = joined(path, directory);
        if (!normalise)
            return cmPathText(absolute);
        return cmWithoutTrailingSeparator(cmPathText(absolute.lexically_normal()));
    } catch (const std::system_error&) {
        return path;  // text that is no UTF-8, or no current directory
    }
}

cmStringT temporaryDirectory()
{
    std::error_code error;
    const std::filesystem::path directory = std::filesystem::temp_directory_path(error);
    return error ? cmStringT("") : cmPathText(directory);
}
