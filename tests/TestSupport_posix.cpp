#include "tests/TestSupport.h"

#include <unistd.h>

#include <algorithm>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::size_t entriesOf(const char* directory)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

bool isNumber(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

/// Counts the processes whose folder in /proc satisfies `condition`; processes come and go meanwhile.
template <class Condition>
std::size_t countProcesses(Condition condition)
{
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        if (isNumber(entry.path().filename().string()) && condition(entry.path()))
            ++count;
    }
    return count;
}

/// State and parent of a process, as its stat file has them behind the name in brackets.
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

}  // namespace

std::size_t openDescriptors()
{
    return entriesOf("/proc/self/fd");
}

std::size_t threadCount()
{
    return entriesOf("/proc/self/task");
}

std::size_t processesOf(const std::string& path)
{
    return countProcesses([&path](const fs::path& process) {
        std::error_code gone;
        return fs::read_symlink(process / "exe", gone) == path && stateAndParent(process).first != 'Z';
    });
}

std::size_t zombieChildren()
{
    return countProcesses([](const fs::path& process) { return stateAndParent(process) == std::pair('Z', getpid()); });
}
