#include "common/cmFile.h"
#include "tests/HelperSystem.h"

#include <unistd.h>

#include <cstdlib>

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
