#include "filewatcher/status/SVNQuestion.h"

#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"

#include <string>
#include <utility>

SVNQuestion::SVNQuestion(const WatchEntry& entry, std::uint32_t silenceMs, const TickClock& clock, CaptureControl control)
    : m_entry(entry), m_silenceMs(silenceMs), m_clock(clock),
      m_capture(withSilenceLimit(std::move(control)), [this](cmROStringT bytes) {
          m_answer.append(bytes);
          m_lastOutputTick = m_clock();
      })
{
}

void SVNQuestion::start(const cmStringT& commandLine)
{
    m_commandLine = commandLine;
    m_lastOutputTick = m_clock();
    m_started = m_capture.start(commandLine, spawnPlainCommand, "");
}

cmStringT SVNQuestion::silenceReason() const
{
    return cmCat("the server did not answer within ") + std::to_string(m_silenceMs / 1000) + " s";
}

CaptureControl SVNQuestion::withSilenceLimit(CaptureControl control)
{
    control.silentTooLong = [this] { return m_clock() - m_lastOutputTick >= m_silenceMs; };
    return control;
}
