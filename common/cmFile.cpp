#include "common/cmFile.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace {

std::filesystem::path systemPath(cmROStringT path)
{
    return std::u8string(path.begin(), path.end());
}

}  // namespace

cmStringT cmRealPath(cmROStringT path)
{
    std::error_code error;
    const std::u8string real = std::filesystem::canonical(systemPath(path), error).u8string();
    return error ? cmStringT() : cmStringT(cmROStringT(reinterpret_cast<const char*>(real.data()), real.size()));
}

bool cmIsDirectory(cmROStringT path)
{
    std::error_code error;
    return std::filesystem::is_directory(systemPath(path), error);
}
