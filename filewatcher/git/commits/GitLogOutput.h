#pragma once

#include "common/cmString.h"

#include <cstddef>

/// The output of a log command between the thread that reads it from git and the one that parses it. Has no lock: for one thread
/// at a time.
class GitLogOutput {
public:
    /// Adds output that git wrote, in pieces of any size.
    void append(cmROStringT bytes);
    /// Notes that git has ended and nothing will be appended any more.
    void finish() { m_isFinished = true; }

    bool isFinished() const { return m_isFinished; }
    /// Whether git wrote anything at all.
    bool hadOutput() const { return m_hadOutput; }

    /// Moves all complete records that were appended since the last call into `records`, as a batch for takeGitLogRecord;
    /// `records` is empty when there are none. Returns 0, or -1 when there are none and none will come: a record that git did not
    /// complete is never handed out.
    int takeCompleteRecords(cmStringT& records);
    /// Whether git ended in the middle of a record. Ask when takeCompleteRecords has returned -1.
    bool endsInsideRecord() const { return !m_pending.isEmpty(); }

private:
    cmStringT m_pending;        ///< not taken yet
    std::size_t m_scanned = 0;  ///< no end of a record begins in these first bytes of m_pending
    bool m_hadOutput = false;
    bool m_isFinished = false;
};
