#pragma once

#include "common/cmThread.h"
#include "common/cmThreadEvent.h"
#include "txhost/Host.h"

#include <cstdint>

/// Makes Ctrl-C end the tools that the module waits for on the editor's thread, as such a call of the module cannot be cancelled.
/// While an object lives, interrupts are caught (console::catchInterrupts), and after one all processes that this program has
/// started are ended, those that follow too. Where no thread can be had, Ctrl-C ends the program as if there were no object.
/// For the main thread.
class InterruptWatch : private cmThread {
public:
    /// `path` is what the tools are asked about; null for nothing in particular.
    explicit InterruptWatch(cmStringT path);
    ~InterruptWatch() override;
    /// Throws HostError when there was an interrupt: what the tools have answered is incomplete then.
    void check() const;

private:
    std::int32_t run() override;

    const cmStringT m_path;
    cmThreadEvent m_stop{true, false};
};

/// Host::call for a function that waits for a tool; also throws HostError when an interrupt ended that tool. `path` is what the
/// tool is asked about.
std::int32_t callInterruptibly(Host& host, const cmStringT& path, cmROStringT name, const cmArray<CallArgument>& arguments);
