#pragma once

#include "txhost/LogLine.h"
#include "txhost/browse/ListWindow.h"
#include "txhost/browse/Picture.h"
#include "txhost/browse/RowCache.h"

#include <optional>

/// The rows of the history, with the cursor on one of them. The selected commit stays selected when a load or a filter brings
/// other rows.
class HistoryPane {
public:
    /// For how many rows there is room. The cursor stays among them.
    void setHeight(std::size_t lines);
    /// Returns whether there are other rows, in which the selected commit is to be looked for: see `lost`.
    bool take(HistoryState state);
    void take(HistoryRows rows);
    void takeWorkingCopy(cmStringT text) { m_workingCopy = std::move(text); }

    /// Moves the cursor, if `key` is one that does.
    bool press(const Key& key);
    void scroll(std::int32_t lines);
    void click(std::size_t line);
    /// The user goes to a row.
    void jumpTo(std::int32_t row);
    /// The row of the commit that was looked for; below 0: there is none.
    void found(std::int32_t row);

    /// The commit that is to be found again in the rows; nothing when there is none.
    const std::optional<cmStringT>& lost() const { return m_lost; }
    /// Hash of the selected commit, empty for the working copy; nothing as long as its row is not known.
    std::optional<cmStringT> selectedHash() const;
    /// The selected row; null as long as it is not known.
    const HistoryRow* selected() const { return m_lost ? nullptr : m_cache.row(m_window.cursor()); }

    /// Without the working copy's row.
    std::int32_t commitCount() const { return m_window.count() - (m_hasWorkingCopy ? 1 : 0); }
    const HistoryState& state() const { return m_cache.state(); }
    const RowCache& cache() const { return m_cache; }
    const ListWindow& window() const { return m_window; }
    bool isComplete() const { return !m_lost && m_cache.hasAll(m_window.first(), m_window.end()); }
    /// The rows in the window; those that are not known as placeholders.
    cmArray<cmArray<StyledText>> lines(std::size_t width, Symbols symbols, bool hasFocus) const;

private:
    void leaveAnchor();
    void loseSelected();
    void settle();

    RowCache m_cache;
    ListWindow m_window;
    cmStringT m_workingCopy{""};
    std::optional<cmStringT> m_anchor;  ///< the commit that the user has gone to last, even while a filter leaves it out
    std::optional<cmStringT> m_lost;
    cmStringT m_filter{""};         ///< that the rows belong to
    std::int32_t m_linesAbove = 0;  ///< how many lines were above the commit that is lost
    bool m_isBesideAnchor = false;  ///< the anchor has no row
    bool m_hasWorkingCopy = false;  ///< in row 0, as far as is known
    bool m_followsEnd = false;      ///< of a load
};
