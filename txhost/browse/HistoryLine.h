#pragma once

#include "txhost/GraphNames.h"
#include "txhost/GraphWindow.h"
#include "txhost/LogLine.h"
#include "txhost/browse/BrowseData.h"
#include "txhost/browse/StyledLine.h"

/// Draws rows of the history that follow each other: "MARK GRAPH HASH [BRANCH] <TAG> SUBJECT NAMES   AUTHOR  DATE". Author and
/// date stand in columns of their own, which the wider windows have. The mark stands at what belongs to the current branch.
class HistoryLines {
public:
    /// `workingCopy`, which must outlive the object, is what is told of the working copy in its row.
    HistoryLines(std::size_t width, Symbols symbols, const cmStringT& workingCopy);

    /// Takes note of a row above the window. The graph depends on the rows above.
    void skip(const HistoryRow& row);
    cmArray<StyledText> next(const HistoryRow& row, bool isCursor, bool hasFocus);
    /// The line of a row that is not known.
    cmArray<StyledText> placeholder(bool isCursor, bool hasFocus) const;

private:
    cmStringT workingCopyText() const;
    void drawGraph(StyledLine& line, const HistoryRow& row);

    std::size_t m_width;
    Symbols m_symbols;
    const cmStringT& m_workingCopy;
    GraphWindow m_graph;
    GraphNames m_names;
};
