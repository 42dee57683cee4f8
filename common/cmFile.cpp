#include "common/cmFile.h"

#include <exception>
#include <filesystem>
#include <string>

namespace {

std::filesystem::path systemPath(cmROStringT path)
{
    return std::u8string(path.begin(), path.end());
}

}  // namespace

cmStringT cmRealPath(cmROStringT path)
try {
    const std::u8string real = std::filesystem::canonical(systemPath(path)).u8string();
    return cmROStringT(reinterpret_cast<const char*>(real.data()), real.size());
} catch (const std::exception&) {
    return {};  // no such file, or no name that the system could have
}

bool cmIsDirectory(cmROStringT path)
try {
    return std::filesystem::is_directory(systemPath(path));
} catch (const std::exception&) {
    return false;
}
