#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/StyledLine.h"

/// What stands on the right of a line about a commit: its author and its date ("2024-07-01 12:00"), each in a window that is wide
/// enough for it.
class AboutColumns {
public:
    explicit AboutColumns(std::size_t width);
    /// Of both, with the gap in front of them.
    std::size_t width() const;
    void draw(StyledLine& line, cmROStringT author, const GitDateTime& date, const TextStyle& style) const;

private:
    std::size_t m_author;
    std::size_t m_date;
};
