#include "common/cmFile.h"
#include "tests/HelperSystem.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>

int main(int argc, char** argv)
{
    return runHelper({argv + 1, argv + argc});
}

void startBeside(const char* argument)
{
    const pid_t child = fork();
    if (child > 0)
        return;
    const cmStringT program = cmProgramPath();
    if (child == 0)
        execl(program.c_str(), program.c_str(), argument, nullptr);
    std::_Exit(3);
}

std::size_t countHandles()
{
    const std::filesystem::directory_iterator open("/proc/self/fd");  // the iterator's own descriptor is among them
    return static_cast<std::size_t>(std::distance(open, {})) - 1;
}
