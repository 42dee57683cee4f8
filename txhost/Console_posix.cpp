#include "txhost/Console.h"

#include "common/Environment.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <string>

namespace {

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE};

volatile std::sig_atomic_t interrupted = 0;

void recordInterrupt(int signal)
{
    interrupted = signal;
}

}  // namespace

std::vector<std::string> console::start(int argc, char** argv)
{
    return {argv + 1, argv + argc};
}

void console::catchInterrupts()
{
    for (const int signal : interrupts) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_IGN)
            continue;  // our parent process wants it ignored
        struct sigaction action {};
        action.sa_handler = &recordInterrupt;
        action.sa_flags = signal == SIGPIPE ? 0 : static_cast<int>(SA_RESETHAND);  // a second one ends the program
        sigaction(signal, &action, nullptr);
    }
}

void console::releaseInterrupts()
{
    for (const int signal : interrupts) {
        struct sigaction now {};
        sigaction(signal, nullptr, &now);
        if (now.sa_handler == &recordInterrupt)
            std::signal(signal, SIG_DFL);
    }
}

bool console::wasInterrupted()
{
    return interrupted != 0;
}

bool console::isReaderGone()
{
    return interrupted == SIGPIPE;
}

bool console::isTerminal()
{
    static const bool terminal = isatty(STDOUT_FILENO) != 0;
    return terminal;
}

bool console::isErrorTerminal()
{
    static const bool terminal = isatty(STDERR_FILENO) != 0;
    return terminal;
}

std::size_t console::terminalWidth(bool ofErrors)
{
    winsize size{};
    return ioctl(ofErrors ? STDERR_FILENO : STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool console::showsUTF8()
{
    static const bool shows = [] {
        const Environment environment = hostEnvironment();
        cmStringT locale;
        for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
            if (locale.isEmpty())
                locale = environmentValue(environment, name);
        }
        std::string name(locale.view());
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
        return name.find("utf-8") != std::string::npos || name.find("utf8") != std::string::npos;
    }();
    return shows;
}
