#include "common/ProcessFamily.h"

#include "common/cmArray.h"
#include "common/cmString.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iterator>
#include <memory>

namespace {

/// A process at one moment. Its number and its start time together belong to no other process.
struct Process {
    pid_t id = 0;
    pid_t parent = 0;
    pid_t session = 0;
    std::uint64_t startTime = 0;

    bool isSame(const Process& other) const { return id == other.id && startTime == other.startTime; }
};

template <class Number>
void readNumber(cmROStringT text, Number& number)
{
    std::from_chars(text.data(), text.data() + text.size(), number);
}

/// Parses "ID (NAME) STATE PARENT GROUP SESSION ...". The name may hold blanks and parentheses.
bool parseProcess(cmROStringT stat, Process& process)
{
    constexpr int parentField = 1;  // counted from the state
    constexpr int sessionField = 3;
    constexpr int startTimeField = 19;
    const std::size_t nameEnd = stat.rfind(") ");
    if (nameEnd == cmROStringT::npos)
        return false;
    readNumber(stat, process.id);
    stat.remove_prefix(nameEnd + 2);
    for (int field = 0; field < startTimeField; ++field) {
        const cmROStringT value = cmTakeUntil(stat, ' ');
        if (field == parentField)
            readNumber(value, process.parent);
        else if (field == sessionField)
            readNumber(value, process.session);
    }
    readNumber(stat, process.startTime);
    return process.startTime != 0;
}

bool readProcess(pid_t id, Process& process)
{
    std::array<char, 64> path{};
    std::array<char, 1024> stat{};
    std::snprintf(path.data(), path.size(), "/proc/%d/stat", id);
    const int file = open(path.data(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const ssize_t size = read(file, stat.data(), stat.size());
    close(file);
    return size > 0 && parseProcess({stat.data(), static_cast<std::size_t>(size)}, process);
}

cmArray<Process> readProcesses()
{
    cmArray<Process> processes;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc"), &closedir);
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        pid_t id = 0;
        readNumber(entry->d_name, id);
        Process process;
        if (id > 0 && readProcess(id, process))
            processes.push_back(process);
    }
    return processes;
}

/// The handle of any process. The C library in use declares no usable function for it.
int openProcessHandle(pid_t id)
{
    return static_cast<int>(syscall(SYS_pidfd_open, id, 0));
}

/// Whether this process has such a child, running or ended and not reaped. Sets errno when not.
bool isChild(int handle)
{
    siginfo_t info{};
    return waitid(P_PIDFD, static_cast<id_t>(handle), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

/// Whether the child, running or ended, is not reaped yet. Only then do its number and its group surely belong to it.
bool isUnreaped(int handle)
{
    pollfd child{handle, POLLIN, 0};
    return poll(&child, 1, 0) == 0 || isChild(handle);
}

void signalHandle(int handle, int signal)
{
    syscall(SYS_pidfd_send_signal, handle, signal, nullptr, 0);
}

/// Sends the signal to `process`, but not to another one that has its number now.
void sendSignal(const Process& process, int signal)
{
    const int handle = openProcessHandle(process.id);
    if (handle < 0)
        return;
    Process now;
    if (readProcess(process.id, now) && now.isSame(process))
        signalHandle(handle, signal);
    close(handle);
}

/// The child and its descendants. They are stopped while they are searched for: a stopped process starts no further one, and it
/// cannot end, which would cut the chain of parents and free its number.
class Family {
public:
    ~Family()
    {
        // The youngest first: when a parent ends, the system lets its stopped children go on.
        std::for_each(m_members.rbegin(), m_members.rend(), [](const Process& member) { sendSignal(member, SIGKILL); });
    }

    void search(int handle, pid_t leader)
    {
        Process first;
        if (!readProcess(leader, first) || first.session != leader || !isUnreaped(handle))  // last: what was read is the child's
            return;
        add(first);
        constexpr int mostRounds = 20;
        for (int round = 0; round < mostRounds && addFrom(readProcesses()); ++round) {
        }
    }

private:
    void add(const Process& process)
    {
        m_members.push_back(process);
        sendSignal(process, SIGSTOP);
    }

    /// Adds those who belong to the family. Returns false when there was none.
    bool addFrom(const cmArray<Process>& processes)
    {
        const auto isIn = [](const cmArray<Process>& list, const Process& process) {
            return std::any_of(list.begin(), list.end(), [&](const Process& other) { return other.isSame(process); });
        };
        // A parent or a session is known by its number alone, so only members that still have theirs count.
        cmArray<Process> present;
        std::copy_if(m_members.begin(), m_members.end(), std::back_inserter(present),
                     [&](const Process& member) { return isIn(processes, member); });
        // A process cannot enter an existing session: every session of a member is the family's.
        const auto belongs = [&](const Process& process) {
            return std::any_of(present.begin(), present.end(), [&](const Process& member) {
                return process.parent == member.id || process.session == member.session;
            });
        };
        const std::size_t before = m_members.size();
        for (std::size_t size = 0; size != m_members.size();) {  // again for children that stand before their parents
            size = m_members.size();
            for (const Process& process : processes) {
                if (isIn(m_members, process) || !belongs(process))
                    continue;
                present.push_back(process);
                add(process);
            }
        }
        return m_members.size() != before;
    }

    cmArray<Process> m_members;
};

void endChildFamily(pid_t leader)
{
    const int handle = openChildHandle(leader);
    if (handle < 0)
        return;
    endProcessFamily(handle, leader);
    close(handle);
}

}  // namespace

int openChildHandle(int id)
{
    const int handle = openProcessHandle(id);
    if (handle < 0 || isChild(handle) || errno != ECHILD)
        return handle;
    close(handle);
    errno = ESRCH;
    return -1;
}

void endProcessFamily(int handle, int leader) noexcept
{
    try {
        Family().search(handle, leader);
    } catch (const std::exception&) {  // no memory: those who were found have been ended
    }
    if (isUnreaped(handle))
        kill(-leader, SIGKILL);
    signalHandle(handle, SIGKILL);
}

void endAllChildFamilies()
{
    for (const Process& process : readProcesses()) {
        if (process.parent == getpid())
            endChildFamily(process.id);
    }
}

void endChildFamiliesOf(int thread)
{
    std::array<char, 64> path{};
    std::snprintf(path.data(), path.size(), "/proc/self/task/%d/children", thread);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> list(std::fopen(path.data(), "re"), &std::fclose);
    for (pid_t child = 0; list && std::fscanf(list.get(), "%d", &child) == 1;)
        endChildFamily(child);
}
