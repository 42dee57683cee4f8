#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/ShownCommits.h"

#include <deque>
#include <optional>

/// Looks for a row in slices, so that the editor's thread can do other work between them. For that thread.
class RowSearcher {
public:
    /// Makes `search` the current one, or none.
    void want(const std::optional<RowSearch>& search);
    /// Looks for about 10 ms at most, while there is a search without an answer. Returns the answer, once: while rows may still
    /// come, a row that is not there yet is waited for.
    std::optional<RowFound> goOn(const ShownCommits& rows, const Browser& browser, bool isLoading);
    /// Whether goOn has more to do at once.
    bool hasMore() const { return !m_ranges.empty(); }

private:
    struct Range {
        std::int32_t begin;
        std::int32_t end;
    };

    void takeIn(const ShownCommits& rows);
    std::int32_t nextRow();
    bool matches(const GitCommitInfo& commit) const;
    RowFound end(std::int32_t row);

    std::optional<RowSearch> m_search;
    bool m_isAnswered = true;
    cmStringT m_text;             ///< what is looked for, in lower case
    std::uint32_t m_edition = 0;  ///< of the rows that were looked at
    std::int32_t m_known = 0;     ///< how many rows there were
    std::deque<Range> m_ranges;   ///< the rows that are still to be looked at, in this order
};
