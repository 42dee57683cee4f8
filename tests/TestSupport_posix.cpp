#include "common/CommandQuoting.h"
#include "tests/TestSupport.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <sstream>
#include <thread>

namespace {

/// The processes whose folder in /proc satisfies `condition`. A process may end before `condition` is called.
template <class Condition>
std::vector<pid_t> findProcesses(Condition condition)
{
    std::vector<pid_t> found;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name[0] <= '9' && condition(entry.path()))
            found.push_back(std::stoi(name));
    }
    return found;
}

/// State and parent of a process, which its stat file holds behind the name in parentheses.
std::pair<char, pid_t> stateAndParent(const fs::path& process)
{
    const std::string stat = readFile(process / "stat");
    char state = ' ';
    pid_t parent = 0;
    const std::size_t nameEnd = stat.rfind(')');
    if (nameEnd != std::string::npos)
        std::istringstream(stat.substr(nameEnd + 1)) >> state >> parent;
    return {state, parent};
}

std::vector<pid_t> livingProcesses(const std::string& program)
{
    return findProcesses([&program](const fs::path& process) {
        std::error_code gone;
        return fs::read_symlink(process / "exe", gone) == program && stateAndParent(process).first != 'Z';
    });
}

}  // namespace

std::size_t threadCount()
{
    // A sanitizer starts its own thread together with the first one. Start one now, so that later counts agree.
    static const bool warm = (std::thread([] {}).join(), true);
    static_cast<void>(warm);
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/task"), {}));
}

std::size_t processesOf(const std::string& path)
{
    return livingProcesses(path).size();
}

void killProcessesOf(const std::string& path)
{
    for (const pid_t process : livingProcesses(path))
        kill(process, SIGKILL);
}

int runInto(const std::string& program, const std::string& arguments, const fs::path& output, const fs::path& error)
{
    const std::string redirections = " >" + output.string() + " 2>" + error.string();
    const int status = std::system((std::string(posixInterpreterText(program, arguments)) + redirections).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::size_t childProcesses()
{
    return findProcesses([](const fs::path& process) { return stateAndParent(process).second == getpid(); }).size();
}
