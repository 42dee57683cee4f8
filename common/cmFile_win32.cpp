#include "common/cmFile.h"

#include "common/WideText.h"
#include "common/cmPath.h"

#include <windows.h>

#include <string>

namespace {

/// Calls `fill(buffer, size)` with a growing buffer until the text fits. `fill` returns the text's length, or the size it needs.
template <class Fill>
cmStringT filledText(Fill fill)
{
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size())
            return length == 0 ? cmStringT() : narrowText({text.data(), length});
        text.resize(length * std::size_t{2});
    }
}

/// Opens a file or folder; of a link, what it leads to. Asking for name and attributes needs no access right.
HANDLE openToLook(const wchar_t* path)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    // Backup semantics are needed to open a folder.
    return CreateFileW(path, 0, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

std::int64_t joined(DWORD high, DWORD low)
{
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(high) << 32) | low);
}

/// FILETIME has the unit and the origin of cmUTCTime.
cmUTCTime timeOf(const FILETIME& time)
{
    return joined(time.dwHighDateTime, time.dwLowDateTime);
}

/// Reads the attributes of what a link leads to. Returns false on failure, with the old `entry` and the last error set.
bool readTarget(const wchar_t* link, WIN32_FILE_ATTRIBUTE_DATA& entry)
{
    HANDLE file = openToLook(link);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION target{};
    const bool read = GetFileInformationByHandle(file, &target) != 0;
    const DWORD error = GetLastError();
    CloseHandle(file);
    SetLastError(error);
    if (!read)
        return false;
    entry = {target.dwFileAttributes, target.ftCreationTime, target.ftLastAccessTime,
             target.ftLastWriteTime,  target.nFileSizeHigh,  target.nFileSizeLow};
    return true;
}

}  // namespace

CMFD_ITEM cmReadFileItem(cmROStringT path)
{
    CMFD_ITEM item;
    WIN32_FILE_ATTRIBUTE_DATA entry{};
    const std::wstring name = wideText(path);
    bool read = GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &entry) != 0;
    if (read && (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT))
        // What the system cannot follow, such as the alias of an installed app, is no link: its own entry counts.
        read = readTarget(name.c_str(), entry) || GetLastError() == ERROR_CANT_ACCESS_FILE;
    if (!read) {
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

cmStringT cmRealPath(cmROStringT path)
{
    HANDLE file = openToLook(wideText(path).c_str());
    if (file == INVALID_HANDLE_VALUE)
        return {};
    const cmStringT real = filledText(
        [file](wchar_t* text, DWORD size) { return GetFinalPathNameByHandleW(file, text, size, FILE_NAME_NORMALIZED); });
    CloseHandle(file);
    return cmWithoutVerbatimPrefix(real);
}

cmStringT cmProgramPath()
{
    return filledText([](wchar_t* text, DWORD size) { return GetModuleFileNameW(nullptr, text, size); });
}

bool cmReplaceFile(cmROStringT from, cmROStringT path)
{
    return MoveFileExW(wideText(from).c_str(), wideText(path).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}
