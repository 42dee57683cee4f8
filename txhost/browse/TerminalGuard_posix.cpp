#include "txhost/browse/TerminalGuard.h"

#include "common/cmDescriptor.h"
#include "txhost/Failure.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

using Handler = void (*)(int signal, siginfo_t* info, void* context);

void onEnd(int signal, siginfo_t* info, void* context);
void onCrash(int signal, siginfo_t* info, void* context);
void onEvent(int signal, siginfo_t* info, void* context);

/// While the program runs in the background, it looks so often whether the terminal is its own again: no signal tells.
constexpr int backgroundLookMs = 100;

struct Handled {
    int signal;
    Handler handler;
};

constexpr Handled handledSignals[] = {
    {SIGINT, &onEnd},    {SIGTERM, &onEnd},   {SIGHUP, &onEnd},    {SIGQUIT, &onEnd},   {SIGPIPE, &onEnd},
    {SIGALRM, &onEnd},   {SIGUSR1, &onEnd},   {SIGUSR2, &onEnd},   {SIGXCPU, &onEnd},   {SIGXFSZ, &onEnd},
    {SIGSEGV, &onCrash}, {SIGABRT, &onCrash}, {SIGBUS, &onCrash},  {SIGFPE, &onCrash},  {SIGILL, &onCrash},
    {SIGSYS, &onCrash},  {SIGTRAP, &onCrash}, {SIGTSTP, &onEvent}, {SIGCONT, &onEvent}, {SIGWINCH, &onEvent},
};

// What the handlers need; they may run on any thread.
std::array<struct sigaction, std::size(handledSignals)> actionsBefore;
int terminal = -1;
termios settingsBefore;
std::array<char, 512> resetText;
std::size_t resetLength = 0;
std::atomic<bool> isArmed{false};
std::atomic<int> eventsDescriptor{-1};
std::atomic<int> ending{0};
std::atomic<bool> suspended{false};
std::atomic<bool> continued{false};
std::atomic<bool> resized{false};

void signalEvent()
{
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(eventsDescriptor, &one, sizeof one);
    errno = error;
}

void restoreTerminal()
{
    if (!isArmed.exchange(false))
        return;
    [[maybe_unused]] const ssize_t written = ::write(STDOUT_FILENO, resetText.data(), resetLength);
    tcsetattr(terminal, TCSANOW, &settingsBefore);
}

void restoreAction(int signal)
{
    for (std::size_t i = 0; i < std::size(handledSignals); ++i) {
        if (handledSignals[i].signal == signal)
            sigaction(signal, &actionsBefore[i], nullptr);
    }
}

/// A faulty instruction fails again by itself, and then tells its address.
bool comesAgain(int signal, const siginfo_t* info)
{
    return info->si_code > 0 && (signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL);
}

void onCrash(int signal, siginfo_t* info, void*)
{
    restoreTerminal();
    restoreAction(signal);
    if (!comesAgain(signal, info))
        raise(signal);
}

void onEnd(int signal, siginfo_t* info, void* context)
{
    if (ending.exchange(signal) == 0)
        signalEvent();
    else if (signal != SIGPIPE)  // it comes with each line of the log
        onCrash(signal, info, context);
}

void onEvent(int signal, siginfo_t*, void*)
{
    (signal == SIGTSTP ? suspended : signal == SIGCONT ? continued : resized) = true;
    signalEvent();
}

/// While a handler runs, no other signal comes; so a stop by SIGTTOU does not keep it from restoring the terminal either.
void handle(const Handled& handled, struct sigaction& before)
{
    sigaction(handled.signal, nullptr, &before);
    if ((before.sa_flags & SA_SIGINFO) == 0 && before.sa_handler == SIG_IGN)
        return;
    struct sigaction action {};
    action.sa_sigaction = handled.handler;
    action.sa_flags = SA_SIGINFO | SA_RESTART | SA_ONSTACK;
    sigfillset(&action.sa_mask);
    sigaction(handled.signal, &action, nullptr);
}

}  // namespace

TerminalGuard::TerminalGuard(int descriptor) : m_events(cmAboveStandardStreams(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)))
{
    if (m_events < 0 || tcgetattr(descriptor, &settingsBefore) != 0)
        throw HostError(std::string("the terminal tells nothing of its settings: ") + std::strerror(errno));
    terminal = descriptor;
    eventsDescriptor = m_events;
    for (std::size_t i = 0; i < std::size(handledSignals); ++i)
        handle(handledSignals[i], actionsBefore[i]);
}

TerminalGuard::~TerminalGuard()
{
    restoreTerminal();
    for (const Handled& handled : handledSignals)
        restoreAction(handled.signal);
    eventsDescriptor = -1;
    ::close(m_events);
}

void TerminalGuard::arm(cmROStringT reset)
{
    resetLength = reset.copy(resetText.data(), resetText.size());
    isArmed = true;
}

void TerminalGuard::disarm()
{
    isArmed = false;
}

void TerminalGuard::wake()
{
    signalEvent();
}

TerminalGuard::Events TerminalGuard::takeEvents()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = ::read(m_events, &count, sizeof count);
    return {suspended.exchange(false), continued.exchange(false), resized.exchange(false)};
}

int TerminalGuard::endingSignal() const
{
    return ending;
}

void TerminalGuard::suspend()
{
    struct sigaction now {};
    sigaction(SIGTSTP, nullptr, &now);
    if ((now.sa_flags & SA_SIGINFO) == 0)
        return;  // it is ignored: nobody could let the program go on
    sigset_t stop;
    sigset_t before;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    std::signal(SIGTSTP, SIG_IGN);
    kill(0, SIGTSTP);  // the script, too, that waits for this program
    restoreAction(SIGTSTP);
    pthread_sigmask(SIG_UNBLOCK, &stop, &before);
    if (ending == 0)
        raise(SIGTSTP);
    while (ending == 0 && tcgetpgrp(terminal) > 0 && tcgetpgrp(terminal) != getpgrp())
        poll(nullptr, 0, backgroundLookMs);  // no stop: the signal that ends it may be on its way through another thread
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    sigaction(SIGTSTP, &now, nullptr);
    tcgetattr(terminal, &settingsBefore);  // the user may have changed them meanwhile
    suspended = false;
    continued = false;  // the descriptor stays readable: something else may have come, too
}
