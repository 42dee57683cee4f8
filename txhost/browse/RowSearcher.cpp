#include "txhost/browse/RowSearcher.h"

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds slice{10};
constexpr int betweenLooks = 256;  // rows, between two looks at the clock

bool contains(cmROStringT text, cmROStringT lowerText)
{
    return cmLowerAscii(text).view().find(lowerText) != cmROStringT::npos;
}

}  // namespace

void RowSearcher::want(const std::optional<RowSearch>& search)
{
    if (search == m_search)
        return;
    m_search = search;
    m_isAnswered = !search;
    m_ranges.clear();
    m_edition = 0;
    if (search)
        m_text = cmLowerAscii(search->text);
}

std::optional<RowFound> RowSearcher::goOn(const ShownCommits& rows, const Browser& browser, bool isLoading)
{
    if (m_isAnswered)
        return std::nullopt;
    takeIn(rows);
    const Clock::time_point sliceEnd = Clock::now() + slice;
    GitCommitInfo commit;
    for (int looked = 0; hasMore(); ++looked) {
        if (looked % betweenLooks == 0 && Clock::now() > sliceEnd)
            return std::nullopt;
        const std::int32_t row = nextRow();
        if (browser.commit(rows.commitIn(row), commit) && matches(commit))
            return end(row);
    }
    return isLoading ? std::nullopt : std::optional(end(-1));
}

/// Adds the rows that have come since the last time; all of them when they have become others.
void RowSearcher::takeIn(const ShownCommits& rows)
{
    const std::int32_t count = rows.count();
    if (rows.edition() != m_edition) {
        m_edition = rows.edition();
        const std::int32_t from = std::clamp(m_search->from + (m_search->backwards ? 1 : 0), 0, count);
        const Range above{0, from};
        const Range below{from, count};
        m_ranges = m_search->backwards ? std::deque{above, below} : std::deque{below, above};
    } else {
        m_ranges.push_back({m_known, count});
    }
    m_known = count;
    std::erase_if(m_ranges, [](const Range& range) { return range.begin >= range.end; });
}

std::int32_t RowSearcher::nextRow()
{
    Range& range = m_ranges.front();
    const std::int32_t row = m_search->backwards ? --range.end : range.begin++;
    if (range.begin == range.end)
        m_ranges.pop_front();
    return row;
}

bool RowSearcher::matches(const GitCommitInfo& commit) const
{
    switch (m_search->kind) {
    case SearchKind::text:
        return contains(commit.authorName, m_text) || contains(commit.authorEmail, m_text) || contains(commit.subject, m_text)
               || contains(commit.hash, m_text);
    case SearchKind::hash: return !m_text.isEmpty() && commit.hash.view().starts_with(m_text);
    case SearchKind::child:
        return commit.firstParent == m_text
               || std::find(commit.otherParents.begin(), commit.otherParents.end(), m_text) != commit.otherParents.end();
    }
    return false;
}

RowFound RowSearcher::end(std::int32_t row)
{
    m_isAnswered = true;
    m_ranges.clear();
    return {m_search->number, row};
}
