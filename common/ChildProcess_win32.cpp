#include "common/ChildProcess.h"

#include "common/ChildStarter.h"
#include "common/WideText.h"
#include "common/cmStringCatHelper.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <memory>
#include <string>
#include <utility>

namespace {

HANDLE native(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

/// A handle that is closed with the object.
struct CloseHandleOf {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseHandleOf>;

cmStringT systemErrorText(DWORD error)
{
    wchar_t text[512];
    const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    const DWORD length = FormatMessageW(flags, nullptr, error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    return cmWithoutLineEnd(narrowText({text, length}));
}

/// The environment as CreateProcess takes it: sorted without case, each variable closed by a NUL, and one more at the end.
std::wstring environmentBlock(const Environment& environment)
{
    cmArray<std::wstring> variables;
    for (const cmStringT& variable : environment)
        variables.push_back(wideText(variable));
    std::sort(variables.begin(), variables.end(), [](const std::wstring& a, const std::wstring& b) {
        return CompareStringOrdinal(a.c_str(), static_cast<int>(a.find(L'=', 1)), b.c_str(), static_cast<int>(b.find(L'=', 1)),
                                    TRUE)
               == CSTR_LESS_THAN;
    });
    std::wstring block;
    for (const std::wstring& variable : variables)
        block += variable + L'\0';
    return block + L'\0';
}

std::wstring interpreterPath()
{
    wchar_t directory[MAX_PATH];
    const UINT length = GetSystemDirectoryW(directory, MAX_PATH);
    return std::wstring(directory, length) + L"\\cmd.exe";
}

/// The three standard streams of a child: the pipes' child ends, the host's own ones, or the device that is empty and
/// swallows everything.
class ChildStreams {
public:
    ChildStreams(const SpawnStreams& streams, SpawnOptions options)
    {
        const bool piped = streams.input || streams.output || streams.error;
        m_hostStreams = (piped || (options & spawnStandardHandles)) && GetConsoleWindow() != nullptr;
        input = streams.input ? native(streams.input->getChildEnd()) : device(GENERIC_READ);
        output = stream(streams.output, STD_OUTPUT_HANDLE);
        error = (options & spawnErrorToOutput) ? output : stream(streams.error, STD_ERROR_HANDLE);
        for (const HANDLE handle : {input, output, error}) {
            if (std::find(inherited.begin(), inherited.end(), handle) == inherited.end())
                inherited.push_back(handle);
        }
    }

    HANDLE input;
    HANDLE output;
    HANDLE error;
    cmArray<HANDLE> inherited;  ///< each once

private:
    HANDLE stream(const ChildPipe* pipe, DWORD hostStream)
    {
        if (pipe)
            return native(pipe->getChildEnd());
        return m_hostStreams ? inheritableCopy(GetStdHandle(hostStream)) : device(GENERIC_WRITE);
    }

    HANDLE device(DWORD access)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        return keep(CreateFileW(L"NUL", access, share, &inheritable, OPEN_EXISTING, 0, nullptr));
    }

    HANDLE inheritableCopy(HANDLE handle)
    {
        HANDLE copy = INVALID_HANDLE_VALUE;
        const HANDLE self = GetCurrentProcess();
        DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS);
        return keep(copy);
    }

    HANDLE keep(HANDLE handle)
    {
        if (handle != INVALID_HANDLE_VALUE)
            m_owned.emplace_back(handle);
        return handle;
    }

    bool m_hostStreams = false;
    cmArray<OwnedHandle> m_owned;
};

/// The list of handles that a child inherits, in the form that CreateProcess takes; `handles` must outlive it.
class HandleList {
public:
    explicit HandleList(cmArray<HANDLE>& handles)
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_storage.resize(size);
        auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_storage.data());
        if (!InitializeProcThreadAttributeList(list, 1, 0, &size))
            return;
        m_list = list;
        m_valid = UpdateProcThreadAttribute(m_list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                            handles.size() * sizeof(HANDLE), nullptr, nullptr)
                  != 0;
    }
    ~HandleList()
    {
        if (m_list)
            DeleteProcThreadAttributeList(m_list);
    }
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST get() const { return m_valid ? m_list : nullptr; }

private:
    cmArray<std::byte> m_storage;
    LPPROC_THREAD_ATTRIBUTE_LIST m_list = nullptr;
    bool m_valid = false;
};

