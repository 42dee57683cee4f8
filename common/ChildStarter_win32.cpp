#include "common/ChildStarter.h"

#include "common/CommandLine.h"
#include "common/CommandQuoting.h"
#include "common/NativeHandle.h"
#include "common/WideText.h"
#include "common/cmPath.h"
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

/// Empty when the system does not name its directory: the current one must never stand in for it.
std::wstring interpreterPath()
{
    wchar_t directory[MAX_PATH];
    const UINT length = GetSystemDirectoryW(directory, MAX_PATH);
    return length == 0 || length >= MAX_PATH ? std::wstring() : std::wstring(directory, length) + L"\\cmd.exe";
}

/// The environment in the form that CreateProcess takes: a NUL behind each variable, and one more at the end.
std::wstring environmentBlock(const Environment& environment)
{
    std::wstring block;
    for (const cmStringT& variable : windowsEnvironmentOrder(environment))
        block += wideText(variable) + L'\0';
    return block + L'\0';
}

/// The three standard streams of a child. Each is a pipe's child end, a copy of the host's own stream, or the null device.
/// Closes the copies and devices.
class ChildStreams {
public:
    ChildStreams(const SpawnStreams& streams, SpawnOptions options)
    {
        const bool piped = streams.input || streams.output || streams.error;
        m_hostStreams = (piped || (options & spawnStandardHandles)) && GetConsoleWindow() != nullptr;
        redirected = piped || m_hostStreams;
        if (!redirected)
            return;
        input = streams.input ? pipeEnd(*streams.input) : keep(nullDevice(GENERIC_READ));
        output = stream(streams.output, STD_OUTPUT_HANDLE);
        error = (options & spawnErrorToOutput) ? keep(inheritableCopy(output)) : stream(streams.error, STD_ERROR_HANDLE);
        for (const HANDLE handle : {input, output, error}) {
            if (std::find(inherited.begin(), inherited.end(), handle) == inherited.end())
                inherited.push_back(handle);
        }
    }

    bool redirected = false;  ///< false: the child gets the system's default streams
    HANDLE input = INVALID_HANDLE_VALUE;
    HANDLE output = INVALID_HANDLE_VALUE;
    HANDLE error = INVALID_HANDLE_VALUE;
    DWORD failure = 0;          ///< the system's first error when the child cannot be given a stream
    cmArray<HANDLE> inherited;  ///< without duplicates, which Windows refuses

private:
    static HANDLE pipeEnd(const ChildPipe& pipe) { return nativeHandle(pipe.getChildEnd()); }

    HANDLE stream(const ChildPipe* pipe, DWORD hostStream)
    {
        if (pipe)
            return pipeEnd(*pipe);
        const HANDLE copy = m_hostStreams ? inheritableCopy(GetStdHandle(hostStream)) : INVALID_HANDLE_VALUE;
        return keep(copy != INVALID_HANDLE_VALUE ? copy : nullDevice(GENERIC_WRITE));
    }

    static HANDLE nullDevice(DWORD access)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        return CreateFileW(L"NUL", access, share, &inheritable, OPEN_EXISTING, 0, nullptr);
    }

    static HANDLE inheritableCopy(HANDLE handle)
    {
        // INVALID_HANDLE_VALUE is also the pseudo handle of this process: a copy would give the child full access to us.
        if (!handle || handle == INVALID_HANDLE_VALUE)
            return INVALID_HANDLE_VALUE;
        HANDLE copy = INVALID_HANDLE_VALUE;
        const HANDLE self = GetCurrentProcess();
        const bool made = DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) != 0;
        return made ? copy : INVALID_HANDLE_VALUE;
    }

    HANDLE keep(HANDLE handle)
    {
        if (handle != INVALID_HANDLE_VALUE) {
            m_owned.emplace_back(handle);
        } else if (failure == 0) {
            const DWORD error = GetLastError();
            failure = error != 0 ? error : ERROR_INVALID_HANDLE;
        }
        return handle;
    }

    bool m_hostStreams = false;
    cmArray<OwnedHandle> m_owned;
};

/// The attribute list of a child's start-up information. The arrays must outlive it.
class StartAttributes {
public:
    /// The child inherits no handles but `inherited`, and belongs to `jobs` from its first instruction on.
    StartAttributes(cmArray<HANDLE>& inherited, cmArray<HANDLE>& jobs)
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, attributeCount, 0, &size);
        m_storage.resize(size);
        auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_storage.data());
        if (!InitializeProcThreadAttributeList(list, attributeCount, 0, &size))
            return;
        m_list = list;
        m_valid = add(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited) && add(PROC_THREAD_ATTRIBUTE_JOB_LIST, jobs);
    }
    ~StartAttributes()
    {
        if (m_list)
            DeleteProcThreadAttributeList(m_list);
    }
    StartAttributes(const StartAttributes&) = delete;
    StartAttributes& operator=(const StartAttributes&) = delete;

    /// Null when the system refused an attribute.
    LPPROC_THREAD_ATTRIBUTE_LIST get() const { return m_valid ? m_list : nullptr; }

