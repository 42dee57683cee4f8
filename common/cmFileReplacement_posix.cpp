#include "common/cmFileReplacement.h"

#include "common/cmDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <limits>

std::intptr_t cmFileReplacement::createNew(const cmStringT& path)
{
    constexpr mode_t everybody = 0666;  // less what the host's mask takes away
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybody);
    return descriptor < 0 ? none : cmAboveStandardStreams(descriptor);
}

bool cmFileReplacement::writeAll(std::intptr_t handle, cmROStringT bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(static_cast<int>(handle), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 1)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool cmFileReplacement::close(std::intptr_t handle)
{
    return ::close(static_cast<int>(handle)) == 0 || errno == EINTR;
}

std::uint32_t cmFileReplacement::thisProcess()
{
    return static_cast<std::uint32_t>(getpid());
}

bool cmFileReplacement::isAlive(std::uint32_t process)
{
    const bool possible = process <= static_cast<std::uint32_t>(std::numeric_limits<pid_t>::max());
    return possible && (kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH);
}
