#pragma once

#include "common/cmThreadEvent.h"
#include "txhost/browse/BrowseFront.h"

/// Presses keys, each when all that is shown has come and the history is loaded, and prints what is then shown.
class DumpFront : public BrowseFront {
public:
    DumpFront(const Picture::Size& size, cmArray<Key> keys);
    /// Prints the picture: plain lines, or coloured ones where text is coloured (console::coloured).
    /// Then throws HostError when the history is not complete.
    void finish() override;
    void wake() override { m_news.set(); }

private:
    void show(BrowseScreen& screen, BrowseExchange& exchange) override;
    bool waitUntilComplete(BrowseScreen& screen, BrowseExchange& exchange);

    const Picture::Size m_size;
    const cmArray<Key> m_keys;
    cmThreadEvent m_news{false, false};
    std::uint32_t m_loaded = 0;       ///< the last load that has ended
    bool m_knowsWorkingCopy = false;  ///< or never will
    Picture m_picture;
    cmStringT m_loadFailure;  ///< of the history; null when nothing failed
};
