#include "txhost/HostSystem.h"

#include "common/WideText.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"

#include <windows.h>

#include <tlhelp32.h>

#include <cwchar>
#include <string>
#include <utility>

namespace {

/// The exit code that tells a capture that the tool did not come to its own end: STATUS_CONTROL_C_EXIT.
constexpr UINT endedByCtrlC = 0xC000013A;

/// This process or one that descends from it.
struct Relative {
    DWORD id;
    HANDLE handle;
    ULONGLONG created;  ///< 100 ns units
};

ULONGLONG creationTime(HANDLE process)
{
    FILETIME created{};
    FILETIME others[3];
    GetProcessTimes(process, &created, &others[0], &others[1], &others[2]);
    return static_cast<ULONGLONG>(created.dwHighDateTime) << 32 | created.dwLowDateTime;
}

/// Opens the children of family[parent] and adds them. A process keeps its parent's number when that has ended and the number has
/// become another process's; but then it is older than that one. Those whose parent has ended before are not found.
void addChildren(const cmArray<PROCESSENTRY32W>& processes, std::size_t parent, cmArray<Relative>& family)
{
    for (const PROCESSENTRY32W& process : processes) {
        if (process.th32ParentProcessID != family[parent].id || process.th32ProcessID == family[parent].id)
            continue;
        // The window of a console of our own. Its end would close the console, and end this process before it says why.
        if (_wcsicmp(process.szExeFile, L"conhost.exe") == 0)
            continue;
        constexpr DWORD rights = PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION;
        HANDLE handle = OpenProcess(rights, FALSE, process.th32ProcessID);
        if (!handle)
            continue;
        const ULONGLONG created = creationTime(handle);
        if (created >= family[parent].created)
            family.push_back({process.th32ProcessID, handle, created});
        else
            CloseHandle(handle);
    }
}

}  // namespace

cmStringT SharedLibrary::load(cmROStringT name)
{
    unload();
    const cmStringT program = cmProgramPath();
    const cmStringT path = cmCat(program.view().substr(0, program.view().rfind('\\'))) + "\\" + name + ".dll";
    const std::wstring widePath = wideText(path);
    m_handle = LoadLibraryW(widePath.c_str());
    const DWORD error = GetLastError();
    return m_handle ? cmStringT() : cmStringT(cmCat(path) + ": error " + std::to_string(error));
}

SharedLibrary::AnyFunction SharedLibrary::address(const char* name) const
{
    return m_handle ? reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(m_handle), name)) : nullptr;
}

void SharedLibrary::unload()
{
    if (m_handle)
        FreeLibrary(static_cast<HMODULE>(std::exchange(m_handle, nullptr)));
}

void endChildProcesses()
{
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return;
    cmArray<PROCESSENTRY32W> processes;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL found = Process32FirstW(snapshot, &entry); found; found = Process32NextW(snapshot, &entry))
        processes.push_back(entry);
    CloseHandle(snapshot);
    cmArray<Relative> family{{GetCurrentProcessId(), GetCurrentProcess(), creationTime(GetCurrentProcess())}};
    for (std::size_t next = 0; next < family.size(); ++next)
        addChildren(processes, next, family);
    for (std::size_t i = 1; i < family.size(); ++i) {
        TerminateProcess(family[i].handle, endedByCtrlC);
        CloseHandle(family[i].handle);
    }
}

std::uint32_t currentThreadNumber()
{
    return GetCurrentThreadId();
}

void endChildProcessesOf(std::uint32_t) {}

cmStringT shellCommandLine(cmROStringT command)
{
    wchar_t directory[MAX_PATH];
    const UINT length = GetSystemDirectoryW(directory, MAX_PATH);
    const cmStringT folder = narrowText({directory, length < MAX_PATH ? length : 0});
    // /d: no AutoRun command. /s: only the outer quotes are removed.
    return cmCat("\"") + folder + "\\cmd.exe\" /d /s /c \"" + command + "\"";
}

bool isOnRecentList(const cmStringT&)
{
    return true;
}

cmStringT redirectRecentList(const cmStringT&)
{
    return {};
}
