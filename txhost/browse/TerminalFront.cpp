#include "txhost/browse/TerminalFront.h"

#include <chrono>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

/// Between two drawings of what only the session has changed.
constexpr auto drawingInterval = std::chrono::milliseconds(16);

}  // namespace

TerminalFront::TerminalFront(std::unique_ptr<Terminal> terminal) : m_terminal(std::move(terminal)) {}

void TerminalFront::finish()
{
    m_terminal->finish();
    BrowseFront::finish();
}

void TerminalFront::show(BrowseScreen& screen, BrowseExchange& exchange)
{
    try {
        converse(screen, exchange);
    } catch (...) {
        m_terminal->close();
        throw;
    }
    m_terminal->close();
}

void TerminalFront::converse(BrowseScreen& screen, BrowseExchange& exchange)
{
    cmArray<Key> keys;
    Clock::time_point drawn;
    int timeoutMs = 0;
    while (!stopRequested() && m_terminal->wait(keys, timeoutMs)) {
        screen.resize(m_terminal->size());
        screen.take(exchange.takeNews());
        for (const Key& key : keys)
            screen.press(key);
        if (screen.hasLeft())
            return;
        exchange.want(screen.wants());
        if (const cmStringT copied = screen.takeCopied(); !copied.isNull())
            m_terminal->copy(copied);
        const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - drawn);
        timeoutMs = -1;
        if (keys.empty() && since < drawingInterval) {
            timeoutMs = static_cast<int>((drawingInterval - since).count());
        } else {
            m_terminal->draw(screen.picture());
            drawn = Clock::now();
        }
        keys.clear();
    }
}
