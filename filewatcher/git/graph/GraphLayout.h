#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/GraphLanes.h"

#include <cstddef>
#include <cstdint>

/// The commits that a layout shows, by row.
class GraphCommits {
public:
    virtual ~GraphCommits() = default;
    /// Sets `node` to the commit of a row and those of its parents that get a line. For a row that is laid out, the ids in the
    /// answer must never change.
    virtual void node(std::uint32_t row, GraphNode& node) const = 0;
    /// Returns the row of the commit with this id; GraphNode::noRow as long as it has none.
    virtual std::uint32_t rowOf(std::uint32_t id) const = 0;
    virtual cmStringT hashText(std::uint32_t id) const = 0;
};

/// The graph beside a list of commits. Rows are appended and never change. Only the lines of some rows (checkpoints) are stored;
/// any other row is computed from the checkpoint above it. For one thread at a time.
class GraphLayout {
public:
    /// A line over so many rows, or more, is drawn for one row at each end only.
    static constexpr std::uint32_t longLine = 30;

    /// `commits` must outlive the layout.
    explicit GraphLayout(const GraphCommits& commits, std::uint32_t cut = longLine) : m_commits(commits), m_cut(cut) {}

    std::uint32_t rowCount() const { return m_rowCount; }
    /// Lays out all rows below `count`, except for the last ones, of which it is not known yet how long their lines are. `count`
    /// commits must exist.
    void extend(std::uint32_t count);
    /// Lays out all rows below `count`, although more commits may follow.
    void catchUp(std::uint32_t count);
    /// Lays out all rows below `count`; no more commits follow.
    void finish(std::uint32_t count);
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
    const std::uint32_t m_cut;
    std::uint32_t m_rowCount = 0;
    GraphLanes m_lanes;  ///< the lines below the last row
    cmArray<Checkpoint> m_checkpoints;
    GraphLanes m_replay;  ///< the lines above the row m_replayRow
    std::uint32_t m_replayRow = 0;
    GraphNode m_node;  ///< kept for its memory
};
