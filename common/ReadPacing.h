#pragma once

#include "common/ChildProcess.h"

#include <chrono>
#include <cstddef>

/// Decides how a capture waits for more data. Waking for every small write slows a streaming child by up to a third. So the
/// next data is first polled for without sleeping; when pieces are small, output is left to accumulate in the pipe for a
/// short time instead. It is read before the pipe fills up, or the child would have to wait.
class ReadPacing {
public:
    void onOutput(std::size_t pieceSize);
    void onRead() { m_lastRead = Clock::now(); }

    /// Waits at most 10 ms after a pass that read nothing. Returns false when the system cannot wait.
    bool wait(ChildProcess& process, const ChildPipe& output, const ChildPipe& error);

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_lastRead;
    std::size_t m_lastPiece = 0;
    bool m_coalescing = false;
};
