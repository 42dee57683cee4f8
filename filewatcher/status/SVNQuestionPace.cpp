#include "filewatcher/status/SVNQuestionPace.h"

namespace {

constexpr std::uint32_t showUpdatesPaceMs = 60000;
constexpr const char* heldBackReason = "the server was not asked at once, as one had not answered";

/// Whether a minute has passed since `tick`. A tick in the future is one from before the clock wrapped around.
bool hasMinutePassed(std::uint32_t tick, std::uint32_t now)
{
    return now < tick || now - tick >= showUpdatesPaceMs;
}

}  // namespace

SVNShowUpdates SVNQuestionPace::showUpdates(const cmStringT& directory, std::uint32_t now)
{
    forgetExpired(now);
    const auto known = m_directories.find(directory);
    if (known != m_directories.end() && !isDue(known->second, now))
        return SVNShowUpdates::no;
    if (isSilentMinute(now)) {
        holdBack(m_directories[directory]);
        return SVNShowUpdates::heldBack;
    }
    return known != m_directories.end() && known->second.asksAfterPass() ? SVNShowUpdates::afterPass : SVNShowUpdates::now;
}

bool SVNQuestionPace::isSilentMinute(std::uint32_t now)
{
    if (m_silenceTick && hasMinutePassed(*m_silenceTick, now))
        m_silenceTick.reset();
    return m_silenceTick.has_value();
}

void SVNQuestionPace::noteAsked(const cmStringT& directory, std::uint32_t now)
{
    m_questions.push_back({now, directory});
    m_directories[directory].lastShowUpdatesTick = now;
}

void SVNQuestionPace::noteAnswer(const cmStringT& directory)
{
    Directory& answered = m_directories[directory];
    answered.wasHeldBack = false;
    answered.missingAnswer = "";
}

void SVNQuestionPace::noteSilence(const cmStringT& directory, std::uint32_t now, const cmStringT& reason)
{
    Directory& silent = m_directories[directory];
    if (!silent.asksAfterPass())
        m_silenceTick = now;  // a question after a pass holds up nobody
    silent.wasSilent = true;
    silent.missingAnswer = reason;
}

bool SVNQuestionPace::wasSilent(const cmStringT& directory) const
{
    const auto known = m_directories.find(directory);
    return known != m_directories.end() && known->second.wasSilent;
}

cmStringT SVNQuestionPace::missingAnswer(const cmStringT& directory) const
{
    const auto known = m_directories.find(directory);
    return known == m_directories.end() ? cmStringT("") : known->second.missingAnswer;
}

bool SVNQuestionPace::isDue(const Directory& directory, std::uint32_t now)
{
    return !directory.lastShowUpdatesTick || hasMinutePassed(*directory.lastShowUpdatesTick, now);
}

void SVNQuestionPace::holdBack(Directory& directory)
{
    directory.wasHeldBack = true;
    if (directory.missingAnswer.isEmpty())
        directory.missingAnswer = heldBackReason;
}

/// Removes the entries that mean nothing any more. A question adds one at most, so two a call are enough to catch up.
void SVNQuestionPace::forgetExpired(std::uint32_t now)
{
    for (int i = 0; i < 2 && !m_questions.empty() && hasMinutePassed(m_questions.front().tick, now); ++i) {
        const auto known = m_directories.find(m_questions.front().directory);
        const bool isLast = known != m_directories.end() && known->second.lastShowUpdatesTick == m_questions.front().tick;
        if (isLast && !known->second.asksAfterPass() && known->second.missingAnswer.isEmpty())
            m_directories.erase(known);
        m_questions.pop_front();
    }
}
