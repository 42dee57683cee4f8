#include "txhost/browse/DumpFront.h"

#include "txhost/Console.h"
#include "txhost/Failure.h"

#include <string>
#include <utility>

namespace {

/// Nobody tells of an interrupt.
constexpr std::uint32_t interruptCheckMs = 50;

constexpr int bold = 1;  // SGR numbers
constexpr int reversed = 7;

/// Without the blanks at its end, unless they are coloured.
cmStringT printedLine(const cmArray<StyledText>& line)
{
    cmStringT printed("");
    for (const StyledText& piece : line) {
        cmStringT text = piece.text;
        if (piece.style.isReversed)
            text = console::coloured(reversed, text);
        if (piece.style.isBold)
            text = console::coloured(bold, text);
        printed += piece.style.colour == 0 ? text : console::coloured(piece.style.colour, text);
    }
    const std::size_t end = printed.view().find_last_not_of(' ');
    printed.truncate(end == cmROStringT::npos ? 0 : end + 1);
    return printed;
}

}  // namespace

DumpFront::DumpFront(const Picture::Size& size, cmArray<Key> keys) : m_size(size), m_keys(std::move(keys)) {}

void DumpFront::finish()
{
    BrowseFront::finish();
    for (const cmArray<StyledText>& line : m_picture.lines)
        console::printLine(printedLine(line));
    if (!m_loadFailure.isNull())
        throw HostError(std::string(m_loadFailure.view()));
}

void DumpFront::show(BrowseScreen& screen, BrowseExchange& exchange)
{
    screen.resize(m_size);
    for (const Key& key : m_keys) {
        if (!waitUntilComplete(screen, exchange))
            return;
        screen.press(key);
    }
    if (waitUntilComplete(screen, exchange))
        m_picture = screen.picture();
}

/// Returns false when there is nothing to wait for any more.
bool DumpFront::waitUntilComplete(BrowseScreen& screen, BrowseExchange& exchange)
{
    while (!stopRequested() && !console::wasInterrupted() && !screen.hasLeft()) {
        BrowseNews news = exchange.takeNews();
        if (news.state && !news.state->isLoading)
            m_loaded = news.state->load;
        if (news.state)
            m_loadFailure = news.state->failure;
        m_knowsWorkingCopy |= !news.workingCopy.isNull() || (news.state && !news.state->failure.isNull());
        screen.take(std::move(news));
        exchange.want(screen.wants());
        if (m_loaded == screen.wants().load && m_knowsWorkingCopy && screen.isComplete())
            return true;
        m_news.wait(interruptCheckMs);
    }
    return false;
}
