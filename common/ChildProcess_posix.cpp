#include "common/ChildProcess.h"

#include "common/ChildStarter.h"
#include "common/cmMutex.h"
#include "common/cmStringCatHelper.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

namespace {

constexpr int terminateGraceMs = 50;
constexpr const char* interpreterPath = "/bin/sh";

cmMutex unreapedLock;
cmArray<pid_t> unreaped CM_GUARDED_BY(unreapedLock);

/// True when the child was collected, by us or by a host that collects every child itself.
bool reap(pid_t child)
{
    const pid_t result = waitpid(child, nullptr, WNOHANG);
    return result == child || (result < 0 && errno == ECHILD);
}

void reapLater(pid_t child)
{
    cmMutexLock hold(unreapedLock);
    unreaped.push_back(child);
}

/// A child without a handle had ended before it could get one.
bool hasEnded(std::intptr_t handle, int timeoutMs)
{
    if (handle == ChildProcess::none)
        return true;
    pollfd child{static_cast<int>(handle), POLLIN, 0};
    int seen = poll(&child, 1, timeoutMs);
    while (seen < 0 && errno == EINTR)
        seen = poll(&child, 1, timeoutMs);
    return seen == 1;
}

/// Whether the child, running or ended, was not collected yet: only then do its id and its group surely belong to it.
bool isOurs(std::intptr_t handle)
{
    siginfo_t info{};
    return handle != ChildProcess::none && waitid(P_PIDFD, static_cast<id_t>(handle), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

/// The child first, so that it is looked at before its pipes. poll passes over descriptors below 0.
std::array<pollfd, 3> activitySources(std::intptr_t child, const ChildPipe& output, const ChildPipe& error)
{
    const auto source = [](std::intptr_t descriptor) { return pollfd{static_cast<int>(descriptor), POLLIN, 0}; };
    const auto pipeEnd = [](const ChildPipe& pipe) { return pipe.isEnded() ? ChildPipe::none : pipe.getParentEnd(); };
    return {source(child), source(pipeEnd(output)), source(pipeEnd(error))};
}

/// A null-terminated list of texts in the form that exec takes.
cmArray<char*> pointers(cmArray<cmStringT>& texts)
{
    cmArray<char*> list;
    for (cmStringT& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// What happens in the child between its birth and the program: streams, directory, signals, session.
class SpawnPlan {
public:
    SpawnPlan()
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
    }
    ~SpawnPlan()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    int prepare(const ChildStarter& starter)
    {
        int error = streams(starter.streams, starter.options);
        if (error == 0 && !starter.workingDirectory.isEmpty())
            error = posix_spawn_file_actions_addchdir_np(&m_actions, starter.workingDirectory.c_str());
        if (error == 0)
            error = posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
        return error == 0 ? signalsAndSession() : error;
    }

    int start(pid_t& child, const char* program, cmArray<char*>& arguments, cmArray<char*>& environment)
    {
        return posix_spawn(&child, program, &m_actions, &m_attributes, arguments.data(), environment.data());
    }

private:
    int streams(const SpawnStreams& streams, SpawnOptions options)
    {
        const bool piped = streams.input || streams.output || streams.error;
        const bool hostStreams = (piped || (options & spawnStandardHandles)) && isatty(STDOUT_FILENO);
        int error = stream(STDIN_FILENO, streams.input, O_RDONLY, false);
        if (error == 0)
            error = stream(STDOUT_FILENO, streams.output, O_WRONLY, hostStreams);
        if (error == 0 && (options & spawnErrorToOutput))
            error = posix_spawn_file_actions_adddup2(&m_actions, STDOUT_FILENO, STDERR_FILENO);
        else if (error == 0)
            error = stream(STDERR_FILENO, streams.error, O_WRONLY, hostStreams);
        return error;
    }

    /// The pipe's child end, the host's own stream, or a device that is empty and swallows everything.
    int stream(int target, const ChildPipe* pipe, int mode, bool hostStream)
    {
        if (pipe)
            return posix_spawn_file_actions_adddup2(&m_actions, static_cast<int>(pipe->getChildEnd()), target);
        return hostStream ? 0 : posix_spawn_file_actions_addopen(&m_actions, target, "/dev/null", mode, 0);
    }

    /// A session of its own: the child's group can be ended whole, and no tool can ask anything on a terminal.
    int signalsAndSession()
    {
        sigset_t all;
        sigset_t empty;
        sigfillset(&all);
        sigemptyset(&empty);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setsigmask(&m_attributes, &empty);
        return posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
    }

    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

}  // namespace

bool ChildStarter::isProgram(const cmStringT& path)
{
    struct stat entry {};
    return stat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) && access(path.c_str(), X_OK) == 0;
}

bool ChildStarter::start(ChildProcess& process, cmStringT& detail) const
{
    reapEndedChildren();
    cmArray<cmStringT> words{program};
    if (interpreter)
        words = {"sh", "-c", posixInterpreterText(program, arguments)};
    else
        for (cmStringT& argument : splitArguments(arguments))
            words.push_back(std::move(argument));
    Environment childEnvironment = environment;
    cmArray<char*> wordList = pointers(words);
    cmArray<char*> environmentList = pointers(childEnvironment);

    SpawnPlan plan;
    pid_t child = 0;
    int error = plan.prepare(*this);
    if (error == 0)
        error = plan.start(child, interpreter ? interpreterPath : program.c_str(), wordList, environmentList);
    if (error != 0) {
        detail = cmCat(program) + ": " + std::strerror(error);
        return false;
    }
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (handle < 0 && errno != ESRCH) {
        detail = cmCat(program) + ": " + std::strerror(errno);
        kill(-child, SIGKILL);
        reapLater(child);
        return false;
    }
    process.handle = handle;
    process.processId = static_cast<std::uint32_t>(child);
    process.valid = 1;
    return true;
}

void reapEndedChildren()
{
    cmMutexLock hold(unreapedLock);
    unreaped.erase(std::remove_if(unreaped.begin(), unreaped.end(), &reap), unreaped.end());
}

bool ChildProcess::isRunning()
{
    return valid && !hasEnded(handle, 0);
}

void ChildProcess::terminate()
{
    if (!valid)
        return;
    if (isOurs(handle))
        kill(-static_cast<pid_t>(processId), SIGKILL);
    terminated = true;
}

void ChildProcess::close()
{
    if (valid) {
        const auto child = static_cast<pid_t>(processId);
        hasEnded(handle, terminated ? terminateGraceMs : 0);
        if (!reap(child))
            reapLater(child);
        if (handle != none)
            ::close(static_cast<int>(handle));
    }
    handle = none;
    processId = 0;
    valid = 0;
    terminated = false;
    reapEndedChildren();
}

ChildActivity ChildProcess::look(ChildPipe& output, ChildPipe& error)
{
    // One system call for all three: a capture of hundreds of megabytes looks tens of thousands of times.
    std::array<pollfd, 3> sources = activitySources(handle, output, error);
    poll(sources.data(), sources.size(), 0);
    const auto hasData = [](ChildPipe& pipe, short seen) {
        if (seen != 0 && !(seen & POLLIN))
            pipe.markEnded();
        return (seen & POLLIN) != 0;
    };
    return {valid && handle != none && !sources[0].revents, hasData(output, sources[1].revents),
            hasData(error, sources[2].revents)};
}

void ChildProcess::waitForActivity(const ChildPipe& output, const ChildPipe& error, std::uint32_t timeoutMs)
{
    std::array<pollfd, 3> sources = activitySources(handle, output, error);
    poll(sources.data(), sources.size(), static_cast<int>(timeoutMs));
}

void ChildProcess::waitForEnd(std::chrono::microseconds timeout)
{
    pollfd child{static_cast<int>(handle), POLLIN, 0};
    const auto seconds = std::chrono::floor<std::chrono::seconds>(timeout);
    const timespec left{seconds.count(), std::chrono::nanoseconds(timeout - seconds).count()};
    ppoll(&child, 1, &left, nullptr);
}
