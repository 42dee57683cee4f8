#pragma once

#include "common/cmString.h"

#include <filesystem>
#include <string>

// Conversion between our text, which is UTF-8, and the standard library's paths, whose narrow form on Windows is not.

/// On Windows, throws std::system_error for text that is not UTF-8.
inline std::filesystem::path cmSystemPath(cmROStringT path)
{
    return std::u8string(path.begin(), path.end());
}

/// The path as text, in native separators.
inline cmStringT cmPathText(std::filesystem::path path)
{
    const std::u8string text = path.make_preferred().u8string();
    return cmROStringT(reinterpret_cast<const char*>(text.data()), text.size());
}
