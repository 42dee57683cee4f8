#pragma once

#include "common/cmString.h"

/// POSIX only. Sees to it that a terminal is left as it was found, and turns signals into what its thread reads. A signal that
/// asks the program to end is only recorded, so that it can end its tools; the second one, and a crash, restore the terminal and
/// end the program at once, by that signal. Signals that were ignored stay so. One at a time; for one thread but where it says
/// so.
class TerminalGuard {
public:
    /// What has come since it was asked last.
    struct Events {
        bool isSuspended = false;  ///< Ctrl-Z of another process
        bool isContinued = false;
        bool isResized = false;
    };

    /// Remembers the settings of the terminal `descriptor` and handles signals from now on. Throws HostError on failure.
    explicit TerminalGuard(int descriptor);
    ~TerminalGuard();
    TerminalGuard(const TerminalGuard&) = delete;
    TerminalGuard& operator=(const TerminalGuard&) = delete;

    /// From now on the terminal needs to be restored, by writing `reset` to standard output and with the remembered settings.
    void arm(cmROStringT reset);
    /// The terminal is as it was.
    void disarm();

    /// It becomes readable when a signal comes, and with `wake`.
    int descriptor() const { return m_events; }
    /// Any thread.
    void wake();
    Events takeEvents();
    /// The signal that asked the program to end; 0: none did.
    int endingSignal() const;
    /// Stops the program as Ctrl-Z does, and returns when it goes on in the foreground or is asked to end. Only when disarmed.
    void suspend();

private:
    int m_events;  ///< an eventfd
};