private:
    static constexpr DWORD attributeCount = 2;

    bool add(DWORD_PTR attribute, cmArray<HANDLE>& handles)
    {
        return handles.empty()
               || UpdateProcThreadAttribute(m_list, 0, attribute, handles.data(), handles.size() * sizeof(HANDLE), nullptr,
                                            nullptr);
    }

    cmArray<std::byte> m_storage;
    LPPROC_THREAD_ATTRIBUTE_LIST m_list = nullptr;
    bool m_valid = false;
};

DWORD creationFlags(SpawnOptions options)
{
    DWORD flags = CREATE_UNICODE_ENVIRONMENT | EXTENDED_STARTUPINFO_PRESENT;
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

/// Program and arguments in the form that CreateProcess takes. Empty when the command needs the interpreter, which cannot run it.
struct WideCommand {
    std::wstring application;
    std::wstring text;
};

WideCommand wideCommand(const ChildStarter& starter)
{
    // cmd.exe does not accept a network folder as its current directory and would silently use another one. So a command whose
    // operators are all quoted is started directly there.
    const bool networkFolder = cmIsNetworkPath(starter.workingDirectory);
    if (!starter.interpreter || (networkFolder && !needsInterpreter(starter.arguments))) {
        const std::wstring program = wideText(starter.program);
        return {program, L"\"" + program + L"\" " + wideText(starter.arguments)};
    }
    const cmStringT inner = windowsInterpreterText(starter.program, starter.arguments);
    const std::wstring program = interpreterPath();
    // /d: no AutoRun command. /v:off: no delayed expansion. /s: only the outer quotes are removed.
    std::wstring text = L"\"" + program + L"\" /d /v:off /s /c \"" + wideText(inner) + L"\"";
    constexpr std::size_t longestCommand = 8191;  // cmd.exe does not run a longer one
    if (inner.isNull() || program.empty() || text.size() > longestCommand || networkFolder)
        return {};
    return {program, std::move(text)};
}

/// Fills `started`. Returns 0 or the system's error.
DWORD createProcess(const ChildStarter& starter, WideCommand& command, HANDLE job, PROCESS_INFORMATION& started)
{
    std::wstring block = environmentBlock(starter.environment);
    const std::wstring directory = wideText(starter.workingDirectory);
    ChildStreams child(starter.streams, starter.options);
    if (child.failure != 0)
        return child.failure;
    cmArray<HANDLE> jobs;
    if (job)
        jobs.push_back(job);
    const StartAttributes attributes(child.inherited, jobs);
    STARTUPINFOEXW startup = startupInformation(child, starter.options);
    startup.lpAttributeList = attributes.get();
    const bool created = startup.lpAttributeList
                         && CreateProcessW(command.application.c_str(), command.text.data(), nullptr, nullptr, child.redirected,
                                           creationFlags(starter.options), block.data(),
                                           directory.empty() ? nullptr : directory.c_str(), &startup.StartupInfo, &started);
    const DWORD error = created ? 0 : GetLastError();
    return created || error != 0 ? error : ERROR_GEN_FAILURE;
}

/// Starts the program through the shell's "open". Returns 0 or the system's error. `opened` stays null when the shell passed
/// the work to a running process.
DWORD openByShell(const ChildStarter& starter, HANDLE& opened)
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
    if (!ShellExecuteExW(&call))
        return GetLastError();
    opened = call.hProcess;
    return 0;
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
    PROCESS_INFORMATION started{};
    OwnedHandle job;
    if (options & spawnShellExecute) {
        if (const DWORD error = openByShell(*this, started.hProcess))
            return fail(systemErrorText(error));
        if (!started.hProcess)
            return true;
        started.dwProcessId = GetProcessId(started.hProcess);
    } else {
        WideCommand command = wideCommand(*this);
        if (command.application.empty())
            return fail("the command interpreter cannot be given this");
        if (!(options & spawnForget)) {  // a forgotten child can never be terminated
            job.reset(CreateJobObjectW(nullptr, nullptr));
            if (!job)
                return fail(systemErrorText(GetLastError()));
        }
        if (const DWORD error = createProcess(*this, command, job.get(), started))
            return fail(systemErrorText(error));
        CloseHandle(started.hThread);
    }
    process.handle = reinterpret_cast<std::intptr_t>(started.hProcess);
    process.job = job ? reinterpret_cast<std::intptr_t>(job.release()) : ChildProcess::none;
    process.processId = started.dwProcessId;
    process.valid = 1;
    return true;
}
