#include "filewatcher/git/commits/GitLogOutput.h"

#include "filewatcher/git/commits/GitLogRecord.h"

#include <algorithm>
#include <utility>

namespace {

cmROStringT withoutLeadingLineFeeds(cmROStringT text)
{
    return text.substr(std::min(text.find_first_not_of('\n'), text.size()));
}

}  // namespace

void GitLogOutput::append(cmROStringT bytes)
{
    m_hadOutput = true;
    m_pending.append(m_pending.isEmpty() ? withoutLeadingLineFeeds(bytes) : bytes);
}

int GitLogOutput::takeCompleteRecords(cmStringT& records)
{
    records.clear();
    const std::size_t end = m_pending.view().substr(m_scanned).rfind(gitRecordEnd);
    if (end == cmROStringT::npos) {
        m_scanned = m_pending.length();
        return m_isFinished ? -1 : 0;
    }
    const std::size_t length = m_scanned + end + 1;
    std::swap(records, m_pending);  // the rest is short: copying it is cheaper than copying the records
    m_pending.assign(withoutLeadingLineFeeds(records.view().substr(length)));
    m_scanned = m_pending.length();
    records.truncate(length);
    return 0;
}
