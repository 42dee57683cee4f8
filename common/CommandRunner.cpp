#include "common/CommandRunner.h"

#include "common/cmArray.h"
#include "common/cmStatusException.h"
#include "common/cmThread.h"

#include <algorithm>
#include <chrono>

namespace {

/// The longest wait of a pass that read nothing. Then the next pass asks for a stop again.
constexpr std::uint32_t idleWaitMs = 10;

/// How much output one pass reads at most: about what a pipe holds.
constexpr std::size_t blockSize = 8 * std::size_t{CaptureReadChunk};

/// Decides how a capture waits for more data. Waking for every small write slows a streaming child by up to a third. So the
/// next data is first polled for without sleeping; when pieces are small, output is left to accumulate in the pipe for a
/// short time instead. It is read before the pipe fills up, or the child would have to wait.
class ReadPacing {
public:
    void onOutput(std::size_t pieceSize)
    {
        m_lastPiece = pieceSize;
        m_coalescing = pieceSize < (m_coalescing ? largePiece : tinyPiece);
    }
    void onRead() { m_lastRead = Clock::now(); }

    /// Waits after a pass that read nothing. Returns false when the system cannot wait.
    bool wait(ChildProcess& process, const ChildPipe& output, const ChildPipe& error)
    {
        const auto sinceRead = Clock::now() - m_lastRead;
        if (!m_coalescing && sinceRead < pollTime) {
            cmThread::yield();
            return true;
        }
        if ((m_coalescing || m_lastPiece <= smallPiece) && sinceRead < streamingTime) {
            m_coalescing = true;
            return process.waitForEnd(coalesceTime);
        }
        return process.waitForActivity(output, error, idleWaitMs);
    }

private:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::microseconds pollTime{50};
    static constexpr std::chrono::microseconds coalesceTime{500};
    static constexpr std::chrono::milliseconds streamingTime{2};  ///< a child that wrote this recently counts as streaming
    static constexpr std::size_t tinyPiece = 4096;                ///< below this, coalesce without polling first
    static constexpr std::size_t smallPiece = 8192;               ///< up to this, coalesce when polling brought nothing
    static constexpr std::size_t largePiece = 32768;              ///< from this on, stop coalescing: the pipe is half full

    Clock::time_point m_lastRead;
    std::size_t m_lastPiece = 0;
    bool m_coalescing = false;
};

/// One capture: the child and its pipes, and what was read so far.
class Capture {
public:
    Capture(const CaptureControl& control, const std::function<void(cmROStringT)>& sink) : m_control(control), m_sink(sink) {}

    CaptureResult run(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory)
    {
        SpawnStreams streams;
        streams.output = &m_output;
        streams.error = &m_error;
        try {
            spawnProcess(m_process, commandLine, options, {}, workingDirectory, streams, &m_result.failure, true);
        } catch (const cmStatusException& failure) {
            m_result.status = failure.status();
            return std::move(m_result);
        }
        try {
            while (pass()) {
            }
            while (m_result.errorOutput.length() < CaptureReadChunk && readWaitingError()) {
            }
            const bool isOurEnd = m_result.stopped || m_result.status != 0;
            if (const cmStringT end = isOurEnd ? cmStringT() : m_process.abnormalEnd(); !end.isNull())
                fail(end);
        } catch (...) {
            m_process.terminate();
            throw;
        }
        return std::move(m_result);
    }

private:
    /// Returns false after the last pass.
    bool pass()
    {
        if (m_control.stopRequested) {
            cmThread::yield();
            if (m_control.stopRequested()) {
                m_result.stopped = true;
                m_process.terminate();
                return false;
            }
        }
        const ChildActivity activity = m_process.poll(m_output, m_error);
        if (activity.failed)
            return fail("the system does not tell whether the command still runs");
        if (activity.output && !readOutput())
            return false;
        if (activity.error && !drainError())
            return false;
        if (activity.output || activity.error)
            m_pacing.onRead();
        else if (activity.running && !m_pacing.wait(m_process, m_output, m_error))
            return fail("the system does not wait for the command");
        return activity.running || activity.output;
    }

    /// Ends the capture with a failure, unless it has been ended before. Returns false.
    bool fail(cmROStringT reason)
    {
        m_process.terminate();
        if (m_result.status == 0 && !m_result.stopped) {
            m_result.status = cmStatusPipeFailed;
            m_result.failure = reason;
        }
        return false;
    }

    /// Returns false when the capture must end: at the end of the stream, and when the limit is exceeded.
    bool readOutput()
    {
        const int count = m_output.read(m_block.data(), static_cast<std::uint32_t>(m_block.size()));
        if (count < 1)
            return count < 0 && fail("the command's output could not be read");
        const cmROStringT piece(m_block.data(), static_cast<std::size_t>(count));
        m_pacing.onOutput(piece.size());
        m_sink(piece);
        m_outputSize += piece.size();
        if (m_outputSize <= m_control.maxOutput)
            return true;
        m_result.status = statusOutputLimit;
        if (m_control.outputTooLarge)
            m_control.outputTooLarge();
        m_process.terminate();
        return false;
    }

    /// Reads what the ended child has left in the error pipe. Returns false when there is nothing.
    bool readWaitingError()
    {
        const ChildActivity activity = m_process.poll(m_output, m_error);
        if (activity.failed)
            return fail("the system does not tell whether the command's error output is complete");
        return activity.error && drainError();
    }

    /// Reads one chunk of standard error, so that a full pipe never blocks the child, and keeps the first bytes. Returns false
    /// when it cannot be read: the error output decides whether the output counts.
    bool drainError()
    {
        cmStringT& kept = m_result.errorOutput;
        char chunk[CaptureReadChunk];
        const int count = m_error.read(chunk, CaptureReadChunk);
        if (count < 0)
            return fail("the command's error output could not be read");
        if (count == 0)
            m_error.markEnded();
        kept.append({chunk, std::min<std::size_t>(static_cast<std::size_t>(count), CaptureReadChunk - kept.length())});
        return true;
    }

    const CaptureControl& m_control;
    const std::function<void(cmROStringT)>& m_sink;
    ChildPipe m_output;
    ChildPipe m_error;
    ChildProcess m_process;  // declared after the pipes, so it is closed before them
    cmArray<char> m_block = cmArray<char>(blockSize);
    std::uint64_t m_outputSize = 0;
    ReadPacing m_pacing;
    CaptureResult m_result;
};

}  // namespace

CaptureResult captureCommand(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                             const CaptureControl& control, const std::function<void(cmROStringT)>& sink)
{
    return Capture(control, sink).run(commandLine, options, workingDirectory);
}

std::int32_t runCommandCapture(cmROStringT commandLine, cmStringT& output, cmROStringT workingDirectory)
{
    const auto append = [&output](cmROStringT bytes) { output += bytes; };
    return captureCommand(commandLine, spawnScannedCommand, workingDirectory, {}, append).status;
}
