#include "common/cmFileReplacement.h"

#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmSystemPath.h"

#include <charconv>
#include <exception>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr cmROStringT temporaryPrefix = ".new-";

/// A name that no other file has: ".new-PROCESS-RANDOM". It is short, as the final name may have the greatest length that the
/// system allows.
cmStringT temporaryName(std::uint32_t process, std::uint32_t random)
{
    return cmROStringT(std::string(temporaryPrefix) + std::to_string(process) + "-" + std::to_string(random));
}

/// The process that made a temporary file of this name; 0 when it is not the name of such a file.
std::uint32_t makerOf(cmROStringT name)
{
    if (!name.starts_with(temporaryPrefix))
        return 0;
    std::uint32_t process = 0;
    std::uint32_t random = 0;
    const char* end = name.data() + name.size();
    const char* stop = std::from_chars(name.data() + temporaryPrefix.size(), end, process).ptr;
    if (stop != end)
        std::from_chars(stop + 1, end, random);
    return name == temporaryName(process, random) ? process : 0;  // somebody else's file may only begin like ours
}

void removeFile(cmROStringT path)
{
    std::error_code ignored;
    fs::remove(cmSystemPath(path), ignored);
}

}  // namespace

cmFileReplacement::cmFileReplacement(cmROStringT path)
    : m_path(path), m_temporary(cmJoinPath(cmDirectoryOf(path), temporaryName(thisProcess(), std::random_device()())))
{
    removeLeftBehind(cmDirectoryOf(path));
    m_handle = createNew(m_temporary);
    m_complete = m_handle != none;
}

cmFileReplacement::~cmFileReplacement()
{
    closeFile();
    removeFile(m_temporary);
}

void cmFileReplacement::write(cmROStringT bytes)
{
    m_complete = m_complete && writeAll(m_handle, bytes);
}

bool cmFileReplacement::finish()
{
    const bool closed = closeFile();  // some file systems report here that they could not write
    return m_complete && closed && cmReplaceFile(m_temporary, m_path);
}

bool cmFileReplacement::closeFile()
{
    const std::intptr_t handle = std::exchange(m_handle, none);
    return handle != none && close(handle);
}

void cmFileReplacement::removeLeftBehind(cmROStringT folder)
try {
    std::error_code error;
    fs::directory_iterator entries(cmSystemPath(folder), error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        std::error_code unknown;
        const bool isFile = fs::is_regular_file(entries->symlink_status(unknown));
        const std::uint32_t maker = isFile ? makerOf(cmPathText(entries->path().filename())) : 0;
        if (maker != 0 && !isAlive(maker))
            removeFile(cmPathText(entries->path()));
    }
} catch (const std::exception&) {
    // A name that is no Unicode text: what is left behind stays there.
}
