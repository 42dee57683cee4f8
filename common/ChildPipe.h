#pragma once

#include <cstdint>

/// One redirected standard stream of a child. Created empty, filled by spawnProcess; owns both of its ends and
/// closes them. One thread at a time may use it.
class ChildPipe {
public:
    static constexpr std::intptr_t none = -1;

    ChildPipe() = default;
    ChildPipe(const ChildPipe&) = delete;
    ChildPipe& operator=(const ChildPipe&) = delete;
    ~ChildPipe() { close(); }

    /// Makes the pipe; the parent keeps the write end when `toChild`, else the read end. The parent's
    /// end is never inherited, the child's only by a process that names it or, on Windows, by one that a host starts
    /// before closeChildEnd and lets inherit everything. Throws cmStatusException(cmStatusPipeFailed).
    void create(bool toChild, std::uint32_t bufferSize);

    /// Whether at least one byte waits. Never blocks.
    bool dataAvailable();
    /// Reads at most `count` bytes, waiting for the first; less than 1 at the end of the stream or on error.
    int read(void* buffer, std::uint32_t count);
    /// Writes all `count` bytes, waiting while the pipe is full; less than 1 when the child has closed its end.
    int write(const void* data, std::uint32_t count);

    void closeChildEnd();
    void close();

    std::intptr_t getParentEnd() const { return parentEnd; }
    std::intptr_t getChildEnd() const { return childEnd; }
    /// Whether the other side was found closed and everything was read: nothing will ever come again.
    bool isEnded() const { return ended; }
    void markEnded() { ended = true; }

private:
    static void closeEnd(std::intptr_t& end);

    std::intptr_t parentEnd = none;
    std::intptr_t childEnd = none;
    bool ended = false;
};
