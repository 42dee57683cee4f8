#include "filewatcher/livediff/LiveDiffCachePath.h"

#include "common/cmArray.h"
#include "common/cmFile.h"

#include <algorithm>
#include <array>

namespace {

constexpr cmROStringT cacheFolder = "svclivediff";

/// Whether Windows opens a device under this name. What follows the first dot does not matter.
bool isDeviceName(cmROStringT name)
{
    cmROStringT base = name.substr(0, name.find('.'));
    while (base.ends_with(' '))
        base.remove_suffix(1);
    constexpr std::array<cmROStringT, 6> devices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    if (std::any_of(devices.begin(), devices.end(), [&](cmROStringT device) { return cmEqualIgnoringCase(base, device); }))
        return true;
    if (base.size() < 4 || !(cmEqualIgnoringCase(base.substr(0, 3), "COM") || cmEqualIgnoringCase(base.substr(0, 3), "LPT")))
        return false;
    const cmROStringT number = base.substr(3);
    const bool isDigit = number.size() == 1 && number[0] >= '0' && number[0] <= '9';
    return isDigit || number == "\xC2\xB9" || number == "\xC2\xB2" || number == "\xC2\xB3";  // superscript 1, 2, 3
}

bool isFileName(cmROStringT name, cmPathStyle style)
{
    if (style == cmPathStyle::posix)
        return true;
    const bool plain = std::none_of(name.begin(), name.end(), [](char c) {
        return (c >= 0 && c < ' ') || cmROStringT("<>:\"|?*").find(c) != cmROStringT::npos;
    });
    // Windows drops trailing dots and blanks; the rest can name another file, a device or the parent folder.
    return plain && !name.ends_with('.') && !name.ends_with(' ') && !isDeviceName(name);
}

/// Removes the drive from the front of an absolute path and returns its letter; empty when there is no drive.
cmStringT takeDrive(cmROStringT& path, cmPathStyle style)
{
    if (style == cmPathStyle::posix)
        return "";
    if (path.size() < 2 || path[1] != ':')
        return "";  // a share
    cmStringT drive = path.substr(0, 1);
    path.remove_prefix(2);
    return drive;
}

}  // namespace

cmStringT liveDiffMirrorPath(cmROStringT file, cmPathStyle style)
{
    if (!cmIsAbsolutePath(file, style))
        return {};
    const cmStringT native = cmWithoutVerbatimPrefix(cmNativeSeparators(file, style), style);
    cmROStringT rest = native;
    cmArray<cmROStringT> names;
    const cmStringT drive = takeDrive(rest, style);
    if (rest.empty() || cmIsPathSeparator(rest.back(), style))
        return {};
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(cmPathSeparator(style)), rest.size());
        const cmROStringT name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name == ".." && !names.empty())
            names.pop_back();
        if (name.empty() || name == "." || name == "..")
            continue;
        if (!isFileName(name, style))
            return {};
        names.push_back(name);
    }
    if (names.empty())
        return {};
    cmStringT mirror = drive;
    for (const cmROStringT name : names)
        mirror = cmJoinPath(mirror, name, style);
    return mirror;
}

cmStringT prepareLiveDiffCacheFile(cmROStringT directory, cmROStringT file)
{
    const cmStringT mirror = liveDiffMirrorPath(file);
    if (mirror.isNull() || directory.empty())
        return {};
    const cmStringT cache = cmJoinPath(cmNativeSeparators(directory), cacheFolder);
    if (!cmMakeFolderBelow(directory, cacheFolder) || !cmMakeFolderBelow(cache, cmDirectoryOf(mirror)))
        return {};
    return cmJoinPath(cache, mirror);
}
