#include "filewatcher/git/commits/GitLogRecord.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::ptrdiff_t separators = 5;

bool parseRecord(cmROStringT text, GitLogRecord& record)
{
    text.remove_prefix(std::min(text.find_first_not_of('\n'), text.size()));
    if (std::count(text.begin(), text.end(), '\0') < separators)
        return false;
    record.hash = cmTakeUntil(text, '\0');
    record.parents = cmTakeUntil(text, '\0');
    record.time = parseCommitTime(cmTakeUntil(text, '\0'));  // of any length: times before 2001 have fewer than ten digits
    record.authorEmail = cmTakeUntil(text, '\0');
    record.authorName = cmTakeUntil(text, '\0');
    record.subject = text.substr(0, text.find_last_not_of(gitRecordEnd) + 1);
    return true;
}

/// Removes a record and its end from the front of `batch`.
cmROStringT takeRecordText(cmROStringT& batch)
{
    const std::size_t end = batch.find(gitRecordSeparator);
    const cmROStringT text = batch.substr(0, end);
    batch.remove_prefix(std::min(text.size() + gitRecordSeparator.size(), batch.size()));
    return text;
}

}  // namespace

std::int64_t parseCommitTime(cmROStringT digits)
{
    std::int64_t time = noCommitTime;
    std::from_chars(digits.data(), digits.data() + digits.size(), time);
    return time;
}

bool takeGitLogRecord(cmROStringT& batch, GitLogRecord& record)
{
    while (!batch.empty()) {
        if (parseRecord(takeRecordText(batch), record))
            return true;
    }
    return false;
}
