#include "common/ChildStarter.h"

#include "common/WideText.h"
#include "common/cmStringCatHelper.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

namespace {

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

std::wstring interpreterPath()
{
    wchar_t directory[MAX_PATH];
    const UINT length = GetSystemDirectoryW(directory, MAX_PATH);
    return std::wstring(directory, length) + L"\\cmd.exe";
}

/// The environment as CreateProcess takes it: each variable closed by a NUL, and one more at the end.
std::wstring environmentBlock(const Environment& environment)
{
    std::wstring block;
    for (const cmStringT& variable : windowsEnvironmentOrder(environment))
        block += wideText(variable) + L'\0';
    return block + L'\0';
}

/// The three standard streams of a child: the pipes' child ends, the host's own ones, or the device that is empty and
/// swallows everything.
class ChildStreams {
public:
    ChildStreams(const SpawnStreams& streams, SpawnOptions options)
    {
        const bool piped = streams.input || streams.output || streams.error;
        m_hostStreams = (piped || (options & spawnStandardHandles)) && GetConsoleWindow() != nullptr;
        redirected = piped || m_hostStreams;
        if (!redirected)
            return;
        input = streams.input ? pipeEnd(*streams.input) : device(GENERIC_READ);
        output = stream(streams.output, STD_OUTPUT_HANDLE);
        error = (options & spawnErrorToOutput) ? output : stream(streams.error, STD_ERROR_HANDLE);
        for (const HANDLE handle : {input, output, error}) {
            if (handle != INVALID_HANDLE_VALUE && std::find(inherited.begin(), inherited.end(), handle) == inherited.end())
                inherited.push_back(handle);
        }
    }

    bool redirected = false;  ///< false: the system gives the child what it gives any program
    HANDLE input = INVALID_HANDLE_VALUE;
    HANDLE output = INVALID_HANDLE_VALUE;
    HANDLE error = INVALID_HANDLE_VALUE;
    cmArray<HANDLE> inherited;  ///< each once

private:
    static HANDLE pipeEnd(const ChildPipe& pipe) { return reinterpret_cast<HANDLE>(pipe.getChildEnd()); }

    HANDLE stream(const ChildPipe* pipe, DWORD hostStream)
    {
        if (pipe)
            return pipeEnd(*pipe);
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
        if (!DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS))
            return INVALID_HANDLE_VALUE;
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

    /// Null when the system refused it.
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

STARTUPINFOEXW startupInformation(const ChildStreams& child, SpawnOptions options)
{
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    if (options & spawnHiddenWindow) {
        startup.StartupInfo.dwFlags |= STARTF_USESHOWWINDOW;
        startup.StartupInfo.wShowWindow = SW_HIDE;
    }
    if (child.redirected) {
        startup.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
        startup.StartupInfo.hStdInput = child.input;
        startup.StartupInfo.hStdOutput = child.output;
        startup.StartupInfo.hStdError = child.error;
    }
    return startup;
}

/// Program and arguments in the form that CreateProcess takes. Empty when the interpreter cannot be given these
/// arguments.
struct WideCommand {
    std::wstring application;
    std::wstring text;
};

WideCommand wideCommand(const ChildStarter& starter)
{
    if (!starter.interpreter) {
        const std::wstring program = wideText(starter.program);
        return {program, L"\"" + program + L"\" " + wideText(starter.arguments)};
    }
    const cmStringT inner = windowsInterpreterText(starter.program, starter.arguments);
    const std::wstring program = interpreterPath();
    // No AutoRun command, no delayed expansion, and only the outer quotes taken away.
    std::wstring text = L"\"" + program + L"\" /d /v:off /s /c \"" + wideText(inner) + L"\"";
    constexpr std::size_t longestCommand = 8191;  // what is longer the interpreter does not run
    if (inner.isNull() || text.size() > longestCommand)
        return {};
    return {program, std::move(text)};
}

/// Fills `started`, suspended; false on failure, with the reason in GetLastError.
bool createSuspended(const ChildStarter& starter, WideCommand& command, PROCESS_INFORMATION& started)
{
    std::wstring block = environmentBlock(starter.environment);
    const std::wstring directory = wideText(starter.workingDirectory);
    const wchar_t* directoryOrNull = directory.empty() ? nullptr : directory.c_str();
    ChildStreams child(starter.streams, starter.options);
    STARTUPINFOEXW startup = startupInformation(child, starter.options);
    const auto create = [&] {
        return CreateProcessW(command.application.c_str(), command.text.data(), nullptr, nullptr, child.redirected,
                              creationFlags(starter.options), block.data(), directoryOrNull, &startup.StartupInfo, &started)
               != 0;
    };
    if (!child.redirected)
        return create();
    HandleList inherited(child.inherited);
    startup.lpAttributeList = inherited.get();
    return startup.lpAttributeList && create();
}

/// The shell's "open". The process is not ours to group: ending it ends it alone.
HANDLE openByShell(const ChildStarter& starter)
{
    const std::wstring program = wideText(starter.program);
    const std::wstring arguments = wideText(starter.arguments);
    const std::wstring directory = wideText(starter.workingDirectory);
    SHELLEXECUTEINFOW call{};
    call.cbSize = sizeof call;
    call.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    if (!(starter.options & spawnNewConsole))
        call.fMask |= SEE_MASK_NO_CONSOLE;
    call.lpVerb = L"open";
    call.lpFile = program.c_str();
    call.lpParameters = arguments.c_str();
    call.lpDirectory = directory.empty() ? nullptr : directory.c_str();
    call.nShow = (starter.options & spawnHiddenWindow) ? SW_HIDE : SW_SHOWNORMAL;
    return ShellExecuteExW(&call) ? call.hProcess : nullptr;
}

}  // namespace

bool ChildStarter::isProgram(const cmStringT& path)
{
    const DWORD attributes = GetFileAttributesW(wideText(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool ChildStarter::start(ChildProcess& process, cmStringT& detail) const
{
    const auto fail = [&](cmROStringT reason) {
        detail = cmCat(program) + ": " + reason;
        return false;
    };
    if (options & spawnShellExecute) {
        HANDLE opened = openByShell(*this);
        if (!opened)
            return fail(systemErrorText(GetLastError()));
        process.handle = reinterpret_cast<std::intptr_t>(opened);
        process.processId = GetProcessId(opened);
        process.valid = 1;
        return true;
    }
    WideCommand command = wideCommand(*this);
    if (command.application.empty())
        return fail("the command interpreter cannot be given these arguments");
    OwnedHandle job(CreateJobObjectW(nullptr, nullptr));
    PROCESS_INFORMATION started{};
    if (!job || !createSuspended(*this, command, started))
        return fail(systemErrorText(GetLastError()));
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
