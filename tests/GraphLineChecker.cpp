#include "tests/GraphHistory.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <utility>

namespace {

using enum GraphEdgeKind;

struct Line {
    std::uint32_t target;
    std::uint32_t followed;                 ///< the last row where it was seen
    std::vector<std::uint32_t> children{};  ///< none when it starts with an arrow
};

class LineChecker {
public:
    LineChecker(const History& history, std::uint32_t cut, bool paused) : m_history(history), m_cut(cut), m_paused(paused) {}

    void follow(const GraphRow& row)
    {
        m_own = row.column;
        EXPECT_TRUE(m_lines.contains(m_own) ? m_lines[m_own].target == m_row : !m_closed.contains(m_own));
        m_unseen = m_lines.size();
        std::size_t parents = 0;
        for (const GraphEdge& edge : row.edges) {
            if (edge.kind == arrowUp)
                followArrowUp(edge);
            else if (edge.kind != begins && edge.kind != stub)
                followFromAbove(edge);
            else if (++parents <= m_history[m_row].size())
                followToParent(edge, m_history[m_row][parents - 1]);
        }
        EXPECT_EQ(parents, m_history[m_row].size());
        EXPECT_EQ(m_unseen, 0u) << "a line is broken";
        if (!m_lines.contains(m_own))
            m_closedNext.insert(m_own);
        m_closed = std::exchange(m_closedNext, {});
        ++m_row;
    }

    void expectAllEnded() const
    {
        EXPECT_EQ(m_downs, m_ups) << "arrows that do not name each other";
        for (const auto& [column, line] : m_lines)
            EXPECT_TRUE(!comes(line.target) && (m_paused || line.children.back() + 1 == m_row)) << column;
    }

private:
    bool comes(std::uint32_t commit) const { return commit < m_history.size(); }
    bool isLong(std::uint32_t child, std::uint32_t parent) const { return !comes(parent) || parent >= child + m_cut; }

    void followFromAbove(const GraphEdge& edge)
    {
        const auto found = m_lines.find(edge.from);
        ASSERT_TRUE(found != m_lines.end() && found->second.followed < m_row) << "no line leads here";
        found->second.followed = m_row;
        --m_unseen;
        EXPECT_EQ(found->second.target == m_row, edge.kind == ends);
        EXPECT_EQ(edge.to, edge.kind == ends ? m_own : edge.from);
        if (edge.kind == passes)
            return;
        const Line line = m_lines.extract(found).mapped();
        for (const std::uint32_t child : line.children)
            EXPECT_EQ(isLong(child, line.target), edge.kind == arrowDown);
        m_closed.insert(edge.from);
        if (edge.kind == ends)
            return;
        ASSERT_EQ(line.children.size(), 1u);
        EXPECT_TRUE(m_paused || line.children[0] + 1 == m_row);
        EXPECT_EQ(edge.other, comes(line.target) ? std::int64_t{line.target} : -1);
        m_closedNext.insert(edge.from);
        EXPECT_TRUE(!comes(line.target) || m_downs.insert({line.children[0], line.target}).second);
    }

    void followToParent(const GraphEdge& edge, std::uint32_t parent)
    {
        EXPECT_EQ(edge.from, m_own);
        EXPECT_EQ(edge.kind == stub, parent <= m_row);
        if (edge.kind == stub) {
            EXPECT_EQ(edge.to, m_own);
            EXPECT_EQ(edge.other, parent);
            return;
        }
        EXPECT_TRUE(edge.to == m_own || !m_closed.contains(edge.to)) << "where a line has ended";
        Line& line = m_lines.try_emplace(edge.to, Line{parent, m_row}).first->second;
        EXPECT_EQ(line.target, parent) << "two targets in one column";
        line.children.push_back(m_row);
    }

    void followArrowUp(const GraphEdge& edge)
    {
        const bool ofOwn = edge.to == m_own;
        const std::uint32_t parent = ofOwn ? m_row : m_row + 1;
        EXPECT_EQ(edge.to, edge.from);
        EXPECT_TRUE(m_ups.insert({static_cast<std::uint32_t>(edge.other), parent}).second);
        EXPECT_TRUE(ofOwn ? m_paused : !m_closed.contains(edge.to));
        EXPECT_TRUE(ofOwn || m_lines.try_emplace(edge.to, Line{parent, m_row}).first->second.children.empty());
    }

    const History& m_history;
    const std::uint32_t m_cut;
    const bool m_paused;
    std::uint32_t m_row = 0;
    std::size_t m_unseen = 0;
    std::uint16_t m_own = graphNoColumn;             ///< column of the commit
    std::map<std::uint16_t, Line> m_lines;           ///< by column
    std::set<std::uint16_t> m_closed, m_closedNext;  ///< columns in which nothing may begin: a line has ended, or stands above
    std::set<std::pair<std::uint32_t, std::uint32_t>> m_downs, m_ups;  ///< child and parent
};

}  // namespace

void expectLines(const GraphRows& rows, const History& history, std::uint32_t cut, bool paused)
{
    LineChecker checker(history, cut, paused);
    for (std::size_t row = 0; row < rows.size() && !testing::Test::HasFailure(); ++row) {
        SCOPED_TRACE(row);
        checker.follow(rows[row]);
    }
    checker.expectAllEnded();
}
