#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/CutLines.h"
#include "filewatcher/git/graph/GraphCommits.h"
#include "filewatcher/git/graph/GraphLanes.h"

#include <cstddef>
#include <cstdint>
#include <optional>

/// The graph beside a list of commits. Rows are appended and never change, except that the far end of an arrow becomes known when
/// its commit gets a row. Only the lines of some rows (checkpoints) are stored; any other row is computed from the checkpoint
/// above it. For one thread at a time.
class GraphLayout {
public:
    /// A line over so many rows, or more, is drawn for one row at each end only.
    static constexpr std::uint32_t longLine = 30;

    /// `commits` must outlive the layout. `cut` is at least 2.
    explicit GraphLayout(const GraphCommits& commits, std::uint32_t cut = longLine) : m_commits(commits), m_cut(cut) {}
    GraphLayout(const GraphLayout&) = delete;
    GraphLayout& operator=(const GraphLayout&) = delete;

    std::uint32_t rowCount() const { return m_rowCount; }
    /// Lays out all rows below `count` but the last `cut` - 1, of which it is not known yet whether their lines are long. `count`
    /// commits must exist.
    void extend(std::uint32_t count);
    /// Lays out all rows below `count`, although more commits may follow. Their lines are cut later than usual, once it is known
    /// that they are long.
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
        GraphLanes::State lines;  ///< above the row
    };
    void layOut(std::uint32_t end);
    GraphStep stepOf(std::uint32_t row) const;
    void replay(std::uint32_t index, GraphRow& result);

    const GraphCommits& m_commits;
    const std::uint32_t m_cut;
    std::uint32_t m_commitCount = 0;
    std::uint32_t m_rowCount = 0;
    CutLines m_cutLines;
    GraphLanes m_lanes{m_commits, m_cutLines};  ///< the lines below the last row
    bool m_isBroken = false;                    ///< m_lanes are not, because a step broke off
    cmArray<Checkpoint> m_checkpoints;
    cmArray<std::uint32_t> m_catchUps;   ///< how many commits were known at each, ascending
    std::optional<GraphLanes> m_replay;  ///< the lines above the row m_replayRow; none when they are not known
    std::uint32_t m_replayRow = 0;
    GraphNode m_node;  ///< kept for its memory
};
