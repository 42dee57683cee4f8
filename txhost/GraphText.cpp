#include "txhost/GraphText.h"

#include "common/cmArray.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <utility>

namespace {

constexpr std::size_t rowsBeforeShrinking = 30;
constexpr std::size_t leastWidth = 2;  ///< the commit's mark and a blank
constexpr std::size_t largestStep = 8;
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
    explicit Picture(const GraphRow& row) : m_commit(row.column), m_columns(graphCells(row) / 2)
    {
        for (const GraphEdge& edge : row.edges)
            add(edge);
        m_columns[m_commit].mark = commitMark(row);
        drawSide(0, left, right);
        drawSide(m_columns.size() - 1, right, left);
        m_columns[m_commit].cell = {m_columns[m_commit].mark, m_commit};
    }

    const cmArray<Column>& columns() const { return m_columns; }

    /// The columns to show in `width` cells, from left to right.
    cmArray<std::size_t> chosen(std::size_t width) const
    {
        cmArray<std::size_t> order(m_columns.size());
        std::iota(order.begin(), order.end(), 0);
        if (2 * order.size() <= width)
            return order;
        const auto rank = [this](std::size_t column) {
            const std::size_t distance = column < m_commit ? m_commit - column : column - m_commit;
            return std::pair(distance > 0 && !m_columns[column].isParent, distance);
        };
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return rank(a) < rank(b); });
        std::size_t first = m_commit;
        std::size_t last = m_commit;
        std::size_t count = 1;
        for (; count < order.size(); ++count) {
            first = std::min(first, order[count]);
            last = std::max(last, order[count]);
            const std::size_t ellipses = std::size_t{first > 0} + std::size_t{last + 1 < m_columns.size()};
            if (2 * (count + 1) + ellipses > width)
                break;
        }
        order.resize(count);
        std::sort(order.begin(), order.end());
        return order;
    }

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

    std::size_t m_commit;
    cmArray<Column> m_columns;
};

/// Appends the short hash of `edge` to a list that `sign` begins.
void addName(cmStringT& list, cmROStringT sign, const GraphEdge& edge)
{
    list += list.isEmpty() ? cmStringT(cmCat(sign) + " ") : cmStringT(", ");
    list += edge.otherHash.isEmpty() ? "working copy" : shortHash(edge.otherHash);
}

}  // namespace

cmStringT inNoColour(int, cmROStringT text)
{
    return text;
}

std::size_t graphCells(const GraphRow& row)
{
    std::size_t columns = row.column + std::size_t{1};
    for (const GraphEdge& edge : row.edges)
        columns = std::max({columns, edge.from + std::size_t{1}, edge.to + std::size_t{1}});
    return 2 * columns;
}

cmStringT graphText(const GraphRow& row, std::size_t width, Painter paint)
{
    const Picture picture(row);
    const cmArray<Column>& columns = picture.columns();
    width = std::max(width, leastWidth);
    const cmArray<std::size_t> chosen = picture.chosen(width);
    std::size_t spare = width - 2 * chosen.size();
    cmStringT text("");
    const auto draw = [&](const Cell& cell) {
        text += cell.text == " " ? cmStringT(" ") : paint(laneColours[cell.lane % laneColours.size()], cell.text);
    };
    const bool cutRight = chosen.back() + 1 < columns.size() && spare > 0;
    spare -= cutRight;
    if (chosen.front() > 0 && spare > 0) {
        text += "…";
        --spare;
    }
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        draw(columns[chosen[i]].cell);
        if (i + 1 < chosen.size() && chosen[i + 1] > chosen[i] + 1)
            text += "…";
        else if (i + 1 < chosen.size())
            draw(columns[chosen[i]].gap);
    }
    text += cutRight ? "… " : " ";
    for (; spare > 0; --spare)
        text += ' ';
    return text;
}

cmStringT graphNames(const GraphRow& row)
{
    cmArray<const GraphEdge*> edges;
    for (const GraphEdge& edge : row.edges)
        edges.push_back(&edge);
    std::stable_sort(edges.begin(), edges.end(), [](const GraphEdge* a, const GraphEdge* b) { return a->from < b->from; });
    cmArray<cmStringT> lists(1);
    for (const auto& [kind, sign] :
         {std::pair(GraphEdgeKind::arrowDown, "↓"), {GraphEdgeKind::arrowUp, "↑"}, {GraphEdgeKind::stub, "◍"}}) {
        const GraphEdge* before = nullptr;
        for (const GraphEdge* edge : edges) {
            if (edge->kind != kind)
                continue;
            if (!before || (kind == GraphEdgeKind::arrowUp && edge->from != before->from))
                lists.emplace_back();
            addName(lists.back(), sign, *edge);
            before = edge;
        }
    }
    cmStringT names("");
    for (const cmStringT& list : lists) {
        if (!names.isEmpty())
            names += "  ";
        names += list;
    }
    return names;
}

GraphWidth::GraphWidth(std::size_t terminalWidth) : m_limit(std::numeric_limits<std::size_t>::max()), m_step(largestStep)
{
    if (terminalWidth == 0)
        return;
    const std::size_t besideHash = terminalWidth - std::min(terminalWidth, shortHashLength);
    m_limit = std::max(leastWidth, std::min(terminalWidth * 3 / 8, besideHash));
    m_step = std::clamp(m_limit / 8 * 2, leastWidth, largestStep);
}

std::size_t GraphWidth::next(const GraphRow& row)
{
    const std::size_t needed = std::min((graphCells(row) + m_step - 1) / m_step * m_step, m_limit);
    if (needed >= m_width) {
        m_width = needed;
        m_narrowRows = 0;
        m_widest = 0;
        return m_width;
    }
    m_widest = std::max(m_widest, needed);
    if (++m_narrowRows == rowsBeforeShrinking) {
        m_width = m_widest;
        m_narrowRows = 0;
        m_widest = 0;
    }
    return m_width;
}
