#include "common/cmFile.h"

#include "common/cmSystemPath.h"

#include <exception>
#include <filesystem>

bool cmIsDirectory(cmROStringT path)
try {
    return std::filesystem::is_directory(cmSystemPath(path));
} catch (const std::exception&) {
    return false;  // no name that the system could have
}
