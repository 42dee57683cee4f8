#include "common/CommandCapture.h"

#include "common/cmStatusException.h"
#include "common/cmStringCatHelper.h"
#include "common/cmThread.h"

#include <algorithm>
#include <utility>

CommandCapture::CommandCapture(CaptureControl control, CaptureSink sink) : m_control(std::move(control)), m_sink(std::move(sink))
{
}

CommandCapture::~CommandCapture()
{
    if (!m_finished)
        m_process.terminate();
}

bool CommandCapture::start(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory)
{
    SpawnStreams streams;
    streams.output = &m_output;
    streams.error = &m_error;
    try {
        spawnProcess(m_process, commandLine, options, {}, workingDirectory, streams, &m_result.failure, true);
    } catch (const cmStatusException& failure) {
        m_result.status = failure.status();
        return false;
    }
    return true;
}

bool CommandCapture::pass()
{
    if (m_control.stopRequested) {
        cmThread::yield();
        if (m_control.stopRequested())
            return end(m_result.stopped);
    }
    const ChildActivity activity = m_process.poll(m_output, m_error);
    if (activity.failed)
        return fail("the system does not tell whether the command still runs");
    if (activity.output && !readOutput())
        return false;
    if (activity.error && !drainError())
        return false;
    if (activity.running && !activity.output && m_control.silentTooLong && m_control.silentTooLong())
        return end(m_result.silent);
    if (activity.output || activity.error)
        m_pacing.onRead();
    else if (activity.running && !m_pacing.wait(m_process, m_output, m_error))
        return fail("the system does not wait for the command");
    return activity.running || activity.output;
}

CaptureResult CommandCapture::finish()
{
    if (m_process.isValid()) {
        while (m_result.errorOutput.length() < CaptureReadChunk && readWaitingError()) {
        }
        const bool isOurEnd = m_result.stopped || m_result.silent || m_result.status != 0;
        if (const cmStringT end = isOurEnd ? cmStringT() : m_process.abnormalEnd(); !end.isNull())
            fail(cmStringT(cmCat("the tool ") + end));
        m_result.exitCode = m_process.exitCode();
    }
    m_finished = true;
    return std::move(m_result);
}

/// Ends the capture because its control says so, and sets the mark of the result. Returns false.
bool CommandCapture::end(bool& mark)
{
    mark = true;
    m_process.terminate();
    return false;
}

/// Ends the capture with a failure, unless it has been ended before. Returns false.
bool CommandCapture::fail(cmROStringT reason)
{
    m_process.terminate();
    if (m_result.status == 0 && !m_result.stopped && !m_result.silent) {
        m_result.status = cmStatusPipeFailed;
        m_result.failure = reason;
    }
    return false;
}

/// Returns false when the capture must end: at the end of the stream, and when the limit is exceeded.
bool CommandCapture::readOutput()
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
bool CommandCapture::readWaitingError()
{
    const ChildActivity activity = m_process.poll(m_output, m_error);
    if (activity.failed)
        return fail("the system does not tell whether the command's error output is complete");
    return activity.error && drainError();
}

/// Reads one chunk of standard error, so that a full pipe never blocks the child, and keeps the first bytes. Returns false
/// when it cannot be read: the error output decides whether the output counts.
bool CommandCapture::drainError()
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
