#include "filewatcher/git/graph/GraphLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

namespace {

/// Commits by row, each with the rows of its parents; a row past the end is never added.
class Rows : public GraphCommits {
public:
    explicit Rows(std::vector<std::vector<std::uint32_t>> parents) : m_parents(std::move(parents)) {}
    void node(std::uint32_t row, GraphNode& node) const override
    {
        node.id = row;
        node.parents.clear();
        for (const std::uint32_t parent : m_parents[row])
            node.parents.push_back({parent, rowOf(parent)});
    }

    std::uint32_t idOf(std::uint32_t row) const override { return row; }
    std::uint32_t rowOf(std::uint32_t id) const override { return id < m_parents.size() ? id : GraphNode::noRow; }
    cmStringT hashText(std::uint32_t id) const override { return cmROStringT(std::to_string(id)); }

private:
    std::vector<std::vector<std::uint32_t>> m_parents;
};

/// Checks row by row that every line leads from its child to its parent.
struct LineFollower {
    std::map<std::uint16_t, std::uint32_t> lines;  ///< by column, the row each leads to

    void follow(const GraphNode& node, const GraphRow& row)
    {
        std::map<std::uint16_t, std::uint32_t> below;
        std::uint16_t leftmost = graphNoColumn;
        std::size_t parent = 0;
        for (const GraphEdge& edge : row.edges) {
            if (edge.kind == GraphEdgeKind::passes || edge.kind == GraphEdgeKind::ends) {
                ASSERT_TRUE(lines.contains(edge.from));
                ASSERT_EQ(lines[edge.from] == node.id, edge.kind == GraphEdgeKind::ends);
                ASSERT_EQ(edge.to, edge.kind == GraphEdgeKind::ends ? row.column : edge.from);
                if (edge.kind == GraphEdgeKind::passes)
                    below[edge.to] = lines[edge.from];
                else
                    leftmost = std::min(leftmost, edge.from);
                lines.erase(edge.from);
                continue;
            }
            ASSERT_EQ(edge.from, row.column);
            ASSERT_EQ(edge.kind == GraphEdgeKind::stub, node.parents[parent].row <= node.id);
            if (edge.kind == GraphEdgeKind::begins) {
                ASSERT_EQ(below.try_emplace(edge.to, node.parents[parent].id).first->second, node.parents[parent].id);
            }
            ++parent;
        }
        ASSERT_TRUE(lines.empty()) << "lines that the row lost";
        ASSERT_EQ(parent, node.parents.size());
        if (leftmost != graphNoColumn) {
            ASSERT_EQ(row.column, leftmost);
        }
        lines = below;
    }
};

constexpr std::uint32_t uncut = 1'000'000;

using Edges = cmArray<GraphEdge>;
Edges edges(GraphLayout& layout, std::uint32_t index)
{
    GraphRow row;
    layout.row(index, row);
    return row.edges;
}

using enum GraphEdgeKind;

TEST(GraphLayout, ShowsAParentAboveItsChildAsAStubAndKeepsNoColumnForIt)
{
    const Rows rows({{3}, {}, {1, 3}, {0, 1}, {4}});
    GraphLayout layout(rows);
    layout.finish(5);
    EXPECT_EQ(edges(layout, 2), (Edges{{0, 0, passes}, {2, 2, stub, 1, "1"}, {2, 0, begins}}));
    EXPECT_EQ(edges(layout, 3), (Edges{{0, 0, ends}, {0, 0, stub, 0, "0"}, {0, 0, stub, 1, "1"}}));
    EXPECT_EQ(edges(layout, 4), (Edges{{1, 1, stub, 4, "4"}}));
}

TEST(GraphLayout, EveryLineReachesItsParentWhateverTheHistory)
{
    std::mt19937 engine(7);
    const auto random = [&engine] { return static_cast<std::uint32_t>(engine()); };
    for (int round = 0; round < 6; ++round) {
        constexpr std::uint32_t count = 900;
        const std::uint32_t reach = round % 2 ? 8 : 500;  // at most so many rows below the child: few lines, or hundreds
        std::vector<std::vector<std::uint32_t>> parents(count);
        for (std::uint32_t row = 0; row < count; ++row) {
            for (std::uint32_t n = random() % 4; n > 0; --n) {
                const std::uint32_t parent = random() % 50 ? row + 1 + random() % reach : random() % count;
                if (parent < count)
                    parents[row].push_back(parent);
            }
        }
        const Rows rows(parents);
        GraphLayout layout(rows, uncut);
        for (std::uint32_t known = 0; known < count; known += 1 + random() % 100)
            layout.extend(known);
        layout.finish(count);
        LineFollower follower;
        std::vector<GraphRow> all(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            GraphNode node;
            rows.node(i, node);
            layout.row(i, all[i]);
            ASSERT_NO_FATAL_FAILURE(follower.follow(node, all[i])) << round << " " << i;
        }
        EXPECT_EQ(follower.lines.size(), 0u);
        for (int look = 0; look < 30; ++look) {
            const std::uint32_t i = random() % count;
            ASSERT_EQ(edges(layout, i), all[i].edges) << i;
        }
    }
}

TEST(GraphLayout, LinesForWhichNoColumnIsLeftAreStubs)
{
    constexpr std::uint32_t count = 66000;
    std::vector<std::vector<std::uint32_t>> parents(2 * count);
    for (std::uint32_t row = 0; row < count; ++row)
        parents[row] = {count + row};
    const Rows rows(parents);
    GraphLayout layout(rows, uncut);
    layout.finish(2 * count);
    EXPECT_EQ(layout.widest(), 65535);
    EXPECT_EQ(edges(layout, 65534).back(), (GraphEdge{65534, 65534, begins}));
    EXPECT_EQ(edges(layout, 65999).back(), (GraphEdge{graphNoColumn, graphNoColumn, stub, count + 65999, "131999"}));
}

}  // namespace
