#include "common/cmFile.h"
#include "common/cmSystemPath.h"

#include <exception>
#include <filesystem>

cmStringT cmRealPath(cmROStringT path)
try {
    return cmPathText(std::filesystem::canonical(cmSystemPath(path)));
} catch (const std::exception&) {
    return {};  // no such file, or no name that the system could have
}

cmStringT cmProgramPath()
{
    return cmRealPath("/proc/self/exe");
}
