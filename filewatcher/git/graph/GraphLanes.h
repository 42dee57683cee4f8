#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/graph/CutLines.h"
#include "filewatcher/git/graph/GraphCommits.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstddef>
#include <cstdint>

/// What GraphLanes::step needs beside the commit.
struct GraphStep {
    std::uint32_t row;
    std::uint32_t known;     ///< commits from this row on count as unknown
    std::uint32_t nextId;    ///< of the commit in the next row; GraphLanes::none when that is unknown
    std::uint32_t longLine;  ///< a line over so many rows, or more, is long
};

/// The lines of the graph between two rows. Each occupies a column and leads to a commit further down, its target. A commit takes
/// the leftmost column that its children reserved for it and ends the others. Its first parent inherits the column; each other
/// parent joins the line that leads to it already or takes the leftmost free column. A long line stops in the row below the child
/// and starts again in the row above the parent. For one thread at a time.
class GraphLanes {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// A line of which it is not known yet whether it is long.
    struct OpenLine {
        std::uint16_t column;
        std::uint32_t child;  ///< its row
    };
    /// The lines between two rows.
    struct State {
        cmArray<std::uint32_t> targets;         ///< by column: the id of the target, or a mark; the last column is never free
        cmArray<std::uint16_t> stopping;        ///< columns of long lines, which stop in the next row
        cmArray<OpenLine> open;                 ///< others do not join them
        cmArray<std::uint16_t> resting;         ///< columns that the next row leaves empty
        std::uint16_t arrowUp = graphNoColumn;  ///< column of the line that starts with an arrow above the next commit
    };

    /// `commits` and `cutLines`, to which the steps add the lines that they cut, must outlive the object.
    GraphLanes(const GraphCommits& commits, CutLines& cutLines)
        : m_commits(commits), m_cutLines(cutLines), m_addedLines(&cutLines)
    {
    }
    /// The same for steps that repeat others, whose cut lines are known.
    GraphLanes(const GraphCommits& commits, const CutLines& cutLines) : m_commits(commits), m_cutLines(cutLines) {}

    const State& state() const { return m_state; }
    /// Replaces all lines.
    void restart(const State& state);
    /// The largest number of columns since the last restart.
    std::int32_t widest() const { return m_widest; }
    /// Moves from above the row of `node` to below it. Fills `row` with the row unless it is null.
    void step(const GraphNode& node, const GraphStep& step, GraphRow* row);

private:
    // Marks for columns that lead nowhere. When what stands in a column ends there, a commit or an arrow, the column rests for a
    // row, so that nothing unrelated stands directly below.
    static constexpr std::uint32_t free = none;
    static constexpr std::uint32_t held = none - 1;  ///< used in the current row
    static constexpr std::uint32_t rests = none - 2;

    enum class Length { shortLine, longLine, unknown };

    static bool isTarget(std::uint32_t mark) { return mark < rests; }
    static Length lengthOf(std::uint32_t parentRow, std::uint32_t childRow, const GraphStep& step);

    void stopLongLines(const GraphStep& step);
    void cut(std::uint32_t parent, std::uint32_t childRow);
    void stop(std::uint16_t column);
    void addPassing(std::uint32_t id, GraphRow& row) const;
    std::uint16_t takeColumn(std::uint32_t id, GraphRow* row);
    /// Returns the column of the line to a parent; graphNoColumn when the parent gets no line.
    std::uint16_t lineTo(const GraphNode::Parent& parent, bool first, std::uint16_t column, const GraphStep& step);
    void begin(std::uint16_t column, const GraphNode::Parent& parent, const GraphStep& step);
    void addLineTo(const GraphNode::Parent& parent, std::uint16_t column, std::uint16_t lane, GraphRow& row) const;
    void addArrowsDown(GraphRow& row) const;
    void addArrowsUp(std::uint32_t parent, std::uint16_t column, GraphRow& row) const;
    void startAgain(std::uint32_t parent, GraphRow* row);
    void endRow();

    std::uint16_t takeLeftmostFree();
    /// Returns the leftmost column of a line to the commit that may be joined; graphNoColumn when there is none.
    std::uint16_t leftmostTo(std::uint32_t id) const;
    bool isOpen(std::uint16_t column) const;
    void reserve(std::uint16_t column, std::uint32_t id);
    void unlink(std::uint16_t column);
    void rest(std::uint16_t column);
    void release(std::uint16_t column);
    std::uint16_t firstTo(std::uint32_t id) const { return id < m_firsts.size() ? m_firsts[id] : graphNoColumn; }

    /// A line that stops in the current row.
    struct Stopped {
        std::uint16_t column;
        std::uint32_t parent;  ///< its id
    };

    const GraphCommits& m_commits;
    const CutLines& m_cutLines;
    CutLines* const m_addedLines = nullptr;  ///< where the lines that are cut are added
    State m_state;
    cmArray<std::uint16_t> m_next;    ///< by column: the next column with the same target
    cmArray<std::uint16_t> m_firsts;  ///< by target: one of its columns; graphNoColumn for none
    cmArray<std::uint16_t> m_free;    ///< a heap of free columns; may hold some that were taken again or dropped
    std::int32_t m_widest = 0;
    // The following concern the current row.
    cmArray<Stopped> m_stopped;
    cmArray<std::uint16_t> m_ended;  ///< columns that are free from the next row on
    cmArray<std::uint16_t> m_begun;  ///< columns of long lines
    cmArray<std::uint16_t> m_left;   ///< columns that rest in the next row
};
