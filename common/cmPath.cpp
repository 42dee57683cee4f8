#include "common/cmPath.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>

namespace {

bool isDriveLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool startsWithDrive(cmROStringT path)
{
    return path.size() >= 2 && isDriveLetter(path[0]) && path[1] == ':';
}

}  // namespace

char cmPathSeparator(cmPathStyle style)
{
    return style == cmPathStyle::windows ? '\\' : '/';
}

bool cmIsPathSeparator(char c, cmPathStyle style)
{
    return c == '/' || (style == cmPathStyle::windows && c == '\\');
}

cmStringT cmNativeSeparators(cmROStringT path, cmPathStyle style)
{
    cmStringT native(path);
    cmUseNativeSeparators(native, style);
    return native;
}

void cmUseNativeSeparators(cmStringT& path, cmPathStyle style)
{
    if (style == cmPathStyle::windows)
        std::replace(path.data(), path.data() + path.length(), '/', '\\');
}

cmROStringT cmWithoutTrailingSeparator(cmROStringT path, cmPathStyle style)
{
    if (path.empty() || !cmIsPathSeparator(path.back(), style))
        return path;
    const bool root = path.size() == 1 || (style == cmPathStyle::windows && path.size() == 3 && startsWithDrive(path));
    return root ? path : path.substr(0, path.size() - 1);
}

cmROStringT cmDirectoryOf(cmROStringT path, cmPathStyle style)
{
    return cmWithoutTrailingSeparator(path.substr(0, path.size() - cmFileNameOf(path, style).size()), style);
}

cmROStringT cmFileNameOf(cmROStringT path, cmPathStyle style)
{
    const auto isSeparator = [style](char c) { return cmIsPathSeparator(c, style); };
    const auto length = std::find_if(path.rbegin(), path.rend(), isSeparator) - path.rbegin();
    return path.substr(path.size() - static_cast<std::size_t>(length));
}

cmStringT cmWithoutVerbatimPrefix(cmROStringT path, cmPathStyle style)
{
    constexpr cmROStringT verbatimShare = R"(\\?\UNC\)";
    constexpr cmROStringT verbatim = R"(\\?\)";
    if (style == cmPathStyle::windows && path.starts_with(verbatimShare))
        return cmCat(R"(\\)") + path.substr(verbatimShare.size());
    if (style == cmPathStyle::windows && path.starts_with(verbatim))
        return path.substr(verbatim.size());
    return path;
}

bool cmIsAbsolutePath(cmROStringT path, cmPathStyle style)
{
    if (style == cmPathStyle::posix)
        return path.starts_with('/');
    const auto separatorAt = [&](std::size_t i) { return path.size() > i && cmIsPathSeparator(path[i], style); };
    return startsWithDrive(path) ? separatorAt(2) : separatorAt(0) && separatorAt(1);
}

bool cmIsNetworkPath(cmROStringT path, cmPathStyle style)
{
    return style == cmPathStyle::windows && cmIsAbsolutePath(path, style) && cmIsPathSeparator(path.front(), style);
}

cmStringT cmJoinPath(cmROStringT directory, cmROStringT name, cmPathStyle style)
{
    cmStringT joined(directory);
    if (!directory.empty() && !cmIsPathSeparator(directory.back(), style))
        joined += cmPathSeparator(style);
    joined += name;
    return joined;
}

bool cmSamePath(cmROStringT a, cmROStringT b, cmPathStyle style)
{
    return style == cmPathStyle::windows ? cmEqualIgnoringCase(a, b) : a == b;
}

bool cmRelativePath(cmROStringT path, cmROStringT directory, cmROStringT& relative, cmPathStyle style)
{
    const cmROStringT prefix = cmWithoutTrailingSeparator(directory, style);
    if (prefix.empty() || path.size() < prefix.size() || !cmSamePath(path.substr(0, prefix.size()), prefix, style))
        return false;
    cmROStringT rest = path.substr(prefix.size());
    if (!rest.empty() && !cmIsPathSeparator(prefix.back(), style)) {
        if (!cmIsPathSeparator(rest.front(), style))
            return false;
        rest.remove_prefix(1);
    }
    relative = rest;
    return true;
}

cmStringT cmFileNameKey(cmROStringT path, cmPathStyle style)
{
    return style == cmPathStyle::windows ? cmLowerAscii(cmNativeSeparators(path, style)) : cmStringT(path);
}
