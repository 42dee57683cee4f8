#include "tests/GraphHistory.h"
#include "txhost/LogLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <ostream>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>

void PrintTo(const GraphEdge& edge, std::ostream* out)
{
    constexpr std::array names{"passes", "ends", "begins", "stub", "down", "up"};
    *out << names[static_cast<std::size_t>(edge.kind)] << ' ' << edge.from << '-' << edge.to << " (" << edge.other << ')';
}

void expectSame(const GraphRows& rows, const GraphRows& expected)
{
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ASSERT_EQ(rows[i].column, expected[i].column) << "row " << i;
        ASSERT_EQ(rows[i].edges, expected[i].edges) << "row " << i;
    }
}

namespace {

using enum GraphEdgeKind;

GraphRows allRows(GraphLayout& layout)
{
    GraphRows rows(layout.rowCount());
    for (std::uint32_t i = 0; i < rows.size(); ++i)
        layout.row(i, rows[i]);
    return rows;
}

/// Lays out a history while its commits come, and compares what is read meanwhile with what is read in the end.
void layOutInPieces(const History& history, std::uint32_t cut, bool pauses, std::mt19937& engine)
{
    const auto below = [&engine](std::uint32_t end) { return static_cast<std::uint32_t>(engine()) % end; };
    const auto count = static_cast<std::uint32_t>(history.size());
    MadeCommits commits(history);
    GraphLayout layout(commits, cut);
    std::vector<std::uint32_t> known;  // by row: the commits that had come when it was laid out
    std::vector<std::pair<std::uint32_t, GraphRow>> early;
    const std::uint32_t step = below(2) ? 10 : 200;
    for (commits.known = 0; known.size() < count;) {
        commits.known = std::min(count, commits.known + 1 + below(step));
        if (commits.known == count) {
            layout.finish(count);
            known.resize(count, GraphNode::noRow);
        } else if (pauses && below(3) == 0) {
            layout.catchUp(commits.known);
            known.resize(commits.known, commits.known);
        } else {
            layout.extend(commits.known);
            known.resize(std::max<std::size_t>(known.size(), commits.known - std::min(commits.known, cut - 1)), commits.known);
        }
        ASSERT_EQ(layout.rowCount(), known.size());
        if (!known.empty() && below(4) == 0) {
            for (const std::uint32_t i : {layout.rowCount() - 1, below(layout.rowCount())})
                layout.row(i, early.emplace_back(i, GraphRow()).second);
        }
    }
    const GraphRows rows = allRows(layout);
    expectSame(rows, slowGraphLayout(history, cut, known));
    for (auto& [i, row] : early) {
        for (std::size_t edge = 0; edge < std::min(row.edges.size(), rows[i].edges.size()); ++edge) {
            if (row.edges[edge].other == -1)
                row.edges[edge].other = rows[i].edges[edge].other;  // may have become known
        }
        GraphRow again;
        layout.row(i, again);
        expectSame({row, again}, {rows[i], rows[i]});
    }
}

enum class Shape { narrow, wide, branches, crissCross, wrongClocks, filtered, restricted };

History randomHistory(Shape shape, std::uint32_t count, std::mt19937& engine)
{
    const auto below = [&engine](std::uint32_t end) { return static_cast<std::uint32_t>(engine()) % end; };
    History history(count);
    for (std::uint32_t row = 0; row < count; ++row) {
        std::vector<std::uint32_t>& parents = history[row];
        if (shape == Shape::crissCross)
            parents = {row + 2, row % 2 ? row + 1 : row + 3};
        else if (shape == Shape::branches)
            parents = {row + 1000};
        const std::uint32_t wanted = !parents.empty() ? 0 : below(50) ? below(4) : 20;
        const std::uint32_t reach = shape == Shape::wide ? 500 : wanted < 20 && below(4) ? 8 : 60;
        while (parents.size() < wanted) {
            const bool odd = below(10) == 0;
            const std::uint32_t parent = odd && shape == Shape::wrongClocks  ? below(row + 1)
                                         : odd && shape == Shape::restricted ? count + below(count)
                                                                             : row + 1 + below(reach);
            if (std::find(parents.begin(), parents.end(), parent) == parents.end())
                parents.push_back(parent);
        }
        std::erase_if(parents, [&](std::uint32_t parent) {
            return (shape == Shape::filtered && below(3) == 0) || (shape != Shape::restricted && parent >= count);
        });
    }
    return history;
}

TEST(GraphLayout, IsThatOfTheSlowLayoutWhateverTheHistory)
{
    using enum Shape;
    std::mt19937 engine(7);
    for (const Shape shape : {narrow, wide, branches, crissCross, wrongClocks, filtered, restricted}) {
        for (const std::uint32_t cut : {2u, 30u, 1100u}) {
            for (const bool pauses : {false, true}) {
                SCOPED_TRACE(testing::Message() << static_cast<int>(shape) << " cut " << cut << " pauses " << pauses);
                layOutInPieces(randomHistory(shape, shape == branches ? 1400 : 400, engine), cut, pauses, engine);
                if (HasFailure())
                    return;
            }
        }
    }
}

/// Visits every history that differs only in the commits from `row` on; each has at most two ordered parents below it.
void forEachHistory(History& history, std::uint32_t row, const std::function<void()>& visit)
{
    const auto count = static_cast<std::uint32_t>(history.size());
    if (row == count)
        visit();
    for (std::uint32_t first = row; first < count; ++first) {  // `row` stands for no parent
        for (std::uint32_t second = row; second < count; ++second) {
            if (second != row && (first == row || first == second))
                continue;
            history[row] = {first, second};
            std::erase(history[row], row);
            forEachHistory(history, row + 1, visit);
        }
    }
}

/// Compares the two layouts, and what `txhost log` prints into a pipe, for all histories of so many commits.
void expectAllDiffer(std::uint32_t count, std::uint32_t cut)
{
    const std::vector<std::uint32_t> known(count, GraphNode::noRow);
    std::unordered_map<std::string, History> pictures;
    History history(count);
    forEachHistory(history, 0, [&] {
        if (testing::Test::HasFailure())
            return;
        const MadeCommits commits(history);
        GraphLayout layout(commits, cut);
        layout.finish(count);
        const GraphRows rows = allRows(layout);
        expectSame(rows, slowGraphLayout(history, cut, known));
        LogLines lines(0, &inNoColour);
        std::string picture;
        for (std::uint32_t row = 0; row < count; ++row) {
            const cmStringT line = lines.next(rows[row], {MadeCommits::hashOf(row), {}, "", ""});
            picture.append(line.view()).append("\n");
        }
        History unordered = history;
        for (std::vector<std::uint32_t>& parents : unordered)
            std::sort(parents.begin(), parents.end());
        EXPECT_EQ(pictures.try_emplace(picture, unordered).first->second, unordered) << picture;
    });
}

// There is one thread, and with the thread sanitizer six commits take minutes.
#ifdef __SANITIZE_THREAD__
constexpr std::uint32_t allHistoriesOf = 5;
#else
constexpr std::uint32_t allHistoriesOf = 6;
#endif

TEST(GraphLayout, EveryPictureOfSixCommitsTellsTheHistory)
{
    expectAllDiffer(allHistoriesOf, GraphLayout::longLine);
}

TEST(GraphLayout, EveryPictureOfSixCommitsWithCutLinesTellsTheHistory)
{
    expectAllDiffer(allHistoriesOf, 2);
}

TEST(GraphLayout, LinesForWhichNoColumnIsLeftAreStubs)
{
    constexpr std::uint32_t parents = 66000;
    History history(1 + parents);
    for (std::uint32_t row = 1; row <= parents; ++row)
        history[0].push_back(row);
    const MadeCommits commits(history);
    GraphLayout layout(commits);
    layout.finish(2);
    EXPECT_EQ(layout.widest(), 65535);
    GraphRow row;
    layout.row(0, row);
    EXPECT_EQ(row.edges[65534], (GraphEdge{0, 65534, begins, 65535, MadeCommits::hashOf(65535)}));
    EXPECT_EQ(row.edges[65535], (GraphEdge{0, 0, stub, 65536, MadeCommits::hashOf(65536)}));
}

}  // namespace