DWORD creationFlags(SpawnOptions options)
{
    DWORD flags = CREATE_UNICODE_ENVIRONMENT | EXTENDED_STARTUPINFO_PRESENT | CREATE_SUSPENDED;
    if (options & spawnNewGroup)
        flags |= CREATE_NEW_PROCESS_GROUP;
    if (options & spawnNewConsole)
        flags |= CREATE_NEW_CONSOLE;
    if (options & spawnNoWindow)
        flags |= CREATE_NO_WINDOW;
    return flags;
}

}  // namespace

bool ChildStarter::isProgram(const cmStringT& path)
{
    const DWORD attributes = GetFileAttributesW(wideText(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool ChildStarter::start(ChildProcess& process, cmStringT& detail) const
{
    const std::wstring application = interpreter ? interpreterPath() : wideText(program);
    std::wstring commandLine = L"\"" + application + L"\" ";
    if (interpreter)
        commandLine += L"/d /s /c \"" + wideText(windowsInterpreterText(program, arguments)) + L"\"";
    else
        commandLine += wideText(arguments);
    std::wstring block = environmentBlock(environment);
    const std::wstring directory = wideText(workingDirectory);

    ChildStreams child(streams, options);
    HandleList inherited(child.inherited);
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    if (options & spawnHiddenWindow) {
        startup.StartupInfo.dwFlags |= STARTF_USESHOWWINDOW;
        startup.StartupInfo.wShowWindow = SW_HIDE;
    }
    startup.StartupInfo.hStdInput = child.input;
    startup.StartupInfo.hStdOutput = child.output;
    startup.StartupInfo.hStdError = child.error;
    startup.lpAttributeList = inherited.get();

    PROCESS_INFORMATION started{};
    OwnedHandle job(CreateJobObjectW(nullptr, nullptr));
    const bool created =
        job && inherited.get()
        && CreateProcessW(application.c_str(), commandLine.data(), nullptr, nullptr, TRUE, creationFlags(options), block.data(),
                          directory.empty() ? nullptr : directory.c_str(), &startup.StartupInfo, &started);
    if (!created) {
        detail = cmCat(program) + ": " + systemErrorText(GetLastError());
        return false;
    }
    // Suspended until it is in the job, so that nothing it starts can be outside.
    AssignProcessToJobObject(job.get(), started.hProcess);
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
    process.handle = reinterpret_cast<std::intptr_t>(started.hProcess);
    process.group = reinterpret_cast<std::intptr_t>(job.release());
    process.processId = started.dwProcessId;
    process.valid = 1;
    return true;
}

void reapEndedChildren() {}

bool ChildProcess::isRunning()
{
    return valid && WaitForSingleObject(native(handle), 0) != WAIT_OBJECT_0;
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    terminated = true;
    TerminateJobObject(native(group), 0);
    if (isRunning()) {
        TerminateProcess(native(handle), 0);
        return;
    }
    if (HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, processId)) {
        TerminateProcess(process, 0);
        CloseHandle(process);
    }
}

void ChildProcess::close()
{
    if (handle != none)
        CloseHandle(native(std::exchange(handle, none)));
    if (group != none)
        CloseHandle(native(std::exchange(group, none)));
    processId = 0;
    valid = 0;
    terminated = false;
}

ChildActivity ChildProcess::look(ChildPipe& output, ChildPipe& error)
{
    const bool running = isRunning();
    const bool outputWaits = output.dataAvailable();
    return {running, outputWaits, error.dataAvailable()};
}

void ChildProcess::waitForActivity(const ChildPipe&, const ChildPipe&, std::uint32_t timeoutMs)
{
    // Anonymous pipes cannot be waited for: look again soon.
    constexpr DWORD shortest = 1;
    WaitForSingleObject(native(handle), std::min<DWORD>(shortest, timeoutMs));
}
