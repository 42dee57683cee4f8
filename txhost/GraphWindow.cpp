#include "txhost/GraphWindow.h"

#include "common/cmArray.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace {

constexpr std::size_t rowsBeforeShrinking = 30;
constexpr std::size_t leastWidth = 2;  ///< the commit's mark and a blank
constexpr std::size_t largestStep = 8;

/// What there is to show of one row in a window of `width` cells.
class Fitting {
public:
    Fitting(const GraphRow& row, std::size_t width, std::size_t most)
        : m_columns(graphColumns(row)), m_commit(row.column), m_width(width), m_most(most)
    {
        for (const GraphEdge& edge : row.edges) {
            if (edge.kind == GraphEdgeKind::begins && edge.to != edge.from)
                m_turns.push_back(edge.to);
        }
        std::sort(m_turns.begin(), m_turns.end());
    }

    bool showsCommit(std::size_t first) const
    {
        const bool ellipsis = m_commit + 1 < m_columns && m_width > leastWidth + 1;
        return first <= m_commit && placeOf(m_commit, first) + 2 + std::size_t{ellipsis} <= m_width;
    }
    bool showsTurns(std::size_t first) const { return leftmost(first) && cellsTo(m_commit, first) <= m_most; }

    /// What a window that begins with the column `first` shows of the row.
    GraphView view(std::size_t first) const
    {
        if (const std::optional<std::size_t> from = leftmost(first)) {
            const std::size_t last = rightmost(first);
            return {widthFor(cellsTo(last, first)), placeOf(*from, first), *from, last};
        }
        // Too many turns: the commit gives up its place for them.
        const std::size_t indent = std::min(turnsBefore(m_commit) + 1, m_most - leastWidth);
        return {widthFor(indent + cellsTo(m_commit, m_commit)), indent, m_commit, m_commit};
    }

private:
    /// The cell of `column`. The window has a cell for an ellipsis before its columns, unless it begins with the first one.
    std::size_t placeOf(std::size_t column, std::size_t first) const
    {
        return (first > 0 && m_width > leastWidth ? 1 : 0) + 2 * (column - first);
    }
    std::size_t widthFor(std::size_t cells) const { return std::max(m_width, std::min(cells, m_most)); }
    std::size_t turnsBefore(std::size_t column) const
    {
        return static_cast<std::size_t>(std::lower_bound(m_turns.begin(), m_turns.end(), column) - m_turns.begin());
    }
    std::size_t turnsBehind(std::size_t column) const
    {
        return static_cast<std::size_t>(m_turns.end() - std::upper_bound(m_turns.begin(), m_turns.end(), column));
    }
    /// The cells that the picture takes when `last` is the last column in its place.
    std::size_t cellsTo(std::size_t last, std::size_t first) const
    {
        return placeOf(last, first) + 2 + (last + 1 < m_columns ? 1 + turnsBehind(last) : 0);
    }

    /// The first column that leaves enough cells for the turns before it; none when that would be behind the commit.
    std::optional<std::size_t> leftmost(std::size_t first) const
    {
        for (std::size_t column = first; column <= m_commit; ++column) {
            if (column == 0 || turnsBefore(column) + 1 <= placeOf(column, first))
                return column;
        }
        return std::nullopt;
    }

    /// The last column: turns further right get the cells of the nearest columns without turns, or else more cells than the
    /// window.
    std::size_t rightmost(std::size_t first) const
    {
        const std::size_t inWindow = first + (m_width - placeOf(first, first)) / 2 - 1;
        for (std::size_t column = std::clamp(inWindow, m_commit, m_columns - 1);; --column) {
            if (cellsTo(column, first) <= m_width)
                return column;
            if (column == m_commit || (turnsBehind(column) > 0 && turnsBehind(column - 1) > turnsBehind(column)))
                break;
        }
        std::size_t column = m_turns.empty() ? m_commit : std::max(m_commit, m_turns.back());
        while (column > m_commit && cellsTo(column, first) > m_most)
            --column;
        return column;
    }

    std::size_t m_columns;
    std::size_t m_commit;
    std::size_t m_width;
    std::size_t m_most;
    cmArray<std::size_t> m_turns;  ///< the columns in which lines turn down to parents, ascending
};

/// The number nearest to `start`, in steps of `stride` and at most `last`, that is `wanted`.
template <typename Predicate>
std::optional<std::size_t> nearest(std::size_t start, std::size_t last, std::size_t stride, Predicate wanted)
{
    for (std::size_t distance = 0; distance <= std::max(start, last); distance += stride) {
        if (distance <= start && wanted(start - distance))
            return start - distance;
        if (start + distance <= last && wanted(start + distance))
            return start + distance;
    }
    return std::nullopt;
}

}  // namespace

std::size_t graphColumns(const GraphRow& row)
{
    std::size_t columns = row.column + std::size_t{1};
    for (const GraphEdge& edge : row.edges)
        columns = std::max({columns, edge.from + std::size_t{1}, edge.to + std::size_t{1}});
    return columns;
}

GraphWindow::GraphWindow(std::size_t terminalWidth)
    : m_limit(std::numeric_limits<std::size_t>::max()), m_most(m_limit), m_step(largestStep), m_stride(1)
{
    if (terminalWidth == 0)
        return;
    const std::size_t besideHash = terminalWidth - std::min(terminalWidth, shortHashLength);
    m_limit = std::max(leastWidth, std::min(terminalWidth * 3 / 8, besideHash));
    m_most = std::max(m_limit, besideHash - std::min<std::size_t>(besideHash, 1));
    m_stride = (m_limit + 5) / 6;
    m_step = std::clamp(m_limit / 8 * 2, leastWidth, largestStep);
}

GraphView GraphWindow::next(const GraphRow& row)
{
    adjustWidth(graphColumns(row));
    const Fitting fitting(row, m_width, m_most);
    const auto showsCommit = [&](std::size_t first) { return fitting.showsCommit(first); };
    const auto showsAll = [&](std::size_t first) { return fitting.showsCommit(first) && fitting.showsTurns(first); };
    std::optional<std::size_t> first = nearest(m_first, row.column, m_stride, showsAll);
    if (!first)
        first = nearest(m_first, row.column, m_stride, showsCommit);
    m_first = first.value_or(row.column);
    return fitting.view(m_first);
}

void GraphWindow::adjustWidth(std::size_t columns)
{
    const std::size_t needed = std::min((2 * columns + m_step - 1) / m_step * m_step, m_limit);
    if (needed < m_width) {
        m_widest = std::max(m_widest, needed);
        if (++m_narrowRows < rowsBeforeShrinking)
            return;
        m_first = 0;  // the window shows all columns again
    }
    m_width = std::max(needed, m_widest);
    m_narrowRows = 0;
    m_widest = 0;
}
