#include "filewatcher/git/commits/GitLogOutput.h"

#include "filewatcher/git/commits/GitLogRecord.h"

#include <utility>

void GitLogOutput::append(cmROStringT bytes)
{
    m_hadOutput = true;
    m_pending.append(bytes);
}

int GitLogOutput::takeCompleteRecords(cmStringT& records)
{
    records.clear();
    std::size_t length = m_pending.length();
    // Only what follows tells the end of a record from the same byte in a name.
    if (!m_isFinished || !m_pending.view().ends_with(gitRecordEnd)) {
        const std::size_t end = m_pending.view().substr(m_scanned).rfind(gitRecordSeparator);
        if (end == cmROStringT::npos) {
            m_scanned = length > 0 ? length - 1 : 0;
            return m_isFinished ? -1 : 0;
        }
        length = m_scanned + end + gitRecordSeparator.size();
    }
    std::swap(records, m_pending);  // the rest is short: copying it is cheaper than copying the records
    m_pending.assign(records.view().substr(length));
    m_scanned = 0;
    records.truncate(length);
    return 0;
}
