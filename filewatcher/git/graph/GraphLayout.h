#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/GraphLanes.h"

#include <cstddef>
#include <cstdint>

/// The commits of a layout, by row.
class GraphCommits {
public:
    virtual ~GraphCommits() = default;
    /// The commit of a row, with those of its parents that may be shown. What is told of a row of the layout never changes.
    virtual void node(std::uint32_t row, GraphNode& node) const = 0;
};

/// The graph beside a list of commits. It only grows at its end, and keeps the lines of some rows alone: any other row is
/// found by going on from there. For one thread at a time.
class GraphLayout {
public:
    /// `commits` stays as long as the layout.
    explicit GraphLayout(const GraphCommits& commits) : m_commits(commits) {}

    std::uint32_t rowCount() const { return m_rowCount; }
    /// Lays out the rows up to `count`, whose commits are there.
    void extend(std::uint32_t count);
    /// The most columns that one row has so far.
    std::int32_t widest() const { return m_lanes.widest(); }
    /// Fills `result` with a row below rowCount. Cheapest from the top down.
    void row(std::uint32_t index, GraphRow& result);

private:
    struct Checkpoint {
        std::uint32_t row;
        cmArray<std::uint32_t> targets;  ///< of the lanes above it
    };

    const GraphCommits& m_commits;
    std::uint32_t m_rowCount = 0;
    GraphLanes m_lanes;  ///< below the last row
    cmArray<Checkpoint> m_checkpoints;
    GraphLanes m_replay;  ///< above the row m_replayRow
    std::uint32_t m_replayRow = 0;
    GraphNode m_node;
};
