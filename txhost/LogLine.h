#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txhost/GraphNames.h"
#include "txhost/GraphText.h"
#include "txhost/GraphWindow.h"
#include "txhost/LogLabels.h"

#include <cstddef>

// The lines that `txhost log` prints for people. Pure functions of values.

/// A commit beside its picture. Its texts hold nothing that a terminal obeys.
struct LogEntry {
    cmStringT hash;  ///< its short form; empty for the working copy
    cmArray<LogLabel> labels;
    cmStringT subject;
    cmStringT about;  ///< author and date
};

/// What the graph and its names are drawn with.
enum class Symbols { unicode, plain };

/// Makes the lines of one log, from its first row on.
class LogLines {
public:
    /// For a terminal of `terminalWidth` columns, or for a pipe (0), whose lines are never cut.
    LogLines(std::size_t terminalWidth, Painter paint, Symbols symbols = Symbols::unicode)
        : m_width(terminalWidth), m_paint(paint), m_symbols(symbols), m_window(terminalWidth)
    {
    }

    /// "PICTURE HASH [BRANCH] <TAG> SUBJECT  AUTHOR, DATE  NAMES" for the next row from the top. Where a terminal is too narrow,
    /// the picture and the hash come first. Labels get what the subject does not need, or half of the rest; those that do not fit
    /// are shortened inside their brackets, and "[…]" stands for what is left out. Then the names of parents and children without
    /// a line, and author and date, are shown if the subject keeps 20 columns beside them, or all that it needs. Hashes, author
    /// and date are shown whole or not at all.
    cmStringT next(const GraphRow& row, const LogEntry& entry);

private:
    cmStringT drawn(cmROStringT text) const;

    std::size_t m_width;
    Painter m_paint;
    Symbols m_symbols;
    GraphWindow m_window;
    GraphNames m_names;
};
