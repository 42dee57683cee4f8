#pragma once

#include "txhost/browse/BrowseData.h"

/// What is known of the history: its state, and some of its rows.
class RowCache {
public:
    /// Rows are asked for in blocks of so many.
    static constexpr std::int32_t blockRows = 128;

    /// Returns whether the rows have become other ones.
    bool take(HistoryState state);
    void take(HistoryRows rows) { m_rows = std::move(rows); }

    const HistoryState& state() const { return m_state; }
    /// Nothing when it is not known (yet).
    const HistoryRow* row(std::int32_t number) const;
    /// The row of the commit with this hash; below 0: it is not among the known rows.
    std::int32_t find(cmROStringT hash) const;
    /// Whether all rows from `first` to before `end` that the history has are known.
    bool hasAll(std::int32_t first, std::int32_t end) const;
    /// Sets the rows to ask for while those from `first` to before `end` are shown: their blocks, and one on each side.
    static void want(BrowseWants& wants, std::int32_t first, std::int32_t end);

private:
    HistoryState m_state;
    HistoryRows m_rows;
};
