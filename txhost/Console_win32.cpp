#include "txhost/Console.h"

#include "common/WideText.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <atomic>
#include <cstdio>

namespace {

std::atomic<bool> interrupted{false};

BOOL WINAPI remember(DWORD)
{
    interrupted = true;
    return TRUE;
}

}  // namespace

std::vector<std::string> console::start(int, char**)
{
    for (std::FILE* stream : {stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode))
        SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);

    // The words that main is given are in the code page of the system.
    std::vector<std::string> words;
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i)
        words.emplace_back(narrowText(wide[i]).view());
    LocalFree(wide);
    return words;
}

void console::catchInterrupts()
{
    SetConsoleCtrlHandler(&remember, TRUE);
}

bool console::wasInterrupted()
{
    return interrupted;
}

bool console::isTerminal()
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}
