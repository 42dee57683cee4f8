#include "common/cmFileReplacement.h"

#include "common/NativeHandle.h"
#include "common/WideText.h"

#include <windows.h>

#include <algorithm>

std::intptr_t cmFileReplacement::createNew(const cmStringT& path)
{
    // Without security attributes the handle is not inheritable. With delete sharing nobody is kept from removing the folder.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_DELETE;
    HANDLE file = CreateFileW(wideText(path).c_str(), GENERIC_WRITE, share, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file == INVALID_HANDLE_VALUE ? none : reinterpret_cast<std::intptr_t>(file);
}

bool cmFileReplacement::writeAll(std::intptr_t handle, cmROStringT bytes)
{
    constexpr std::size_t atOnce = 1U << 30;
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), atOnce));
        if (!WriteFile(nativeHandle(handle), bytes.data(), wanted, &count, nullptr) || count == 0)
            return false;
        bytes.remove_prefix(count);
    }
    return true;
}

bool cmFileReplacement::close(std::intptr_t handle)
{
    return CloseHandle(nativeHandle(handle)) != 0;
}

std::uint32_t cmFileReplacement::thisProcess()
{
    return GetCurrentProcessId();
}

bool cmFileReplacement::isAlive(std::uint32_t process)
{
    HANDLE opened = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (!opened)
        return GetLastError() != ERROR_INVALID_PARAMETER;  // that there is no such process
    const bool ended = WaitForSingleObject(opened, 0) == WAIT_OBJECT_0;
    CloseHandle(opened);
    return !ended;
}
