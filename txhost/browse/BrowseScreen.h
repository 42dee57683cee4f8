#pragma once

#include "txhost/LogLine.h"
#include "txhost/browse/BrowseData.h"
#include "txhost/browse/DetailsPane.h"
#include "txhost/browse/HistoryPane.h"
#include "txhost/browse/Key.h"
#include "txhost/browse/Picture.h"

/// What `txhost browse` shows, and what its keys do. It knows no terminal and never waits: it shows what it was told so far, and
/// says what it wants to know. For one thread.
class BrowseScreen {
public:
    BrowseScreen(cmStringT repository, Symbols symbols);

    void resize(Picture::Size size);
    void press(const Key& key);
    void take(BrowseNews news);

    /// What is needed for what is shown.
    const BrowseWants& wants() const { return m_wants; }
    /// Whether nothing that is shown is still awaited. The history need not be loaded to its end.
    bool isComplete() const;
    Picture picture() const;

    bool hasLeft() const { return m_hasLeft; }
    /// What the user has copied since the last call; null when nothing.
    cmStringT takeCopied();

private:
    /// How many lines each part has.
    struct Layout {
        std::size_t list = 0;
        std::size_t bar = 0;  ///< between the list and the details
        std::size_t details = 0;
    };

    Layout layout() const;
    void arrange();
    bool hasDetails() const;

    const cmStringT m_repository;
    const Symbols m_symbols;
    Picture::Size m_size;
    BrowseWants m_wants;
    HistoryPane m_history;
    DetailsPane m_details;
    bool m_areDetailsOpen = false;
    bool m_hasDetailsFocus = false;
    cmStringT m_copied;
    bool m_hasLeft = false;
};
