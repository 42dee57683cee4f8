#include "common/CMFD_ITEM.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

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
    item.state = cmItemState::found;
    if (!(entry.st_mode & anyWriter) || access(name.c_str(), W_OK) != 0)
        item.attributes |= cmAttributeReadOnly;
    if (S_ISDIR(entry.st_mode))
        item.attributes |= cmAttributeDirectory;
    item.size = entry.st_size;
    item.created = timeOf(entry.st_ctim);
    item.accessed = timeOf(entry.st_atim);
    item.modified = timeOf(entry.st_mtim);
    return item;
}
