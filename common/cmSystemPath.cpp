#include "common/cmSystemPath.h"

#include <string>

std::filesystem::path cmSystemPath(cmROStringT path)
{
    return std::u8string(path.begin(), path.end());
}

cmStringT cmPathText(std::filesystem::path path)
{
    const std::u8string text = path.make_preferred().u8string();
    return cmROStringT(reinterpret_cast<const char*>(text.data()), text.size());
}
