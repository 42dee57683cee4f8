#include "txhost/browse/HistoryPane.h"

#include "txhost/browse/HistoryLine.h"

#include <algorithm>
#include <utility>

void HistoryPane::setHeight(std::size_t lines)
{
    m_window.setHeight(lines);
}

bool HistoryPane::take(HistoryState state)
{
    if (!m_lost)
        m_linesAbove = m_window.cursor() - m_window.first();
    const bool isOther = m_cache.take(std::move(state));
    m_window.setCount(m_cache.state().rowCount);
    if (isOther)
        loseSelected();
    if (m_followsEnd)
        m_window.jumpTo(m_window.count() - 1);
    m_followsEnd = m_followsEnd && m_cache.state().isLoading;
    settle();
    return isOther;
}

/// Notes that the selected commit may be in another row now. The working copy can only be in the first one.
void HistoryPane::loseSelected()
{
    const bool isOtherFilter = m_filter != m_cache.state().filter;
    m_filter = m_cache.state().filter;
    m_isBesideAnchor = m_anchor && m_anchor->isEmpty();
    m_lost = m_isBesideAnchor ? std::nullopt : m_anchor;
    if (isOtherFilter || m_isBesideAnchor)
        m_window.place(0, 0);
}

void HistoryPane::take(HistoryRows rows)
{
    m_cache.take(std::move(rows));
    settle();
}

bool HistoryPane::press(const Key& key)
{
    if (!m_window.press(key))
        return false;
    leaveAnchor();
    m_followsEnd = m_cache.state().isLoading && (key.kind == KeyKind::end || key.code == 'G');
    settle();
    return true;
}

void HistoryPane::scroll(std::int32_t lines)
{
    const std::int32_t before = m_window.cursor();
    m_window.scroll(lines);
    if (m_window.cursor() != before)
        leaveAnchor();
    settle();
}

void HistoryPane::click(std::size_t line)
{
    leaveAnchor();
    m_window.click(line);
    settle();
}

void HistoryPane::jumpTo(std::int32_t row)
{
    leaveAnchor();
    m_window.jumpTo(row);
    settle();
}

void HistoryPane::found(std::int32_t row)
{
    m_lost.reset();
    m_isBesideAnchor = row < 0;
    if (row >= 0)
        m_window.place(row, row - m_linesAbove);
    settle();
}

std::optional<cmStringT> HistoryPane::selectedHash() const
{
    if (m_lost)
        return m_lost;
    const HistoryRow* row = selected();
    return row ? std::optional(row->hash) : std::nullopt;
}

void HistoryPane::leaveAnchor()
{
    m_anchor.reset();
    m_lost.reset();
    m_isBesideAnchor = false;
    m_followsEnd = false;
}

/// Notes the commit under the cursor as the one that the user has gone to.
void HistoryPane::settle()
{
    if (const HistoryRow* row = selected(); row && !m_isBesideAnchor)
        m_anchor = row->hash;
    if (const HistoryRow* row = m_cache.row(0))
        m_hasWorkingCopy = row->hash.isEmpty();
}

cmArray<cmArray<StyledText>> HistoryPane::lines(std::size_t width, Symbols symbols, bool hasFocus) const
{
    cmArray<cmArray<StyledText>> lines;
    const std::int32_t first = m_window.first();
    HistoryLines drawing(width, symbols, m_workingCopy);
    for (std::int32_t number = first - first % RowCache::blockRows; number < m_window.end(); ++number) {
        const HistoryRow* row = m_cache.row(number);
        const bool isCursor = number == m_window.cursor();
        if (row && number < first)
            drawing.skip(*row);
        else if (row)
            lines.push_back(drawing.next(*row, isCursor, hasFocus));
        else if (number >= first)
            lines.push_back(drawing.placeholder(isCursor, hasFocus));
    }
    return lines;
}
