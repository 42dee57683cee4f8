#include "filewatcher/git/graph/GraphLayout.h"

#include <algorithm>

namespace {

constexpr std::size_t rowsPerCheckpoint = 256;

}  // namespace

void GraphLayout::extend(std::uint32_t count)
{
    for (; m_rowCount < count; ++m_rowCount) {
        // With many lines checkpoints are rarer, so that they never take more than a word per row.
        const std::size_t distance = std::max(rowsPerCheckpoint, m_lanes.targets().size());
        if (m_checkpoints.empty() || m_rowCount - m_checkpoints.back().row >= distance)
            m_checkpoints.push_back({m_rowCount, m_lanes.targets()});
        m_commits.node(m_rowCount, m_node);
        m_lanes.step(m_node, m_rowCount, nullptr);
    }
}

void GraphLayout::catchUp(std::uint32_t count)
{
    extend(count);
}

void GraphLayout::finish(std::uint32_t count)
{
    extend(count);
}

void GraphLayout::row(std::uint32_t index, GraphRow& result)
{
    const auto after = std::upper_bound(m_checkpoints.begin(), m_checkpoints.end(), index,
                                        [](std::uint32_t row, const Checkpoint& checkpoint) { return row < checkpoint.row; });
    const Checkpoint& checkpoint = *(after - 1);
    if (m_replayRow < checkpoint.row || m_replayRow > index) {
        m_replay.restart(checkpoint.targets);
        m_replayRow = checkpoint.row;
    }
    for (; m_replayRow <= index; ++m_replayRow) {
        m_commits.node(m_replayRow, m_node);
        m_replay.step(m_node, m_replayRow, m_replayRow == index ? &result : nullptr);
    }
}
