#include "common/WideText.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "tests/HelperSystem.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <cstdlib>

std::vector<std::string> prepareHelper(int, char**)
{
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i)
        arguments.emplace_back(narrowText(words[i]).view());
    LocalFree(words);
    return arguments;
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
