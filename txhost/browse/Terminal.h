#pragma once

#include "common/cmArray.h"
#include "txhost/browse/Key.h"
#include "txhost/browse/Picture.h"

#include <memory>

/// The terminal of standard input and output as one full screen. Whatever ends the program, a crash too, the terminal is then as
/// it was. Ctrl-Z, also when another process sends its signal, suspends the program, and Ctrl-L draws anew; neither is a key for
/// the caller. One at a time; for one thread at a time, but for `wake`.
class Terminal {
public:
    /// Takes the terminal over. Throws HostError when there is none that can show a full screen.
    static std::unique_ptr<Terminal> open(bool isColoured);
    virtual ~Terminal() = default;
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    virtual Picture::Size size() const = 0;
    /// Shows the picture; what does not fit is left out.
    virtual void draw(const Picture& picture) = 0;
    /// Waits for keys, another size, a wake, or `timeoutMs` milliseconds (below 0: without limit), and appends the keys that have
    /// come. Returns false when the user is gone: the input has ended, or a signal ends the program.
    virtual bool wait(cmArray<Key>& keys, int timeoutMs) = 0;
    /// Puts the text on the clipboard of a terminal that offers one to programs.
    virtual void copy(cmROStringT text) = 0;
    /// Gives the terminal back as it was. Nothing but `wake` and `finish` may follow.
    virtual void close() = 0;
    /// After close: ends the program by the signal that has ended the waiting, if it was one.
    virtual void finish() = 0;
    /// Any thread. Ends a wait.
    virtual void wake() = 0;

protected:
    Terminal() = default;
};
