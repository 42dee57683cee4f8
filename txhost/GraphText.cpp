#include "txhost/GraphText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::array<int, 6> laneColours{36, 33, 35, 32, 34, 31};

/// The directions in which lines leave a cell.
enum Direction : unsigned { up = 1, down = 2, left = 4, right = 8 };

struct Cell {
    cmROStringT text = " ";
    std::size_t lane = 0;  ///< the column that determines its colour
};

/// What a row has in one column, and in the gap between it and the next column.
struct Column {
    unsigned vertical = 0;  ///< up, down
    bool turns = false;     ///< the line turns to the commit
    bool isParent = false;  ///< a line of the commit leads down from here
    cmROStringT mark{};     ///< instead of lines
    Cell cell;
    Cell gap;
};

cmROStringT boxCharacter(unsigned lines)
{
    constexpr std::array<cmROStringT, 16> characters{" ", "╵", "╷", "│", "╴", "╯", "╮", "┤",
                                                     "╶", "╰", "╭", "├", "─", "┴", "┬", "┼"};
    return characters[lines];
}

cmROStringT commitMark(const GraphRow& row)
{
    const auto has = [&row](GraphEdgeKind kind) {
        return std::any_of(row.edges.begin(), row.edges.end(), [kind](const GraphEdge& edge) { return edge.kind == kind; });
    };
    return has(GraphEdgeKind::stub) ? "◍" : has(GraphEdgeKind::begins) ? "●" : "○";
}

/// The whole picture of one row.
class Picture {
public:
    explicit Picture(const GraphRow& row) : m_commit(row.column), m_columns(graphColumns(row))
    {
        for (const GraphEdge& edge : row.edges)
            add(edge);
        m_columns[m_commit].mark = commitMark(row);
        drawSide(0, left, right);
        drawSide(m_columns.size() - 1, right, left);
        drawGaps();
        m_columns[m_commit].cell = {m_columns[m_commit].mark, m_commit};
    }

    const cmArray<Column>& columns() const { return m_columns; }

private:
    void add(const GraphEdge& edge)
    {
        const bool ends = edge.kind == GraphEdgeKind::ends;
        Column& column = m_columns[ends ? edge.from : edge.to];
        if (edge.kind == GraphEdgeKind::arrowDown || edge.kind == GraphEdgeKind::arrowUp)
            column.mark = edge.kind == GraphEdgeKind::arrowDown ? "↓" : "↑";
        if (edge.kind == GraphEdgeKind::passes)
            column.vertical = up | down;
        if (edge.from == edge.to || (!ends && edge.kind != GraphEdgeKind::begins))
            return;
        column.vertical |= ends ? up : down;
        column.turns = true;
        column.isParent = !ends;
    }

    /// Draws from the outermost column of one side of the commit to the commit.
    void drawSide(std::size_t outermost, unsigned outwards, unsigned inwards)
    {
        const bool fromLeft = outwards == left;
        bool reached = false;  // the horizontal line is reached by a turn further out
        std::size_t lane = 0;  // of the nearest such turn
        for (std::size_t place = outermost; place != m_commit; fromLeft ? ++place : --place) {
            Column& column = m_columns[place];
            const bool through = reached && (column.turns || !column.vertical);
            const unsigned horizontal = (through ? outwards : 0) | (through || column.turns ? inwards : 0);
            const cmROStringT box = boxCharacter(column.vertical | horizontal);
            column.cell = {column.mark.empty() ? box : column.mark, column.vertical || !column.mark.empty() ? place : lane};
            if (column.turns) {
                reached = true;
                lane = place;
            }
            if (reached)
                m_columns[fromLeft ? place : place - 1].gap = {"─", lane};
        }
    }

    /// Keeps a horizontal line that passes behind an arrow away from it: it would look as if it ended there.
    void drawGaps()
    {
        for (std::size_t place = 0; place < m_columns.size(); ++place) {
            if (place == m_commit || m_columns[place].mark.empty())
                continue;
            cmROStringT& after = m_columns[place].gap.text;
            if (after == "─")
                after = "╶";
            if (place == 0)
                continue;
            cmROStringT& before = m_columns[place - 1].gap.text;
            before = before == "─" ? "╴" : " ";
        }
    }

    std::size_t m_commit;
    cmArray<Column> m_columns;
};

}  // namespace

cmArray<GraphCell> graphCells(const GraphRow& row, const GraphView& view)
{
    const Picture picture(row);
    const cmArray<Column>& columns = picture.columns();
    cmArray<Cell> leftOut;  // turns to parents before the first column
    bool isCutLeft = false;
    for (std::size_t i = 0; i < view.first; ++i) {
        isCutLeft = isCutLeft || columns[i].cell.text != " ";
        if (columns[i].isParent)
            leftOut.push_back(columns[i].cell);
    }
    cmArray<Cell> cells(view.indent);
    if (isCutLeft && !cells.empty()) {
        const std::size_t kept = std::min(leftOut.size(), cells.size() - 1);
        std::copy(leftOut.end() - static_cast<std::ptrdiff_t>(kept), leftOut.end(),
                  cells.end() - static_cast<std::ptrdiff_t>(kept) - 1);
        cells.back().text = "…";
    }
    for (std::size_t i = view.first; i <= view.last; ++i) {
        cells.push_back(columns[i].cell);
        cells.push_back(columns[i].gap);
    }
    if (view.last + 1 < columns.size()) {
        cells.back() = {"…", view.last};
        for (std::size_t i = view.last + 1; i < columns.size(); ++i) {
            if (columns[i].isParent)
                cells.push_back(columns[i].cell);
        }
    }
    cells.resize(view.width - 1);
    cells.emplace_back();
    cmArray<GraphCell> coloured;
    for (const Cell& cell : cells)
        coloured.push_back({cell.text, cell.text == " " || cell.text == "…" ? 0 : laneColours[cell.lane % laneColours.size()]});
    return coloured;
}

cmStringT inNoColour(int, cmROStringT text)
{
    return text;
}

cmStringT graphText(const GraphRow& row, const GraphView& view, Painter paint)
{
    cmStringT text("");
    for (const GraphCell& cell : graphCells(row, view))
        text += cell.colour == 0 ? cmStringT(cell.text) : paint(cell.colour, cell.text);
    return text;
}
