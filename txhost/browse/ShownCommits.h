#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txhost/Browser.h"

#include <cstdint>

/// Which commit each row of the history shows, as far as the load has come: all of them, or those with a filter's text. With a
/// filter it keeps 4 bytes a row, else nothing. For the editor's thread.
class ShownCommits {
public:
    /// `browser` must outlive the object.
    explicit ShownCommits(Browser& browser) : m_browser(browser) {}

    /// Shows only the commits with `text`, all of them with an empty one. Rows stay as they are as long as no commit has it.
    void setFilter(const cmStringT& text);
    const cmStringT& filter() const { return m_wanted; }
    bool hasFilterFoundNothing() const { return m_wanted != m_applied; }

    /// Takes in the rows that have come, for about 10 ms at most. Returns whether there is more to do at once.
    bool goOn(bool isLoading);

    /// How many rows can be read.
    std::int32_t count() const;
    /// The number of the commit in a row below `count`.
    std::int64_t commitIn(std::int32_t row) const;
    /// A number that changes when the rows become other ones. More rows are no others.
    std::uint32_t edition() const { return m_edition; }

private:
    void apply();
    bool isApplicationDue(bool isLoading) const;
    bool collectNumbers();

    Browser& m_browser;
    cmStringT m_wanted{""};
    cmStringT m_applied{""};  ///< the filter that the rows belong to
    std::uint32_t m_edition = 1;
    std::int32_t m_readable = 0;       ///< how many commits have rows, without a filter
    std::int32_t m_filtered = 0;       ///< how many commits were there when the filter was applied last
    std::int32_t m_collected = 0;      ///< how many of these have been looked at
    cmArray<std::uint32_t> m_numbers;  ///< of the commits in the rows, with a filter
    bool m_isFinal = false;            ///< the filter was applied after the end of the load
};
