#pragma once

#include "txhost/browse/BrowsedHistory.h"
#include "txhost/browse/LiveWorkingCopy.h"
#include "txhost/browse/QueryWatch.h"
#include "txhost/browse/RepositoryQueries.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

/// What the screen is told of commits, files and the working copy: decides which query runs next, one at a time. For the editor's
/// thread.
class QueryAnswers {
public:
    using Clock = std::chrono::steady_clock;

    /// `exchange` must outlive the object.
    QueryAnswers(Host& host, BrowseExchange& exchange);

    QueryWatch& watch() { return m_watch; }
    /// Null until the place is known, and when there is no working copy.
    LiveWorkingCopy* workingCopy() { return m_live ? &*m_live : nullptr; }
    /// Takes notice of what is wanted, and of where the repository is when that is known.
    void want(const BrowseWants& wants, const std::optional<RepositoryPlace>& place);
    /// Runs a query that is due, and tells its answer. Returns whether there was one.
    bool goOn(BrowsedHistory& history);
    /// When there may be something to do, unless the wants change before.
    Clock::time_point next() const;

private:
    enum class Stage { nothing, message, changes };

    void begin(const RepositoryPlace& place);
    void askMessage(BrowsedHistory& history);
    void askChanges();
    void askFileHistory();
    void askWorkingCopy();
    bool run(const QueryWatch::IsWanted& isWanted, const std::function<void()>& query);
    bool ask(const std::function<void()>& query);
    void takeWorkingCopy(CommitDetails& workingCopy);
    void tellDetails(CommitDetails details, Stage next);
    void tellWorkingCopy(const cmStringT& text);

    Host& m_host;
    BrowseExchange& m_exchange;
    QueryWatch m_watch;
    std::optional<RepositoryPlace> m_place;
    std::optional<RepositoryQueries> m_queries;
    std::optional<LiveWorkingCopy> m_live;
    std::uint32_t m_load = 0;
    bool m_isLoading = false;
    std::chrono::milliseconds m_pause;  ///< before a query is run again that was in the way of others

    cmStringT m_toldText;  ///< of the working copy's row
    bool m_isWorkingCopyDue = false;
    Clock::time_point m_workingCopyDue = Clock::time_point::min();

    std::optional<cmStringT> m_wantedDetails;
    std::uint32_t m_detailsNumber = 0;
    Stage m_stage = Stage::nothing;  ///< what is asked next about the details
    Clock::time_point m_due = Clock::time_point::max();
    CommitDetails m_details;  ///< as far as they are known, while they are not complete

    std::optional<FileQuestion> m_question;
    std::uint32_t m_historyNumber = 0;
    Clock::time_point m_fileHistoryDue = Clock::time_point::max();
};
