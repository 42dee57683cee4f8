#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/GraphLanes.h"

#include <cstddef>
#include <cstdint>

/// The commits that a layout shows, by row.
class GraphCommits {
public:
    virtual ~GraphCommits() = default;
    /// Sets `node` to the commit of a row and those of its parents that get a line. The answer for a laid-out row must never
    /// change.
    virtual void node(std::uint32_t row, GraphNode& node) const = 0;
};

/// The graph beside a list of commits. Rows are appended and never change. Only the lines of some rows (checkpoints) are stored;
/// any other row is computed from the checkpoint above it. For one thread at a time.
class GraphLayout {
public:
    /// `commits` must outlive the layout.
    explicit GraphLayout(const GraphCommits& commits) : m_commits(commits) {}

    std::uint32_t rowCount() const { return m_rowCount; }
    /// Lays out all rows below `count`; their commits must exist.
    void extend(std::uint32_t count);
    /// The largest number of columns of a row so far.
    std::int32_t widest() const { return m_lanes.widest(); }
    /// Sets `result` to a row below rowCount. Reading rows from top to bottom is cheapest.
    void row(std::uint32_t index, GraphRow& result);

private:
    struct Checkpoint {
        std::uint32_t row;
        cmArray<std::uint32_t> targets;  ///< of the lines above the row
    };

    const GraphCommits& m_commits;
    std::uint32_t m_rowCount = 0;
    GraphLanes m_lanes;  ///< the lines below the last row
    cmArray<Checkpoint> m_checkpoints;
    GraphLanes m_replay;  ///< the lines above the row m_replayRow
    std::uint32_t m_replayRow = 0;
    GraphNode m_node;  ///< kept for its memory
};
