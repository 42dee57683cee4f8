#include "common/ChildStarter.h"

#include "common/CommandLine.h"
#include "common/CommandQuoting.h"
#include "common/ProcessFamily.h"
#include "common/UnreapedChildren.h"
#include "common/cmStringCatHelper.h"
#include "common/cmThread.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace {

constexpr const char* interpreterPath = "/bin/sh";

/// What happens in the child before the program runs: it gets its streams, directory, signal settings and session.
/// Every call returns 0 or an errno value.
class SpawnPlan {
public:
    SpawnPlan() = default;
    ~SpawnPlan()
    {
        if (m_actionsError == 0)
            posix_spawn_file_actions_destroy(&m_actions);
        if (m_attributesError == 0)
            posix_spawnattr_destroy(&m_attributes);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    int prepare(const ChildStarter& starter)
    {
        int error = m_actionsError == 0 ? m_attributesError : m_actionsError;
        if (error == 0)
            error = addStreams(starter.streams, starter.options);
        if (error == 0 && !starter.workingDirectory.isEmpty())
            error = posix_spawn_file_actions_addchdir_np(&m_actions, starter.workingDirectory.c_str());
        if (error == 0)
            error = posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
        return error == 0 ? setSignalsAndSession() : error;
    }

    int start(pid_t& child, const char* program, cmArray<char*>& arguments, cmArray<char*>& environment)
    {
        return posix_spawn(&child, program, &m_actions, &m_attributes, arguments.data(), environment.data());
    }

private:
    int addStreams(const SpawnStreams& streams, SpawnOptions options)
    {
        const bool piped = streams.input || streams.output || streams.error;
        const bool hostStreams = (piped || (options & spawnStandardHandles)) && isatty(STDOUT_FILENO);
        int error = addStream(STDIN_FILENO, streams.input, O_RDONLY, false);
        if (error == 0)
            error = addStream(STDOUT_FILENO, streams.output, O_WRONLY, hostStreams);
        if (error == 0 && (options & spawnErrorToOutput))
            error = posix_spawn_file_actions_adddup2(&m_actions, STDOUT_FILENO, STDERR_FILENO);
        else if (error == 0)
            error = addStream(STDERR_FILENO, streams.error, O_WRONLY, hostStreams);
        return error;
    }

    /// The stream is the pipe's child end if there is a pipe, else the host's own stream if it is wanted, else the null device.
    int addStream(int target, const ChildPipe* pipe, int mode, bool hostStream)
    {
        if (pipe)
            return posix_spawn_file_actions_adddup2(&m_actions, static_cast<int>(pipe->getChildEnd()), target);
        return hostStream ? 0 : posix_spawn_file_actions_addopen(&m_actions, target, "/dev/null", mode, 0);
    }

    /// The child leads its own session. So its process group can be ended as a whole, and it has no terminal to prompt on.
    int setSignalsAndSession()
    {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        int error = posix_spawnattr_setsigdefault(&m_attributes, &all);
        if (error == 0)
            error = posix_spawnattr_setsigmask(&m_attributes, &none);
        constexpr short flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID;
        return error == 0 ? posix_spawnattr_setflags(&m_attributes, flags) : error;
    }

    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
    const int m_actionsError = posix_spawn_file_actions_init(&m_actions);
    const int m_attributesError = posix_spawnattr_init(&m_attributes);
};

cmArray<cmStringT> childArguments(const ChildStarter& starter)
{
    if (starter.interpreter)
        return {"sh", "-c", posixInterpreterText(starter.program, starter.arguments)};
    cmArray<cmStringT> words = splitArguments(starter.arguments);
    words.insert(words.begin(), starter.program);
    return words;
}

/// The texts as the null-terminated list that exec takes; it points into `texts`.
cmArray<char*> execList(cmArray<cmStringT>& texts)
{
    cmArray<char*> list;
    for (cmStringT& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// Ends and reaps a child for which there is no handle. It has just been started, so its number is still its own.
void endAtOnce(pid_t child)
{
    kill(-child, SIGKILL);
    constexpr int longestMs = 1000;
    for (int ms = 0; ms < longestMs && waitpid(child, nullptr, WNOHANG) == 0; ++ms)
        cmThread::sleep(1);
}

}  // namespace

bool ChildStarter::isProgram(const cmStringT& path)
{
    struct stat entry {};
    return stat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) && access(path.c_str(), X_OK) == 0;
}

bool ChildStarter::start(ChildProcess& process, cmStringT& detail) const
{
    const auto fail = [&](int error) {
        detail = cmCat(program) + ": " + std::strerror(error);
        return false;
    };
    reapEndedChildren();
    cmArray<cmStringT> arguments = childArguments(*this);
    Environment variables = environment;
    cmArray<char*> argumentList = execList(arguments);
    cmArray<char*> variableList = execList(variables);

    SpawnPlan plan;
    if (const int error = plan.prepare(*this))
        return fail(error);
    UnreapedChildren::reserve();
    pid_t child = 0;
    int error = plan.start(child, interpreter ? interpreterPath : program.c_str(), argumentList, variableList);
    if (error == 0) {
        process.handle = openChildHandle(child);
        if (process.handle == ChildProcess::none && errno != ESRCH) {  // ESRCH: it has ended and the host has reaped it
            error = errno;
            endAtOnce(child);
        }
    }
    if (error != 0) {
        UnreapedChildren::cancel();
        return fail(error);
    }
    process.processId = static_cast<std::uint32_t>(child);
    process.valid = 1;
    return true;
}
