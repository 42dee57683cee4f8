#pragma once

#include "filewatcher/git/graph/GraphLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>

/// Follows every line from its child to its parent.
class LineFollower {
public:
    void follow(const GraphNode& node, const GraphRow& row)
    {
        std::map<std::uint16_t, std::uint32_t> below;
        std::uint16_t leftmost = graphNoColumn;
        std::size_t parent = 0;
        for (const GraphEdge& edge : row.edges) {
            if (edge.kind == GraphEdgeKind::passes || edge.kind == GraphEdgeKind::ends) {
                ASSERT_TRUE(m_lines.contains(edge.from));
                ASSERT_EQ(m_lines[edge.from] == node.id, edge.kind == GraphEdgeKind::ends);
                ASSERT_EQ(edge.to, edge.kind == GraphEdgeKind::ends ? row.column : edge.from);
                if (edge.kind == GraphEdgeKind::passes)
                    below[edge.to] = m_lines[edge.from];
                else
                    leftmost = std::min(leftmost, edge.from);
                m_lines.erase(edge.from);
                continue;
            }
            ASSERT_EQ(edge.from, row.column);
            ASSERT_EQ(edge.kind == GraphEdgeKind::stub, node.parents[parent].above);
            if (edge.kind == GraphEdgeKind::begins) {
                ASSERT_EQ(below.try_emplace(edge.to, node.parents[parent].id).first->second, node.parents[parent].id);
            }
            ++parent;
        }
        ASSERT_TRUE(m_lines.empty()) << "lines that the row lost";
        ASSERT_EQ(parent, node.parents.size());
        if (leftmost != graphNoColumn) {
            ASSERT_EQ(row.column, leftmost);
        }
        m_lines = below;
    }
    std::size_t openLines() const { return m_lines.size(); }

private:
    std::map<std::uint16_t, std::uint32_t> m_lines;  ///< by column, the row each goes to
};
