#include "txhost/browse/HistoryLine.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Console.h"
#include "txhost/GraphText.h"
#include "txhost/LogLabels.h"
#include "txhost/TextWidth.h"
#include "txhost/browse/AboutColumns.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t leastWidthForMark = 20;
constexpr std::size_t leastSubject = 20;  ///< columns that nothing on its left takes from a subject
constexpr std::size_t gap = 2;            ///< in front of the names

constexpr TextStyle dim{console::grey};

cmArray<LogLabel> labelsOf(const HistoryRow& row, std::size_t columns)
{
    cmArray<LogLabel> labels;
    for (const cmStringT& branch : row.branches)
        labels.push_back({shownText(branch, columns), "[]", console::green});
    for (const cmStringT& tag : row.tags)
        labels.push_back({shownText(tag, columns), "<>", console::cyan});
    return labels;
}

std::size_t markWidth(std::size_t width)
{
    return width >= leastWidthForMark ? 1 : 0;
}

}  // namespace

HistoryLines::HistoryLines(std::size_t width, Symbols symbols, const cmStringT& workingCopy)
    : m_width(width), m_symbols(symbols), m_workingCopy(workingCopy),
      m_graph(std::max<std::size_t>(1, width - AboutColumns(width).width() - markWidth(width)))
{
}

void HistoryLines::skip(const HistoryRow& row)
{
    if (row.graph.column != graphNoColumn)
        m_graph.next(row.graph);
    m_names.next(row.graph);
}

cmArray<StyledText> HistoryLines::next(const HistoryRow& row, bool isCursor, bool hasFocus)
{
    StyledLine line(m_width, m_symbols);
    const bool isOurs = row.isOnCurrentBranch || row.hash.isEmpty();
    const TextStyle style = isOurs ? TextStyle{} : dim;
    if (markWidth(m_width) > 0)
        line.draw(row.isOnCurrentBranch ? "▏" : " ", dim);
    drawGraph(line, row);
    if (line.room() >= shortHashLength) {
        const std::size_t behind = line.room() - shortHashLength;
        line.add(shortHash(row.hash), isOurs ? TextStyle{console::yellow} : dim, shortHashLength);
        line.padTo(behind);
    }
    line.padTo(line.room() - std::min<std::size_t>(line.room(), 1));

    const AboutColumns about(m_width);
    std::size_t room = line.room() - std::min(line.room(), about.width());
    const cmStringT subject = shownText(row.hash.isEmpty() ? workingCopyText() : row.subject, room);
    const std::size_t subjectWidth = textWidth(subject);
    for (const LogLabel& label : fittingLabels(labelsOf(row, room), subjectWidth, room, line.ellipsis())) {
        line.add(bracketed(label), {label.colour, true});
        line.add(" ");
    }
    const cmStringT names = m_names.next(row.graph);
    const bool hasNames = !names.isEmpty() && std::min(subjectWidth, leastSubject) + gap + textWidth(names) <= room;
    line.add(subject, style, room - (hasNames ? gap + textWidth(names) : 0));
    if (hasNames) {
        line.add("  ");
        line.draw(names, dim);
    }
    about.draw(line, row.author, row.date, dim);
    return std::move(line).finished(isCursor, hasFocus);
}

cmStringT HistoryLines::workingCopyText() const
{
    return cmCat("Working copy") + (m_workingCopy.isEmpty() ? "" : ": ") + m_workingCopy;
}

cmArray<StyledText> HistoryLines::placeholder(bool isCursor, bool hasFocus) const
{
    StyledLine line(m_width, m_symbols);
    line.draw("…", dim);
    return std::move(line).finished(isCursor, hasFocus);
}

void HistoryLines::drawGraph(StyledLine& line, const HistoryRow& row)
{
    if (row.graph.column == graphNoColumn)
        return;
    for (const GraphCell& cell : graphCells(row.graph, m_graph.next(row.graph)))
        line.drawCell(cell.text, cell.colour);
}
