#include "common/WideText.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "tests/HelperSystem.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

// The C run-time library splits the command line, as in any tool. It must not expand wildcards.
extern "C" {
int _dowildcard = 0;
}

int wmain(int argc, wchar_t** argv)
{
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.emplace_back(narrowText(argv[i]).view());
    return runHelper(std::move(arguments));
}

void startBeside(const char* argument)
{
    const cmStringT program = cmProgramPath();
    std::wstring line = wideText(cmStringT(cmCat("\"") + program + "\" " + argument));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(wideText(program).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
        std::_Exit(3);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
}
