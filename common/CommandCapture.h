#pragma once

#include "common/ChildProcess.h"
#include "common/ReadPacing.h"
#include "common/cmString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>

/// The unit of reading, in bytes; also how much of a command's standard error is kept.
inline constexpr std::uint32_t CaptureReadChunk = 8095;

/// How much output one pass reads at most, in bytes: about what a pipe holds.
inline constexpr std::size_t captureBlockSize = 8 * std::size_t{CaptureReadChunk};

inline constexpr std::int32_t statusOutputLimit = -6657;  ///< a command wrote more than its limit

/// What can end a capture early. The capturing thread makes all calls.
struct CaptureControl {
    /// Called at the start of every pass, after a yield; true terminates the child. Unset: the capture cannot be stopped.
    std::function<bool()> stopRequested;
    /// The greatest accepted amount of output, in bytes.
    std::uint64_t maxOutput = std::numeric_limits<std::uint64_t>::max();
    /// Called once when there is more output, before the child is terminated.
    std::function<void()> outputTooLarge;
    /// Called in every pass that found no output while the child runs; true terminates the child. Unset: the child may be
    /// silent for any time.
    std::function<bool()> silentTooLong;
};

/// Takes a command's standard output as it arrives, in pieces of any bytes, each at most as large as a pipe's content.
using CaptureSink = std::function<void(cmROStringT)>;

struct CaptureResult {
    /// 0 when the command was started and its output is complete or was ended early; statusOutputLimit when it wrote too much;
    /// cmStatusPipeFailed when its output could not be read to the end, or the command was killed or crashed before it came to
    /// its own end; otherwise why it could not be started. The exit code has no part in it.
    std::int32_t status = 0;
    std::int32_t exitCode = 0;  ///< of a command that came to its own end
    bool stopped = false;       ///< whether `stopRequested` ended the capture
    bool silent = false;        ///< whether `silentTooLong` did
    cmStringT errorOutput;      ///< the first CaptureReadChunk bytes of standard error
    cmStringT failure;          ///< in words, why `status` is cmStatusPipeFailed or the command could not be started
};

/// One command whose output is captured pass by pass. Its owner may do other work between two passes: the child goes on until a
/// pipe is full. For one thread at a time. All calls throw only std::bad_alloc and what the callbacks throw; then only the
/// destructor may follow.
class CommandCapture {
public:
    CommandCapture(CaptureControl control, CaptureSink sink);
    /// Terminates the command, unless `finish` has returned.
    ~CommandCapture();
    CommandCapture(const CommandCapture&) = delete;
    CommandCapture& operator=(const CommandCapture&) = delete;

    /// Starts the command; call it once. Returns false when that failed: `finish` then tells why.
    bool start(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory);
    /// Reads what the command has written, and waits at most 10 ms when that is nothing. Returns false after the last pass: when
    /// the child has ended and a pass found nothing more to read, and when the capture was ended early. Other processes may still
    /// hold the pipes then.
    bool pass();
    /// The result; call it once, after the last pass.
    CaptureResult finish();

private:
    bool fail(cmROStringT reason);
    bool end(bool& mark);
    bool readOutput();
    bool readWaitingError();
    bool drainError();

    const CaptureControl m_control;
    const CaptureSink m_sink;
    ChildPipe m_output;
    ChildPipe m_error;
    ChildProcess m_process;                      // declared after the pipes, so it is closed before them
    std::array<char, captureBlockSize> m_block;  // not initialised: nothing reads what was not written
    std::uint64_t m_outputSize = 0;
    ReadPacing m_pacing;
    CaptureResult m_result;
    bool m_finished = false;
};
