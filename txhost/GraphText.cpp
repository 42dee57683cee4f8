#include "txhost/GraphText.h"

#include "txhost/Console.h"

#include <algorithm>
#include <array>

namespace {

/// The directions in which lines leave a cell.
enum Direction : unsigned { up = 1, down = 2, left = 4, right = 8 };

constexpr std::array<int, 6> laneColours{36, 33, 35, 32, 34, 31};

struct Cell {
    unsigned lines = 0;
    std::size_t lane = 0;  ///< the lane that determines its colour
};

cmROStringT boxCharacter(unsigned lines)
{
    constexpr std::array<cmROStringT, 16> characters{" ", "╵", "╷", "│", "╴", "╯", "╮", "┤",
                                                     "╶", "╰", "╭", "├", "─", "┴", "┬", "┼"};
    return characters[lines];
}

/// The cells of one row: two for each column, of which the second holds what is drawn between the columns.
class GraphCells {
public:
    explicit GraphCells(std::size_t columns) : m_cells(2 * columns) {}

    void draw(const GraphEdge& edge, std::size_t column)
    {
        const std::size_t lane = edge.kind == GraphEdgeKind::ends ? edge.from : edge.to;
        if (edge.from == edge.to) {
            const unsigned lines = edge.kind == GraphEdgeKind::passes ? up | down : 0;
            add(2 * lane, lines, lane);
            return;
        }
        // One end is the commit's column, in which the commit's own mark is drawn instead of a line.
        const std::size_t first = 2 * std::min(lane, column);
        const std::size_t last = 2 * std::max(lane, column);
        for (std::size_t place = first + 1; place < last; ++place)
            add(place, left | right, lane);
        const unsigned turn = lane < column ? right : left;
        add(2 * lane, turn | (edge.kind == GraphEdgeKind::ends ? up : down), lane);
    }

    const cmArray<Cell>& cells() const { return m_cells; }

private:
    void add(std::size_t place, unsigned lines, std::size_t lane)
    {
        if (place >= m_cells.size())
            return;
        if (!(m_cells[place].lines & (up | down)))
            m_cells[place].lane = lane;
        m_cells[place].lines |= lines;
    }

    cmArray<Cell> m_cells;
};

cmStringT inLaneColour(std::size_t lane, cmROStringT text)
{
    return console::coloured(laneColours[lane % laneColours.size()], text);
}

}  // namespace

cmStringT graphText(const GraphRow& row, std::size_t columns)
{
    GraphCells drawing(columns);
    bool beyond = row.column >= columns;
    bool stub = false;
    for (const GraphEdge& edge : row.edges) {
        stub = stub || edge.kind == GraphEdgeKind::stub;
        beyond = beyond || edge.from >= columns || edge.to >= columns;
        drawing.draw(edge, row.column);
    }
    cmStringT text("");
    const cmArray<Cell>& cells = drawing.cells();
    for (std::size_t place = 0; place < cells.size(); ++place) {
        const Cell& cell = cells[place];
        if (place == 2 * std::size_t{row.column})
            text += inLaneColour(row.column, stub ? "◍" : "●");
        else if (beyond && place + 1 == cells.size())
            text += "…";
        else if (cell.lines == 0)
            text += ' ';
        else
            text += inLaneColour(cell.lane, boxCharacter(cell.lines));
    }
    return text;
}
