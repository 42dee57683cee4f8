#include "common/ReadPacing.h"

#include "common/cmThread.h"

#include <cstdint>

namespace {

/// The longest wait of a pass that read nothing. Then the next pass asks for a stop again.
constexpr std::uint32_t idleWaitMs = 10;

constexpr std::chrono::microseconds pollTime{50};
constexpr std::chrono::microseconds coalesceTime{500};
constexpr std::chrono::milliseconds streamingTime{2};  ///< a child that wrote this recently counts as streaming
constexpr std::size_t tinyPiece = 4096;                ///< below this, coalesce without polling first
constexpr std::size_t smallPiece = 8192;               ///< up to this, coalesce when polling brought nothing
constexpr std::size_t largePiece = 32768;              ///< from this on, stop coalescing: the pipe is half full

}  // namespace

void ReadPacing::onOutput(std::size_t pieceSize)
{
    m_lastPiece = pieceSize;
    m_coalescing = pieceSize < (m_coalescing ? largePiece : tinyPiece);
}

bool ReadPacing::wait(ChildProcess& process, const ChildPipe& output, const ChildPipe& error)
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
