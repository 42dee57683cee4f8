#include "common/CMFD_ITEM.h"
#include "common/WideText.h"

#include <windows.h>

namespace {

std::int64_t joined(DWORD high, DWORD low)
{
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(high) << 32) | low);
}

/// The system's unit and beginning are ours.
cmUTCTime timeOf(const FILETIME& time)
{
    return joined(time.dwHighDateTime, time.dwLowDateTime);
}

}  // namespace

CMFD_ITEM cmReadFileItem(cmROStringT path)
{
    CMFD_ITEM item;
    WIN32_FILE_ATTRIBUTE_DATA entry{};
    const std::wstring name = wideText(path);
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &entry)) {
        const DWORD error = GetLastError();
        const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
        item.state = missing ? cmItemState::missing : cmItemState::unreadable;
        return item;
    }
    item.state = cmItemState::found;
    item.attributes = entry.dwFileAttributes;
    item.size = joined(entry.nFileSizeHigh, entry.nFileSizeLow);
    item.created = timeOf(entry.ftCreationTime);
    item.accessed = timeOf(entry.ftLastAccessTime);
    item.modified = timeOf(entry.ftLastWriteTime);
    return item;
}
