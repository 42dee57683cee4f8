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

BOOL WINAPI recordInterrupt(DWORD event)
{
    if (interrupted.exchange(true))
        return FALSE;  // a second one ends the program
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);  // the system ends the program when this returns, so the main thread is given time to end it
    return TRUE;
}

/// Switches the console to UTF-8 and colours; the destructor restores its modes.
class ConsoleModes {
public:
    ConsoleModes() : m_output(GetStdHandle(STD_OUTPUT_HANDLE)), m_codePage(GetConsoleOutputCP())
    {
        SetConsoleOutputCP(CP_UTF8);
        m_console = GetConsoleMode(m_output, &m_mode) != 0;
        if (m_console)
            SetConsoleMode(m_output, m_mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
    ~ConsoleModes()
    {
        SetConsoleOutputCP(m_codePage);
        if (m_console)
            SetConsoleMode(m_output, m_mode);
    }
    ConsoleModes(const ConsoleModes&) = delete;
    ConsoleModes& operator=(const ConsoleModes&) = delete;

private:
    HANDLE m_output;
    UINT m_codePage;
    DWORD m_mode = 0;
    bool m_console = false;
};

bool isConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

}  // namespace

std::vector<std::string> console::start(int, char**)
{
    for (std::FILE* stream : {stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    static const ConsoleModes modes;  // restored when the program ends

    // The arguments of main are in the system's code page and may have lost characters.
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
    SetConsoleCtrlHandler(&recordInterrupt, TRUE);
}

void console::releaseInterrupts()
{
    SetConsoleCtrlHandler(&recordInterrupt, FALSE);
}

bool console::wasInterrupted()
{
    return interrupted || isReaderGone();
}

bool console::isReaderGone()
{
    return isOutputBroken() && GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE;
}

bool console::isTerminal()
{
    static const bool terminal = isConsole(STD_OUTPUT_HANDLE);
    return terminal;
}

bool console::isErrorTerminal()
{
    static const bool terminal = isConsole(STD_ERROR_HANDLE);
    return terminal;
}

bool console::showsUTF8()
{
    return true;  // ConsoleModes has seen to it
}

std::size_t console::terminalWidth(bool ofErrors)
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(ofErrors ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE), &info))
        return 0;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}
