#include "common/WideText.h"
#include "common/cmStringCatHelper.h"
#include "tests/TestSupport.h"

#include <windows.h>

#include <tlhelp32.h>

#include <array>

namespace {

std::vector<DWORD> livingProcesses(const std::string& path)
{
    std::vector<DWORD> found;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
        HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, entry.th32ProcessID);
        if (!process)
            continue;
        std::array<wchar_t, 1024> image{};
        DWORD length = static_cast<DWORD>(image.size());
        const bool known = QueryFullProcessImageNameW(process, 0, image.data(), &length) != 0;
        if (known && narrowText({image.data(), length}) == path && WaitForSingleObject(process, 0) == WAIT_TIMEOUT)
            found.push_back(entry.th32ProcessID);
        CloseHandle(process);
    }
    CloseHandle(snapshot);
    return found;
}

HANDLE inheritableFile(const fs::path& path)
{
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::size_t threadCount()
{
    std::size_t count = 0;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

std::size_t processesOf(const std::string& path)
{
    return livingProcesses(path).size();
}

void killProcessesOf(const std::string& path)
{
    for (const DWORD id : livingProcesses(path)) {
        if (HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id)) {
            TerminateProcess(process, 0);
            CloseHandle(process);
        }
    }
}

int runInto(const std::string& program, const std::string& arguments, const fs::path& output, const fs::path& error)
{
    std::wstring line = wideText(cmStringT(cmCat("\"") + program + "\" " + arguments));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = INVALID_HANDLE_VALUE;
    startup.hStdOutput = inheritableFile(output);
    startup.hStdError = inheritableFile(error);
    PROCESS_INFORMATION started{};
    DWORD exitCode = static_cast<DWORD>(-1);
    if (CreateProcessW(wideText(program).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started)) {
        WaitForSingleObject(started.hProcess, INFINITE);
        GetExitCodeProcess(started.hProcess, &exitCode);
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
    CloseHandle(startup.hStdOutput);
    CloseHandle(startup.hStdError);
    return static_cast<int>(exitCode);
}

std::size_t childProcesses()
{
    return 0;  // an ended child only leaves a handle, which openDescriptors counts
}
