#include "filewatcher/git/query/GitHistory.h"

#include "filewatcher/git/GitQuotedName.h"
#include "filewatcher/git/commits/GitLogRecord.h"

#include <algorithm>

namespace {

/// Removes a field and the NUL that ends it from the front of `text`; false when there is no NUL.
bool takeField(cmROStringT& text, cmROStringT& field)
{
    const bool whole = text.find('\0') != cmROStringT::npos;
    field = cmTakeUntil(text, '\0');
    return whole;
}

void setParents(cmROStringT hashes, GitCommitInfo& commit)
{
    commit.firstParent = cmTakeUntil(hashes, ' ');
    while (!hashes.empty())
        commit.otherParents.push_back(cmTakeUntil(hashes, ' '));
}

/// Removes the message and the file names, which follow the fields, from the front of `text`; false when the message has no end.
/// A record ends at the last line feed before the next NUL, because only the next record's hash stands between the two. The last
/// gitRecordEnd in the record ends the message, so a message may contain that byte.
bool takeMessage(cmROStringT& text, GitHistoryRecord& record)
{
    cmROStringT block = text.substr(0, text.find('\0'));
    if (block.size() < text.size())
        block = block.substr(0, block.rfind('\n') + 1);
    text.remove_prefix(block.size());
    const std::size_t end = block.rfind(gitRecordEnd);
    if (end == cmROStringT::npos)
        return false;
    record.commit.message = block.substr(0, end);
    for (cmROStringT lines = block.substr(end + 1); !lines.empty();) {
        const cmROStringT line = cmTakeUntil(lines, '\n');
        if (!line.empty())
            record.files.push_back(gitNameOnLine(line));
    }
    return true;
}

}  // namespace

cmArray<GitHistoryRecord> parseGitHistory(cmROStringT output)
{
    cmArray<GitHistoryRecord> records;
    for (;;) {
        cmROStringT hash, parents, time, email, author, subject;
        for (cmROStringT* field : {&hash, &parents, &time, &email, &author, &subject}) {
            if (!takeField(output, *field))
                return records;
        }
        GitHistoryRecord record;
        record.commit.hash = hash.substr(std::min(hash.find_first_not_of('\n'), hash.size()));
        setParents(parents, record.commit);
        record.commit.date = GitDateTime::fromUnixTime(parseCommitTime(time));
        record.commit.authorEmail = email;
        record.commit.authorName = author;
        record.commit.subject = subject;
        if (takeMessage(output, record))
            records.push_back(std::move(record));
    }
}
