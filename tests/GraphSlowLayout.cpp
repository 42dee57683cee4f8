#include "tests/GraphHistory.h"

#include <algorithm>

namespace {

using enum GraphEdgeKind;

struct Column {
    enum { empty, undecided, shortLine, fromArrow } line = empty;
    std::uint32_t child = 0;
    std::uint32_t target = 0;
    std::uint32_t availableFrom = 0;  ///< row
};

class SlowLayout {
public:
    SlowLayout(const History& history, std::uint32_t cut) : m_history(history), m_cut(cut), m_farChildren(history.size())
    {
        for (std::uint32_t row = 0; row < history.size(); ++row) {
            for (const std::uint32_t parent : history[row]) {
                if (parent < history.size() && parent >= row + cut)
                    m_farChildren[parent].push_back(row);
            }
        }
    }

    GraphRow next(std::uint32_t known)
    {
        m_known = known;
        const cmArray<GraphEdge> down = stopLongLines();
        GraphRow row;
        placeCommit(row);
        for (const std::uint32_t& parent : m_history[m_row])
            row.edges.push_back(edgeTo(parent, &parent == &m_history[m_row].front(), row.column));
        row.edges.insert(row.edges.end(), down.begin(), down.end());
        if (m_knownAbove <= m_row)
            addArrowsUp(row, row.column, m_row);
        if (m_row + 1 < std::min<std::size_t>(known, m_history.size()) && !m_farChildren[m_row + 1].empty()) {
            const std::uint16_t column = leftmostAvailable();
            addArrowsUp(row, column, m_row + 1);
            m_columns[column] = {Column::fromArrow, 0, m_row + 1};
        }
        m_knownAbove = known;
        ++m_row;
        return row;
    }

private:
    bool comes(std::uint32_t row) const { return row < m_known && row < m_history.size(); }
    bool isLong(std::uint32_t child, std::uint32_t parent) const { return (comes(parent) ? parent : m_known) - child >= m_cut; }

    cmArray<GraphEdge> stopLongLines()
    {
        cmArray<GraphEdge> down;
        for (std::uint16_t c = 0; c < columnCount(); ++c) {
            Column& column = m_columns[c];
            if (column.line != Column::undecided)
                continue;
            if (isLong(column.child, column.target)) {
                down.push_back(arrow(arrowDown, c, column.target));
                column = {.availableFrom = m_row + 2};
            } else if (comes(column.target)) {
                column.line = Column::shortLine;
            }
        }
        return down;
    }

    void placeCommit(GraphRow& row)
    {
        row.column = leftmost(m_row, Column::shortLine);
        if (row.column == graphNoColumn)
            row.column = leftmost(m_row, Column::fromArrow);
        if (row.column == graphNoColumn)
            row.column = leftmostAvailable();
        cmArray<GraphEdge> ending;
        for (std::uint16_t c = 0; c < columnCount(); ++c) {
            if (m_columns[c].line != Column::empty && m_columns[c].target == m_row) {
                ending.push_back({c, row.column, ends});
                m_columns[c] = {.availableFrom = m_row + 1};
            } else if (m_columns[c].line != Column::empty) {
                row.edges.push_back({c, c, passes});
            }
        }
        row.edges.insert(row.edges.end(), ending.begin(), ending.end());
        m_columns[row.column].availableFrom = m_row + 2;
    }

    GraphEdge edgeTo(std::uint32_t parent, bool first, std::uint16_t own)
    {
        if (parent <= m_row)
            return arrow(stub, own, parent);
        std::uint16_t to = leftmost(parent, Column::shortLine);
        if (m_columns[own].line == Column::empty && (to == graphNoColumn || (first && to > own)))
            to = own;
        if (to == graphNoColumn)
            to = leftmostAvailable();
        GraphEdge edge{own, to, begins};
        if (m_columns[to].line == Column::empty) {
            m_columns[to] = {Column::undecided, m_row, parent};
            if (isLong(m_row, parent))
                edge = arrow(begins, own, parent);
        }
        edge.to = to;
        return edge;
    }

    void addArrowsUp(GraphRow& row, std::uint16_t column, std::uint32_t parent) const
    {
        for (const std::uint32_t child : m_farChildren[parent])
            row.edges.push_back(arrow(arrowUp, column, child));
    }

    GraphEdge arrow(GraphEdgeKind kind, std::uint16_t column, std::uint32_t other) const
    {
        return {column, column, kind, other < m_history.size() ? std::int64_t{other} : -1, MadeCommits::hashOf(other)};
    }

    std::uint16_t leftmost(std::uint32_t target, decltype(Column::line) line) const
    {
        const auto isIt = [&](const Column& column) { return column.line == line && column.target == target; };
        const auto found = std::find_if(m_columns.begin(), m_columns.end(), isIt);
        return found == m_columns.end() ? graphNoColumn : static_cast<std::uint16_t>(found - m_columns.begin());
    }

    std::uint16_t columnCount() const { return static_cast<std::uint16_t>(m_columns.size()); }

    std::uint16_t leftmostAvailable()
    {
        std::uint16_t c = 0;
        while (c < m_columns.size() && (m_columns[c].line != Column::empty || m_columns[c].availableFrom > m_row))
            ++c;
        m_columns.resize(std::max<std::size_t>(m_columns.size(), c + 1u));
        return c;
    }

    const History& m_history;
    const std::uint32_t m_cut;
    History m_farChildren;  ///< by row of the parent: the children whose lines to it are long
    std::uint32_t m_row = 0;
    std::uint32_t m_known = 0;                      ///< how many commits had come when the row was laid out
    std::uint32_t m_knownAbove = GraphNode::noRow;  ///< when the row above was laid out
    std::vector<Column> m_columns;
};

}  // namespace

GraphRows slowGraphLayout(const History& history, std::uint32_t cut, const std::vector<std::uint32_t>& known)
{
    SlowLayout layout(history, cut);
    GraphRows rows;
    for (const std::uint32_t atRow : known)
        rows.push_back(layout.next(atRow));
    return rows;
}
