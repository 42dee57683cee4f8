#pragma once

#include <cstdint>

/// One redirected standard stream of a child. Created empty and filled by spawnProcess. Owns both ends and closes them. One
/// thread at a time may use it.
class ChildPipe {
public:
    static constexpr std::intptr_t none = -1;

    ChildPipe() = default;
    ChildPipe(const ChildPipe&) = delete;
    ChildPipe& operator=(const ChildPipe&) = delete;
    ~ChildPipe() { close(); }

    /// Creates the pipe. The parent keeps the write end when `toChild`, otherwise the read end. No child inherits the parent's
    /// end. The child's end is passed on explicitly; on Windows, a process that the host starts before closeChildEnd, and lets
    /// inherit everything, inherits it too. Throws cmStatusException(cmStatusPipeFailed).
    void create(bool toChild, std::uint32_t bufferSize);

    /// Whether at least one byte can be read; false also when the system cannot tell (see hasFailed). Never blocks.
    bool dataAvailable();
    /// Reads at most `count` bytes and blocks until there is one. Returns 0 at the end of the stream, -1 on error.
    int read(void* buffer, std::uint32_t count);
    /// Writes all `count` bytes and blocks while the pipe is full. Returns less than 1 when the child has closed its end.
    int write(const void* data, std::uint32_t count);

    void closeChildEnd() { closeEnd(childEnd); }
    void close()
    {
        closeEnd(childEnd);
        closeEnd(parentEnd);
        ended = false;
        failed = false;
    }

    std::intptr_t getParentEnd() const { return parentEnd; }
    std::intptr_t getChildEnd() const { return childEnd; }
    /// Whether the end of the stream was seen: all data was read and no writer is left.
    bool isEnded() const { return ended; }
    void markEnded() { ended = true; }
    /// Whether the system could not tell if data can be read.
    bool hasFailed() const { return failed; }

private:
    static void closeEnd(std::intptr_t& end);

    std::intptr_t parentEnd = none;
    std::intptr_t childEnd = none;
    bool ended = false;
    bool failed = false;
};
