#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/status/SVNEntry.h"

/// What the client writes about one directory. It is read in pieces of whole entries while the client goes on: to read a large
/// answer takes half as long as the client took to write it. For one thread at a time.
class SVNAnswer {
public:
    /// Takes the next bytes of the client's output.
    void append(cmROStringT bytes);
    /// Reads the rest; call it once, when the client has ended.
    void finish();

    // Valid after `finish`.

    /// Null when the output was a complete document; otherwise in words why it counts for nothing.
    const cmStringT& problem() const { return m_problem; }
    const cmArray<SVNEntry>& entries() const { return m_entries; }
    /// Whether the server was asked and has answered.
    bool serverAnswered() const { return m_serverAnswered; }

private:
    void findHead();
    void readWholeEntries();
    void read(const cmStringT& document);

    /// What stands in front of the first entry; null as long as there is none.
    cmStringT m_head;
    cmStringT m_text;  ///< not read yet; without the head
    bool m_isDivisible = true;
    cmStringT m_problem;
    cmArray<SVNEntry> m_entries;
    bool m_serverAnswered = false;  ///< according to what was read last: it stands behind all entries
};
