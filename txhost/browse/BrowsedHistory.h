#pragma once

#include "txhost/Browser.h"
#include "txhost/browse/BrowseData.h"
#include "txhost/browse/QueryWatch.h"
#include "txhost/browse/RepositoryWatch.h"
#include "txhost/browse/ShownCommits.h"

#include <chrono>
#include <functional>
#include <optional>

/// One load of the history: what the screen is told of it, and the rows that it wants. The destructor ends the load. For the
/// editor's thread.
class BrowsedHistory {
public:
    /// Begins the load `load`, whose rows have the numbers of editions from `edition` on. Throws HostError when it cannot begin.
    /// `observer` gets the editor's other notices; `onNews` is called, on another thread, when there is something new.
    BrowsedHistory(Host& host, const cmStringT& repository, std::uint32_t load, std::uint32_t edition, EditorObserver observer,
                   std::function<void()> onNews);

    /// Takes in what has been loaded, for about 10 ms at most. Returns whether there is more to do at once.
    bool goOn(const cmStringT& filter);
    bool isLoading() const { return m_state.isLoading; }
    /// Whether the load has ended and it is not known yet how.
    bool isFailureDue() const { return m_isFailureDue; }
    /// Finds it out with a query of `watch`; it stays due when that was ended.
    void findFailure(QueryWatch& watch);
    /// Adds to the details of a commit what its row tells, if that is among the rows that were taken.
    void fill(CommitDetails& details);
    std::uint32_t load() const { return m_state.load; }
    /// Of the rows that there are now; the screen may not have been told of it yet.
    std::uint32_t edition() const { return m_firstEdition + m_commits.edition(); }
    const HistoryState& state() const { return m_state; }
    const ShownCommits& commits() const { return m_commits; }
    const Browser& browser() const { return m_browser; }
    RepositoryWatch& watch() { return m_watch; }

    /// The state when the screen is to be told it: as soon as it has changed, but of a growing number of rows not too often.
    std::optional<HistoryState> takeState();
    /// The rows that are wanted, as many as there are; nothing when they have been taken and are still the same.
    std::optional<HistoryRows> takeRows(std::int32_t first, std::int32_t count);

private:
    using Clock = std::chrono::steady_clock;
    /// What was told of the rows.
    struct Told {
        std::int32_t first = 0;
        std::int32_t end = 0;
        std::uint32_t edition = 0;
        std::uint32_t content = 0;
        friend bool operator==(const Told&, const Told&) = default;
    };

    void takeReport(const LoadReport& report);
    void lookAtNames();
    bool haveBranchesMovedMeanwhile();
    HistoryRow row(std::int32_t number);

    Browser m_browser;
    ShownCommits m_commits{m_browser};
    const std::uint32_t m_firstEdition;
    const Clock::time_point m_begin = Clock::now();
    RepositoryWatch m_watch;
    bool m_isFailureDue = false;
    bool m_isEmpty = false;                    ///< there are no commits; the working copy's row stands alone
    std::optional<bool> m_haveMovedMeanwhile;  ///< branches, after the load had read them; nothing until it is known
    HistoryState m_state;
    bool m_hasStateChanged = true;
    Clock::time_point m_nextState = Clock::time_point::min();
    std::uint32_t m_content = 0;  ///< changes when rows that were told have become others
    Told m_told;
};
