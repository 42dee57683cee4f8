#include "filewatcher/git/graph/GraphLayout.h"

#include "tests/LineFollower.h"

#include <random>
#include <vector>

namespace {

/// Commits by row, each with the rows of its parents; a parent's row past the end never comes.
class Rows : public GraphCommits {
public:
    explicit Rows(std::vector<std::vector<std::uint32_t>> parents) : m_parents(std::move(parents)) {}
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_parents.size()); }
    void node(std::uint32_t row, GraphNode& node) const override
    {
        node.id = row;
        node.parents.clear();
        for (const std::uint32_t parent : m_parents[row])
            node.parents.push_back({parent, parent <= row});
    }

private:
    std::vector<std::vector<std::uint32_t>> m_parents;
};

std::vector<std::uint16_t> columns(GraphLayout& layout)
{
    std::vector<std::uint16_t> found;
    GraphRow row;
    for (std::uint32_t i = 0; i < layout.rowCount(); ++i) {
        layout.row(i, row);
        found.push_back(row.column);
    }
    return found;
}

using Edges = cmArray<GraphEdge>;
using Columns = std::vector<std::uint16_t>;
constexpr auto passes = GraphEdgeKind::passes;
constexpr auto ends = GraphEdgeKind::ends;
constexpr auto begins = GraphEdgeKind::begins;
constexpr auto stub = GraphEdgeKind::stub;

TEST(GraphLayout, PutsAMergeAndItsBranchSideBySide)
{
    const Rows rows({{2}, {3}, {3, 4}, {5}, {5}, {}});
    GraphLayout layout(rows);
    layout.extend(rows.count());
    EXPECT_EQ(columns(layout), (Columns{0, 1, 0, 0, 2, 0}));
    EXPECT_EQ(layout.widest(), 3);
    GraphRow row;
    layout.row(2, row);
    EXPECT_EQ(row.edges, (Edges{{1, 1, passes}, {0, 0, ends}, {0, 0, begins}, {0, 2, begins}}));
    layout.row(3, row);
    EXPECT_EQ(row.edges, (Edges{{2, 2, passes}, {0, 0, ends}, {1, 0, ends}, {0, 0, begins}}));
    layout.row(5, row);
    EXPECT_EQ(row.edges, (Edges{{0, 0, ends}, {2, 0, ends}}));
}

TEST(GraphLayout, ShowsAParentAboveItsChildAsAStubAndKeepsNoLaneForIt)
{
    const Rows rows({{3}, {}, {1, 3}, {0, 1}, {4}});
    GraphLayout layout(rows);
    layout.extend(rows.count());
    GraphRow row;
    layout.row(2, row);
    EXPECT_EQ(row.column, 1);
    EXPECT_EQ(row.edges, (Edges{{0, 0, passes}, {1, 1, stub}, {1, 0, begins}}));
    layout.row(3, row);
    EXPECT_EQ(row.edges, (Edges{{0, 0, ends}, {0, 0, stub}, {0, 0, stub}}));
    layout.row(4, row);
    EXPECT_EQ(row.edges, (Edges{{0, 0, stub}}));
}

TEST(GraphLayout, EveryLineReachesItsParentWhateverTheHistory)
{
    std::mt19937 engine(7);
    const auto random = [&engine] { return static_cast<std::uint32_t>(engine()); };
    for (int round = 0; round < 6; ++round) {
        constexpr std::uint32_t count = 900;
        const std::uint32_t reach = round % 2 ? 8 : 500;  // how far below a parent is at most: few lanes, or hundreds
        std::vector<std::vector<std::uint32_t>> parents(count);
        for (std::uint32_t row = 0; row < count; ++row) {
            for (std::uint32_t n = random() % 4; n > 0; --n) {
                const std::uint32_t parent = random() % 50 ? row + 1 + random() % reach : random() % count;
                if (parent < count)
                    parents[row].push_back(parent);
            }
        }
        const Rows rows(parents);
        GraphLayout layout(rows);
        for (std::uint32_t known = 0; known < count; known += 1 + random() % 100)
            layout.extend(known);
        layout.extend(count);
        LineFollower follower;
        std::vector<GraphRow> all(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            GraphNode node;
            rows.node(i, node);
            layout.row(i, all[i]);
            ASSERT_NO_FATAL_FAILURE(follower.follow(node, all[i])) << round << " " << i;
        }
        EXPECT_EQ(follower.openLines(), 0u);
        for (int look = 0; look < 30; ++look) {
            const std::uint32_t i = random() % count;
            GraphRow row;
            layout.row(i, row);
            ASSERT_EQ(row.edges, all[i].edges) << i;
        }
    }
}

TEST(GraphLayout, MoreLanesThanColumnsEndAsStubs)
{
    constexpr std::uint32_t count = 66000;
    std::vector<std::vector<std::uint32_t>> parents(count);
    for (std::uint32_t row = 0; row < count; ++row)
        parents[row] = {count + row};
    const Rows rows(parents);
    GraphLayout layout(rows);
    layout.extend(count);
    EXPECT_EQ(layout.widest(), 65535);
    GraphRow row;
    layout.row(65534, row);
    EXPECT_EQ(row.column, 65534);
    EXPECT_EQ(row.edges.back(), (GraphEdge{65534, 65534, begins}));
    layout.row(65999, row);
    EXPECT_EQ(row.column, graphNoColumn);
    EXPECT_EQ(row.edges.back(), (GraphEdge{graphNoColumn, graphNoColumn, stub}));
}

}  // namespace
