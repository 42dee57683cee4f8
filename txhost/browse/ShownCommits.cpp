#include "txhost/browse/ShownCommits.h"

#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds slice{10};
constexpr std::int32_t betweenLooks = 256;  // commits, between two looks at the clock

/// How many of the first `count` numbers have a row. Rows are made in the order of the numbers, `known` of them at least.
std::int32_t readableOf(const Browser& browser, std::int32_t known, std::int32_t count)
{
    GitCommitInfo info;
    while (known < count) {
        const std::int32_t middle = known + (count - known) / 2;
        if (browser.commit(middle, info))
            known = middle + 1;
        else
            count = middle;
    }
    return known;
}

}  // namespace

void ShownCommits::setFilter(const cmStringT& text)
{
    if (text == m_wanted)
        return;
    m_wanted = text;
    apply();
}

bool ShownCommits::goOn(bool isLoading)
{
    if (m_wanted.isEmpty()) {
        m_readable = readableOf(m_browser, m_readable, m_browser.count());
        return false;
    }
    if (collectNumbers())
        return true;
    if (!isApplicationDue(isLoading))
        return false;
    apply();
    m_isFinal = !isLoading;
    return collectNumbers();
}

std::int32_t ShownCommits::count() const
{
    return m_applied.isEmpty() ? m_readable : static_cast<std::int32_t>(m_numbers.size());
}

std::int64_t ShownCommits::commitIn(std::int32_t row) const
{
    return m_applied.isEmpty() ? row : m_numbers[static_cast<std::size_t>(row)];
}

/// Applies the wanted filter to the commits that are there now.
void ShownCommits::apply()
{
    const std::int32_t count = m_browser.count();
    const bool isFound = m_browser.filter(m_wanted.c_str());
    m_filtered = count;
    m_isFinal = false;
    if (!isFound || m_applied == m_wanted)
        return;  // the rows stay; new ones follow them
    m_applied = m_wanted;
    ++m_edition;
    m_numbers = {};
    m_collected = 0;
}

/// The module applies a filter to later commits when the load has ended. Until then it is applied anew when there are half as
/// many commits more, so that all of it takes no longer than three times.
bool ShownCommits::isApplicationDue(bool isLoading) const
{
    if (!isLoading)
        return !m_isFinal;
    return m_browser.count() > m_filtered + m_filtered / 2;
}

/// Finds the rows of the commits that the filter was applied to. Returns whether some are left.
bool ShownCommits::collectNumbers()
{
    if (hasFilterFoundNothing())
        return false;
    const Clock::time_point end = Clock::now() + slice;
    GitCommitInfo info;
    for (; m_collected < m_filtered; ++m_collected) {
        if (m_collected % betweenLooks == 0 && Clock::now() > end)
            return true;
        if (m_browser.commit(m_collected, info) && info.row >= 0)
            m_numbers.push_back(static_cast<std::uint32_t>(m_collected));
    }
    return false;
}
