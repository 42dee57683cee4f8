#include "filewatcher/git/graph/GraphLayout.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t rowsPerCheckpoint = 256;
constexpr std::uint32_t allKnown = GraphNode::noRow;

}  // namespace

void GraphLayout::extend(std::uint32_t count)
{
    m_commitCount = count;
    if (count >= m_cut)
        layOut(count - m_cut + 1);
}

void GraphLayout::catchUp(std::uint32_t count)
{
    m_commitCount = count;
    if (m_rowCount < count)
        m_catchUps.push_back(count);
    layOut(count);
}

void GraphLayout::finish(std::uint32_t count)
{
    m_commitCount = count;
    layOut(count);
}

void GraphLayout::layOut(std::uint32_t end)
{
    for (; m_rowCount < end && !m_isBroken; ++m_rowCount) {
        m_isBroken = true;
        // With many lines checkpoints are rarer, so that they never take more than a word per row.
        const std::size_t distance = std::max(rowsPerCheckpoint, m_lanes.state().targets.size());
        if (m_checkpoints.empty() || m_rowCount - m_checkpoints.back().row >= distance)
            m_checkpoints.push_back({m_rowCount, m_lanes.state()});
        m_commits.node(m_rowCount, m_node);
        m_lanes.step(m_node, stepOf(m_rowCount), nullptr);
        m_isBroken = false;
    }
}

/// The same whether the row is laid out for the first time or again: what was not known then does not count. For a row that was
/// laid out before a later catchUp, all that matters was known.
GraphStep GraphLayout::stepOf(std::uint32_t row) const
{
    const auto caughtUp = std::upper_bound(m_catchUps.begin(), m_catchUps.end(), row);
    const std::uint32_t known = caughtUp != m_catchUps.end() ? *caughtUp : allKnown;
    const std::uint32_t next = row + 1;
    const bool hasNext = next < std::min(known, m_commitCount);
    return {row, known, hasNext ? m_commits.idOf(next) : GraphLanes::none, m_cut};
}

void GraphLayout::row(std::uint32_t index, GraphRow& result)
{
    try {
        replay(index, result);
    } catch (...) {
        m_replay.reset();  // a step may have broken off
        throw;
    }
}

void GraphLayout::replay(std::uint32_t index, GraphRow& result)
{
    const auto after = std::upper_bound(m_checkpoints.begin(), m_checkpoints.end(), index,
                                        [](std::uint32_t row, const Checkpoint& checkpoint) { return row < checkpoint.row; });
    const Checkpoint& checkpoint = *(after - 1);
    if (!m_replay || m_replayRow < checkpoint.row || m_replayRow > index) {
        if (!m_replay)
            m_replay.emplace(m_commits, std::as_const(m_cutLines));
        m_replay->restart(checkpoint.lines);
        m_replayRow = checkpoint.row;
    }
    for (; m_replayRow <= index; ++m_replayRow) {
        m_commits.node(m_replayRow, m_node);
        m_replay->step(m_node, stepOf(m_replayRow), m_replayRow == index ? &result : nullptr);
    }
}
