#pragma once

#include "common/CommandCapture.h"
#include "filewatcher/status/FileWatcherThreadBase.h"
#include "filewatcher/status/SVNAnswer.h"

#include <cstdint>
#include <functional>

/// One run of the client that asks the server. It ends early when the client has written no output for a time. For the thread
/// that makes it.
class SVNQuestion {
public:
    using TickClock = std::function<std::uint32_t()>;  ///< milliseconds; wraps around

    /// `control` is completed with the limit of the silence; `clock` must outlive the object.
    SVNQuestion(const WatchEntry& entry, std::uint32_t silenceMs, const TickClock& clock, CaptureControl control);

    /// Starts the client; `finish` tells if that failed.
    void start(const cmStringT& commandLine);
    /// One pass of the capture, see CommandCapture::pass. Returns false after the last one.
    bool advance() { return m_started && m_capture.pass(); }
    CaptureResult finish() { return m_capture.finish(); }

    const WatchEntry& entry() const { return m_entry; }
    const cmStringT& commandLine() const { return m_commandLine; }
    /// What it has brought, to be finished by the caller.
    SVNAnswer& answer() { return m_answer; }
    /// For a person, when the run was ended because of silence.
    cmStringT silenceReason() const;

private:
    CaptureControl withSilenceLimit(CaptureControl control);

    const WatchEntry m_entry;
    const std::uint32_t m_silenceMs;
    const TickClock& m_clock;
    cmStringT m_commandLine;
    SVNAnswer m_answer;
    std::uint32_t m_lastOutputTick = 0;  ///< that of the start before the first output
    bool m_started = false;
    CommandCapture m_capture;
};
