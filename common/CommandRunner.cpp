#include "common/CommandRunner.h"

#include "common/cmArray.h"
#include "common/cmStatusException.h"
#include "common/cmThread.h"

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

/// How long a pass that found nothing waits before it asks for a stop again.
constexpr std::uint32_t idleWaitMs = 10;

/// To be woken for every piece of output costs a child that streams up to a third of its time. So the next piece is first
/// looked for without a sleep. When small ones come, the rest is left to gather in the pipe, until as much as `largePiece`
/// does: then the child would soon wait for room in it.
constexpr std::chrono::microseconds nextPieceGap{50};
constexpr std::size_t tinyPiece = 4096;   // below it, not even the next one is waited for
constexpr std::size_t smallPiece = 8192;  // up to it, when the next one is late
constexpr std::size_t largePiece = 32768;
constexpr std::chrono::microseconds gatheringTime{500};
constexpr std::chrono::milliseconds gatheringGap{2};  // how long after a read a child counts as one that streams

/// How much is taken out of the pipe with one call: about what it holds.
constexpr std::size_t chunksAtOnce = 8;

/// Takes one chunk of standard error out of the pipe, so that it never fills up and blocks the child, and keeps
/// the first bytes. False when the pipe cannot be read.
bool drainError(ChildPipe& error, cmStringT& kept)
{
    char chunk[CaptureReadChunk];
    const int count = error.read(chunk, CaptureReadChunk);
    if (count > 0)
        kept.append({chunk, std::min<std::size_t>(static_cast<std::size_t>(count), CaptureReadChunk - kept.length())});
    return count > 0;
}

/// One capture: the child, its pipes, and what was seen of them.
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
        while (pass()) {
        }
        while (m_result.errorOutput.length() < CaptureReadChunk && m_error.dataAvailable()
               && drainError(m_error, m_result.errorOutput)) {
        }
        return std::move(m_result);
    }

private:
    /// One round; false when it was the last.
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
        const ChildActivity seen = m_process.look(m_output, m_error);
        if (seen.output && !takeOutput())
            return false;
        const bool readError = seen.error && drainError(m_error, m_result.errorOutput);
        if (seen.output || readError)
            m_lastRead = Clock::now();
        else if (seen.running)
            waitForMore();
        return seen.running || seen.output;
    }

    void waitForMore()
    {
        const auto quiet = Clock::now() - m_lastRead;
        if (!m_gathering && quiet < nextPieceGap) {
            cmThread::yield();
        } else if ((m_gathering || m_lastPiece <= smallPiece) && quiet < gatheringGap) {
            m_gathering = true;
            m_process.waitForEnd(gatheringTime);
        } else {
            m_process.waitForActivity(m_output, m_error, idleWaitMs);
        }
    }

    bool takeOutput()
    {
        const int count = m_output.read(m_block.data(), static_cast<std::uint32_t>(m_block.size()));
        if (count < 1)
            return false;
        m_lastPiece = static_cast<std::size_t>(count);
        m_gathering = m_lastPiece < (m_gathering ? largePiece : tinyPiece);
        m_sink({m_block.data(), m_lastPiece});
        m_taken += m_lastPiece;
        return m_taken <= m_control.maxOutput || endTooLarge();
    }

    bool endTooLarge()
    {
        m_result.status = statusOutputLimit;
        if (m_control.outputTooLarge)
            m_control.outputTooLarge();
        m_process.terminate();
        return false;
    }

    const CaptureControl& m_control;
    const std::function<void(cmROStringT)>& m_sink;
    ChildPipe m_output;
    ChildPipe m_error;
    ChildProcess m_process;  // goes first: it is closed before the pipes
    cmArray<char> m_block = cmArray<char>(chunksAtOnce * CaptureReadChunk);
    std::uint64_t m_taken = 0;
    Clock::time_point m_lastRead;
    std::size_t m_lastPiece = 0;
    bool m_gathering = false;
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
