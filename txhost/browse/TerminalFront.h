#pragma once

#include "txhost/browse/BrowseFront.h"
#include "txhost/browse/Terminal.h"

#include <memory>

/// Shows the screen on a terminal.
class TerminalFront : public BrowseFront {
public:
    explicit TerminalFront(std::unique_ptr<Terminal> terminal);
    /// Where a signal has ended the terminal, this ends the program by the same signal.
    void finish() override;
    void wake() override { m_terminal->wake(); }

private:
    void show(BrowseScreen& screen, BrowseExchange& exchange) override;
    void converse(BrowseScreen& screen, BrowseExchange& exchange);

    const std::unique_ptr<Terminal> m_terminal;
};
