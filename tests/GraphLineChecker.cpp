#include "tests/GraphHistory.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <utility>

namespace {

using Columns = std::set<std::uint16_t>;
using Lines = std::set<std::pair<std::int64_t, std::int64_t>>;  ///< row of the child, row of the parent

/// The line in a column between two rows.
struct Lane {
    std::int64_t target;
    std::vector<std::int64_t> children;  ///< empty when it starts with an arrow
};

/// The lines of a graph, followed from row to row.
struct Follower {
    std::map<std::uint16_t, Lane> above{};  ///< the current row, by column
    std::map<std::uint16_t, Lane> below{};
    Columns closed{};  ///< to what begins in this row
    Columns resting{};
    Lines whole{}, down{}, up{}, stubs{};

    Lane take(std::uint16_t column)
    {
        EXPECT_TRUE(above.contains(column)) << "no line in column " << column;
        return above.contains(column) ? above.extract(column).mapped() : Lane{-1, {}};
    }
    void lead(std::uint16_t column, const Lane& lane)
    {
        Lane& joined = below.try_emplace(column, Lane{lane.target, {}}).first->second;
        EXPECT_EQ(joined.target, lane.target) << "two lines in column " << column;
        joined.children.insert(joined.children.end(), lane.children.begin(), lane.children.end());
    }
    void begin(std::uint16_t column, const Lane& lane)
    {
        EXPECT_TRUE(below.contains(column) || !closed.contains(column)) << "nothing may begin in column " << column;
        lead(column, lane);
    }
    static void note(Lines& lines, const Lane& lane)
    {
        for (const std::int64_t child : lane.children)
            lines.insert({child, lane.target});
    }

    void follow(std::int64_t row, const GraphRow& graph, const std::vector<std::uint32_t>& parents)
    {
        closed = std::exchange(resting, Columns{graph.column});
        const bool mustBeReached = closed.contains(graph.column);
        bool isReached = false;
        std::size_t parent = 0;
        for (const GraphEdge& edge : graph.edges) {
            switch (edge.kind) {
            case GraphEdgeKind::passes:
                lead(edge.to, take(edge.from));
                EXPECT_NE(below[edge.to].target, row) << "a line passes its end";
                break;
            case GraphEdgeKind::ends:
                note(whole, take(edge.from));
                isReached = isReached || edge.from == graph.column;
                if (edge.from != graph.column)
                    closed.insert(edge.from);
                break;
            case GraphEdgeKind::begins:
                closed.erase(graph.column);
                begin(edge.to, {parents.at(parent++), {row}});
                break;
            case GraphEdgeKind::stub: note(stubs, {parents.at(parent++), {row}}); break;
            case GraphEdgeKind::arrowDown:
                EXPECT_TRUE(edge.other == -1 || (above.contains(edge.from) && above[edge.from].target == edge.other));
                note(down, take(edge.from));
                resting.insert(edge.from);
                break;
            case GraphEdgeKind::arrowUp:
                up.insert({edge.other, edge.to == graph.column ? row : row + 1});
                if (edge.to != graph.column)
                    begin(edge.to, {row + 1, {}});
                break;
            }
        }
        EXPECT_EQ(parent, parents.size());
        EXPECT_TRUE(above.empty()) << "a line is broken";
        EXPECT_TRUE(isReached || !mustBeReached) << "stands below what it has nothing to do with";
        above = std::exchange(below, {});
    }
};

}  // namespace

void expectLines(const GraphRows& rows, const History& history)
{
    const auto count = static_cast<std::int64_t>(rows.size());
    Follower follower;
    Lines known, parentsAbove;
    for (std::int64_t row = 0; row < count && !testing::Test::HasFailure(); ++row) {
        SCOPED_TRACE(row);
        const auto index = static_cast<std::size_t>(row);
        follower.follow(row, rows[index], history[index]);
        for (const std::int64_t parent : history[index])
            (parent <= row ? parentsAbove : known).insert({row, parent});
    }
    EXPECT_EQ(follower.stubs, parentsAbove);
    for (const auto& [column, lane] : follower.above) {
        EXPECT_GE(lane.target, count) << "a line does not end";
        Follower::note(follower.down, lane);
    }
    Lines drawn = follower.whole;
    drawn.insert(follower.down.begin(), follower.down.end());
    EXPECT_EQ(drawn, known);
    std::erase_if(follower.down, [count](const auto& line) { return line.second >= count; });
    EXPECT_EQ(follower.down, follower.up) << "arrows that do not name each other";
}
