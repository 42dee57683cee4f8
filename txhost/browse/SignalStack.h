#pragma once

#include <memory>

/// POSIX only. A stack for signal handlers of the thread that makes and destroys it, so that they run also when its own stack is
/// full. Where the thread has one already, that one stays.
class SignalStack {
public:
    SignalStack();
    ~SignalStack();
    SignalStack(const SignalStack&) = delete;
    SignalStack& operator=(const SignalStack&) = delete;

private:
    std::unique_ptr<char[]> m_bytes;  ///< null when the thread had one
};
