#pragma once

#include "txhost/browse/Picture.h"

/// POSIX only. Draws pictures on the screen that ncurses has opened; only what differs from the one before is sent. Make it after
/// the screen. For the screen's thread.
class CursesPicture {
public:
    explicit CursesPicture(bool isColoured);
    /// What does not fit is left out.
    void draw(const Picture& picture) const;

private:
    int m_colours = 0;  ///< how many of the 16 there are
};
