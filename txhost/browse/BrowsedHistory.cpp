#include "txhost/browse/BrowsedHistory.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

constexpr std::chrono::milliseconds betweenStates{50};

}  // namespace

BrowsedHistory::BrowsedHistory(Host& host, const cmStringT& repository, std::uint32_t load, std::uint32_t edition,
                               EditorObserver observer, std::function<void()> onNews)
    : m_browser(host, repository, "", std::move(observer)), m_firstEdition(edition),
      m_watch(host.programPath(gitTool), repository, std::move(onNews))
{
    m_state.load = load;
    m_state.edition = this->edition();
}

bool BrowsedHistory::goOn(const cmStringT& filter)
{
    const bool isLoading = m_browser.isLoading();  // asked before the rows, which are complete when it has ended
    if (m_browser.count() > 0 && filter != m_commits.filter()) {
        m_commits.setFilter(filter);
        m_hasStateChanged = true;
    }
    const bool hasMore = m_commits.goOn(isLoading);
    m_hasStateChanged |= m_state.edition != edition() || m_state.isFiltering != hasMore;
    m_state.isFiltering = hasMore;
    const std::int32_t count = std::max(m_commits.count(), m_isEmpty ? 1 : 0);
    m_hasStateChanged |= !isLoading && count != m_state.rowCount;
    m_state.rowCount = count;
    m_isFailureDue = m_state.isLoading && !isLoading;
    lookAtNames();
    return hasMore;
}

std::optional<HistoryState> BrowsedHistory::takeState()
{
    const Clock::time_point now = Clock::now();
    if (!m_hasStateChanged && (!m_state.isLoading || now < m_nextState))
        return std::nullopt;
    m_hasStateChanged = false;
    m_nextState = now + betweenStates;
    m_state.edition = edition();
    m_state.filter = m_commits.filter();
    m_state.filterFoundNothing = m_commits.hasFilterFoundNothing();
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_begin).count();
    m_state.rowsPerSecond =
        m_state.isLoading ? static_cast<std::int32_t>(m_browser.count() * std::int64_t{1000} / std::max<std::int64_t>(passed, 1))
                          : 0;
    return m_state;
}

std::optional<HistoryRows> BrowsedHistory::takeRows(std::int32_t first, std::int32_t count)
{
    const std::int32_t start = std::clamp(first, 0, m_state.rowCount);
    const std::int32_t end = start + std::clamp(count, 0, m_state.rowCount - start);
    const Told told{start, end, edition(), m_content};
    if (told == m_told)
        return std::nullopt;
    m_told = told;
    HistoryRows rows{told.edition, start, {}};
    for (std::int32_t number = start; number < end; ++number)
        rows.rows.push_back(row(number));
    return rows;
}

void BrowsedHistory::lookAtNames()
{
    if (!m_state.names) {
        m_state.names = m_watch.names();
        m_hasStateChanged |= m_state.names != nullptr;
    }
    if (!m_haveMovedMeanwhile && m_state.names && m_browser.hasBranches())
        m_haveMovedMeanwhile = haveBranchesMovedMeanwhile();
    const bool haveMoved = m_watch.haveMoved() || m_haveMovedMeanwhile.value_or(false);
    m_hasStateChanged |= haveMoved != m_state.haveBranchesMoved;
    m_state.haveBranchesMoved = haveMoved;
}

/// Whether the watch has found a branch elsewhere than the load before it. Branches of only one of them do not count: not every
/// one has the same name in both.
bool BrowsedHistory::haveBranchesMovedMeanwhile()
{
    std::set<std::pair<cmStringT, cmStringT>> loaded;
    for (std::int32_t number = 0;; ++number) {
        cmStringT name = m_browser.branchName(number);
        if (name.isEmpty())
            break;
        loaded.emplace(std::move(name), m_browser.branchHash(number));
    }
    const auto hasMoved = [&loaded](const GitRefName& ref) {
        const auto same = loaded.lower_bound({ref.name, ""});
        return ref.kind == RefKind::branch && same != loaded.end() && same->first == ref.name
               && !loaded.contains({ref.name, ref.hash});
    };
    return std::any_of(m_state.names->begin(), m_state.names->end(), hasMoved);
}

void BrowsedHistory::findFailure(QueryWatch& watch)
{
    LoadReport report;
    if (watch.run(nullptr, false, [&] { report = m_browser.report(); }))
        takeReport(report);
}

void BrowsedHistory::takeReport(const LoadReport& report)
{
    m_isEmpty = report.isEmpty;
    m_state.rowCount = std::max(m_state.rowCount, m_isEmpty ? 1 : 0);
    m_state.isLoading = false;
    m_isFailureDue = false;
    m_hasStateChanged = true;
    ++m_content;
    for (const Failure& failure : report.failures) {
        if (!m_state.failure.isNull())
            m_state.failure += "; ";
        m_state.failure += failure.message;
    }
}

void BrowsedHistory::fill(CommitDetails& details)
{
    GitCommitInfo info;
    for (std::int32_t number = m_told.first; number < m_told.end && !m_isEmpty; ++number) {
        if (!m_browser.commit(m_commits.commitIn(number), info) || info.hash != details.hash)
            continue;
        HistoryRow shown = row(number);
        details.parents = std::move(shown.parents);
        details.author = std::move(shown.author);
        details.email = std::move(shown.email);
        details.date = shown.date;
        details.message = {std::move(shown.subject)};
        return;
    }
}

HistoryRow BrowsedHistory::row(std::int32_t number)
{
    GitCommitInfo info;
    HistoryRow row;
    if (m_isEmpty) {
        row.graph.column = 0;
        return row;
    }
    const std::int64_t commit = m_commits.commitIn(number);
    m_browser.commit(commit, info);
    m_browser.graphRow(commit, row.graph);
    row.hash = std::move(info.hash);
    if (!info.firstParent.isEmpty())
        row.parents.push_back(std::move(info.firstParent));
    for (cmStringT& parent : info.otherParents)
        row.parents.push_back(std::move(parent));
    row.author = std::move(info.authorName);
    row.email = std::move(info.authorEmail);
    row.date = info.date;
    row.subject = std::move(info.subject);
    row.branches = m_browser.branchNames(info);
    row.tags = m_browser.tags(commit);
    row.isOnCurrentBranch = info.onCurrentBranch > 0;
    return row;
}
