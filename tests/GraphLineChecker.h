#pragma once

#include "tests/GraphHistory.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

/// Follows all lines from row to row, by nothing but the edges: each leads to the parent of its child, or to an arrow.
inline void expectLines(const GraphRows& rows, const History& history)
{
    using enum GraphEdgeKind;
    std::map<std::uint16_t, std::uint32_t> targets;  // by column: the row that its line leads to
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        SCOPED_TRACE(row);
        std::map<std::uint16_t, std::uint32_t> below;
        std::size_t parents = 0;
        for (const GraphEdge& edge : rows[row].edges) {
            const auto leadsTo = [&](std::uint32_t target) { return below.try_emplace(edge.to, target).first->second == target; };
            if (edge.kind == passes)
                ASSERT_TRUE(below.insert(targets.extract(edge.from)).inserted && below[edge.to] != row);
            else if (edge.kind == ends)
                ASSERT_TRUE(targets.contains(edge.from) && targets.extract(edge.from).mapped() == row);
            else if (edge.kind == arrowDown)
                ASSERT_EQ(targets.erase(edge.from), 1u);
            else if (edge.kind == arrowUp)
                ASSERT_TRUE(edge.to == rows[row].column || leadsTo(row + 1));
            else if (edge.kind == stub)
                ++parents;
            else
                ASSERT_TRUE(leadsTo(history[row].at(parents++)));
        }
        ASSERT_EQ(parents, history[row].size());
        ASSERT_TRUE(targets.empty()) << "a line is broken";
        targets = std::move(below);
    }
}
