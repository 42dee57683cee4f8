#include "common/cmFile.h"

#include "common/cmSystemPath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

cmUTCTime timeOf(const timespec& time)
{
    return cmUTCTimeOfUnixTime(time.tv_sec, time.tv_nsec);
}

}  // namespace

CMFD_ITEM cmReadFileItem(cmROStringT path)
{
    CMFD_ITEM item;
    struct stat entry {};
    const cmStringT name(path);
    if (stat(name.c_str(), &entry) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        item.state = missing ? cmItemState::missing : cmItemState::unreadable;
        return item;
    }
    constexpr mode_t anyWriter = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool writable = access(name.c_str(), W_OK) == 0;
    if (!writable && errno != EACCES && errno != EROFS && errno != EPERM && errno != ETXTBSY) {
        item.state = cmItemState::unreadable;
        return item;
    }
    item.state = cmItemState::found;
    if (!(entry.st_mode & anyWriter) || !writable)
        item.attributes |= cmAttributeReadOnly;
    if (S_ISDIR(entry.st_mode))
        item.attributes |= cmAttributeDirectory;
    item.size = entry.st_size;
    item.created = timeOf(entry.st_ctim);
    item.accessed = timeOf(entry.st_atim);
    item.modified = timeOf(entry.st_mtim);
    return item;
}

cmStringT cmRealPath(cmROStringT path)
try {
    return cmPathText(std::filesystem::canonical(cmSystemPath(path)));
} catch (const std::exception&) {
    return {};  // no such file, or no valid path
}

cmStringT cmProgramPath()
{
    return cmRealPath("/proc/self/exe");
}

bool cmReplaceFile(cmROStringT from, cmROStringT path)
{
    const cmStringT source(from);
    const cmStringT target(path);
    // When a file is renamed over another, some file systems first write all of its data to the disk, and the caller waits for
    // it. Exchanging the two names is as safe for readers and does not wait; the caller then removes the old file.
    struct stat old {};
    if (lstat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode)
        && renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0)
        return true;
    return std::rename(source.c_str(), target.c_str()) == 0;
}
