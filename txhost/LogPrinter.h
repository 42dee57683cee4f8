#pragma once

#include "txhost/Browser.h"
#include "txhost/LogLine.h"

/// Prints the rows of the browser, as lines for people or as JSON. For the main thread.
class LogPrinter {
public:
    LogPrinter(Browser& browser, bool json);

    /// Prints the next row, with the names of the commit's tags. Remembers in the console that a date is missing, if it is.
    void print(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row);

private:
    void printRow(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row);
    LogEntry entryOf(const GitCommitInfo& info, const cmArray<cmStringT>& tags);

    Browser& m_browser;
    bool m_json;
    LogLines m_lines;
};
