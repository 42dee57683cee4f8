#pragma once

#include "txhost/LogLine.h"
#include "txhost/browse/BrowseData.h"
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
    const BrowseWants& wants() const;
    /// Whether nothing that is shown is still awaited. The history need not be loaded to its end.
    bool isComplete() const;
    Picture picture() const;

    bool hasLeft() const;
    /// What the user has copied since the last call; null when nothing.
    cmStringT takeCopied();
};
